#include "simulator/Colleague.h"

#include "simulator/Fixtures.h"
#include "simulator/TrafficLog.h"

#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Keeps what the colleague does.
class ColleagueRecorder final : public ColleagueHost {
public:
    void SendToRelay(std::string_view bytes) override { sent += bytes; }
    [[nodiscard]] bool RelayHasRoom() const override { return hasRoom; }
    void MessageForVehicle(std::string_view bytes) override { forVehicle.emplace_back(bytes); }
    void Tell(const std::string& line) override { told.push_back(line); }

    std::string sent;
    bool hasRoom = true;
    std::vector<std::string> forVehicle;
    std::vector<std::string> told;
};

std::string Bytes(int type, const std::string& body)
{
    return RelayFrame{type, body}.Encode();
}

class ColleagueTest : public testing::Test {
protected:
    /// What was sent since the last call, each as "TYPE BODY".
    std::vector<std::string> TakeSent()
    {
        std::vector<std::string> frames;
        while (const auto frame = RelayFrame::TakeFrom(host.sent))
            frames.push_back(std::to_string(frame->type) + ' ' + frame->body);
        EXPECT_EQ(host.sent, "");
        return frames;
    }
    void BePiped()
    {
        colleague.Receive(Bytes(6, RelayNumber(7) + "Welcome"));
        colleague.Receive(Bytes(31, RelayNumber(9) + RelayField("Ada", 50) + "text"));
        (void)TakeSent();
    }
    static std::string Text(const Frame& frame)
    {
        const auto bytes = frame.Encode();
        return {bytes.begin(), bytes.end()};
    }

    FakeTime time;
    std::ostringstream text;
    TrafficLog log{time, &text};
    ColleagueRecorder host;
    Colleague colleague{"Bob", AccessAnswer::Grant, time, log, host};
};

TEST_F(ColleagueTest, LogsOnWithItsName)
{
    colleague.LogOn();
    const auto frame = RelayFrame::TakeFrom(host.sent);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->type, 5);
    EXPECT_EQ(frame->body, std::string(50, '\0') + RelayField("Bob", 50) + "OEMClient      " + RelayField("Bob", 50));
    colleague.Receive(Bytes(6, RelayNumber(7) + "Welcome"));
    EXPECT_THAT(host.told, ElementsAre("ready relay Bob"));
    colleague.LogOff();
    EXPECT_THAT(TakeSent(), ElementsAre("7 " + RelayNumber(7)));
}

TEST_F(ColleagueTest, GreetsWhoIsPipedToItOnce)
{
    const auto piped = Bytes(31, RelayNumber(9) + RelayField("Ada", 50) + "text");
    colleague.Receive(piped + piped);
    EXPECT_THAT(TakeSent(), ElementsAre("33 Hello Ada, this is Bob. The vehicle is connected."));
    EXPECT_TRUE(colleague.Heard());
    colleague.Receive(Bytes(32, RelayNumber(9) + RelayField("Ada", 50)));
    EXPECT_FALSE(colleague.Heard());
}

TEST_F(ColleagueTest, TakesFramesInPieces)
{
    for (const char byte : Bytes(31, RelayNumber(9) + RelayField("Ada", 50)))
        colleague.Receive({&byte, 1});
    EXPECT_TRUE(colleague.Heard());
}

TEST_F(ColleagueTest, AnswersEchoesAndChat)
{
    BePiped();
    colleague.Receive(Bytes(2, "1234") + Bytes(33, "What's up?"));
    EXPECT_THAT(TakeSent(), ElementsAre("3 1234", "33 You said: What's up?"));
}

TEST_F(ColleagueTest, AnswersARequestForAccessAsItWasTold)
{
    const std::pair<AccessAnswer, std::vector<std::string>> rows[] = {
        {AccessAnswer::Grant, {"52 \x01The answer of Bob"}},
        {AccessAnswer::Deny, {std::string("52 \0The answer of Bob", 21)}},
        {AccessAnswer::Ask, {}},
    };
    for (const auto& [access, sent] : rows) {
        Colleague told("Bob", access, time, log, host);
        told.Receive(Bytes(31, RelayNumber(9) + RelayField("Ada", 50)));
        (void)TakeSent();
        told.Receive(Bytes(51, ""));
        EXPECT_EQ(TakeSent(), sent);
    }
    EXPECT_THAT(host.told, ElementsAre("Ada asks for access: grant or deny"));
}

TEST_F(ColleagueTest, DoesWhatThePersonAtTheTerminalSays)
{
    EXPECT_THROW((void)colleague.Control("grant"), std::invalid_argument);
    BePiped();
    EXPECT_TRUE(colleague.Control("grant"));
    EXPECT_TRUE(colleague.Control("deny"));
    EXPECT_TRUE(colleague.Control("say Hello there"));
    EXPECT_TRUE(colleague.Control("break"));
    EXPECT_FALSE(colleague.Control("send 12 on"));
    EXPECT_THAT(TakeSent(), ElementsAre("52 \x01The answer of Bob", std::string("52 \0The answer of Bob", 21),
                                        "33 Hello there", "21 " + RelayNumber(9)));
}

TEST_F(ColleagueTest, PassesFramesOnAndNoNoise)
{
    BePiped();
    auto bytes = ToBytes({12, true, false, 100});
    bytes.insert(bytes.begin(), {1, 2, 138});
    const auto frame = ToBytes({13, false, false, 1});
    bytes.insert(bytes.end(), frame.begin(), frame.begin() + 3);
    EXPECT_EQ(colleague.Write(bytes), bytes.size());
    EXPECT_THAT(TakeSent(), ElementsAre("50 " + Text({12, true, false, 100})));
    EXPECT_EQ(colleague.Write(std::span(frame).subspan(3)), 3u);
    EXPECT_THAT(TakeSent(), ElementsAre("50 " + Text({13, false, false, 1})));
}

TEST_F(ColleagueTest, TakesNothingFromTheVehicleWhileTheRelayHasNoRoom)
{
    BePiped();
    host.hasRoom = false;
    EXPECT_EQ(colleague.Write(ToBytes({12, true, false, 100})), 0u);
    EXPECT_THAT(TakeSent(), IsEmpty());
}

TEST_F(ColleagueTest, BringsMessagesToTheVehicle)
{
    BePiped();
    colleague.Receive(Bytes(50, Text({901, false, false, 3})));
    EXPECT_THAT(host.forVehicle, ElementsAre(Text({901, false, false, 3})));
}

TEST_F(ColleagueTest, NotesWhatTheRelayComplainsOf)
{
    colleague.Receive(Bytes(128, "The server is full.") + Bytes(77, "unknown"));
    EXPECT_THAT(text.str(), HasSubstr("the relay says: The server is full."));
    EXPECT_THROW(colleague.Receive("nonsense"), std::runtime_error);
}

TEST(RelayFrame, TravelsLowByteFirst)
{
    EXPECT_EQ(Bytes(0x0102, "ab"), std::string("PS\x02\x01\x02\x00"
                                               "ab",
                                               8));
    EXPECT_EQ(RelayNumber(0x01020304), "\x04\x03\x02\x01");
    EXPECT_EQ(ReadRelayNumber(RelayNumber(-5)), -5);
    std::string bad("PS\x21\x00\x00\x80", 6);
    EXPECT_THROW((void)RelayFrame::TakeFrom(bad), std::runtime_error);
}

}  // namespace
}  // namespace fenrik
