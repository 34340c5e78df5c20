// The operator commands' windows as menu, composer and list open them.

#include "WindowFixture.h"
#include "app/Composer.h"
#include "support/WhenShown.h"

#include <QComboBox>

namespace fenrik {
namespace {

using testing::Contains;
using testing::IsEmpty;

constexpr const char* kWait = "Please wait until the present exchange has come to its end.";

class WindowCommands : public WindowTest {
protected:
    /// A line of special command 960, a restart of node 2.
    void ReceiveRestart()
    {
        vehicle.Send({960, true, false, 0x0201});
        ASSERT_TRUE(Until([this] { return Lines().contains("Restart Node (Node 2)"); }));
    }
    void ChooseLine()
    {
        auto& list = Window().MessageList();
        const int row = int(Lines().indexOf("Restart Node (Node 2)"));
        const QPoint place = list.visualRect(list.model()->index(row, 0)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    }

    int shown = 0;
    bool busyMeanwhile = false;
    const std::function<void(QDialog&)> look = [this](QDialog& dialog) {
        ++shown;
        busyMeanwhile = !Window().Toolbar().isEnabled();
        dialog.reject();
    };
    const WhenShown specials{"frmSpecialCommand", look};
    const WhenShown queries{"frmCmdQry", look};
};

class OperatorEntries : public WindowCommands, public testing::WithParamInterface<const char*> {};

TEST_P(OperatorEntries, OpenTheirWindowOverABusyMainWindow)
{
    ASSERT_NO_FATAL_FAILURE(StartAndConnect());
    Entry(GetParam()).trigger();
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(busyMeanwhile);
    EXPECT_TRUE(Window().Toolbar().isEnabled());
}

TEST_P(OperatorEntries, DontOpenTheirWindowInsideAnExchange)
{
    ASSERT_NO_FATAL_FAILURE(StartAndConnect());
    Window().Hub().SetUIState(8);
    Entry(GetParam()).trigger();
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(Msg(), kWait);
    EXPECT_FALSE(Window().Toolbar().isEnabled());
}

TEST_P(OperatorEntries, NeedAPort)
{
    ASSERT_TRUE(Start());
    EXPECT_FALSE(Entry(GetParam()).isEnabled());
}

INSTANTIATE_TEST_SUITE_P(Window, OperatorEntries, testing::Values("mnuCommandQuery", "mnuAssignEatonE33"),
                         [](const auto& row) { return row.param; });

TEST_F(WindowCommands, AComposedSpecialCommandOpensItsWindow)
{
    ASSERT_NO_FATAL_FAILURE(StartAndConnect());
    ASSERT_TRUE(Window().CommandComposer().ShowCommand(960, true));
    QTest::mouseClick(&Control<QPushButton>("cmdSend"), Qt::LeftButton);
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(busyMeanwhile);
    EXPECT_TRUE(Window().Toolbar().isEnabled());
    EXPECT_THAT(vehicle.heard, testing::Not(Contains(testing::StartsWith("960 "))));
}

TEST_F(WindowCommands, AChosenLineOpensItsWindow)
{
    ASSERT_NO_FATAL_FAILURE(StartAndConnect());
    ASSERT_NO_FATAL_FAILURE(ReceiveRestart());
    ChooseLine();
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(Window().Toolbar().isEnabled());
}

TEST_F(WindowCommands, ALineChosenInsideAnExchangeOpensNothing)
{
    ASSERT_NO_FATAL_FAILURE(StartAndConnect());
    ASSERT_NO_FATAL_FAILURE(ReceiveRestart());
    Window().Hub().SetUIState(8);
    ChooseLine();
    EXPECT_EQ(shown, 0);
}

// The catalogue knows the command, but the file of special commands tells nothing of it.
TEST_F(WindowCommands, AnAddressCanBeAssignedWithoutItsSpecialCommand)
{
    const auto database = Database::OpenDatabase(ProgramFile("SpecialCommands.dav"), false, false);
    for (const char* table : {"General", "Defaults", "Details"})
        database->Execute(QString("DELETE FROM %1 WHERE Command = 969").arg(table));
    ASSERT_NO_FATAL_FAILURE(StartAndConnect());
    Entry("mnuAssignEatonE33").trigger();
    EXPECT_EQ(shown, 1);
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(WindowCommands, ASpecialCommandWithoutItemsIsAnErrorAndLeavesTheWindowReady)
{
    const auto database = Database::OpenDatabase(ProgramFile("SpecialCommands.dav"), false, false);
    database->Execute("DELETE FROM Details WHERE Command = 969");
    ASSERT_NO_FATAL_FAILURE(StartAndConnect());
    Entry("mnuAssignEatonE33").trigger();
    EXPECT_EQ(shown, 0);
    ASSERT_EQ(user.seen.size(), 1);
    EXPECT_TRUE(user.seen.constFirst().contains("frmmain:mnuAssignEatonE33:Click"));
    EXPECT_TRUE(Window().Toolbar().isEnabled());
}

}  // namespace
}  // namespace fenrik
