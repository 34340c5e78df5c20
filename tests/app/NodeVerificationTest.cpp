#include "NodeDiscoveryFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

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
