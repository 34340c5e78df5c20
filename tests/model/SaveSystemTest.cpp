// What the user is asked when a system is saved, and what follows.

#include "SavedSystemFixture.h"

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class SaveSystemTest : public SavedSystemTest {
protected:
    void ExpectRefusal(const QString& name)
    {
        EXPECT_FALSE(Save(name));
        ASSERT_THAT(boxes.boxes, SizeIs(1));
        EXPECT_EQ(boxes.boxes[0].text, "<" + name + "> is an invalid file name.  System not saved.");
        EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
        EXPECT_EQ(boxes.boxes[0].title, "Save System Information");
        EXPECT_EQ(settings.SystemName, "");
        EXPECT_THAT(owner.calls, IsEmpty());
    }
};

TEST_F(SaveSystemTest, AsksOnlyIfSomethingWasLearnt)
{
    std::int32_t response = 4;
    EXPECT_FALSE(system.SaveSystem(response));
    EXPECT_EQ(response, 4);
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(boxes.prompts, IsEmpty());
}

TEST_F(SaveSystemTest, AsksWhetherToSave)
{
    system.setDirty();
    boxes.answers = {QMessageBox::No};
    std::int32_t response = 4;
    EXPECT_FALSE(system.SaveSystem(response));
    EXPECT_EQ(response, 7);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].title, "Changes in System Information");
    EXPECT_EQ(boxes.boxes[0].text,
              "New information about this system has been gathered since it has been connected.  To avoid needing to "
              "gather this information again, would you like to save the system?");
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_THAT(boxes.prompts, IsEmpty());
}

TEST_F(SaveSystemTest, SavesAfterAYes)
{
    system.setDirty();
    boxes.answers = {QMessageBox::Yes};
    boxes.inputs = {"Bus"};
    std::int32_t response = 4;
    EXPECT_TRUE(system.SaveSystem(response));
    EXPECT_EQ(response, 6);
    ASSERT_THAT(boxes.prompts, SizeIs(1));
    EXPECT_EQ(boxes.prompts[0].text, "Please enter a system Name:");
    EXPECT_EQ(boxes.prompts[0].title, "Save System Information");
    EXPECT_EQ(boxes.prompts[0].preset, "");
}

TEST_F(SaveSystemTest, TellsTheSettingsAndTheWindow)
{
    EXPECT_TRUE(Save());
    EXPECT_EQ(settings.SystemName, "Bus");
    EXPECT_EQ(settings.SystemPath, folder.path() + QDir::separator());
    EXPECT_THAT(owner.calls, ElementsAre("SystemSaved Bus"));
    EXPECT_FALSE(system.Defined());
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(Files(), ElementsAre("Bus.dav", "ncCommand.dav"));
}

TEST_F(SaveSystemTest, DoesNothingWithoutAName)
{
    EXPECT_FALSE(Save(QString()));
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(Files(), ElementsAre("ncCommand.dav"));
}

TEST_F(SaveSystemTest, AsksAgainAfterSaving)
{
    system.setDirty();
    EXPECT_TRUE(Save());
    EXPECT_TRUE(system.Dirty());
    system.Clear();
    EXPECT_FALSE(system.Dirty());
}

TEST_F(SaveSystemTest, OffersTheNameOfTheLoadedSystem)
{
    EXPECT_TRUE(Save());
    Load();
    EXPECT_TRUE(Save());
    EXPECT_EQ(boxes.prompts[1].preset, "Bus");
}

// A system of another folder keeps its name, whatever that folder allows.
TEST_F(SaveSystemTest, UnderThePresentNameRunsNoCheckAndOverwritesTheTables)
{
    const QString name = QStringLiteral("Bus: red?");
    QTemporaryDir elsewhere;
    MakeDatabase(elsewhere.filePath(name + ".dav"), kDefault);
    system.LoadSystem(name, elsewhere.path(), false);
    LearnNode2();
    EXPECT_TRUE(Save(name));
    Node(2).setName(QStringLiteral("Front"));
    EXPECT_TRUE(Save(name));
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(Rows("Node 2", name + ".dav"), Contains("Node Name=Front"));
    EXPECT_THAT(QDir(elsewhere.path()).entryList(QDir::Files), ElementsAre(name + ".dav"));
}

TEST_F(SaveSystemTest, TakesANameWithItsExtensionAsTheOneWithout)
{
    for (const char* name : {"Bus.DAV", "Bus.dav", "Bus.dav.dav"}) {
        EXPECT_TRUE(Save(name));
        EXPECT_EQ(settings.SystemName, "Bus") << name;
        EXPECT_THAT(owner.calls, ElementsAre("SystemSaved Bus")) << name;
        EXPECT_THAT(Files(), ElementsAre("Bus.dav", "ncCommand.dav")) << name;
        owner.calls.clear();
    }
}

TEST_F(SaveSystemTest, AFileOfAnOldDiskWithItsExtensionInCapitalsKeepsItsCommands)
{
    MakeDatabase(File("BUS.DAV"), QStringList(kDefault) << "UPDATE Commands SET Name = 'Bell'");
    Load("BUS");
    LearnNode2();
    EXPECT_TRUE(Save("BUS"));
    EXPECT_THAT(Files(), ElementsAre("BUS.DAV", "ncCommand.dav"));
    EXPECT_THAT(Rows("Node 2", "BUS.DAV"), Contains("Node Name=Rear"));
    const auto database = Database::OpenDatabase(File("BUS.DAV"), false, true);
    EXPECT_EQ(database->OpenRecordset("Commands")->Fields("Name").toString(), "Bell");
}

TEST_F(SaveSystemTest, IntoAFolderThatCantBeWrittenRefusesTheName)
{
    folder.remove();
    ExpectRefusal("Bus");
}

TEST_F(SaveSystemTest, UnderTheNameOfAFolderIsRefused)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("Bus.dav"));
    ExpectRefusal("Bus");
}

TEST_F(SaveSystemTest, ThroughALinkToNowhereIsRefused)
{
    ASSERT_TRUE(QFile::link(File("none"), File("Bus.dav")));
    ExpectRefusal("Bus");
    EXPECT_FALSE(QFile::exists(File("none")));
}

TEST_F(SaveSystemTest, ThroughALinkWritesTheFileBehindIt)
{
    QTemporaryDir elsewhere;
    MakeDatabase(elsewhere.filePath("real"), kDefault);
    ASSERT_TRUE(QFile::link(elsewhere.filePath("real"), File("Bus.dav")));
    LearnNode2();
    EXPECT_TRUE(Save());
    EXPECT_TRUE(QFileInfo(File("Bus.dav")).isSymLink());
    EXPECT_THAT(Rows("Node 2"), Contains("Node Name=Rear"));
}

TEST_F(SaveSystemTest, WithoutALinkAsksNobody)
{
    system.setLink(nullptr);
    system.setDirty();
    EXPECT_FALSE(Save());
    EXPECT_THAT(boxes.prompts, IsEmpty());
}

struct NameRow {
    const char* name;
    QString entered;
};

class RefusedNames : public SaveSystemTest, public testing::WithParamInterface<NameRow> {};

TEST_P(RefusedNames, LeaveTheFolderAsItWas)
{
    ExpectRefusal(GetParam().entered);
    EXPECT_THAT(Files(), ElementsAre("ncCommand.dav"));
}

INSTANTIATE_TEST_SUITE_P(
    SaveSystem, RefusedNames,
    testing::Values(NameRow{"Backslash", R"(..\Bus)"}, NameRow{"Slash", "../Bus"}, NameRow{"Separator", "a/b"},
                    NameRow{"TheWordsForNone", "(Unspecified System)"}, NameRow{"Dots", ".."}, NameRow{"Dot", "."},
                    NameRow{"HiddenFile", ".Bus"}, NameRow{"Blanks", "   "}, NameRow{"OnlyTheExtension", ".dav"},
                    NameRow{"TooLong", QString(300, 'x')}, NameRow{"TooLongWhileWritten", QString(245, 'x')},
                    NameRow{"TooLongInBytes", QString(150, QChar(0x00E4))}, NameRow{"LineEnd", "Bus\nCar"},
                    NameRow{"Null", QString("Bus") + QChar(0)}, NameRow{"Colon", "Bus: red"},
                    NameRow{"Question", "Bus?"}, NameRow{"Star", "Bus*"}, NameRow{"Quote", "\"Bus\""},
                    NameRow{"Device", "con"}, NameRow{"DeviceWithExtension", "LPT1.old"},
                    NameRow{"TheDefaultDatabase", "ncCommand"}, NameRow{"TheSpecialCommands", "specialcommands"},
                    NameRow{"TheSymbols", "fxmaps.dav"}),
    [](const auto& row) { return std::string(row.param.name); });

class UsableNames : public SaveSystemTest, public testing::WithParamInterface<NameRow> {};

TEST_P(UsableNames, BringTheSystemBack)
{
    LearnNode2();
    EXPECT_TRUE(Save(GetParam().entered));
    Load(GetParam().entered);
    EXPECT_EQ(Node(2).Name(), "Rear");
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(SaveSystem, UsableNames,
                         testing::Values(NameRow{"Dots", "Bus 4.2"}, NameRow{"Blanks", " Bus  red "},
                                         NameRow{"DotAtTheEnd", "Bus."},
                                         NameRow{"Umlauts", QString::fromUtf8("Müllwagen")},
                                         NameRow{"Sql", "x'; DROP TABLE Commands; --"}, NameRow{"Brackets", "[Bus]"},
                                         NameRow{"NearlyTooLong", QString(238, 'x')}, NameRow{"Markup", "&Bus;"},
                                         NameRow{"BeginsLikeADevice", "Console"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace fenrik
