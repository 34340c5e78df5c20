#include "model/NodeVersions.h"

#include "ScriptedNode.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Sent = ScriptedNode::Sent;

class NodeVersionsTest : public ScriptedNodeTest {
protected:
    NodeVersions versions{system};
};

TEST_F(NodeVersionsTest, TheSoftwareIsAskedWhileItsVersionIsNotKnown)
{
    peer.version = 0x0103;
    EXPECT_EQ(versions.GetEmbeddedVersion(false), QStringLiteral("1.3"));
    EXPECT_EQ(versions.GetEmbeddedVersion(false), QStringLiteral("1.3"));
    EXPECT_THAT(peer.sent, ElementsAre(Sent{937, 0, 0, 0}));
    EXPECT_EQ(Node().osMajVersion(), 1);
    EXPECT_EQ(Node().osMinVersion(), 3);
    EXPECT_TRUE(system.Dirty());
}

TEST_F(NodeVersionsTest, TheSoftwareIsAskedAgainByForce)
{
    Node().setOsMajVersion(1);
    peer.version = 0x0C22;
    EXPECT_EQ(versions.GetEmbeddedVersion(true), QStringLiteral("12.34"));
}

TEST_F(NodeVersionsTest, ANodeThatDoesNotAnswerLosesItsVersion)
{
    Node().setOsMajVersion(1);
    EXPECT_EQ(versions.GetEmbeddedVersion(true), QStringLiteral("??.??"));
    EXPECT_EQ(Node().osMajVersion(), 0);
    EXPECT_EQ(peer.sent.size(), 3u);
}

TEST_F(NodeVersionsTest, NothingIsAskedWithoutAMountedNode)
{
    system.UnmountNode();
    peer.version = 0x0103;
    EXPECT_EQ(versions.GetEmbeddedVersion(true), QStringLiteral("??.??"));
    EXPECT_EQ(versions.GetPeriphICversion(NodeVersions::kPic), QStringLiteral("?"));
    EXPECT_EQ(versions.GetBetaVersion(), QString());
    EXPECT_THAT(peer.sent, IsEmpty());
}

struct ChipVersion {
    int data;
    const char* text;
};

class ChipVersions : public NodeVersionsTest, public testing::WithParamInterface<ChipVersion> {};

TEST_P(ChipVersions, HaveOneNumberBelow256)
{
    peer.version = GetParam().data;
    peer.versionState = true;
    EXPECT_EQ(versions.GetPeriphICversion(NodeVersions::kFpga), QString::fromLatin1(GetParam().text));
    EXPECT_THAT(peer.sent, ElementsAre(Sent{937, 1, 0, 1}));
}

INSTANTIATE_TEST_SUITE_P(NodeVersions, ChipVersions,
                         testing::Values(ChipVersion{0x0205, "2.5"}, ChipVersion{0x0042, "66"}, ChipVersion{0, "0"},
                                         ChipVersion{0x0100, "1.0"}, ChipVersion{0xFFFF, "255.255"}));

TEST_F(NodeVersionsTest, AChipThatIsNotThereHasNoVersion)
{
    EXPECT_EQ(versions.GetPeriphICversion(NodeVersions::kPic), QStringLiteral("?"));
    peer.version = 0x0205;
    EXPECT_EQ(versions.GetPeriphICversion(NodeVersions::kPic), QStringLiteral("?"));
}

TEST_F(NodeVersionsTest, ABetaVersionIsThereOnlyIfTheReplySaysSo)
{
    peer.version = 0x0105;
    EXPECT_EQ(versions.GetBetaVersion(), QString());
    peer.versionExtended = true;
    EXPECT_EQ(versions.GetBetaVersion(), QStringLiteral("1.5"));
    peer.version = 0;
    EXPECT_EQ(versions.GetBetaVersion(), QString());
    EXPECT_EQ(peer.sent.back(), (Sent{937, 0, 1, 0}));
}

// --- The form of the force command ---------------------------------------------------------------------------------

struct ForceForm {
    const char* name;
    std::int16_t typeID;
    int version;  ///< -1: the node does not answer
    bool compatible;
    bool asks;
};

class ForceForms : public NodeVersionsTest, public testing::WithParamInterface<ForceForm> {};

TEST_P(ForceForms, FollowFromTypeAndVersion)
{
    Node().setTypeID(GetParam().typeID);
    peer.version = GetParam().version;
    EXPECT_EQ(Node().NewDPWMCCompatible(), GetParam().compatible);
    EXPECT_EQ(!peer.sent.empty(), GetParam().asks);
}

INSTANTIATE_TEST_SUITE_P(
    CNode, ForceForms,
    testing::Values(ForceForm{"Type0", 0, 0x0500, false, false}, ForceForm{"Type9", 9, 0x0500, false, false},
                    ForceForm{"Type10", 10, 0x0001, true, false}, ForceForm{"UnknownType", 254, -1, true, false},
                    // Not known is not old.
                    ForceForm{"Type2Silent", 2, -1, true, true}, ForceForm{"Type2Version0_0", 2, 0, true, true},
                    ForceForm{"Type2Version0_1", 2, 0x0001, false, true},
                    ForceForm{"Type2Version1_0", 2, 0x0100, false, true},
                    ForceForm{"Type2Version1_2", 2, 0x0102, false, true},
                    ForceForm{"Type2Version1_3", 2, 0x0103, true, true},
                    ForceForm{"Type2Version2_0", 2, 0x0200, true, true}),
    [](const auto& row) { return row.param.name; });

TEST_F(NodeVersionsTest, AKnownVersionIsNotAskedForBeforeAForce)
{
    Node().setTypeID(2);
    Node().setOsMajVersion(1);
    EXPECT_FALSE(Node().NewDPWMCCompatible());
    EXPECT_THAT(peer.sent, IsEmpty());
}

TEST_F(NodeVersionsTest, ANodeWithoutASystemAsksNobody)
{
    CNode alone;
    alone.setTypeID(2);
    EXPECT_TRUE(alone.NewDPWMCCompatible());
}

}  // namespace
}  // namespace fenrik
