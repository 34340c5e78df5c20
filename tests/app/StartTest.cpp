#include "WindowFixture.h"

#include <QComboBox>

#include <unistd.h>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class StartTest : public WindowTest {};

TEST_F(StartTest, TheWindowIsShownDisconnectedAndReady)
{
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(Window().objectName(), "frmDiag");
    EXPECT_EQ(Window().windowTitle(), "Fenrik Diagnostics");
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_EQ(Msg(), "");
    EXPECT_TRUE(Window().Hub().State().Ready());
    EXPECT_TRUE(Button("Connect").isEnabled());
    EXPECT_FALSE(Button("Disconnect").isEnabled());
    EXPECT_TRUE(Button("Analog").isChecked());
    EXPECT_EQ(System().NodesInSystem(), 3);
    EXPECT_FALSE(System().Defined());
    EXPECT_THAT(user.seen, IsEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(StartTest, TheSplashWindowIsGoneAfterwards)
{
    ASSERT_TRUE(Start());
    for (const QWidget* widget : QApplication::topLevelWidgets())
        EXPECT_NE(widget->objectName(), "frmSplash");
}

TEST_F(StartTest, TheCatalogueIsOffered)
{
    ASSERT_TRUE(Start());
    auto& categories = Control<QComboBox>("CboCategory");
    EXPECT_EQ(categories.currentText(), "Exterior Lighting");
    EXPECT_LT(categories.findText("<Undefined Messages>"), 0);
    EXPECT_EQ(Control<QComboBox>("CboCommand").currentText(), "Head Lamps Low Beam");
}

TEST_F(StartTest, TheLogFolderIsMadeAndNoLogFile)
{
    ASSERT_TRUE(Start());
    EXPECT_TRUE(QDir(ProgramFile("diaglogs")).exists());
    EXPECT_THAT(QDir(ProgramFile("diaglogs")).entryList(QDir::Files), IsEmpty());
}

TEST_F(StartTest, AnEmptyStoreIsPortOneAndEightNodes)
{
    MakeFile(SettingsFile(), "");
    const QString none = dir.filePath("none");
    program = std::make_unique<MMain>(MMain::Environment{ProgramFolder(none, dir.filePath("program"), none),
                                                         dir.filePath("config"), VersionInfo(1, 0, 7, {})});
    ASSERT_TRUE(program->Main());
    EXPECT_EQ(System().NodesInSystem(), 8);
    Window().close();
    EXPECT_EQ(Stored("Settings/CommPort"), "1");
    EXPECT_EQ(Stored("Settings/Protocol"), "Fenrik 2000");
    EXPECT_EQ(Stored("Settings/FirstRun"), "False");
}

struct CaptionRow {
    const char* comments;
    const char* caption;
};

class Captions : public StartTest, public testing::WithParamInterface<CaptionRow> {};

TEST_P(Captions, TellTheBuild)
{
    ASSERT_TRUE(Start({}, GetParam().comments));
    EXPECT_EQ(Window().windowTitle(), GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(Start, Captions,
                         testing::Values(CaptionRow{"", "Fenrik Diagnostics"},
                                         CaptionRow{"A beta for the field", "Fenrik Diagnostics (non-released)"},
                                         CaptionRow{"test", "Fenrik Diagnostics (test version)"},
                                         CaptionRow{"Debug", "Fenrik Diagnostics (test version)"},
                                         CaptionRow{"debug beta", "Fenrik Diagnostics (non-released)"}));

TEST_F(StartTest, SystemNameAndPathDoNotSurviveARestart)
{
    ASSERT_TRUE(Start("SystemName=Bus\nSystemPath=/somewhere\n"));
    EXPECT_FALSE(System().Defined());
    EXPECT_EQ(Window().windowTitle(), "Fenrik Diagnostics");
}

TEST_F(StartTest, AProtocolOfAnotherCaseIsThePresentOne)
{
    ASSERT_TRUE(Start("Protocol=fenrik 98\n"));
    EXPECT_EQ(Msg(), "");
}

TEST_F(StartTest, AConnectionMethodThatDoesNotExistIsTheFirst)
{
    ASSERT_TRUE(Start("ConnectionType=7\n"));
    EXPECT_TRUE(Entry("mnuConnectUsing_101").isChecked());
    Window().close();
    EXPECT_EQ(Stored("Settings/ConnectionType"), "1");
}

// --- Files that fail -----------------------------------------------------------------------------------------------

struct FileRow {
    const char* name;
    const char* file;
    const char* content;  ///< nullptr: the file is missing; "half": its first half; "maps": the file of the maps
    const char* text;
};

class BadFiles : public StartTest, public testing::WithParamInterface<FileRow> {
protected:
    BadFiles()
    {
        const FileRow& row = GetParam();
        QFile file(ProgramFile(row.file));
        if (!row.content)
            file.remove();
        else if (qstrcmp(row.content, "half") == 0)
            file.resize(file.size() / 2);
        else if (qstrcmp(row.content, "maps") == 0)
            TakeTheMapsFor(file);
        else
            MakeFile(ProgramFile(row.file), row.content);
    }

    void TakeTheMapsFor(QFile& file)
    {
        file.remove();
        EXPECT_TRUE(QFile::copy(ProgramFile("fxmaps.dav"), file.fileName()));
    }
};

TEST_P(BadFiles, AreToldAndEndTheProgram)
{
    EXPECT_FALSE(Start());
    ASSERT_THAT(user.seen, SizeIs(1));
    EXPECT_EQ(user.seen[0], QString(GetParam().text).replace("%1", dir.filePath("program")));
    EXPECT_TRUE(!program->Window() || !Window().isVisible());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

constexpr const char* kMaps = "An error occured loading the file <fxmaps.dav>\n"
                              "This program cannot operate with out it and will be shutdown!";
constexpr const char* kSpecials = "An error occured loading the file <SpecialCommands.dav>\n"
                                  "This program cannot operate with out it and will be shutdown!";
// A file that is no database at all counts as one that was not found.
constexpr const char* kNoCommands = "The default system database file <ncCommand.dav> was not found in the path <%1>.\n"
                                    "Because this file is required, Diagnostics will shut down.";
constexpr const char* kBadCommands = "The system database file <ncCommand.dav> is corrupt.\n"
                                     "Because this file is required, Diagnostics will shut down.";
constexpr const char* kForeign = "%PDF-1.7 this is quite another file, and long enough to have a header of its own, "
                                 "so that nobody takes it for a database by its first hundred bytes alone........";

INSTANTIATE_TEST_SUITE_P(Start, BadFiles,
                         testing::Values(FileRow{"MapsMissing", "fxmaps.dav", nullptr, kMaps},
                                         FileRow{"MapsEmpty", "fxmaps.dav", "", kMaps},
                                         FileRow{"MapsForeign", "fxmaps.dav", kForeign, kMaps},
                                         FileRow{"MapsTruncated", "fxmaps.dav", "half", kMaps},
                                         FileRow{"SpecialsMissing", "SpecialCommands.dav", nullptr, kSpecials},
                                         FileRow{"SpecialsEmpty", "SpecialCommands.dav", "", kSpecials},
                                         FileRow{"SpecialsForeign", "SpecialCommands.dav", kForeign, kSpecials},
                                         FileRow{"SpecialsTruncated", "SpecialCommands.dav", "half", kSpecials},
                                         FileRow{"SpecialsOfAnotherKind", "SpecialCommands.dav", "maps", kSpecials},
                                         FileRow{"CommandsOfAnotherKind", "ncCommand.dav", "maps", kBadCommands},
                                         FileRow{"CommandsMissing", "ncCommand.dav", nullptr, kNoCommands},
                                         FileRow{"CommandsEmpty", "ncCommand.dav", "", kNoCommands},
                                         FileRow{"CommandsForeign", "ncCommand.dav", kForeign, kNoCommands},
                                         FileRow{"CommandsTruncated", "ncCommand.dav", "half", kNoCommands}),
                         [](const auto& test) { return test.param.name; });

// --- Settings that fail --------------------------------------------------------------------------------------------

TEST_F(StartTest, ABrokenSettingIsReportedAndTheProgramStartsWithWhatStandsBeforeIt)
{
    ASSERT_TRUE(Start("BaudRate=fast\n"));
    ASSERT_THAT(user.seen, SizeIs(1));
    EXPECT_TRUE(user.seen[0].contains(">> Error <13> Type mismatch")) << user.seen[0].toStdString();
    EXPECT_TRUE(user.seen[0].contains("\nMMain:LoadSettings\n")) << user.seen[0].toStdString();
    EXPECT_TRUE(QFile::exists(ProgramFile("DiagErr.log")));
    EXPECT_EQ(System().NodesInSystem(), 0) << "what stands behind it is empty";
    Window().close();
    QFile copy(SettingsFile() + ".broken");
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_TRUE(copy.readAll().contains("BaudRate=fast")) << "what the user had is not lost";
}

TEST_F(StartTest, FilesOfObjectsAreSetAsideAndTheUserIsToldWhich)
{
    const QString windowFile = dir.filePath("config/window.ini");
    MakeFile(windowFile, "[frmDiag]\nGeometry=@Variant(\\0\\0\\0\\t)\n");
    ASSERT_TRUE(Start("CommPort=@Variant(\\0\\0\\0\\t)\n"));
    EXPECT_THAT(user.seen, IsEmpty());
    EXPECT_TRUE(Msg().startsWith("Damaged: settings.ini, window.ini. ")) << Msg().toStdString();
    EXPECT_TRUE(QFile::exists(SettingsFile() + ".broken"));
    EXPECT_TRUE(QFile::exists(windowFile + ".broken"));
}

TEST_F(StartTest, AnUnwritableProgramFolderTakesTheLogsItself)
{
    QFile::setPermissions(dir.filePath("program"), QFile::ReadOwner | QFile::ExeOwner);
    const bool refused = ::access(qPrintable(dir.filePath("program")), W_OK) != 0;
    if (!refused) {
        GTEST_SKIP() << "this user may write everywhere";
    }
    const bool started = Start();
    QFile::setPermissions(dir.filePath("program"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(started);
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(StartTest, ALogFolderThatCannotBeMadeIsNoError)
{
    // A link to nowhere: no such folder, and none can be made under its name.
    ASSERT_TRUE(QFile::link(dir.filePath("nowhere/at all"), ProgramFile("diaglogs")));
    ASSERT_TRUE(Start());
    EXPECT_THAT(user.seen, IsEmpty());
    Click("Connect");
    EXPECT_THAT(QDir(dir.filePath("program")).entryList({"*.txt"}), SizeIs(1)) << "logs go to the program's folder";
}

}  // namespace
}  // namespace fenrik
