// The program's start with the protocol of the older network.

#include "legacy/FrmDiag98.h"

#include "app/WindowFixture.h"
#include "legacy/LegacyDatabase.h"
#include "support/WhenShown.h"

#include <QLabel>
#include <QListWidget>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LegacyStart : public WindowTest {
protected:
    LegacyStart() { MakeLegacyDatabase(dir.filePath("Bus.dav"), 255); }

    bool StartLegacy(const QByteArray& database)
    {
        return Start("Protocol=Fenrik 98\n[Logging]\nOn=True\n[Database]\n" + database);
    }

    [[nodiscard]] QByteArray GoodDatabase() const { return "Path=" + dir.path().toUtf8() + "\nName=Bus.dav\n"; }

    FrmDiag98& Window98() { return *program->LegacyWindow(); }
};

TEST_F(LegacyStart, OpensTheOtherWindowAndAsksNothing)
{
    ASSERT_TRUE(StartLegacy(GoodDatabase()));
    EXPECT_EQ(program->Window(), nullptr);
    ASSERT_NE(program->LegacyWindow(), nullptr);
    EXPECT_EQ(program->MainWindow(), program->LegacyWindow());
    EXPECT_TRUE(Window98().isVisible());
    EXPECT_THAT(user.seen, IsEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(LegacyStart, AWindowFileOfObjectsIsSetAsideAndTheUserIsTold)
{
    MakeFile(dir.filePath("config/window.ini"), "[FrmDiag98]\nGeometry=@Variant(\\0\\0\\0\\t)\n");
    ASSERT_TRUE(StartLegacy(GoodDatabase()));
    const QString told = Window98().findChild<QLabel*>("txtMsg")->text();
    EXPECT_TRUE(told.startsWith("Damaged: window.ini. ")) << told.toStdString();
}

TEST_F(LegacyStart, NeedsNoCatalogue)
{
    QFile::remove(ProgramFile("ncCommand.dav"));
    QFile::remove(ProgramFile("SpecialCommands.dav"));
    EXPECT_TRUE(StartLegacy(GoodDatabase()));
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(LegacyStart, NeedsTheCharacterMaps)
{
    QFile::remove(ProgramFile("fxmaps.dav"));
    EXPECT_FALSE(StartLegacy(GoodDatabase()));
    EXPECT_EQ(user.seen.size(), 1);
    EXPECT_EQ(program->LegacyWindow(), nullptr);
}

class OtherProtocols : public LegacyStart, public testing::WithParamInterface<const char*> {};

TEST_P(OtherProtocols, OpenTheWindowOfThePresentNetwork)
{
    ASSERT_TRUE(Start(QByteArray("Protocol=") + GetParam() + "\n"));
    EXPECT_NE(program->Window(), nullptr);
    EXPECT_EQ(program->LegacyWindow(), nullptr);
    EXPECT_EQ(program->MainWindow(), program->Window());
}

INSTANTIATE_TEST_SUITE_P(App, OtherProtocols, testing::Values("Fenrik 2000", "fenrik 98", "Fenrik98", ""));

struct QuestionRow {
    const char* name;
    QByteArray database;
    const char* text;  ///< "%1" is the test's folder
};

class Questions : public LegacyStart, public testing::WithParamInterface<QuestionRow> {};

TEST_P(Questions, AreFollowedByTheChoiceOfADatabase)
{
    bool splashThere = false;
    WhenShown chooser{"FrmFileDialog", [&](QDialog& dialog) {
                          for (const QWidget* widget : QApplication::topLevelWidgets())
                              splashThere = splashThere || (widget->objectName() == "frmSplash" && widget->isVisible());
                          dialog.close();
                      }};
    user.answers = {QMessageBox::Ok, QMessageBox::Yes};
    QByteArray database = GetParam().database;
    ASSERT_TRUE(StartLegacy(database.replace("DIR", dir.path().toUtf8())));
    EXPECT_EQ(chooser.Times(), 1);
    ASSERT_EQ(user.seen.size(), 2) << "the box, and the dialog's own question";
    EXPECT_EQ(user.seen[0], QString(GetParam().text).arg(QDir::toNativeSeparators(dir.path())));
    EXPECT_TRUE(user.seen[1].startsWith("Without a valid system database selected "));
    EXPECT_TRUE(splashThere) << "it is closed last";
    EXPECT_FALSE(user.sawHourglass);
    EXPECT_TRUE(Window98().isVisible());
}

constexpr const char* kNotSelected = "A system database has not been selected.\nPlease select a system database.";
INSTANTIATE_TEST_SUITE_P(
    App, Questions,
    testing::Values(QuestionRow{"NoDatabase", "", kNotSelected}, QuestionRow{"NoName", "Path=DIR\n", kNotSelected},
                    QuestionRow{"NoPath", "Name=Bus.dav\n", kNotSelected},
                    QuestionRow{"GoneFile", "Path=DIR\nName=Gone.dav\n",
                                "The database %1/Gone.dav\n"
                                "has been moved or deleted. Please select a new system Database."},
                    QuestionRow{"GoneFolder", "Path=DIR/gone\nName=Bus.dav\n",
                                "The database %1/gone/Bus.dav\n"
                                "has been moved or deleted. Please select a new system Database."}),
    [](const auto& row) { return row.param.name; });

TEST_F(LegacyStart, TheDatabaseThatIsChosenIsKeptForTheNextStart)
{
    QFile::copy(dir.filePath("Bus.dav"), ProgramFile("Bus.dav"));
    WhenShown chooser{"FrmFileDialog", [](QDialog& dialog) {
                          auto& files = *dialog.findChild<QListWidget*>("File1");
                          files.setCurrentItem(files.findItems("Bus.dav", Qt::MatchExactly).value(0));
                          dialog.close();
                      }};
    ASSERT_TRUE(StartLegacy(""));
    EXPECT_EQ(user.seen.size(), 1);
    Window98().close();
    EXPECT_EQ(Stored("Database/Path"), QDir::cleanPath(dir.filePath("program")));
    EXPECT_EQ(Stored("Database/Name"), "Bus.dav");
    EXPECT_EQ(Stored("Database/SystemName"), "Bus 12");
    EXPECT_EQ(Stored("Database/Created"), "14 March 1998");
    EXPECT_EQ(Stored("Database/By"), "Miller");
    EXPECT_EQ(Stored("Settings/Protocol"), "Fenrik 98");
}

TEST_F(LegacyStart, ConnectsOnTheSamePortAndLogsInTheSameFolder)
{
    ASSERT_TRUE(StartLegacy(GoodDatabase()));
    auto& toolbar = *Window98().findChild<QToolBar*>("Toolbar");
    QTest::mouseClick(toolbar.widgetForAction(toolbar.findChild<QAction*>("Connect")), Qt::LeftButton);
    EXPECT_EQ(Window98().findChild<QLabel*>("txtStatus")->text(), "Connected");
    EXPECT_EQ(QDir(ProgramFile("diaglogs")).entryList(QDir::Files).size(), 1);
    Window98().close();
}

}  // namespace
}  // namespace fenrik
