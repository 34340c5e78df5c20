#include "catalogue/SpecialCommands.h"

#include "CatalogueHostRecorder.h"
#include "shared/CommandTable.h"
#include "support/BoxRecorder.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

class SpecialCommandsTest : public testing::Test {
protected:
    static QStringList Tables(const char* version, bool withMount)
    {
        return {"CREATE TABLE Version (Version TEXT)", QString("INSERT INTO Version VALUES ('%1')").arg(version),
                QString("CREATE TABLE General (Command INTEGER, CodeMask INTEGER, CodeShift INTEGER, NodeMask INTEGER, "
                        "NodeShift INTEGER, \"Text Seperator\" TEXT%1)")
                    .arg(withMount ? ", \"Requires Mount\" INTEGER" : ""),
                "CREATE TABLE Defaults (Command INTEGER, State INTEGER, extended INTEGER, Extra TEXT, Icon TEXT)",
                "CREATE TABLE Details (Command INTEGER, Name TEXT, Code INTEGER, State INTEGER, extended INTEGER, "
                "Extra TEXT, Icon TEXT)"};
    }

    static QStringList Good()
    {
        return Tables("1.1", true) +
               QStringList{"INSERT INTO General VALUES (969, 65280, 8, 255, 0, ':', -1)",
                           "INSERT INTO General VALUES (930, 65535, 0, NULL, NULL, NULL, 0)",
                           "INSERT INTO Defaults VALUES (969, -1, 0, 'Switch', 'Wrench')",
                           "INSERT INTO Details VALUES (969, 'Last', 9, 0, 1, '', 'Lamp')",
                           "INSERT INTO Details VALUES (969, 'First', 2, NULL, NULL, NULL, NULL)",
                           "INSERT INTO Details VALUES (930, 'Plain', 1, NULL, NULL, NULL, NULL)"};
    }

    void Load(const QStringList& statements)
    {
        const QString path = folder.filePath("SpecialCommands.dav");
        MakeDatabase(path, statements);
        commands.LoadSpecialCommands(path, boxes);
    }

    void ExpectTheEnd() const
    {
        ASSERT_EQ(boxes.boxes.size(), 1U);
        EXPECT_EQ(boxes.boxes[0].text, "An error occured loading the file <SpecialCommands.dav>\n"
                                       "This program cannot operate with out it and will be shutdown!");
        EXPECT_EQ(host.ends, 1);
    }

    QTemporaryDir folder;
    CommandTable table;
    CatalogueHostRecorder host;
    BoxRecorder boxes;
    SpecialCommands commands{table, host};
};

TEST_F(SpecialCommandsTest, CommandsAreFoundByNumber)
{
    Load(Good());

    EXPECT_EQ(commands.Count(), 2);
    EXPECT_TRUE(commands.IsSpecialCommand(969));
    EXPECT_FALSE(commands.IsSpecialCommand(970));
    EXPECT_EQ(commands.Find(970), nullptr);
    EXPECT_TRUE(boxes.boxes.empty());
    EXPECT_EQ(host.ends, 0);
}

TEST_F(SpecialCommandsTest, TheColumnsOfGeneralAreStored)
{
    Load(Good());
    const CSpecialCommand& command = *commands.Find(969);

    EXPECT_EQ(command.MyCommand, 969);
    EXPECT_EQ(command.CodeMask, 0xFF00);
    EXPECT_EQ(command.CodeShift, 8);
    EXPECT_EQ(command.NodeMask, 0xFF);
    EXPECT_EQ(command.NodeShift, 0);
    EXPECT_TRUE(command.RequiresMount);
}

TEST_F(SpecialCommandsTest, OneBlankFollowsTheSeparator)
{
    Load(Good());
    EXPECT_EQ(commands.Find(969)->TextSeperator, ": ");
    EXPECT_EQ(commands.Find(930)->TextSeperator, " ");
}

TEST_F(SpecialCommandsTest, ANullNodeMaskMeansNoNodePart)
{
    Load(Good());
    EXPECT_FALSE(commands.Find(930)->HasNodePart());
    EXPECT_EQ(commands.Find(930)->NodeShift, 0);
    EXPECT_FALSE(commands.Find(930)->RequiresMount);
}

TEST_F(SpecialCommandsTest, ItemsComeInTheOrderOfTheirCodes)
{
    Load(Good());
    const auto& items = commands.Find(969)->itemList();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0]->Name(), "First");
    EXPECT_EQ(items[1]->Name(), "Last");
    EXPECT_EQ(items[1]->Code(), 9 * 4 + 1);
    EXPECT_EQ(items[1]->Icon(), "Lamp");
}

TEST_F(SpecialCommandsTest, NullsInAnItemTakeTheDefaultsOfItsCommand)
{
    Load(Good());
    const CSpecialCommandItem& item = *commands.Find(969)->itemList()[0];
    EXPECT_EQ(item.Code(), 2 * 4 + 2);
    EXPECT_EQ(item.Extra(), "Switch");
    EXPECT_EQ(item.Icon(), "Wrench");
}

TEST_F(SpecialCommandsTest, AnEmptyExtraIsNoNull)
{
    Load(Good());
    EXPECT_EQ(commands.Find(969)->itemList()[1]->Extra(), "");
}

TEST_F(SpecialCommandsTest, WithoutDefaultsANullIsOffAndPlain)
{
    Load(Good());
    const CSpecialCommandItem& item = *commands.Find(930)->itemList()[0];
    EXPECT_EQ(item.Code(), 4);
    EXPECT_EQ(item.Extra(), "");
    EXPECT_EQ(item.Icon(), "Info");
}

TEST_F(SpecialCommandsTest, AFileOfVersionOneNeedsNoMountColumn)
{
    Load(Tables("1.0", false) + QStringList{"INSERT INTO General VALUES (969, 255, 0, NULL, NULL, '')"});
    EXPECT_FALSE(commands.Find(969)->RequiresMount);
    EXPECT_EQ(host.ends, 0);
}

TEST_F(SpecialCommandsTest, BeforeVersionOneOneTheMountColumnIsNotRead)
{
    Load(Tables("1.0", true) + QStringList{"INSERT INTO General VALUES (969, 255, 0, NULL, NULL, '', -1)"});
    EXPECT_FALSE(commands.Find(969)->RequiresMount);
}

TEST_F(SpecialCommandsTest, AMountColumnThatIsMissingInALaterVersionIsForgiven)
{
    Load(Tables("2 beta", false) + QStringList{"INSERT INTO General VALUES (969, 255, 0, NULL, NULL, '')"});
    EXPECT_FALSE(commands.Find(969)->RequiresMount);
    EXPECT_EQ(host.ends, 0);
}

TEST_F(SpecialCommandsTest, ItemsThatMessagesMakeAreNamedFromTheCommandTable)
{
    Load(Good());
    table[930].Name = "Later Name";
    commands.Find(930)->SelectItem(77, 0, 0, false);
    EXPECT_EQ(commands.Find(930)->scName(), "Later Name");
}

TEST_F(SpecialCommandsTest, ASecondLoadStartsAnew)
{
    Load(Good());
    Load(Tables("1.1", true) + QStringList{"INSERT INTO General VALUES (930, 1, 0, NULL, NULL, '', 0)"});
    EXPECT_EQ(commands.Count(), 1);
    EXPECT_EQ(commands.Find(930)->CodeMask, 1);
}

TEST_F(SpecialCommandsTest, AMissingFileEndsTheProgram)
{
    commands.LoadSpecialCommands(folder.filePath("absent.dav"), boxes);
    ExpectTheEnd();
}

struct Fault {
    const char* name;
    const char* statement;
};

class SpecialCommandFaults : public SpecialCommandsTest, public testing::WithParamInterface<Fault> {};

TEST_P(SpecialCommandFaults, EndTheProgram)
{
    Load(Good() + QStringList{GetParam().statement});
    ExpectTheEnd();
}

INSTANTIATE_TEST_SUITE_P(
    SpecialCommands, SpecialCommandFaults,
    testing::Values(Fault{"NoVersionRow", "DELETE FROM Version"}, Fault{"NoVersionTable", "DROP TABLE Version"},
                    Fault{"NoGeneralTable", "DROP TABLE General"}, Fault{"NoDefaultsTable", "DROP TABLE Defaults"},
                    Fault{"NoDetailsTable", "DROP TABLE Details"},
                    Fault{"DetailsOfAnUnknownCommand", "UPDATE Details SET Command = 931 WHERE Command = 930"},
                    Fault{"DefaultsOfAnUnknownCommand", "UPDATE Defaults SET Command = 931"},
                    Fault{"NoCodeMask", "UPDATE General SET CodeMask = NULL"},
                    Fault{"ShiftTooLarge", "UPDATE General SET CodeShift = 256"},
                    Fault{"NumberTooLarge", "UPDATE General SET Command = 40000 WHERE Command = 930"},
                    Fault{"TwoRowsOfOneCommand", "UPDATE General SET Command = 969"},
                    Fault{"TwoItemsOfOneKey", "INSERT INTO Details VALUES (930, 'Again', 1, 0, 0, '', '')"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
