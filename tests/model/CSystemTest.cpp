#include "model/CSystem.h"

#include "OwnerRecorder.h"
#include "shared/Settings.h"
#include "support/Printers.h"

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

class CSystemTest : public testing::Test {
protected:
    CSystemTest() { system.setNodesInSystem(20); }

    void Activate(std::initializer_list<int> numbers)
    {
        for (const int number : numbers)
            system.ActivateNode(number);
    }

    Settings settings;
    OwnerRecorder owner;
    CSystem system{settings, QStringLiteral("/program"), &owner};
};

TEST_F(CSystemTest, HasNoNodesAndTheProgramsFolderWhenNew)
{
    const CSystem fresh(settings, QStringLiteral("/program"));
    EXPECT_EQ(fresh.Name(), QStringLiteral("Unspecified System"));
    EXPECT_FALSE(fresh.Defined());
    EXPECT_EQ(fresh.path(), QStringLiteral("/program") + QDir::separator());
    EXPECT_EQ(fresh.Database(), fresh.path() + QStringLiteral("ncCommand.dav"));
    EXPECT_EQ(fresh.NodesInSystem(), 0);
    EXPECT_EQ(fresh.SelectedNode(), nullptr);
    EXPECT_EQ(fresh.MountedNode(), nullptr);
}

TEST_F(CSystemTest, ForgetsItsNodesButNotItsSelectionAndMountWhenCleared)
{
    Activate({2});
    system.SelectNode(2);
    system.MountNode(2);
    system.setDirty();

    system.Clear();

    EXPECT_EQ(system.NodesInSystem(), 0);
    EXPECT_FALSE(system.Dirty());
    EXPECT_EQ(system.SelectedNodeNumber(), 2);
    EXPECT_EQ(system.MountedNodeNumber(), 2);
    EXPECT_EQ(system.SelectedNode(), nullptr);
    EXPECT_EQ(system.MountedNode(), nullptr);
}

TEST_F(CSystemTest, NumbersItsNodesByPosition)
{
    for (int position = 1; position <= 20; ++position) {
        EXPECT_EQ(system.Nodes()[position].number(), position);
        EXPECT_EQ(system.Nodes().PositionOf(QStringLiteral("Node %1").arg(position)), position);
    }
    EXPECT_EQ(system.Node(0), nullptr);
    EXPECT_EQ(system.Node(21), nullptr);
}

TEST_F(CSystemTest, KeepsEveryNodeWhenSetToItsPresentCount)
{
    const CNode* first = system.Node(1);
    const CNode* last = system.Node(20);
    system.setNodesInSystem(20);
    EXPECT_EQ(system.Node(1), first);
    EXPECT_EQ(system.Node(20), last);
}

TEST_F(CSystemTest, KeepsNodesAndTheirStateWhenItGrows)
{
    Activate({20});
    const CNode* last = system.Node(20);
    system.setNodesInSystem(22);
    EXPECT_EQ(system.NodesInSystem(), 22);
    EXPECT_EQ(system.Node(20), last);
    EXPECT_TRUE(system.Node(20)->Active());
    EXPECT_FALSE(system.Node(22)->Active());
}

TEST_F(CSystemTest, DropsNodesFromTheEndWhenItShrinks)
{
    Activate({2});
    system.setNodesInSystem(2);
    EXPECT_EQ(system.NodesInSystem(), 2);
    EXPECT_TRUE(system.Node(2)->Active());
    system.setNodesInSystem(-1);
    EXPECT_EQ(system.NodesInSystem(), 0);
}

TEST_F(CSystemTest, CountsActiveNodes)
{
    EXPECT_EQ(system.ActiveNodeCount(), 0);
    Activate({1, 5, 20});
    EXPECT_EQ(system.ActiveNodeCount(), 3);
}

TEST_F(CSystemTest, EnablesTheButtonOfANodeThatIsHeard)
{
    Activate({5});
    EXPECT_TRUE(system.Node(5)->Active());
    EXPECT_THAT(owner.enabled, UnorderedElementsAre(5));
}

TEST_F(CSystemTest, IgnoresNodesOutsideTheListThatAreHeardOrLost)
{
    Activate({0, 21, -1});
    system.DeActivateNode(21);
    EXPECT_EQ(system.ActiveNodeCount(), 0);
    EXPECT_THAT(owner.enabled, IsEmpty());
}

TEST_F(CSystemTest, PressesTheButtonOfTheSelectedNode)
{
    Activate({1, 5});
    system.setSelectedNodeNumber(1);
    system.setSelectedNodeNumber(5);
    EXPECT_EQ(system.SelectedNode(), system.Node(5));
    EXPECT_THAT(owner.pressed, UnorderedElementsAre(5));
    EXPECT_THAT(owner.calls, ElementsAre("HandleSelectedNodeChange", "HandleSelectedNodeChange"));
}

TEST_F(CSystemTest, TellsNothingWhenTheSelectionStays)
{
    Activate({5});
    system.SelectNode(5);
    owner.calls.clear();
    system.SelectNode(5);
    system.setSelectedNodeNumber(5);
    EXPECT_THAT(owner.calls, IsEmpty());
    EXPECT_THAT(owner.pressed, UnorderedElementsAre(5));
}

TEST_F(CSystemTest, SelectsNoneAndReleasesTheOldButtonForANodeThatIsNotActive)
{
    Activate({1});
    system.SelectNode(1);
    system.setSelectedNodeNumber(2);
    EXPECT_EQ(system.SelectedNodeNumber(), 0);
    EXPECT_THAT(owner.pressed, IsEmpty());
}

TEST_F(CSystemTest, KeepsASelectedNumberOutsideTheListAsItCame)
{
    system.setSelectedNodeNumber(25);
    EXPECT_EQ(system.SelectedNodeNumber(), 25);
    EXPECT_EQ(system.SelectedNode(), nullptr);
}

TEST_F(CSystemTest, SelectsByNodeAndNoneForNoNode)
{
    Activate({3});
    system.setSelectedNode(system.Node(3));
    EXPECT_EQ(system.SelectedNodeNumber(), 3);
    system.setSelectedNode(nullptr);
    EXPECT_EQ(system.SelectedNodeNumber(), 0);
}

TEST_F(CSystemTest, DeselectsTheOldNodeBeforeItSelectsAnother)
{
    Activate({1, 2});
    system.SelectNode(1);
    owner.calls.clear();
    system.SelectNode(2);
    // Once for the old node that goes and once for the new one that comes.
    EXPECT_THAT(owner.calls, ElementsAre("HandleSelectedNodeChange", "HandleSelectedNodeChange"));
    EXPECT_THAT(owner.pressed, UnorderedElementsAre(2));
}

TEST_F(CSystemTest, LeavesNoNodeSelectedAfterDeselectNode)
{
    Activate({1});
    system.SelectNode(1);
    system.DeselectNode();
    EXPECT_EQ(system.SelectedNodeNumber(), 0);
    EXPECT_THAT(owner.pressed, IsEmpty());
}

TEST_F(CSystemTest, ShowsTheMountedPictureOnTheMountedNodesButtonOnly)
{
    system.MountNode(4);
    EXPECT_THAT(owner.icons, ElementsAre(Pair(4, QStringLiteral("Node4M"))));
    system.MountNode(6);
    EXPECT_THAT(owner.icons, ElementsAre(Pair(4, QStringLiteral("Node4")), Pair(6, QStringLiteral("Node6M"))));
    system.UnmountNode();
    EXPECT_EQ(owner.icons[6], QStringLiteral("Node6"));
    EXPECT_EQ(owner.calls, std::vector<std::string>(3, "HandleMountedNodeChange"));
}

TEST_F(CSystemTest, MountsANodeThatIsNotActive)
{
    system.MountNode(4);
    EXPECT_EQ(system.MountedNode(), system.Node(4));
    system.setMountedNode(nullptr);
    EXPECT_EQ(system.MountedNodeNumber(), 0);
}

TEST_F(CSystemTest, TellsNothingWhenTheMountStays)
{
    system.MountNode(4);
    system.MountNode(4);
    EXPECT_THAT(owner.calls, ElementsAre("HandleMountedNodeChange"));
}

TEST_F(CSystemTest, ForgetsWhatDependsOnThePresenceOfANodeThatIsLost)
{
    Activate({3});
    CNode& node = *system.Node(3);
    node.setName(QStringLiteral("Pump"));
    node.setIProtocol(CNode::kProtocolImage);
    node.setHeaderInfoAvailable(true);
    node.setVerified(true);
    system.SelectNode(3);

    system.DeActivateNode(3);

    EXPECT_FALSE(node.Active());
    EXPECT_EQ(node.iProtocol(), CNode::kProtocolUnknown);
    EXPECT_FALSE(node.HeaderInfoAvailable());
    EXPECT_TRUE(node.Verified());
    EXPECT_EQ(node.Name(), QStringLiteral("Pump"));
    EXPECT_EQ(system.SelectedNodeNumber(), 0);
    EXPECT_THAT(owner.pressed, IsEmpty());
    EXPECT_THAT(owner.enabled, IsEmpty());
}

TEST_F(CSystemTest, KeepsTheMountOfANodeThatIsLost)
{
    Activate({3});
    system.MountNode(3);
    system.DeActivateNode(3);
    EXPECT_EQ(system.MountedNodeNumber(), 3);
}

TEST_F(CSystemTest, HasTheButtonOfNode17OnTheSecondToolbar)
{
    EXPECT_EQ(system.TargetNodebar(16), NodeBar::Nodebar);
    EXPECT_EQ(system.TargetNodebar(17), NodeBar::Nodebar17_32);
    EXPECT_EQ(system.TargetNodeButton(17)->bar, NodeBar::Nodebar17_32);
    EXPECT_EQ(system.TargetNodeButton(17)->Key(), QStringLiteral("Node17"));
    EXPECT_FALSE(system.TargetNodeButton(0).has_value());
    EXPECT_FALSE(system.TargetNodeButton(33).has_value());
}

TEST_F(CSystemTest, LivesWithoutAWindow)
{
    settings.NodesInSystem = 8;
    CSystem alone(settings, QStringLiteral("/program"));
    alone.LoadSystem({}, {}, false);
    alone.ActivateNode(2);
    alone.SelectNode(2);
    alone.MountNode(2);
    alone.DeActivateNode(2);
    EXPECT_EQ(alone.SelectedNodeNumber(), 0);
    EXPECT_EQ(alone.MountedNodeNumber(), 2);
    EXPECT_FALSE(alone.TargetNodebar(1).has_value());
    EXPECT_FALSE(alone.TargetNodeButton(1).has_value());
}

}  // namespace
}  // namespace fenrik
