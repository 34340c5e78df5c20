#include "WindowFixture.h"

#include "diagnostics/CharacterFace.h"

namespace fenrik {
namespace {

/// A connected window with node 1, a model of three inputs and eight outputs, selected and mounted.
class WindowNodeViewsTest : public WindowTest {
protected:
    void SetUp() override
    {
        StartAndConnect("AutoDetect=False\n");
        CNode& node = *System().Node(1);
        node.setTypeID(6);
        node.setVerified(true);
        System().ActivateNode(1);
        System().SelectNode(1);
        Click("Mount");
        ASSERT_EQ(System().MountedNodeNumber(), 1);
        vehicle.tellsStates = false;
        vehicle.onFrame = [this](const Frame& frame) { Answer(frame); };
    }

    void Answer(const Frame& frame)
    {
        const bool isQuestion = frame.command == 921 && frame.extended;
        if (isQuestion)
            vehicle.Send({903, true, broadcasts, 0});
        else if (frame.command == 921 || frame.command == 922 || frame.command == 937)
            vehicle.Send({950, false, false, std::uint16_t(frame.command == 937 ? 0x0103 : 5)});
        else if (frame.command == 940)
            vehicle.Send({903, true, false, 0});
    }

    [[nodiscard]] QString Row(int row)
    {
        return Control<CharacterFace>("PicAnalogFace").Text().split(QLatin1Char('\n')).value(row - 1).trimmed();
    }

    bool broadcasts = false;
};

TEST_F(WindowNodeViewsTest, AMountedNodeIsPolledWhenItsStatesAreOpened)
{
    Click("States");
    EXPECT_EQ(Row(3), QStringLiteral("101"));
    EXPECT_EQ(Row(7), QStringLiteral("10100000"));
    EXPECT_TRUE(Window().Toolbar().isEnabled());
}

TEST_F(WindowNodeViewsTest, WordsThatTheNodeSendsByItselfReachTheViewAndNotTheList)
{
    broadcasts = true;
    Click("States");
    const auto lines = Lines();
    vehicle.Send({921, false, false, 7});
    EXPECT_TRUE(Until([this] { return Row(3) == QStringLiteral("111"); }));
    EXPECT_EQ(Lines(), lines);
}

TEST_F(WindowNodeViewsTest, ARestartOfTheMountedNodeEndsTheViewAndTheModeOfItsStates)
{
    broadcasts = true;
    Click("States");
    vehicle.Send({988, false, false, 1});
    ASSERT_TRUE(Until([this] { return System().MountedNodeNumber() == 0; }));
    EXPECT_EQ(Row(1), QStringLiteral("No analog values heard yet"));

    broadcasts = false;
    Click("Mount");
    Click("States");
    EXPECT_EQ(Row(3), QStringLiteral("101"));
}

TEST_F(WindowNodeViewsTest, AFaultReportReachesItsOutput)
{
    vehicle.Send({983, false, false, 0x0105});
    EXPECT_TRUE(Until([this] { return System().Node(1)->COutputs()[5].Fault() == QStringLiteral("Fault detected!"); }));
}

TEST_F(WindowNodeViewsTest, TheFlashIsShownWhenItsViewIsOpened)
{
    Click("FlashInfo");
    EXPECT_EQ(Row(2), QStringLiteral("Node Number             01 of ??"));
    EXPECT_EQ(Row(5), QStringLiteral("Operating System Version     1.3"));
}

}  // namespace
}  // namespace fenrik
