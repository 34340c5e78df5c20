#include "catalogue/SystemList.h"

#include "SystemFolder.h"
#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Added = SystemList::Added;

class SystemListTest : public testing::Test {
protected:
    /// The names behind the default line, whose name is empty.
    QStringList Filled(const QString& name = {}, const QString& path = {})
    {
        list.Fill(name, path);
        EXPECT_TRUE(list.Lines().front().IsDefault());
        QStringList names;
        for (std::size_t line = 1; line < list.Lines().size(); ++line)
            names.append(list.Lines()[line].name);
        return names;
    }

    SystemFolder folder;
    SystemList list{folder.ProgramFolder()};
};

TEST_F(SystemListTest, HoldsTheDefaultAloneWhenThereAreNoSystems)
{
    EXPECT_THAT(Filled(), IsEmpty());
    EXPECT_EQ(list.Lines().front().folder, folder.Program());
}

TEST_F(SystemListTest, ADatabaseAndImagesOfOneSystemGiveOneLine)
{
    SystemFolder::Database(folder.Program("S.dav"));
    SystemFolder::Image(folder.Program("S_Node 1.bin"));
    SystemFolder::Image(folder.Program("S_NODE 2.BIN"));
    EXPECT_THAT(Filled(), ElementsAre("S"));
}

TEST_F(SystemListTest, DatabasesComeBeforeSystemsOfImages)
{
    SystemFolder::Image(folder.Program("Alpha_Node 1.bin"));
    SystemFolder::Database(folder.Program("Zeta.dav"));
    EXPECT_THAT(Filled(), ElementsAre("Zeta", "Alpha"));
}

TEST_F(SystemListTest, TheDefaultFileIsNeverListedTwice)
{
    SystemFolder::Database(folder.Program("NCCOMMAND.DAV"));
    SystemFolder::Image(folder.Program("ncCommand_Node 1.bin"));
    EXPECT_THAT(Filled("ncCommand", folder.Program()), IsEmpty());
    EXPECT_EQ(list.Add(folder.Program("ncCommand.dav")), Added::ListedBefore);
    EXPECT_EQ(list.PositionOfFile(folder.Program("ncCommand.dav")), 0);
}

TEST_F(SystemListTest, AFileOfTheDefaultsNameElsewhereIsASystemLikeOthers)
{
    SystemFolder::Database(folder.Stick("ncCommand.dav"));
    EXPECT_EQ(list.Add(folder.Stick("ncCommand.dav")), Added::Yes);
}

TEST_F(SystemListTest, TheSystemInUseComesFirstWhateverItsFolder)
{
    SystemFolder::Database(folder.Program("Alpha.dav"));
    SystemFolder::Database(folder.Stick("Bus.dav"));
    EXPECT_THAT(Filled("Bus", folder.Stick()), ElementsAre("Bus", "Alpha"));
    EXPECT_EQ(list.Lines()[1].folder, folder.Stick());
    EXPECT_EQ(list.PositionOf("Bus"), 1);
}

TEST_F(SystemListTest, TheSystemInUseIsListedOnceIfItLiesInTheProgramsFolder)
{
    SystemFolder::Database(folder.Program("Bus.dav"));
    EXPECT_THAT(Filled("Bus", folder.Program()), ElementsAre("Bus"));
    EXPECT_THAT(Filled("Bus", folder.ProgramFolder()), ElementsAre("Bus"));
}

TEST_F(SystemListTest, TheSystemInUseIsLeftOutWhenItsFileHasGone)
{
    EXPECT_THAT(Filled("Bus", folder.Stick()), IsEmpty());
    EXPECT_EQ(list.PositionOf("Bus"), -1);
}

TEST_F(SystemListTest, TheSystemInUseMayBeImagesAlone)
{
    SystemFolder::Image(folder.Stick("Bus_Node 1.bin"));
    SystemFolder::Image(folder.Stick("Bus2_Node 1.bin"));
    EXPECT_THAT(Filled("Bus", folder.Stick()), ElementsAre("Bus"));
}

TEST_F(SystemListTest, TheSameNameInTwoFoldersGivesTwoLines)
{
    SystemFolder::Database(folder.Program("Bus.dav"));
    SystemFolder::Database(folder.Stick("Bus.dav"));
    (void)Filled();
    EXPECT_EQ(list.Add(folder.Stick("Bus.dav")), Added::Yes);
    EXPECT_EQ(list.Add(folder.Stick("Bus.dav")), Added::ListedBefore);
    EXPECT_EQ(list.PositionOfFile(folder.Stick("Bus.dav")), 2);
}

TEST_F(SystemListTest, AnImageOfAListedSystemIsListedBefore)
{
    SystemFolder::Image(folder.Stick("Bus_Node 1.bin"));
    SystemFolder::Image(folder.Stick("Bus_Node 2.bin"));
    EXPECT_EQ(list.Add(folder.Stick("Bus_Node 1.bin")), Added::Yes);
    EXPECT_EQ(list.Add(folder.Stick("Bus_Node 2.bin")), Added::ListedBefore);
}

TEST_F(SystemListTest, FilesThatAreNoSystemsAreSkippedInSilence)
{
    for (const int size : {0, 32'767, 32'769, 65'536})
        SystemFolder::Image(folder.Program(QString("Size%1.bin").arg(size)), size);
    MakeFile(folder.Program("empty.dav"), "");
    MakeFile(folder.Program("foreign.dav"), QByteArray(40'000, 'x'));
    MakeDatabase(folder.Program("norows.dav"), CategoryStatements());
    MakeDatabase(folder.Program("notables.dav"), {});
    SystemFolder::Database(folder.Program("whole"));
    QFile whole(folder.Program("whole"));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    MakeFile(folder.Program("cut.dav"), whole.read(whole.size() / 2));
    QDir(folder.ProgramFolder()).mkdir("folder.dav");
    EXPECT_THAT(Filled(), IsEmpty());
    for (const char* name : {"Size0.bin", "Size32767.bin", "Size32769.bin", "Size65536.bin", "empty.dav", "foreign.dav",
                             "norows.dav", "notables.dav", "cut.dav", "whole", "folder.dav", "absent.dav"})
        EXPECT_EQ(list.Add(folder.Program(name)), Added::Invalid) << name;
}

TEST_F(SystemListTest, AFileThatAnotherProgramKeepsToItselfIsSkipped)
{
    SystemFolder::Database(folder.Program("Bus.dav"));
    const auto held = Database::OpenDatabase(folder.Program("Bus.dav"), true, false);
    EXPECT_THAT(Filled(), IsEmpty());
    EXPECT_EQ(list.Add(folder.Program("Bus.dav")), Added::Invalid);
}

TEST_F(SystemListTest, AFileWithoutANameForItsSystemIsInvalid)
{
    SystemFolder::Database(folder.Stick(".dav"));
    SystemFolder::Image(folder.Stick("_Node 1.bin"));
    EXPECT_EQ(list.Add(folder.Stick(".dav")), Added::Invalid);
    EXPECT_EQ(list.Add(folder.Stick("_Node 1.bin")), Added::Invalid);
}

TEST_F(SystemListTest, ExtensionsOfOldDisksInCapitalsAreFound)
{
    SystemFolder::Database(folder.Program("BUS.DAV"), VersionStatements("2"));
    EXPECT_THAT(Filled(), ElementsAre("BUS"));
    EXPECT_EQ(list.DatabaseOf(list.Lines()[1]), folder.Program("BUS.DAV"));
    EXPECT_EQ(FindSystemDatabase(folder.ProgramFolder(), "BUS"), folder.Program("BUS.DAV"));
    SystemFolder::Database(folder.Program("BUS.dav"), VersionStatements("3"));
    EXPECT_THAT(Filled(), ElementsAre("BUS"));
    EXPECT_EQ(list.DatabaseOf(list.Lines()[1]), folder.Program("BUS.dav"));
}

TEST_F(SystemListTest, HundredsOfFilesAreListedOnceEach)
{
    SystemFolder::Database(folder.Stick("one.dav"));
    for (int number = 0; number < 100; ++number) {
        QFile::copy(folder.Stick("one.dav"), folder.Program(QString("Bus %1.dav").arg(number)));
        SystemFolder::Image(folder.Program(QString("Bus %1_Node 1.bin").arg(number)));
        SystemFolder::Image(folder.Program(QString("Coach %1_Node 2.bin").arg(number)));
    }
    EXPECT_EQ(Filled().size(), 200);
}

struct NameRow {
    const char* file;
    const char* name;
};

class SystemNames : public testing::TestWithParam<NameRow> {};

TEST_P(SystemNames, AreCutFromTheFiles)
{
    EXPECT_EQ(SystemList::NameOf(GetParam().file), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(SystemList, SystemNames,
                         testing::Values(NameRow{"S.dav", "S"}, NameRow{"/a.b/S.dav", "S"},
                                         NameRow{"S_Node 1.bin", "S"}, NameRow{"S_nOdE 12.BIN", "S"},
                                         NameRow{"S.bin", "S"}, NameRow{"S_Node1.bin", "S_Node1"},
                                         NameRow{"S_node 1_node 2.bin", "S"}, NameRow{"S_Node 1.dav", "S_Node 1"},
                                         NameRow{"S.v2.dav", "S.v2"}, NameRow{"_node 1.bin", ""}));

}  // namespace
}  // namespace fenrik
