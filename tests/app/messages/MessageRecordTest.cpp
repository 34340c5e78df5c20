#include "app/messages/MessageRecord.h"

#include "Messages.h"
#include "support/Printers.h"

#include <gmock/gmock.h>

namespace fenrik {
namespace {

TEST(MessageRecord, HasTwentyFourBytes)
{
    EXPECT_EQ(sizeof(MessageRecord), 24u);
}

struct Wire {
    const char* name;
    int command;
    int data;
    bool state;
    bool extended;
};

class WireForms : public testing::TestWithParam<Wire> {};

TEST_P(WireForms, AreToldAgainByteForByte)
{
    const auto [name, command, data, state, extended] = GetParam();
    const CMessage message = Received(command, data, state, extended);
    const MessageRecord record(message, 7, -3);

    EXPECT_EQ(record.Bytes(), message.rawBytes);
    EXPECT_EQ(record.Form(), CMessage::RawForm::Received);
    EXPECT_EQ(int(record.command), command);
    EXPECT_EQ(record.data, data);
    EXPECT_EQ(record.On(), state);
    EXPECT_EQ(record.ThreeWay(), extended);
    EXPECT_EQ(int(record.checkSum), message.CheckSum);
    EXPECT_EQ(record.name, 7u);
    EXPECT_EQ(record.count, -3);
    EXPECT_EQ(record.time, message.time.milliseconds);
}

INSTANTIATE_TEST_SUITE_P(Record, WireForms,
                         testing::Values(Wire{"Plain", 901, 3, false, false}, Wire{"On", 12, 31, true, false},
                                         Wire{"ThreeWay", 12, 31, false, true},
                                         Wire{"HighestOnTheWire", 1023, 0xFFFF, true, true},
                                         Wire{"SubCommandTravelsAs1000", 1024 + 0x12, 0x1234, true, false},
                                         Wire{"HighestSubCommand", 1279, 0xFFFF, false, true},
                                         Wire{"SumOfZero", 1, 0x5C00, false, false}),
                         [](const auto& row) { return row.param.name; });

TEST(MessageRecord, KeepsDataBeyondWhatTravels)
{
    const MessageRecord record(Sent(12, 0x12345), 0, 0);
    EXPECT_EQ(record.data, 0x12345);
    EXPECT_EQ(record.Bytes()[3], 0x23);
    EXPECT_EQ(record.Bytes()[4], 0x45);
}

TEST(MessageRecord, OfAMessageThatNeverTravelledHasNoForm)
{
    CMessage message;
    message.Command = 12;
    message.State = 5;
    const MessageRecord record(message, 0, 0);
    EXPECT_EQ(record.Form(), CMessage::RawForm::None);
    EXPECT_TRUE(record.On());
    EXPECT_FALSE(record.ThreeWay());
}

}  // namespace
}  // namespace fenrik
