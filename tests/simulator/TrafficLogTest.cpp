#include "simulator/TrafficLog.h"
#include "simulator/Fixtures.h"

#include <gtest/gtest.h>
#include <sstream>

namespace fenrik {
namespace {

class TrafficLogTest : public testing::Test {
protected:
    FakeTime time;
    std::ostringstream out;
    TrafficLog log{time, &out};
};

TEST_F(TrafficLogTest, AFrameIsShownWithItsBytesAndFields)
{
    time.now = 1.234;
    const auto bytes = ToBytes({901, false, false, 3});
    log.Bytes("RX", bytes, TrafficLog::Describe(bytes, "unparsed"));
    EXPECT_EQ(out.str(), "   1.234 RX 00 AE 14 00 03 C5  901 state=0 ext=0 data=3\n");
}

TEST_F(TrafficLogTest, BytesThatAreNoFrameAreShownWithAWord)
{
    const ByteList bytes{0x12, 0xFF};
    log.Bytes("RX", bytes, TrafficLog::Describe(bytes, "unparsed"));
    EXPECT_EQ(out.str(), "   0.000 RX 12 FF  unparsed\n");
}

TEST_F(TrafficLogTest, ANoteStandsOnALineOfItsOwn)
{
    time.now = 12345.6789;
    log.Note("port opened");
    EXPECT_EQ(out.str(), "12345.679 -- port opened\n");
}

TEST_F(TrafficLogTest, WithoutAFileNothingIsWritten)
{
    TrafficLog none(time, nullptr);
    EXPECT_NO_THROW(none.Note("unheard"));
    EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace fenrik
