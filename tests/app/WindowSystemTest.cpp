// The toolbar's "System" in the whole program, with the dialog that it opens.

#include "WindowFixture.h"
#include "catalogue/SystemList.h"
#include "catalogue/frmDBProperties.h"
#include "model/CNode.h"
#include "model/SystemDatabase.h"

#include <QComboBox>
#include <QListWidget>

namespace fenrik {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

class WindowSystem : public WindowTest {
protected:
    using Work = std::function<void(frmDBProperties&)>;

    /// Saves a system of two nodes, whose command 12 is named `lamp`, in the program's folder.
    void MakeSystem(const QString& name, const char* lamp)
    {
        Settings settings;
        CSystem system(settings, dir.filePath("program"));
        system.setNodesInSystem(2);
        system.Node(1)->setTypeID(16);
        system.Node(1)->setName("Engine bay");
        ASSERT_TRUE(SystemDatabase(system, nullptr).Make(ProgramFile(name + ".dav"), ProgramFile("ncCommand.dav")));
        const auto database = Database::OpenDatabase(ProgramFile(name + ".dav"), false, false);
        database->Execute(QString("UPDATE Commands SET Name = '%1' WHERE Command = 12").arg(lamp));
    }

    /// Clicks "System" and works the dialog, whose last step is to close it.
    void ChooseSystem(const Work& work, bool byMenu = false)
    {
        QTimer watch;
        bool opened = false;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            auto* dialog = qobject_cast<frmDBProperties*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible() || opened)
                return;
            opened = true;
            work(*dialog);
        });
        watch.start(1);
        if (byMenu)
            Entry("mnuSettingsDatabase").trigger();
        else
            Click("System");
        EXPECT_TRUE(opened);
    }

    static void Select(frmDBProperties& dialog, const QString& name)
    {
        auto& list = *dialog.findChild<QListWidget*>("lstSystems");
        const auto lines = list.findItems(name, Qt::MatchExactly);
        ASSERT_EQ(lines.size(), 1) << name.toStdString();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(lines.constFirst()).center());
    }

    static void Press(frmDBProperties& dialog, const char* button)
    {
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    }

    static Work Take(const QString& name)
    {
        return [name](frmDBProperties& dialog) {
            Select(dialog, name);
            Press(dialog, "cmdOk");
        };
    }

    [[nodiscard]] QStringList Categories()
    {
        const auto& list = Control<QComboBox>("CboCategory");
        QStringList names;
        for (int row = 0; row < list.count(); ++row)
            names.append(list.itemText(row));
        return names;
    }

    void TearDown() override { EXPECT_THAT(user.seen, IsEmpty()); }
};

TEST_F(WindowSystem, IsLoadedWithItsNodesItsCommandsAndItsCaption)
{
    MakeSystem("Bus 12", "Special Lamp");
    ASSERT_TRUE(Start());
    // What was loaded counts as news, so leaving it is asked about.
    user.answers = {QMessageBox::No, QMessageBox::No};
    for (const bool byMenu : {false, true}) {
        ChooseSystem(Take("Bus 12"), byMenu);
        EXPECT_TRUE(System().Defined());
        EXPECT_EQ(System().Name(), "Bus 12");
        EXPECT_EQ(System().Database(), ProgramFile("Bus 12.dav"));
        ASSERT_NE(System().Node(1), nullptr);
        EXPECT_EQ(System().Node(1)->Name(), "Engine bay");
        EXPECT_EQ(Window().windowTitle(), "Fenrik Diagnostics - Bus 12");
        EXPECT_FALSE(Msg().contains("not part of this version"));
        EXPECT_TRUE(Button("System").isEnabled());
    }
    ChooseSystem(Take("(Default Database) ncCommands.dav"));
    user.seen.clear();
    EXPECT_FALSE(System().Defined());
    EXPECT_EQ(System().Database(), ProgramFile("ncCommand.dav"));
    EXPECT_EQ(Window().windowTitle(), "Fenrik Diagnostics");
}

TEST_F(WindowSystem, ItsCommandsNameWhatTheVehicleSends)
{
    MakeSystem("Bus 12", "Special Lamp");
    ASSERT_TRUE(Start());
    ChooseSystem(Take("Bus 12"));
    Click("Connect");
    ASSERT_EQ(Status(), "Connected");
    Frame frame{};
    frame.command = 12;
    vehicle.Send(frame);
    EXPECT_TRUE(Until([this] { return Lines().contains("Special Lamp"); }));
}

TEST_F(WindowSystem, CancelLeavesAllAsItWas)
{
    MakeSystem("Bus 12", "Special Lamp");
    ASSERT_TRUE(Start());
    const QStringList categories = Categories();
    ChooseSystem([](frmDBProperties& dialog) {
        Select(dialog, "Bus 12");
        dialog.findChild<QComboBox*>("cmbMarket")->setCurrentIndex(3);
        Press(dialog, "cmdCancel");
    });
    EXPECT_FALSE(System().Defined());
    EXPECT_EQ(Window().windowTitle(), "Fenrik Diagnostics");
    EXPECT_EQ(Categories(), categories);
    EXPECT_TRUE(Button("System").isEnabled());
}

TEST_F(WindowSystem, TheMarketChoosesTheComposersCategories)
{
    ASSERT_TRUE(Start());
    ASSERT_THAT(Categories(), Not(Contains("Water Pump and Tank")));
    ChooseSystem([](frmDBProperties& dialog) {
        dialog.findChild<QComboBox*>("cmbMarket")->setCurrentText("Fire and Rescue");
        Press(dialog, "cmdOk");
    });
    EXPECT_THAT(Categories(), Contains("Water Pump and Tank"));
}

TEST_F(WindowSystem, UnsavedNewsAreOfferedForSavingFirst)
{
    ASSERT_TRUE(Start());
    System().setDirty();
    user.answers = {QMessageBox::No};
    ChooseSystem([](frmDBProperties& dialog) { Press(dialog, "cmdCancel"); });
    ASSERT_EQ(user.seen.size(), 1);
    EXPECT_TRUE(user.seen[0].startsWith("New information about this system"));
    EXPECT_TRUE(System().Dirty());
    user.seen.clear();
}

TEST_F(WindowSystem, WhatIsSavedFirstIsTheSystemInUse)
{
    ASSERT_TRUE(Start());
    System().setDirty();
    user.answers = {QMessageBox::Yes};
    user.inputs = {"Coach 3"};
    QString selected;
    ChooseSystem([&selected](frmDBProperties& dialog) {
        selected = dialog.findChild<QListWidget*>("lstSystems")->currentItem()->text();
        Press(dialog, "cmdOk");
    });
    EXPECT_EQ(selected, "Coach 3");
    EXPECT_EQ(System().Name(), "Coach 3");
    EXPECT_EQ(Window().windowTitle(), "Fenrik Diagnostics - Coach 3");
    user.seen.clear();
}

TEST_F(WindowSystem, ChosenWhileConnectedFindsTheNodesAnew)
{
    MakeSystem("Bus 12", "Special Lamp");
    StartAndConnect();
    const int before = System().ActiveNodeCount();
    ASSERT_GT(before, 0);
    ChooseSystem(Take("Bus 12"), true);
    EXPECT_EQ(Msg(), "Nodes Detected");
    EXPECT_EQ(System().ActiveNodeCount(), before);
    EXPECT_EQ(System().Name(), "Bus 12");
}

TEST_F(WindowSystem, AMountedNodeStaysMountedInTheNewSystem)
{
    MakeSystem("Bus 12", "Special Lamp");
    StartAndConnect();
    Click("Node1");
    Click("Mount");
    ASSERT_EQ(System().MountedNodeNumber(), 1);
    Click("States");
    ChooseSystem(Take("Bus 12"), true);
    EXPECT_EQ(System().MountedNodeNumber(), 1);
    Click("Unmount");
    EXPECT_EQ(System().MountedNodeNumber(), 0);
}

TEST_F(WindowSystem, TheMenuWaitsForTheEndOfAnExchange)
{
    ASSERT_TRUE(Start());
    Window().Hub().SetUIState(UiState::kBusy);
    Entry("mnuSettingsDatabase").trigger();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(Msg(), "Please wait until the present exchange has come to its end.");
    Window().Hub().SetUIState(UiState::kReady);
}

TEST_F(WindowSystem, AFileThatGoesAwayMeanwhileEndsInTheDefaultCatalogue)
{
    MakeSystem("Bus 12", "Special Lamp");
    ASSERT_TRUE(Start());
    ChooseSystem([this](frmDBProperties& dialog) {
        Select(dialog, "Bus 12");
        QFile::remove(ProgramFile("Bus 12.dav"));
        Press(dialog, "cmdOk");
    });
    EXPECT_EQ(System().Database(), ProgramFile("ncCommand.dav"));
    EXPECT_EQ(Window().windowTitle(), "Fenrik Diagnostics - Bus 12");
}

}  // namespace
}  // namespace fenrik
