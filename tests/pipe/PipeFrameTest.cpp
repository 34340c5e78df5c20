#include "pipe/PipeFrame.h"

#include <gmock/gmock.h>
#include <limits>
#include <stdexcept>

namespace fenrik {
namespace {

TEST(PipeFrame, TravelsLowByteFirst)
{
    EXPECT_EQ(EncodePipeFrame(PipeFrameType::frameChat, "Hi"), std::string("\x50\x53\x21\x00\x02\x00Hi", 8));
    EXPECT_EQ(EncodePipeFrame(PipeFrameType::frameServerError, ""), std::string("\x50\x53\x80\x00\x00\x00", 6));
}

TEST(PipeFrame, OfTheGreatestLengthStillTravels)
{
    const auto bytes = EncodePipeFrame(PipeFrameType::frameChat, std::string(32767, 'x'));
    EXPECT_EQ(bytes.size(), 32773u);
    EXPECT_EQ(bytes.substr(4, 2), "\xFF\x7F");
}

TEST(PipeFrame, ThatIsTooLongIsRefusedWhole)
{
    std::string out = "kept";
    EXPECT_THROW(AppendPipeFrame(out, PipeFrameType::frameChat, std::string(32768, 'x')), std::length_error);
    EXPECT_EQ(out, "kept");
}

TEST(PipeNumber, IsSignedAndTravelsLowByteFirst)
{
    EXPECT_EQ(PipeNumber(0x01020304), "\x04\x03\x02\x01");
    for (const auto value :
         {0, 1, -1, 255, 256, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()})
        EXPECT_EQ(ReadPipeNumber(PipeNumber(value)), value);
}

TEST(PipeNumber, CountsBytesThatAreNotThereAsZero)
{
    EXPECT_EQ(ReadPipeNumber("\x01\x02", 1), 2);
    EXPECT_EQ(ReadPipeNumber("", 0), 0);
    EXPECT_EQ(ReadPipeNumber("abcd", 9), 0);
}

TEST(PipeField, IsFilledWithBlanksOrCutOnTheRight)
{
    EXPECT_EQ(PipeField("Ada", 5), "Ada  ");
    EXPECT_EQ(PipeField("Ada", 3), "Ada");
    EXPECT_EQ(PipeField("Ada", 2), "Ad");
    EXPECT_EQ(PipeField("", 2), "  ");
}

TEST(PipeText, IsTrimmedOfBlanksAlone)
{
    EXPECT_EQ(TrimmedPipeText("  a b  "), "a b");
    EXPECT_EQ(TrimmedPipeText("   "), "");
    EXPECT_EQ(TrimmedPipeText("\ta\t"), "\ta\t");
}

}  // namespace
}  // namespace fenrik
