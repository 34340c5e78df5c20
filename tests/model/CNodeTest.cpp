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
    std::vector<std::int64_t> volts;
    for (int level = 1; level <= CNode::kLoadShedLevels; ++level)
        volts.push_back(CNode::LoadShedVoltage(level).TenThousandths());
    EXPECT_THAT(volts, ElementsAre(125000, 121000, 117000, 113000, 109000, 105000, 101000, 97000));
    EXPECT_THROW((void)CNode::LoadShedVoltage(0), Error);
    EXPECT_THROW((void)CNode::LoadShedVoltage(9), Error);
}

}  // namespace
}  // namespace fenrik
