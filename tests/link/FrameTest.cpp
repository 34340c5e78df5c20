#include "link/Frame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;

struct FrameRow {
    const char* name;
    Frame frame;
    Frame::Bytes bytes;
};

class Frames : public testing::TestWithParam<FrameRow> {};

TEST_P(Frames, TravelAsTheirBytes)
{
    EXPECT_EQ(GetParam().frame.Encode(), GetParam().bytes);
    const auto decoded = Frame::Decode(GetParam().bytes);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->command, GetParam().frame.command);
    EXPECT_EQ(decoded->state, GetParam().frame.state);
    EXPECT_EQ(decoded->extended, GetParam().frame.extended);
    EXPECT_EQ(decoded->data, GetParam().frame.data);
}

INSTANTIATE_TEST_SUITE_P(
    Frame, Frames,
    testing::Values(FrameRow{"Ping", {901, false, false, 3}, {0x00, 0xAE, 0x14, 0x00, 0x03, 0xC5}},
                    FrameRow{"Empty", {0, false, false, 0}, {0x00, 0xA0, 0x00, 0x00, 0x00, 0xA0}},
                    FrameRow{"LowestCommand", {1, false, false, 0}, {0x00, 0xA0, 0x04, 0x00, 0x00, 0xA4}},
                    FrameRow{"State", {1, true, false, 0}, {0x00, 0xA0, 0x06, 0x00, 0x00, 0xA6}},
                    FrameRow{"Extended", {1, false, true, 0}, {0x00, 0xA0, 0x05, 0x00, 0x00, 0xA5}},
                    FrameRow{"AllOnes", {1023, true, true, 0xFFFF}, {0x00, 0xAF, 0xFF, 0xFF, 0xFF, 0xAC}},
                    FrameRow{"SumOfZero", {0, false, false, 0x5A06}, {0x00, 0xA0, 0x00, 0x5A, 0x06, 0x00}}),
    [](const auto& row) { return row.param.name; });

TEST(Frame, EveryCommandComesBack)
{
    for (unsigned command = 0; command < 1024; ++command) {
        const auto frame = Frame::Decode(Frame{std::uint16_t(command), false, true, 0x1234}.Encode());
        ASSERT_TRUE(frame);
        EXPECT_EQ(frame->command, command);
    }
}

struct NoFrameRow {
    const char* name;
    Frame::Bytes bytes;
};

class NoFrames : public testing::TestWithParam<NoFrameRow> {};

TEST_P(NoFrames, AreNotDecoded)
{
    EXPECT_FALSE(Frame::Decode(GetParam().bytes));
}

INSTANTIATE_TEST_SUITE_P(Frame, NoFrames,
                         testing::Values(NoFrameRow{"FirstByte", {0x01, 0xAE, 0x14, 0x00, 0x03, 0xC5}},
                                         NoFrameRow{"Mark", {0x00, 0xBE, 0x14, 0x00, 0x03, 0xD5}},
                                         NoFrameRow{"Sum", {0x00, 0xAE, 0x14, 0x00, 0x03, 0xC6}},
                                         NoFrameRow{"Zeros", {0x00, 0x00, 0x00, 0x00, 0x00, 0x00}}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
