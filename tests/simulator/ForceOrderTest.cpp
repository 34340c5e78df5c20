#include "simulator/ForceOrder.h"
#include "simulator/SimulationFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct OrderRow {
    const char* name;
    Frame frame;
    const char* note;  ///< what the log says of it
};

// One node of each form; node 16 is 0 on the wire. The early node is mounted.
constexpr const char* kNodes = "node 1 type 16 Newer\nnode 2 type 9 Channels\nnode 3 type 0 OldChannels\n"
                               "node 4 type 2 Petite\nnode 5 type 2 Early early\nnode 16 type 10 Roof\nquiet\n";

class Orders : public SimulationTest, public testing::WithParamInterface<OrderRow> {};

TEST_P(Orders, AreObeyedAndNoted)
{
    Begin(kNodes);
    Receive({905, true, false, 5});
    Receive(GetParam().frame);
    EXPECT_THAT(text.str(), HasSubstr(std::string(" -- ") + GetParam().note + '\n'));
}

INSTANTIATE_TEST_SUITE_P(
    ForceOrder, Orders,
    testing::Values(
        OrderRow{"Newer", {987, true, false, 0xC831}, "node 1 output 3 forced to 100%"},
        OrderRow{"NewerHalf", {987, true, true, 0x1831}, "node 1 output 3 forced to 12.5%"},
        OrderRow{"NewerToZero", {987, true, false, 0x0031}, "node 1 output 3 forced to 0%"},
        OrderRow{"NewerRelease", {987, false, false, 0x0031}, "node 1 output 3 released"},
        OrderRow{"NewerAboveFull", {987, true, true, 0xFE31}, "node 1 output 3 forced to 100%"},
        OrderRow{"NewerOutput31", {987, true, false, 0x65F1}, "node 1 output 31 forced to 50%"},
        OrderRow{"NewerOutput32MakesPercentsOdd", {987, true, false, 0x6601}, "node 1 output 32 forced to 51%"},
        OrderRow{"NewerReleaseOfOutput32", {987, false, false, 0x0201}, "node 1 output 32 released"},
        OrderRow{"NewerNode16IsZero", {987, true, false, 0x6420}, "node 16 output 2 forced to 50%"},
        OrderRow{"NewerOfType2", {987, true, false, 0x64C4}, "node 4 output 12 forced to 50%"},
        OrderRow{"FirstChannel", {985, true, false, 0x01A2}, "node 2 output 1 forced to 100%"},
        OrderRow{"SecondChannelHalf", {985, true, true, 0x0212}, "node 2 output 2 forced to 10.5%"},
        OrderRow{"ThirdChannel", {985, true, false, 0x0353}, "node 3 output 15 forced to 50%"},
        OrderRow{"FourthChannelRelease", {985, false, false, 0x0402}, "node 2 output 16 released"},
        OrderRow{"ChannelToZero", {985, true, false, 0x0102}, "node 2 output 1 forced to 0%"},
        OrderRow{"Early", {985, false, false, 0x4353}, "node 5 output 3 forced to 50%"},
        OrderRow{"EarlyFull", {985, false, false, 0x4CAC}, "node 5 output 12 forced to 100%"},
        OrderRow{"EarlyReleaseIsZero", {985, false, false, 0x4303}, "node 5 output 3 released"},
        OrderRow{"NobodyThere", {987, true, false, 0xC837}, "no node obeys: output 3 forced to 100%"},
        OrderRow{"OtherForm", {987, true, false, 0xC832}, "no node obeys: output 3 forced to 100%"},
        OrderRow{"NewerToAnEarlyNode", {987, true, false, 0xC835}, "no node obeys: output 3 forced to 100%"},
        OrderRow{"ChannelToANewerNode", {985, true, false, 0x01A1}, "no node obeys: output 1 forced to 100%"},
        OrderRow{"MoreOutputsThanTheModelHas", {987, true, false, 0xC8D4}, "no node obeys: output 13 forced to 100%"}),
    [](const auto& row) { return row.param.name; });

class ForcedOutputs : public SimulationTest {
protected:
    /// The mounted node's first output word.
    std::uint16_t Word()
    {
        line.bytes.clear();
        Receive({922, false, false, 0});
        RunTo(time.now + 1);
        const auto frames = line.TakeFrames();
        EXPECT_EQ(frames.size(), 1u);
        return frames.empty() ? std::uint16_t(0xFFFF) : frames[0].data;
    }

    static constexpr unsigned kOutput3 = 4;
    static constexpr Frame kForce{987, true, false, 0x6431};
    static constexpr Frame kForceToZero{987, true, false, 0x0031};
    static constexpr Frame kRelease{987, false, false, 0x0031};
};

TEST_F(ForcedOutputs, StandInTheOutputWordUntilTheyAreReleased)
{
    Begin(kNodes);
    Receive({905, true, false, 1});
    RunTo(1);
    const unsigned before = Word();
    ASSERT_EQ(before & kOutput3, 0u);
    Receive(kForce);
    EXPECT_EQ(Word(), before | kOutput3);
    Receive(kForceToZero);
    EXPECT_EQ(Word(), before);
    Receive(kForce);
    Receive(kRelease);
    EXPECT_EQ(Word(), before);
}

TEST_F(ForcedOutputs, AreAnsweredByNothing)
{
    Begin(kNodes);
    RunTo(1);
    line.bytes.clear();
    Receive(kForce);
    RunTo(2);
    EXPECT_THAT(line.TakeFrames(), IsEmpty());
}

TEST_F(ForcedOutputs, OfTheEarlyFormNeedAMount)
{
    Begin(kNodes);
    Receive({985, false, false, 0x4353});
    EXPECT_THAT(text.str(), HasSubstr("no node obeys: output 3 forced to 50%"));
}

TEST_F(ForcedOutputs, OfAnEarlyNodeBelongToItsProgramVersion)
{
    Begin(kNodes);
    Receive({905, true, false, 5});
    RunTo(1);
    line.bytes.clear();
    Receive({937, false, false, 0});
    RunTo(2);
    EXPECT_THAT(line.TakeFrames(), ElementsAre(Frame{950, false, false, 0x0102}));
}

TEST_F(ForcedOutputs, ArePushed)
{
    Begin("node 1 type 16 Newer push\nquiet\n");
    Receive({905, true, false, 1});
    Receive({921, false, true, 0});
    RunTo(1);
    line.bytes.clear();
    Receive(kForce);
    simulation->Step();
    const auto forced = line.TakeFrames();
    ASSERT_EQ(forced.size(), 1u);
    EXPECT_EQ(forced[0].command, 922);
    EXPECT_NE(forced[0].data & kOutput3, 0u);
    Receive(kForce);
    simulation->Step();
    EXPECT_THAT(line.TakeFrames(), IsEmpty());
    Receive(kRelease);
    simulation->Step();
    EXPECT_THAT(line.TakeFrames(), ElementsAre(Frame{922, false, false, std::uint16_t(forced[0].data & ~kOutput3)}));
}

TEST_F(ForcedOutputs, AreLetGoByARestart)
{
    Begin(kNodes);
    Receive({905, true, false, 1});
    Receive(kForce);
    Control("restart 1");
    Receive({905, true, false, 1});
    RunTo(1);
    EXPECT_EQ(Word() & kOutput3, 0u);
}

TEST_F(ForcedOutputs, OfASilentNodeAreNot)
{
    Begin(kNodes);
    Control("silent node 1");
    Receive(kForce);
    EXPECT_THAT(text.str(), HasSubstr("no node obeys: output 3 forced to 50%"));
}

struct FrameRow {
    const char* name;
    Frame frame;
};

class NoOrders : public SimulationTest, public testing::WithParamInterface<FrameRow> {};

TEST_P(NoOrders, AreNotNoted)
{
    Begin(kNodes);
    Receive({905, true, false, 5});
    Receive(GetParam().frame);
    EXPECT_THAT(text.str(), Not(HasSubstr("output")));
}

INSTANTIATE_TEST_SUITE_P(ForceOrder, NoOrders,
                         testing::Values(FrameRow{"ChannelZero", {985, true, false, 0x00A2}},
                                         FrameRow{"ChannelFive", {985, true, false, 0x05A2}},
                                         FrameRow{"EarlyOutputZero", {985, false, false, 0x4050}},
                                         FrameRow{"AnotherCommand", {986, true, false, 0xC831}}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
