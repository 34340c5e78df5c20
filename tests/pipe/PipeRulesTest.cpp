#include "pipe/PipeRules.h"

#include <gmock/gmock.h>

namespace fenrik {
namespace {

using enum PipeDirection;
using enum PipeFrameType;

struct LengthRow {
    PipeDirection direction;
    PipeFrameType type;
    std::vector<std::size_t> good;
    std::vector<std::size_t> bad;
};

class PipeLengths : public testing::TestWithParam<LengthRow> {};

TEST_P(PipeLengths, AreJudgedByTypeAndDirection)
{
    const auto* rule = FindPipeRule(GetParam().direction, GetParam().type);
    ASSERT_NE(rule, nullptr);
    for (const auto length : GetParam().good)
        EXPECT_TRUE(rule->Fits(length)) << rule->name << ' ' << length;
    for (const auto length : GetParam().bad)
        EXPECT_FALSE(rule->Fits(length)) << rule->name << ' ' << length;
}

INSTANTIATE_TEST_SUITE_P(
    PipeRules, PipeLengths,
    testing::Values(
        LengthRow{ToServer, frameEchoServer, {0, 32, 32767}, {32768}},
        LengthRow{ToServer, frameAuthenticate, {165}, {0, 164, 166}}, LengthRow{ToServer, frameLogoff, {4}, {0, 3, 5}},
        LengthRow{ToServer, frameUserListRequest, {0}, {1}}, LengthRow{ToServer, framePipeTo, {4}, {0, 5}},
        LengthRow{ToServer, frameBreakPipe, {4}, {0, 5}}, LengthRow{ToServer, frameNetworkMessage, {6}, {0, 5, 7, 12}},
        LengthRow{ToServer, frameBussAccessRequest, {4}, {0}}, LengthRow{ToServer, frameBussAccessReply, {1, 20}, {0}},
        LengthRow{ToServer, frameServerInfoRequest, {0}, {1}}, LengthRow{ToClient, frameAuthenticated, {4, 20}, {3}},
        LengthRow{ToClient, frameUserList, {0, 79, 32706}, {78, 80}}, LengthRow{ToClient, framePiped, {54, 60}, {53}},
        LengthRow{ToClient, framePipeBroken, {54, 60}, {53}}, LengthRow{ToClient, frameBussAccessRequest, {0}, {4}},
        LengthRow{ToClient, frameBussAccessReply, {1}, {0}}, LengthRow{ToClient, frameReserved53, {0}, {1}}));

TEST(PipeRules, KnowWhichWayATypeGoes)
{
    for (const auto type : {frameAuthenticated, frameUserList, framePiped, framePipeBroken, frameUserListChanged,
                            frameReserved53, frameServerInfo, frameServerError, frameFramingError})
        EXPECT_EQ(FindPipeRule(ToServer, type), nullptr) << int(type);
    for (const auto type : {frameEchoServer, frameAuthenticate, frameLogoff, frameUserListRequest, framePipeTo,
                            frameBreakPipe, frameServerInfoRequest})
        EXPECT_EQ(FindPipeRule(ToClient, type), nullptr) << int(type);
    EXPECT_EQ(FindPipeRule(ToServer, PipeFrameType(4)), nullptr);
    EXPECT_EQ(FindPipeRule(ToClient, PipeFrameType(-1)), nullptr);
}

TEST(PipeRules, NameEveryTypeThatTheyKnow)
{
    EXPECT_EQ(PipeTypeName(frameChat), "frameChat");
    EXPECT_EQ(PipeTypeName(frameServerError), "frameServerError");
    EXPECT_EQ(PipeTypeName(PipeFrameType(200)), "frame 200");
}

}  // namespace
}  // namespace fenrik
