#include "link/CMessage.h"

#include "support/FakeClock.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct RawRow {
    Frame::Bytes bytes;
    const char* received;
    const char* sent;
};

class RawTexts : public testing::TestWithParam<RawRow> {};

// The two forms differ: only what is sent goes through the number format "00", which leaves a letter alone.
TEST_P(RawTexts, DifferByDirection)
{
    CMessage message;
    message.rawBytes = GetParam().bytes;
    EXPECT_EQ(message.RAW(), QString());
    message.rawForm = CMessage::RawForm::Received;
    EXPECT_EQ(message.RAW(), QString::fromLatin1(GetParam().received));
    message.rawForm = CMessage::RawForm::Sent;
    EXPECT_EQ(message.RAW(), QString::fromLatin1(GetParam().sent));
}

INSTANTIATE_TEST_SUITE_P(
    CMessage, RawTexts,
    testing::Values(RawRow{{0x00, 0xAE, 0x14, 0x00, 0x03, 0xC5}, "0.AE.14.0.3.C5", "00.AE.14.00.03.C5"},
                    RawRow{{0x00, 0xA0, 0x0A, 0x09, 0x10, 0x1E}, "0.A0.A.9.10.1E", "00.A0.A.09.10.1E"},
                    RawRow{{0x00, 0xAF, 0xFF, 0x99, 0xE1, 0x0F}, "0.AF.FF.99.E1.F", "00.AF.FF.99.E1.F"}));

TEST(CMessage, HasStampsOnceItHasPassed)
{
    CMessage message;
    message.time = FakeClock().Now();
    EXPECT_EQ(message.TimeStamp(), QString());
    EXPECT_EQ(message.DateStamp(), QString());
    message.rawForm = CMessage::RawForm::Received;
    EXPECT_EQ(message.TimeStamp(), QStringLiteral("9:05:07.25"));
    EXPECT_EQ(message.DateStamp(), QStringLiteral("2026-03-14"));
}

}  // namespace
}  // namespace fenrik
