// Choosing the system to work with, by the dialog of the toolbar and of the menu.

#include "app/DiagHub.h"
#include "app/MainMenus.h"
#include "e2e/Scenarios.h"
#include "e2e/ToolTest.h"
#include "model/SystemDatabase.h"
#include "platform/Database.h"
#include "platform/Recordset.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QTest>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const QString kSample = QStringLiteral("Sample Bus");
constexpr int kNodesOfDay = 8;

class DatabaseSelection : public ToolTest {
protected:
    static QString SampleFile() { return QStringLiteral(FENRIK_BIN_FOLDER "/") + kSample + ".dav"; }
    [[nodiscard]] QString ProgramFile(const QString& name) const { return copy.ProgramFolder() + '/' + name; }

    static void Select(QDialog& dialog, const QString& line)
    {
        auto& list = *dialog.findChild<QListWidget*>("lstSystems");
        const auto lines = list.findItems(line, Qt::MatchExactly);
        ASSERT_EQ(lines.size(), 1) << line.toStdString();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(lines.constFirst()).center());
    }

    static void Press(QDialog& dialog, const char* button)
    {
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    }

    void Choose(const std::function<void(QDialog&)>& work)
    {
        boxes.WorkNext("frmDBProperties", work);
        Click("Toolbar", "System");
    }

    void ChooseSample()
    {
        Choose([](QDialog& dialog) {
            Select(dialog, kSample);
            Press(dialog, "cmdOk");
        });
    }

    [[nodiscard]] QStringList Items(const char* combo) const
    {
        const auto& list = Find<QComboBox>(combo);
        QStringList items;
        for (int row = 0; row < list.count(); ++row)
            items.append(list.itemText(row));
        return items;
    }

    [[nodiscard]] static QStringList Rows(const QString& file, const QString& table)
    {
        const auto database = Database::OpenDatabase(file, false, true);
        const auto rows = database->OpenRecordset(table);
        QStringList texts;
        for (; !rows->EndOfFile(); rows->MoveNext())
            texts.append(rows->Fields(0).toString() + '=' + rows->Fields(1).toString());
        return texts;
    }

    /// The nodes of the day, without its traffic.
    [[nodiscard]] static QByteArray NodesOfTheDay()
    {
        QByteArray nodes;
        for (const QByteArray& line : ScenarioText("day.txt").split('\n')) {
            if (line.startsWith("node "))
                nodes += line + '\n';
        }
        return nodes.replace(" late 4", "") + "quiet\n";
    }

    /// Everything that the tool can learn of a node for a saved system.
    void Read(int number)
    {
        ClickNode(number);
        Click("Nodebar", "Mount");
        boxes.AnswerNext(QMessageBox::Yes);
        Click("Toolbar", "Refresh");
        Click("Toolbar", "FlashInfo");
        Click("Nodebar", "Unmount");
    }
};

TEST_F(DatabaseSelection, ANewcomerOpensTheSampleWithoutAVehicle)
{
    ASSERT_TRUE(QFile::copy(SampleFile(), ProgramFile(kSample + ".dav")));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    ChooseSample();
    EXPECT_EQ(program->Window()->windowTitle(), "Fenrik Diagnostics - " + kSample);
    const CSystem& system = program->Window()->System();
    ASSERT_EQ(system.NodesInSystem(), kNodesOfDay);
    EXPECT_EQ(system.Node(1)->Name(), "Front body");
    EXPECT_EQ(system.Node(7)->typeID(), 16);
    EXPECT_EQ(system.Node(7)->COutputs().Count(), 32);
    EXPECT_TRUE(IsVisible("Nodebar", "Node8"));
}

TEST_F(DatabaseSelection, TheMarketChangesTheComposersCommands)
{
    ASSERT_NO_FATAL_FAILURE(StartTool());
    ASSERT_THAT(Items("CboCategory"), Not(Contains("Water Pump and Tank")));
    boxes.WorkNext("frmDBProperties", [](QDialog& dialog) {
        auto& markets = *dialog.findChild<QComboBox*>("cmbMarket");
        markets.setFocus();
        QTest::keyClicks(&markets, "Fire");
        Press(dialog, "cmdOk");
    });
    program->Window()->Menus().Entry("mnuSettingsDatabase")->trigger();
    EXPECT_THAT(Items("CboCategory"), Contains("Water Pump and Tank"));
}

TEST_F(DatabaseSelection, AFileElsewhereIsFoundByBrowse)
{
    const QString stick = copy.Path("stick");
    ASSERT_TRUE(QDir().mkpath(stick) && QFile::copy(SampleFile(), stick + "/Bus 9.dav"));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    boxes.WorkNext("frmDBProperties", [](QDialog& dialog) {
        Press(dialog, "cmdBrowse");
        EXPECT_EQ(dialog.findChild<QListWidget*>("lstSystems")->currentItem()->text(), "Bus 9");
        Press(dialog, "cmdOk");
    });
    boxes.WorkNext("FileBox", [stick](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select Fenrik Command Database");
        EXPECT_THAT(static_cast<QFileDialog&>(dialog).nameFilters(),
                    ElementsAre("All Fenrik file types (*.bin *.dav)", "Fenrik Node-Specific Binaries (*.bin)",
                                "Fenrik Command Databases (*.dav)"));
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(stick + "/Bus 9.dav");
        static_cast<QFileDialog&>(dialog).findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    Click("Toolbar", "System");
    EXPECT_EQ(program->Window()->System().Database(), stick + "/Bus 9.dav");
    EXPECT_EQ(program->Window()->System().NodesInSystem(), kNodesOfDay);
}

TEST_F(DatabaseSelection, ImagesOfAnOlderVehicleAreASystemToo)
{
    QProcess vehicleImages;
    vehicleImages.start(QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle"),
                        {"--write-images", copy.ProgramFolder(), "--system", "Old Bus"});
    ASSERT_TRUE(vehicleImages.waitForFinished());
    ASSERT_NO_FATAL_FAILURE(StartTool());
    QString nodes;
    Choose([&nodes](QDialog& dialog) {
        Select(dialog, "Old Bus");
        nodes = dialog.findChild<QLabel*>("lblNodes")->text();
        Press(dialog, "cmdOk");
    });
    EXPECT_EQ(nodes, "4 Nodes in System");
    EXPECT_EQ(program->Window()->System().Name(), "Old Bus");
    EXPECT_EQ(program->Window()->System().Database(), ProgramFile("ncCommand.dav"));
}

TEST_F(DatabaseSelection, TheSampleIsWhatReadingTheSimulatedVehicleGives)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected(NodesOfTheDay().constData()));
    // Those that know no queries come last: the link never forgets such a failure, and after one the tool takes
    // each node for a silent one that it has not read before.
    for (const int number : {1, 2, 3, 6, 7, 5, 8, 4})
        Read(number);
    const QString saved = copy.Path("bin/Read Bus.dav");
    ASSERT_TRUE(SystemDatabase(program->Window()->System(), nullptr).Make(saved, ProgramFile("ncCommand.dav")));
    EXPECT_EQ(Rows(saved, "SystemInfo"), Rows(SampleFile(), "SystemInfo"));
    for (int number = 1; number <= kNodesOfDay; ++number) {
        const QString table = QStringLiteral("Node %1").arg(number);
        EXPECT_EQ(Rows(saved, table), Rows(SampleFile(), table));
    }
    (void)boxes.Take();  // the models that tell nothing are refused in words, which another test reads
    boxes.AnswerNext(QMessageBox::No);
    CloseTool();
}

}  // namespace
}  // namespace fenrik
