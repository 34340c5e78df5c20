#include "app/NodeDiscovery.h"

#include "AppFixture.h"
#include "model/CSystem.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WindowRecorder : public DiscoveryHost {
public:
    void SetUIState(int state) override
    {
        states.push_back(state);
        if (state == 4 || state == 8)
            ready = state == 4;
    }
    [[nodiscard]] bool IsReady() const override { return ready; }
    void ShowMessage(const QString& text) override { messages.push_back(text.toStdString()); }
    void RefreshNodeActions() override { ++refreshes; }
    void ClickNode(int number) override
    {
        clicks.push_back(number);
        system->SelectNode(std::uint8_t(number));
    }
    void ResetStates() override { ++resets; }

    CSystem* system = nullptr;
    std::vector<int> states;
    bool ready = true;
    std::vector<std::string> messages;
    int refreshes = 0;
    std::vector<int> clicks;
    int resets = 0;
};

Frame PingReply(int data)
{
    return {902, false, false, std::uint16_t(data)};
}

Frame Acknowledge(bool state, int data)
{
    return {903, state, false, std::uint16_t(data)};
}

class NodeDiscoveryTest : public AppTest {
protected:
    NodeDiscoveryTest()
    {
        window.system = &system;
        system.LoadSystem({}, {}, false);
    }

    /// The nodes in `alive` answer pings with their number, mount and unmount requests, and type questions with `type`.
    void Populate(const std::vector<int>& alive, int type = 4)
    {
        network.answer = [alive, type](const Frame& frame) -> std::optional<Frame> {
            if (std::find(alive.begin(), alive.end(), frame.data) == alive.end())
                return std::nullopt;
            if (frame.command == 901)
                return PingReply(frame.data);
            if (frame.command == 905)
                return Acknowledge(frame.state, frame.data);
            if (frame.command == 979)
                return Frame{979, false, false, std::uint16_t(type)};
            return std::nullopt;
        };
    }

    std::vector<int> ActiveNodes() const
    {
        std::vector<int> numbers;
        for (int number = 1; number <= system.NodesInSystem(); ++number) {
            if (system.Node(number)->Active())
                numbers.push_back(number);
        }
        return numbers;
    }

    FakeNetwork network{handler, pump, portState};
    CSystem system{settings, dir.path()};
    WindowRecorder window;
    NodeDiscovery discovery{services, portState, system, window};
};

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

// --- Types ---------------------------------------------------------------------------------------------------------

struct TypeRow {
    int data;
    int typeID;
};

class TypeAnswers : public NodeDiscoveryTest, public testing::WithParamInterface<TypeRow> {};

TEST_P(TypeAnswers, GiveTheType)
{
    Populate({3}, GetParam().data);
    EXPECT_EQ(discovery.VerifyNode(system.Node(3), false), GetParam().typeID != 254);
    EXPECT_EQ(system.Node(3)->typeID(), GetParam().typeID);
    EXPECT_TRUE(system.Node(3)->Verified());
    EXPECT_THAT(network.sent, ElementsAre("979 0 3"));
    EXPECT_THAT(network.shown, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(NodeDiscovery, TypeAnswers,
                         testing::Values(TypeRow{0, 0}, TypeRow{1, 1}, TypeRow{7, 7}, TypeRow{12, 12}, TypeRow{13, 254},
                                         TypeRow{14, 254}, TypeRow{15, 15}, TypeRow{16, 16}, TypeRow{17, 254},
                                         TypeRow{976, 0}, TypeRow{978, 1}, TypeRow{974, 2}, TypeRow{975, 3},
                                         TypeRow{977, 4}, TypeRow{980, 5}, TypeRow{979, 254}, TypeRow{973, 254},
                                         TypeRow{65535, 254}),
                         [](const auto& test) { return "Answer" + std::to_string(test.param.data); });

TEST_F(NodeDiscoveryTest, NoNodeHasNoType)
{
    EXPECT_FALSE(discovery.VerifyNode(nullptr, true));
    EXPECT_THAT(network.sent, IsEmpty());
}

TEST_F(NodeDiscoveryTest, AVerifiedNodeIsAskedAgainOnlyByForce)
{
    Populate({3}, 4);
    discovery.VerifyNode(system.Node(3), false);
    network.sent.clear();
    Populate({3}, 5);
    EXPECT_TRUE(discovery.VerifyNode(system.Node(3), false));
    EXPECT_THAT(network.sent, IsEmpty());
    EXPECT_EQ(system.Node(3)->typeID(), 4);
    discovery.VerifyNode(system.Node(3), true);
    EXPECT_EQ(system.Node(3)->typeID(), 5);
}

/// A node that answers type questions only while it is mounted.
std::optional<Frame> ShyNode(const Frame& frame, bool& mounted)
{
    if (frame.command == 905 && frame.data == 3) {
        mounted = frame.state;
        return Acknowledge(frame.state, 3);
    }
    if (frame.command == 905)
        return Acknowledge(frame.state, frame.data);
    if (frame.command == 979 && mounted)
        return Frame{979, false, false, 6};
    return std::nullopt;
}

TEST_F(NodeDiscoveryTest, ASilentNodeIsMountedForTheQuestionAndUnmountedAgain)
{
    bool mounted = false;
    network.answer = [&mounted](const Frame& frame) { return ShyNode(frame, mounted); };
    EXPECT_TRUE(discovery.VerifyNode(system.Node(3), false));
    EXPECT_EQ(system.Node(3)->typeID(), 6);
    EXPECT_THAT(network.sent, ElementsAre("979 0 3", "979 0 3", "979 0 3", "905 1 3", "979 0 3", "905 0 3"));
    EXPECT_EQ(system.MountedNodeNumber(), 0);
}

TEST_F(NodeDiscoveryTest, TheNodeThatWasMountedBeforeIsMountedAgain)
{
    bool mounted = false;
    network.answer = [&mounted](const Frame& frame) { return ShyNode(frame, mounted); };
    discovery.MountNode(5);
    network.sent.clear();
    discovery.VerifyNode(system.Node(3), false);
    EXPECT_EQ(system.MountedNodeNumber(), 5);
    EXPECT_THAT(network.sent,
                ElementsAre("979 0 3", "979 0 3", "979 0 3", "905 0 5", "905 1 3", "979 0 3", "905 0 3", "905 1 5"));
}

struct OlderRow {
    const char* name;
    int command;
    int reply;
    int typeID;
    std::size_t frames;
};

class OlderNodes : public NodeDiscoveryTest, public testing::WithParamInterface<OlderRow> {};

TEST_P(OlderNodes, AnswerAnOlderQuestion)
{
    const OlderRow& row = GetParam();
    system.MountNode(3);  // so that the mount is no part of the road
    network.answer = [&row](const Frame& frame) -> std::optional<Frame> {
        if (row.command != 0 && frame.command == row.command)
            return Frame{std::uint16_t(row.reply), false, false, 99};
        return std::nullopt;
    };
    discovery.VerifyNode(system.Node(3), false);
    EXPECT_EQ(system.Node(3)->typeID(), row.typeID);
    EXPECT_TRUE(system.Node(3)->Verified()) << "also a node that nothing is known of, so that it isn't asked again";
    EXPECT_THAT(network.sent, SizeIs(row.frames));
}

INSTANTIATE_TEST_SUITE_P(NodeDiscovery, OlderNodes,
                         testing::Values(OlderRow{"TheFirst", 977, 976, 0, 4}, OlderRow{"TheSecond", 979, 978, 1, 7},
                                         OlderRow{"Neither", 0, 0, 254, 9}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace fenrik
