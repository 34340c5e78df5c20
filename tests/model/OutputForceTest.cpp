#include "model/OutputForce.h"

#include "link/LinkFixture.h"
#include "model/CSystem.h"
#include "model/NodeLink.h"
#include "platform/Error.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"

#include <limits>
#include <string>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct RoundedLevel {
    float value;
    bool release;
    int percent;
    int half;
};

class RoundedLevels : public testing::TestWithParam<RoundedLevel> {};

TEST_P(RoundedLevels, GoToTheNearestHalf)
{
    const ForceLevel level = ForceLevel::FromPercent(GetParam().value);
    EXPECT_EQ(level.release, GetParam().release);
    EXPECT_EQ(level.percent, GetParam().percent);
    EXPECT_EQ(level.half, GetParam().half);
}

INSTANTIATE_TEST_SUITE_P(Force, RoundedLevels,
                         testing::Values(RoundedLevel{12.3F, false, 12, 1}, RoundedLevel{12.8F, false, 13, 0},
                                         RoundedLevel{12.1F, false, 12, 0}, RoundedLevel{12.25F, false, 12, 1},
                                         RoundedLevel{12.75F, false, 13, 0}, RoundedLevel{99.8F, false, 100, 0},
                                         RoundedLevel{99.5F, false, 99, 1}, RoundedLevel{100, false, 100, 0},
                                         RoundedLevel{100.3F, false, 100, 0}, RoundedLevel{1e9F, false, 100, 0},
                                         RoundedLevel{0, false, 0, 0}, RoundedLevel{0.2F, false, 0, 0},
                                         RoundedLevel{0.3F, false, 0, 1}, RoundedLevel{-0.1F, true, 0, 0},
                                         RoundedLevel{-1, true, 0, 0}, RoundedLevel{-1e9F, true, 0, 0}));

TEST(ForceLevel, NoNumberIsAnOverflow)
{
    EXPECT_THROW((void)ForceLevel::FromPercent(std::numeric_limits<float>::quiet_NaN()), Error);
}

struct ForceFrame {
    const char* name;
    ForceTarget target;
    float value;
    const char* frame;  ///< command, state, extended, data
};

class ForceFrames : public testing::TestWithParam<ForceFrame> {};

TEST_P(ForceFrames, AreAsTheNodesKnowThem)
{
    const CMessage message = GetParam().target.Message(ForceLevel::FromPercent(GetParam().value));
    const std::string frame = std::to_string(message.Command) + ' ' + std::to_string(message.State) + ' ' +
                              std::to_string(message.extended) + " 0x" +
                              QString::number(message.data, 16).toStdString();
    EXPECT_EQ(frame, GetParam().frame);
    EXPECT_TRUE(message.EchoSend);
    EXPECT_EQ(message.ReplyCommand, 0);
}

constexpr auto kBrontes = ForceTarget::Way::Brontes;
constexpr auto kNewer = ForceTarget::Way::Newer;
constexpr auto kOlder = ForceTarget::Way::Older;

INSTANTIATE_TEST_SUITE_P(
    Force, ForceFrames,
    testing::Values(ForceFrame{"BrontesFull", {kBrontes, 3, 1}, 100, "985 1 0 0x1a3"},
                    ForceFrame{"BrontesHalfStep", {kBrontes, 3, 2}, 12.3F, "985 1 1 0x213"},
                    ForceFrame{"BrontesChannel3", {kBrontes, 3, 15}, 50, "985 1 0 0x353"},
                    ForceFrame{"BrontesChannel4", {kBrontes, 3, 16}, 50, "985 1 0 0x453"},
                    ForceFrame{"BrontesRelease", {kBrontes, 3, 15}, -1, "985 0 0 0x303"},
                    ForceFrame{"BrontesRounded", {kBrontes, 0, 1}, 37, "985 1 0 0x13b"},  // 59.2
                    ForceFrame{"NewerFull", {kNewer, 3, 5}, 100, "987 1 0 0xc853"},
                    ForceFrame{"NewerOddPercent", {kNewer, 3, 5}, 37, "987 1 0 0x4a53"},
                    ForceFrame{"NewerZeroPercent", {kNewer, 3, 5}, 0, "987 1 0 0x53"},
                    ForceFrame{"NewerHalfStep", {kNewer, 3, 5}, 99.5F, "987 1 1 0xc653"},
                    ForceFrame{"NewerRelease", {kNewer, 3, 5}, -1, "987 0 0 0x53"},
                    // Channel 32 reaches into the percents, and node 16 loses its fifth bit.
                    ForceFrame{"NewerChannel32", {kNewer, 1, 32}, 10, "987 1 0 0x1601"},
                    ForceFrame{"NewerChannel32OddPercent", {kNewer, 1, 32}, 11, "987 1 0 0x1601"},
                    ForceFrame{"NewerNode16", {kNewer, 16, 1}, 10, "987 1 0 0x1410"},
                    ForceFrame{"NewerNode31", {kNewer, 31, 1}, 10, "987 1 0 0x141f"},
                    ForceFrame{"OlderFull", {kOlder, 3, 5}, 100, "985 0 0 0x45a5"},
                    ForceFrame{"OlderRoundsDownToTens", {kOlder, 3, 5}, 37.5F, "985 0 0 0x4535"},
                    ForceFrame{"OlderBelowTen", {kOlder, 3, 5}, 9, "985 0 0 0x4505"},
                    ForceFrame{"OlderRelease", {kOlder, 3, 5}, -1, "985 0 0 0x4505"},
                    ForceFrame{"OlderHasTheOutputWhereOthersHaveTheNode", {kOlder, 16, 12}, 50, "985 0 0 0x4c5c"}),
    [](const auto& row) { return row.param.name; });

TEST(ForceTarget, FirstGenerationForcesFourOutputsOnly)
{
    for (int output = 1; output <= 26; ++output) {
        const int channel = output == 1 ? 1 : output == 2 ? 2 : output == 15 ? 3 : output == 16 ? 4 : 0;
        EXPECT_EQ((ForceTarget{kBrontes, 1, output}.Channel()), channel) << output;
    }
}

/// A system behind a real link engine whose frames are kept.
class OutputValueTest : public LinkTest {
protected:
    OutputValueTest()
    {
        system.setLink(&link);
        system.setNodesInSystem(16);
    }

    COutput& Output(int node, int type, int number)
    {
        system.Node(node)->setTypeID(std::int16_t(type));
        return system.Node(node)->COutputs()[number];
    }

    Settings settings;
    CSystem system{settings, QStringLiteral("/nowhere")};
    BoxRecorder boxes;
    NodeLink link{handler, pump, commands, boxes, errors};
};

TEST_F(OutputValueTest, ForceSendsAndMarksTheOutput)
{
    COutput& output = Output(3, 16, 5);
    output.setResolved(true);
    output.setValue(12.3F);
    ASSERT_THAT(host.shown, SizeIs(1));
    EXPECT_EQ(host.shown[0].Command, 987);
    EXPECT_EQ(host.shown[0].data, 0x1853);
    EXPECT_TRUE(output.Override());
    EXPECT_TRUE(output.Resolved());
    EXPECT_EQ(output.Value(), 12.5);
}

TEST_F(OutputValueTest, ReleaseClearsLevelAndMark)
{
    COutput& output = Output(3, 9, 15);
    output.setValue(60);
    output.setValue(-1);
    ASSERT_THAT(host.shown, SizeIs(2));
    EXPECT_EQ(host.shown[1].data, 0x303);
    EXPECT_EQ(output.State(), 0);
}

TEST_F(OutputValueTest, ZeroPercentIsNoRelease)
{
    COutput& output = Output(3, 16, 5);
    output.setValue(0);
    EXPECT_TRUE(output.Override());
    EXPECT_EQ(output.Value(), 0);
}

TEST_F(OutputValueTest, OutputThatCannotBeForcedStaysAsItIs)
{
    COutput& output = Output(3, 0, 3);
    output.setValue(50);
    EXPECT_THAT(host.shown, IsEmpty());
    EXPECT_EQ(output.State(), 0);
}

TEST_F(OutputValueTest, OlderVersionKnowsTensOnly)
{
    COutput& output = Output(3, 2, 5);
    system.Node(3)->setOsMajVersion(1);
    system.Node(3)->setOsMinVersion(2);
    output.setValue(37);
    ASSERT_THAT(host.shown, SizeIs(1));
    EXPECT_EQ(host.shown[0].Command, 985);
    EXPECT_EQ(host.shown[0].data, 0x4535);
    EXPECT_EQ(output.Value(), 30);
    EXPECT_TRUE(output.Override());
}

TEST_F(OutputValueTest, OlderVersionTakesZeroPercentForARelease)
{
    COutput& output = Output(3, 2, 5);
    system.Node(3)->setOsMajVersion(1);
    system.Node(3)->setOsMinVersion(2);
    output.setValue(50);
    output.setValue(0);
    EXPECT_FALSE(output.Override());
    EXPECT_EQ(output.Value(), 0);
}

TEST_F(OutputValueTest, NodeThatIsNotMountedIsForcedAllTheSame)
{
    ASSERT_EQ(system.MountedNode(), nullptr);
    Output(16, 16, 32).setValue(11);
    ASSERT_THAT(host.shown, SizeIs(1));
    EXPECT_EQ(host.shown[0].data, 0x1600);
}

TEST_F(OutputValueTest, ClosedPortStillMarksTheOutput)
{
    host.open = false;
    COutput& output = Output(3, 16, 5);
    output.setValue(100);
    EXPECT_THAT(host.shown, IsEmpty());
    EXPECT_TRUE(output.Override());
}

TEST_F(OutputValueTest, ErrorGoesToTheReport)
{
    COutput& output = Output(3, 16, 5);
    output.setValue(std::numeric_limits<float>::quiet_NaN());
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("COutput:Value:Let"));
    EXPECT_EQ(output.State(), 0);
}

TEST_F(OutputValueTest, OutputThatGoesWhileTheCommandIsSentIsLeftAlone)
{
    COutput& output = Output(3, 16, 5);
    host.onDisplay = [this] { system.Node(3)->setTypeID(10); };
    output.setValue(50);
    EXPECT_THAT(host.shown, SizeIs(1));
    EXPECT_EQ(system.Node(3)->COutputs()[5].State(), 0);
}

}  // namespace
}  // namespace fenrik
