// Saving a system in the window, and looking at a saved one.

#include "WindowFixture.h"

#include <QTreeView>

namespace fenrik {
namespace {

class WindowSavedSystemTest : public WindowTest {
protected:
    /// Node 2 is known, with a name and a named output.
    void LearnNode2()
    {
        CNode& node = *System().Node(2);
        node.setTypeID(2);
        node.setName(QStringLiteral("Rear"));
        node.COutputs()[1].setName(QStringLiteral("Horn"));
        node.COutputs()[1].setUsageCode(1);
    }

    /// Saves such a system, and loads it as another run would.
    void LoadSavedSystem()
    {
        LearnNode2();
        user.inputs = {QStringLiteral("Bus")};
        ASSERT_TRUE(Window().Hub().SaveSystem(6));
        System().LoadSystem(QStringLiteral("Bus"), dir.filePath("program"), false);
        Window().Hub().ShowLoadedSystem();
    }

    [[nodiscard]] bool IsSaved(const QString& name) const { return QFile::exists(ProgramFile(name + ".dav")); }
};

TEST_F(WindowSavedSystemTest, SaveAsksForANameAndSaysWhereTheSystemIs)
{
    StartAndConnect();
    user.inputs = {QStringLiteral("Bus")};
    Click("Save");
    EXPECT_EQ(user.seen, QStringList("Please enter a system Name:"));
    EXPECT_EQ(Msg(), "System Saved as <Bus.dav>");
    EXPECT_EQ(Window().windowTitle(), "Fenrik Diagnostics - Bus");
    EXPECT_TRUE(IsSaved("Bus"));
    EXPECT_TRUE(Window().Toolbar().isEnabled());
}

TEST_F(WindowSavedSystemTest, ACancelledSaveChangesNothing)
{
    StartAndConnect();
    const QString title = Window().windowTitle();
    const QString msg = Msg();
    Click("Save");
    EXPECT_EQ(Window().windowTitle(), title);
    EXPECT_EQ(Msg(), msg);
    EXPECT_EQ(QDir(dir.filePath("program")).entryList({"*.dav"}).size(), 3);
}

TEST_F(WindowSavedSystemTest, AFailedSaveClaimsNothing)
{
    StartAndConnect();
    MakeFile(ProgramFile("Bus.dav"), "no database");
    const QString title = Window().windowTitle();
    user.inputs = {QStringLiteral("Bus")};
    user.answers = {QMessageBox::No};
    Click("Save");
    ASSERT_EQ(user.seen.size(), 2);
    EXPECT_TRUE(user.seen[1].contains("Would you like to continue making the database anyway?"));
    EXPECT_EQ(Window().windowTitle(), title);
    EXPECT_NE(Msg(), "System Saved as <Bus.dav>");
}

TEST_F(WindowSavedSystemTest, ClosingOffersToSaveWhatWasLearnt)
{
    StartAndConnect();
    LearnNode2();
    user.answers = {QMessageBox::Yes};
    user.inputs = {QStringLiteral("Bus")};
    EXPECT_TRUE(Window().close());
    ASSERT_EQ(user.seen.size(), 2);
    EXPECT_TRUE(user.seen[0].startsWith("New information about this system has been gathered"));
    EXPECT_TRUE(IsSaved("Bus"));
    EXPECT_EQ(Stored("Settings/SystemName"), "Bus");
    EXPECT_EQ(Stored("Settings/SystemPath"), dir.filePath("program") + QDir::separator());
}

TEST_F(WindowSavedSystemTest, ClosingWithoutSavingAsksOnce)
{
    ASSERT_TRUE(Start());
    System().setDirty();
    user.answers = {QMessageBox::No};
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(user.seen.size(), 1);
    EXPECT_EQ(Stored("Settings/SystemName"), "");
}

TEST_F(WindowSavedSystemTest, ClosingAsksNothingWhenNothingWasLearnt)
{
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Window().close());
    EXPECT_TRUE(user.seen.isEmpty());
}

TEST_F(WindowSavedSystemTest, ASecondRequestToCloseAsksNoSecondTime)
{
    ASSERT_TRUE(Start());
    System().setDirty();
    QTimer::singleShot(0, &Window(), &QWidget::close);
    user.answers = {QMessageBox::No};
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(user.seen.size(), 1);
}

TEST_F(WindowSavedSystemTest, CanBeLookedAtWithoutTheNetwork)
{
    ASSERT_TRUE(Start());
    LoadSavedSystem();
    EXPECT_TRUE(Window().windowTitle().endsWith(" - Bus"));
    EXPECT_EQ(System().ActiveNodeCount(), 3);
    EXPECT_EQ(System().SelectedNodeNumber(), 1);
    Click("Node2");
    ASSERT_TRUE(Button("OutputDiagnostics").isEnabled());
    ASSERT_TRUE(Button("InputDiagnostics").isEnabled());
    Click("OutputDiagnostics");
    EXPECT_EQ(System().Node(2)->typeID(), 2);  // nobody was asked what it is
    EXPECT_EQ(System().Node(2)->COutputs()[1].Name(), "Horn");
    EXPECT_EQ(Control<QTreeView>("tvOutputs").model()->rowCount(), System().Node(2)->Outputs());
    EXPECT_TRUE(vehicle.heard.empty());
    EXPECT_EQ(Status(), "Disconnected");
}

TEST_F(WindowSavedSystemTest, IsNeededToLookAtAnything)
{
    ASSERT_TRUE(Start());
    Window().Hub().ShowLoadedSystem();
    EXPECT_EQ(System().ActiveNodeCount(), 0);
    EXPECT_EQ(System().SelectedNodeNumber(), 0);
    EXPECT_FALSE(Button("OutputDiagnostics").isEnabled());
}

TEST_F(WindowSavedSystemTest, ConnectingDecidesAnewWhoIsActive)
{
    vehicle.alive = {2};
    ASSERT_TRUE(Start("AutoDetect=False\n"));
    LoadSavedSystem();
    Click("Connect");
    ASSERT_EQ(Status(), "Connected");
    EXPECT_EQ(System().ActiveNodeCount(), 0);
    EXPECT_EQ(System().SelectedNodeNumber(), 0);
    EXPECT_FALSE(Button("OutputDiagnostics").isEnabled());
    EXPECT_EQ(System().Node(2)->Name(), "Rear");
    Click("DetectNodes");
    EXPECT_EQ(System().ActiveNodeCount(), 1);
    EXPECT_EQ(System().SelectedNodeNumber(), 2);
    EXPECT_TRUE(Button("OutputDiagnostics").isEnabled());
}

}  // namespace
}  // namespace fenrik
