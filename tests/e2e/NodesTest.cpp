// Working with a node by the buttons of the node bar.

#include "e2e/ToolTest.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class Nodes : public ToolTest {
protected:
    /// Connects, selects node 2 and forgets what was said until then.
    void SelectNode2(const char* scenario = "quiet\n")
    {
        ASSERT_NO_FATAL_FAILURE(StartConnected(scenario));
        Click("Nodebar", "Node2");
        mHeard = vehicle.Meanings("RX").size();
        mLines = LineCount();
    }

    void MountNode2()
    {
        ASSERT_NO_FATAL_FAILURE(SelectNode2());
        Click("Nodebar", "Mount");
        ASSERT_EQ(Text("txtMsg"), "Node 2 Mounted ");
        mHeard = vehicle.Meanings("RX").size();
        mLines = LineCount();
    }

    /// What the vehicle has heard since then.
    [[nodiscard]] std::vector<std::string> Heard() const
    {
        const auto all = vehicle.Meanings("RX");
        return {all.begin() + std::ptrdiff_t(mHeard), all.end()};
    }
    [[nodiscard]] std::vector<std::string> Lines() const { return LinesFrom(mLines); }

private:
    std::size_t mHeard = 0;
    int mLines = 0;
};

TEST_F(Nodes, ArePingedByAClickAndBothFramesAreListed)
{
    ASSERT_NO_FATAL_FAILURE(SelectNode2());
    Click("Nodebar", "Ping");
    EXPECT_THAT(Heard(), ElementsAre("901 state=0 ext=0 data=2"));
    EXPECT_TRUE(Eventually([this] { return Lines().size() == 2; }));
    EXPECT_THAT(Lines(), ElementsAre("Ping|Off|False|2|00.AE.14.00.02.C4|Command",
                                     "Ping Reply|Off|False|2|0.AE.18.0.2.C8|Command"));
}

TEST_F(Nodes, AreMountedAndAskedForTheirTypeByAClick)
{
    ASSERT_NO_FATAL_FAILURE(SelectNode2());
    EXPECT_FALSE(IsVisible("Nodebar", "Unmount"));
    Click("Nodebar", "Mount");
    EXPECT_THAT(Heard(), ElementsAre("905 state=1 ext=0 data=2", "979 state=0 ext=0 data=2"));
    EXPECT_THAT(Text("txtMsg"), StartsWith("Node 2 Mounted"));
    EXPECT_FALSE(IsVisible("Nodebar", "Mount"));
    EXPECT_TRUE(IsVisible("Nodebar", "Unmount"));
    EXPECT_TRUE(IsEnabled("Toolbar", "States"));
    EXPECT_TRUE(Eventually([this] { return Lines().size() == 2; }));
    EXPECT_THAT(Lines(), ElementsAre(StartsWith("Mount Node|On|False|2|"), StartsWith("Acknowledge|On|False|2|")));
}

TEST_F(Nodes, AreUnmountedByAClick)
{
    ASSERT_NO_FATAL_FAILURE(MountNode2());
    Click("Nodebar", "Unmount");
    EXPECT_THAT(Heard(), ElementsAre("905 state=0 ext=0 data=2"));
    EXPECT_EQ(Text("txtMsg"), "Node 2 Unmounted");
    EXPECT_TRUE(IsVisible("Nodebar", "Mount"));
    EXPECT_FALSE(IsVisible("Nodebar", "Unmount"));
}

TEST_F(Nodes, ThatRestartLoseTheirMountWithoutTraffic)
{
    ASSERT_NO_FATAL_FAILURE(MountNode2());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("restart 2"));
    ASSERT_TRUE(Eventually([this] { return IsVisible("Nodebar", "Mount"); }));
    EXPECT_FALSE(IsVisible("Nodebar", "Unmount"));
    EXPECT_TRUE(Eventually([this] { return Lines().size() == 1; }));
    EXPECT_THAT(Lines(), ElementsAre(StartsWith("Node Started|On|False|2|")));
    EXPECT_THAT(Heard(), ElementsAre());
}

TEST_F(Nodes, ThatAreNotMountedMayRestartWithoutEffectOnTheMount)
{
    ASSERT_NO_FATAL_FAILURE(MountNode2());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("restart 3"));
    ASSERT_TRUE(Eventually([this] { return Lines().size() == 1; }));
    EXPECT_TRUE(IsVisible("Nodebar", "Unmount"));
}

TEST_F(Nodes, AreUnmountedByDisconnecting)
{
    ASSERT_NO_FATAL_FAILURE(MountNode2());
    Click("Toolbar", "Disconnect");
    EXPECT_THAT(Heard(), ElementsAre("905 state=0 ext=0 data=2"));
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
}

TEST_F(Nodes, AreUnmountedByClosingTheWindow)
{
    ASSERT_NO_FATAL_FAILURE(MountNode2());
    CloseTool();
    EXPECT_THAT(Heard(), ElementsAre("905 state=0 ext=0 data=2"));
}

TEST_F(Nodes, AreMountedAgainstLostAnswers)
{
    ASSERT_NO_FATAL_FAILURE(SelectNode2());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("lose every 2"));
    Click("Nodebar", "Mount");
    // The second answer, to the question for the type, is lost and asked for again.
    EXPECT_THAT(Heard(),
                ElementsAre("905 state=1 ext=0 data=2", "979 state=0 ext=0 data=2", "979 state=0 ext=0 data=2"));
    EXPECT_THAT(Text("txtMsg"), StartsWith("Node 2 Mounted"));
}

}  // namespace
}  // namespace fenrik
