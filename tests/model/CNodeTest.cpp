#include "model/CNode.h"

#include "OwnerRecorder.h"
#include "model/CSystem.h"
#include "platform/Error.h"
#include "shared/Settings.h"
#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CNodeTest : public testing::Test {
protected:
    CNodeTest() { system.setNodesInSystem(3); }

    Settings settings;
    OwnerRecorder owner;
    CSystem system{settings, QStringLiteral("/program"), &owner};
};

TEST_F(CNodeTest, IsOfUnknownTypeAndUnheardWhenNew)
{
    const CNode node;
    EXPECT_EQ(node.number(), 0);
    EXPECT_EQ(node.typeID(), 254);
    EXPECT_EQ(node.TypeName(), QStringLiteral("Unknown Type"));
    EXPECT_FALSE(node.Active());
    EXPECT_FALSE(node.Verified());
    EXPECT_FALSE(node.Defined());
    EXPECT_FALSE(node.VFlashSupport());
    EXPECT_EQ(node.iProtocol(), 0);
    EXPECT_FALSE(node.HeaderInfoAvailable());
    EXPECT_EQ(node.Inputs(), 0);
    EXPECT_EQ(node.Outputs(), 0);
    EXPECT_EQ(node.bits_per_input(), 0);
}

TEST_F(CNodeTest, HasQuestionMarksForAHeaderThatWasNotRead)
{
    const CNode node;
    EXPECT_EQ(node.Header().nodeCount, QStringLiteral("??"));
    EXPECT_EQ(node.Header().byte7, QStringLiteral("??"));
    EXPECT_EQ(node.Header().word1, 0);
}

TEST_F(CNodeTest, BuildsItsKeyFromItsNumber)
{
    EXPECT_EQ(system.Node(3)->key(), QStringLiteral("Node 3"));
    EXPECT_EQ(CNode().key(), QStringLiteral("Node 0"));
}

TEST_F(CNodeTest, KeepsAllButPlaceAndNumberWhenItIsPlaced)
{
    CNode node;
    node.setName(QStringLiteral("Pump"));
    node.setActive(true);
    node.Init(system, 2);
    EXPECT_EQ(node.Name(), QStringLiteral("Pump"));
    EXPECT_TRUE(node.Active());
    EXPECT_EQ(node.number(), 2);
    EXPECT_FALSE(system.Dirty());
}

TEST_F(CNodeTest, MarksTheSystemByAnyNameEvenTheSame)
{
    system.Node(1)->setName(QString());
    EXPECT_TRUE(system.Dirty());
}

TEST_F(CNodeTest, MarksTheSystemByAVersionOnlyIfItDiffers)
{
    system.Node(1)->setOsMajVersion(0);
    system.Node(1)->setOsMinVersion(0);
    EXPECT_FALSE(system.Dirty());
    system.Node(1)->setOsMinVersion(4);
    EXPECT_TRUE(system.Dirty());

    system.Clear();
    system.setNodesInSystem(1);
    system.Node(1)->setOsMajVersion(1);
    EXPECT_TRUE(system.Dirty());
}

TEST_F(CNodeTest, MarksNothingByItsOtherProperties)
{
    CNode& node = *system.Node(1);
    node.setActive(true);
    node.setTypeID(2);
    node.setVerified(true);
    node.setIProtocol(CNode::kProtocolImage);
    node.setPICVersion(QStringLiteral("1.2"));
    EXPECT_FALSE(system.Dirty());
}

TEST_F(CNodeTest, HasNothingToMarkWithoutASystem)
{
    CNode node;
    node.setName(QStringLiteral("Pump"));
    EXPECT_EQ(node.Name(), QStringLiteral("Pump"));
    EXPECT_FALSE(system.Dirty());
}

TEST_F(CNodeTest, ShowsItsNumberItsMountOrABlankOnItsButton)
{
    system.MountNode(2);
    EXPECT_EQ(system.Node(1)->NodeBarIconName(), QStringLiteral("Node1"));
    EXPECT_EQ(system.Node(2)->NodeBarIconName(), QStringLiteral("Node2M"));

    CNode beyond;
    EXPECT_EQ(beyond.NodeBarIconName(), QStringLiteral("Blank"));
    beyond.Init(system, 4);
    EXPECT_EQ(beyond.NodeBarIconName(), QStringLiteral("Blank"));
}

TEST_F(CNodeTest, ShedsLoadsBetween12Point5And9Point7Volts)
{
    std::vector<double> volts;
    for (int level = 1; level <= CNode::kLoadShedLevels; ++level)
        volts.push_back(CNode::LoadShedVoltage(level));
    EXPECT_THAT(volts, ElementsAre(12.5, 12.1, 11.7, 11.3, 10.9, 10.5, 10.1, 9.7));
    EXPECT_THROW((void)CNode::LoadShedVoltage(0), Error);
    EXPECT_THROW((void)CNode::LoadShedVoltage(9), Error);
}

struct ForceForm {
    const char* name;
    std::int16_t typeID;
    std::uint8_t major;
    std::uint8_t minor;
    bool compatible;
    bool asks;
};

class ForceForms : public CNodeTest, public testing::WithParamInterface<ForceForm> {};

TEST_P(ForceForms, FollowFromTypeAndVersion)
{
    CNode& node = *system.Node(1);
    node.setTypeID(GetParam().typeID);
    node.setOsMajVersion(GetParam().major);
    node.setOsMinVersion(GetParam().minor);
    EXPECT_EQ(node.NewDPWMCCompatible(), GetParam().compatible);
    if (GetParam().asks)
        EXPECT_THAT(owner.calls, ElementsAre("GetEmbeddedVersion"));
    else
        EXPECT_THAT(owner.calls, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    CNode, ForceForms,
    testing::Values(ForceForm{"Type0", 0, 5, 0, false, false}, ForceForm{"Type9", 9, 5, 0, false, false},
                    ForceForm{"Type10", 10, 0, 1, true, false}, ForceForm{"UnknownType", 254, 0, 0, true, false},
                    // Not known is not old.
                    ForceForm{"Type2Unknown", 2, 0, 0, true, true}, ForceForm{"Type2Version0_1", 2, 0, 1, false, true},
                    ForceForm{"Type2Version1_0", 2, 1, 0, false, true},
                    ForceForm{"Type2Version1_2", 2, 1, 2, false, true},
                    ForceForm{"Type2Version1_3", 2, 1, 3, true, true},
                    ForceForm{"Type2Version2_0", 2, 2, 0, true, true}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
