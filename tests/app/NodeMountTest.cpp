#include "NodeDiscoveryFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Mounting ------------------------------------------------------------------------------------------------------

TEST_F(NodeDiscoveryTest, AMountIsRecordedAndTold)
{
    Populate({3});
    system.Node(3)->setName("Rear Body");
    EXPECT_TRUE(discovery.MountNode(3));
    EXPECT_THAT(network.sent, ElementsAre("905 1 3"));
    EXPECT_THAT(network.shown, ElementsAre(905, 903));
    EXPECT_EQ(system.MountedNodeNumber(), 3);
    EXPECT_THAT(window.messages, ElementsAre("Node 3 Mounted Rear Body"));
    EXPECT_THAT(window.states, ElementsAre(8, 4));
    EXPECT_EQ(discovery.lastnode(), 0);
}

TEST_F(NodeDiscoveryTest, NothingIsMountedWithoutAPort)
{
    remote.state = 4;
    EXPECT_FALSE(discovery.MountNode(3));
    EXPECT_THAT(window.states, IsEmpty());
}

TEST_F(NodeDiscoveryTest, ABusyWindowStaysBusyAfterAMount)
{
    Populate({3});
    window.ready = false;
    EXPECT_TRUE(discovery.MountNode(3));
    EXPECT_THAT(window.states, IsEmpty());
}

struct MountRow {
    const char* name;
    bool state;
    int data;
    bool mounted;
};

class MountReplies : public NodeDiscoveryTest, public testing::WithParamInterface<MountRow> {};

TEST_P(MountReplies, DecideOnTheMount)
{
    const MountRow& row = GetParam();
    network.answer = [&row](const Frame&) { return Acknowledge(row.state, row.data); };
    EXPECT_EQ(discovery.MountNode(3), row.mounted);
    EXPECT_EQ(system.MountedNodeNumber(), row.mounted ? 3 : 0);
    EXPECT_EQ(discovery.lastnode(), row.mounted ? 0 : 3);
    EXPECT_EQ(window.messages.back(), row.mounted ? "Node 3 Mounted " : "Unable to mount Node 3");
}

INSTANTIATE_TEST_SUITE_P(NodeDiscovery, MountReplies,
                         testing::Values(MountRow{"TheNode", true, 3, true}, MountRow{"NoNumber", true, 0, true},
                                         MountRow{"StateZeroIsAFailure", false, 3, false},
                                         MountRow{"AnotherNodeIsAFailure", true, 4, false}),
                         [](const auto& test) { return test.param.name; });

TEST_F(NodeDiscoveryTest, AMountWithoutAnAnswerIsTriedThreeTimes)
{
    EXPECT_FALSE(discovery.MountNode(3));
    EXPECT_THAT(network.sent, ElementsAre("905 1 3", "905 1 3", "905 1 3"));
    EXPECT_THAT(window.messages, ElementsAre("Unable to mount Node 3"));
    EXPECT_EQ(discovery.lastnode(), 3);
}

TEST_F(NodeDiscoveryTest, ANodeWhoseMountFailedIsFreedBeforeTheNextMount)
{
    Populate({4});
    EXPECT_FALSE(discovery.MountNode(3));
    network.sent.clear();
    EXPECT_TRUE(discovery.MountNode(4));
    EXPECT_THAT(network.sent, ElementsAre("905 0 3", "905 1 4"));
}

TEST_F(NodeDiscoveryTest, TheSameNodeIsNotFreedBeforeItsNextMount)
{
    EXPECT_FALSE(discovery.MountNode(3));
    Populate({3});
    network.sent.clear();
    EXPECT_TRUE(discovery.MountNode(3));
    EXPECT_THAT(network.sent, ElementsAre("905 1 3"));
}

TEST_F(NodeDiscoveryTest, AnotherMountedNodeIsUnmountedFirst)
{
    Populate({3, 4});
    discovery.MountNode(3);
    network.sent.clear();
    EXPECT_TRUE(discovery.MountNode(4));
    EXPECT_THAT(network.sent, ElementsAre("905 0 3", "905 1 4"));
    EXPECT_EQ(system.MountedNodeNumber(), 4);
}

TEST_F(NodeDiscoveryTest, ANodeThatWillNotLetGoKeepsTheMount)
{
    Populate({3, 4});
    discovery.MountNode(3);
    Populate({4});
    EXPECT_FALSE(discovery.MountNode(4));
    EXPECT_EQ(system.MountedNodeNumber(), 3);
    EXPECT_EQ(window.messages.back(), "Unable to mount Node 4");
}

TEST_F(NodeDiscoveryTest, APortLostInsideAMountIsNotBlamedOnTheNode)
{
    network.answer = [this](const Frame&) -> std::optional<Frame> {
        pump.After(0.1, [this] { remote.state = 1; });
        return std::nullopt;
    };
    EXPECT_FALSE(discovery.MountNode(3));
    EXPECT_THAT(network.sent, SizeIs(1));
    EXPECT_THAT(window.messages, IsEmpty());
    EXPECT_THAT(window.states, ElementsAre(8, 4));
}

// --- Unmounting ----------------------------------------------------------------------------------------------------

TEST_F(NodeDiscoveryTest, AnUnmountIsRecordedAndTold)
{
    Populate({3});
    discovery.MountNode(3);
    window.messages.clear();
    EXPECT_TRUE(discovery.UnmountNode(3));
    EXPECT_EQ(system.MountedNodeNumber(), 0);
    EXPECT_THAT(window.messages, ElementsAre("Node 3 Unmounted"));
    EXPECT_EQ(window.resets, 1);
}

TEST_F(NodeDiscoveryTest, AnUnmountAcceptsAnAcknowledgeOfAnyState)
{
    Populate({3});
    discovery.MountNode(3);
    network.answer = [](const Frame&) { return Acknowledge(true, 7); };
    EXPECT_TRUE(discovery.UnmountNode(3));
    EXPECT_EQ(system.MountedNodeNumber(), 0);
}

TEST_F(NodeDiscoveryTest, WithoutAReplyTheNodeStaysMounted)
{
    Populate({3});
    discovery.MountNode(3);
    Populate({});
    network.sent.clear();
    EXPECT_FALSE(discovery.UnmountNode(3));
    EXPECT_THAT(network.sent, ElementsAre("905 0 3", "905 0 3", "905 0 3"));
    EXPECT_EQ(system.MountedNodeNumber(), 3);
    EXPECT_EQ(window.messages.back(), "Unable to release mount on Node 3");
}

TEST_F(NodeDiscoveryTest, WithoutAPortOnlyTheRecordOfTheMountIsDropped)
{
    Populate({3});
    discovery.MountNode(3);
    network.sent.clear();
    remote.state = 1;
    EXPECT_FALSE(discovery.UnmountNode(3));
    EXPECT_EQ(system.MountedNodeNumber(), 0);
    EXPECT_EQ(window.resets, 1);
    EXPECT_THAT(network.sent, IsEmpty());
}

TEST_F(NodeDiscoveryTest, UnmountingTheDoubtfulNodeClearsTheDoubt)
{
    discovery.MountNode(3);
    ASSERT_EQ(discovery.lastnode(), 3);
    discovery.UnmountNode(3);
    EXPECT_EQ(discovery.lastnode(), 0);
}

}  // namespace
}  // namespace fenrik
