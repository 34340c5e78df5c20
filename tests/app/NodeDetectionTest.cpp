#include "NodeDiscoveryFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Detection -----------------------------------------------------------------------------------------------------

TEST_F(NodeDiscoveryTest, NothingIsDetectedWithoutAPort)
{
    remote.state = 5;
    discovery.DetectNodes();
    EXPECT_THAT(network.sent, IsEmpty());
    EXPECT_THAT(window.states, IsEmpty());
    EXPECT_THAT(window.messages, IsEmpty());
}

TEST_F(NodeDiscoveryTest, EachNodeOfTheSystemIsPingedOnce)
{
    Populate({3, 7});
    discovery.DetectNodes();
    // Eight nodes and no ninth.
    EXPECT_THAT(network.sent,
                ElementsAre("901 0 1", "901 0 2", "901 0 3", "901 0 4", "901 0 5", "901 0 6", "901 0 7", "901 0 8"));
    EXPECT_THAT(ActiveNodes(), ElementsAre(3, 7));
    EXPECT_THAT(window.states, ElementsAre(8, 4));
    EXPECT_THAT(window.messages, ElementsAre("Detecting Active Nodes . . .", "Nodes Detected"));
    EXPECT_EQ(window.refreshes, 1);
    EXPECT_THAT(window.clicks, ElementsAre(3)) << "the first that answered";
    EXPECT_FALSE(discovery.Detecting());
}

TEST_F(NodeDiscoveryTest, PingsAndTheirRepliesAreShown)
{
    settings.NodesInSystem = 1;
    system.LoadSystem({}, {}, false);
    Populate({1});
    discovery.DetectNodes();
    EXPECT_THAT(network.shown, ElementsAre(901, 902));
}

TEST_F(NodeDiscoveryTest, ASilentNetworkHasNoNodes)
{
    system.ActivateNode(2);
    discovery.DetectNodes();
    EXPECT_THAT(ActiveNodes(), IsEmpty()) << "what was known before is forgotten";
    EXPECT_THAT(window.messages, ElementsAre("Detecting Active Nodes . . .", "Nodes Not Detected"));
    EXPECT_THAT(window.clicks, IsEmpty());
}

TEST_F(NodeDiscoveryTest, TheEarlierSelectionIsKeptIfTheNodeStillAnswers)
{
    system.ActivateNode(7);
    system.SelectNode(7);
    Populate({3, 7});
    discovery.DetectNodes();
    EXPECT_THAT(window.clicks, ElementsAre(7));
    EXPECT_EQ(system.SelectedNodeNumber(), 7);
}

TEST_F(NodeDiscoveryTest, ASelectedNodeThatIsGoneGivesWayToTheFirstThatAnswers)
{
    system.ActivateNode(7);
    system.SelectNode(7);
    Populate({5, 6});
    discovery.DetectNodes();
    EXPECT_EQ(system.SelectedNodeNumber(), 5);
}

TEST_F(NodeDiscoveryTest, EscapeEndsTheDetectionAtOnce)
{
    network.answer = [this](const Frame& frame) -> std::optional<Frame> {
        if (frame.data == 2)
            pump.After(0.3, [this] { discovery.RequestCancel(); });
        return frame.data == 1 ? std::optional(PingReply(1)) : std::nullopt;
    };
    const Moment start = clock.Now();
    discovery.DetectNodes();
    EXPECT_THAT(network.sent, ElementsAre("901 0 1", "901 0 2"));
    EXPECT_LT(clock.Now().milliseconds - start.milliseconds, 1000);
    EXPECT_EQ(window.messages.back(), "Nodes Detected");
    EXPECT_THAT(window.states, ElementsAre(8, 4));
}

TEST_F(NodeDiscoveryTest, AnEarlierEscapeDoesNotEndTheNextDetection)
{
    discovery.RequestCancel();
    discovery.DetectNodes();
    EXPECT_THAT(network.sent, SizeIs(8));
}

TEST_F(NodeDiscoveryTest, AnotherDetectionInsideOneDoesNothing)
{
    network.answer = [this](const Frame&) -> std::optional<Frame> {
        EXPECT_TRUE(discovery.Detecting());
        discovery.DetectNodes();
        return std::nullopt;
    };
    discovery.DetectNodes();
    EXPECT_THAT(network.sent, SizeIs(8));
}

TEST_F(NodeDiscoveryTest, APortThatGoesAwayEndsTheDetectionWithoutAWord)
{
    network.answer = [this](const Frame&) -> std::optional<Frame> {
        pump.After(0.1, [this] { remote.state = 1; });
        return std::nullopt;
    };
    discovery.DetectNodes();
    EXPECT_THAT(network.sent, SizeIs(1));
    EXPECT_THAT(window.messages, ElementsAre("Detecting Active Nodes . . ."));
    EXPECT_THAT(window.states, ElementsAre(8, 4));
}

TEST_F(NodeDiscoveryTest, AClosingWindowEndsTheDetectionAndIsNotTouchedAgain)
{
    network.answer = [this](const Frame&) -> std::optional<Frame> {
        pump.After(0.1, [this] { pump.Stop(); });
        return std::nullopt;
    };
    discovery.DetectNodes();
    EXPECT_THAT(network.sent, SizeIs(1));
    EXPECT_THAT(window.states, ElementsAre(8));
}

// --- Replies to pings ----------------------------------------------------------------------------------------------

struct PingRow {
    const char* name;
    int pinged;
    int data;
    int result;
    const char* message;
};

class PingReplies : public NodeDiscoveryTest, public testing::WithParamInterface<PingRow> {};

TEST_P(PingReplies, AreTakenByWhatTheySay)
{
    const PingRow& row = GetParam();
    EXPECT_EQ(discovery.HandlePingResponse(row.pinged, row.data), row.result);
    EXPECT_EQ(ActiveNodes(), row.result ? std::vector{row.result} : std::vector<int>());
    if (*row.message)
        EXPECT_THAT(window.messages, ElementsAre(row.message));
    else
        EXPECT_THAT(window.messages, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(NodeDiscovery, PingReplies,
                         testing::Values(PingRow{"TheNodeItself", 4, 4, 4, ""},
                                         PingRow{"AnotherNodeActivatesTheNumberItGave", 4, 6, 6, ""},
                                         PingRow{"TheWordForThePingedOne", 4, 12345, 4, ""},
                                         PingRow{"TheFirst", 4, 1, 1, ""}, PingRow{"TheLast", 4, 8, 8, ""},
                                         PingRow{"BeyondTheSystem", 4, 9, 0, "Invalid reply from Node 4 Ping. "},
                                         PingRow{"Zero", 4, 0, 0, "Invalid reply from Node 4 Ping. "},
                                         PingRow{"SeenInTheTraffic", 0, 5, 5, ""},
                                         PingRow{"SeenInTheTrafficOutOfRange", 0, 9, 0, ""},
                                         PingRow{"TheWordForThePingedOneInTheTraffic", 0, 12345, 0, ""}),
                         [](const auto& test) { return test.param.name; });

TEST_F(NodeDiscoveryTest, APingTriesTwice)
{
    EXPECT_FALSE(discovery.PingNode(3));
    EXPECT_THAT(network.sent, ElementsAre("901 0 3", "901 0 3"));
    EXPECT_THAT(network.shown, ElementsAre(901, 901));
}

TEST_F(NodeDiscoveryTest, AnAnsweredPingActivatesTheNode)
{
    Populate({3});
    EXPECT_TRUE(discovery.PingNode(3));
    EXPECT_THAT(ActiveNodes(), ElementsAre(3));
}

}  // namespace
}  // namespace fenrik
