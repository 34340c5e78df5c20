// Saved systems that are damaged or hold what nobody expects.

#include "SavedSystemFixture.h"

namespace fenrik {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class LoadFailureTest : public SavedSystemTest {
protected:
    void SaveLearnt()
    {
        LearnNode2();
        ASSERT_TRUE(Save());
    }

    void ExpectBoxOfNode2()
    {
        ASSERT_THAT(boxes.boxes, SizeIs(1));
        EXPECT_EQ(boxes.boxes[0].text,
                  "An unexpected error has occurred while trying to load the information for Node 2");
        EXPECT_EQ(boxes.boxes[0].title, "Load System Database");
    }

    void ExpectBoxOfTheFile(const QString& reason)
    {
        ASSERT_THAT(boxes.boxes, SizeIs(1));
        EXPECT_EQ(boxes.boxes[0].title, "Load System Database");
        EXPECT_EQ(boxes.boxes[0].text,
                  "An unexpected error has occurred while trying to load a system database: " + reason +
                      "\nAs a result, some system information might not be completely loaded.");
    }

    [[nodiscard]] static QString SetValue(const char* row, const char* value)
    {
        return QStringLiteral("UPDATE [Node 2] SET PropertyValue = %1 WHERE PropertyName = '%2'").arg(value, row);
    }
};

TEST_F(LoadFailureTest, AFileThatIsNoDatabaseIsToldOnce)
{
    MakeFile(File("Bus.dav"), "no database at all");
    Load();
    ExpectBoxOfTheFile("The file " + File("Bus.dav") + " is not a database.");
    EXPECT_EQ(system.NodesInSystem(), 3);
    EXPECT_TRUE(system.Defined());
    EXPECT_EQ(system.Database(), File("Bus.dav"));
}

TEST_F(LoadFailureTest, AnAbsentFileIsNotAskedFor)
{
    Load("None");
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(system.Database(), File("ncCommand.dav"));
}

TEST_F(LoadFailureTest, AFolderOfThatNameIsNoFile)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("Bus.dav"));
    Load();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(system.Database(), File("ncCommand.dav"));
}

TEST_F(LoadFailureTest, AFileInUseIsToldOnce)
{
    SaveLearnt();
    const auto other = Database::OpenDatabase(File("Bus.dav"), true, false);
    Load();
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_THAT(boxes.boxes[0].text.toStdString(), HasSubstr("database is locked"));
}

TEST_F(LoadFailureTest, ATruncatedFileIsToldWhereverItEnds)
{
    SaveLearnt();
    const QByteArray whole = BytesOf(File("Bus.dav"));
    for (qsizetype size = 0; size < whole.size(); size += 700) {
        MakeFile(File("Bus.dav"), whole.first(size));
        boxes.boxes.clear();
        Load();
        EXPECT_THAT(boxes.boxes, SizeIs(1)) << size;
    }
}

TEST_F(LoadFailureTest, ADamagedFileNeverTakesTheToolWithIt)
{
    SaveLearnt();
    const QByteArray whole = BytesOf(File("Bus.dav"));
    for (qsizetype place = 100; place < whole.size(); place += 97) {
        QByteArray damaged = whole;
        damaged[place] = char(~damaged[place]);
        MakeFile(File("Bus.dav"), damaged);
        Load();
        EXPECT_GE(system.NodesInSystem(), 3) << place;
    }
}

TEST_F(LoadFailureTest, ANodeWithoutATableKeepsWhatItHasInSilence)
{
    SaveLearnt();
    Change({"DROP TABLE [Node 2]"});
    Node(2).LoadSystemDatabase(File("Bus.dav"));
    EXPECT_EQ(Node(2).Name(), "Rear");
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

// A box lasts as long as the user likes. What he does to the file meanwhile costs the nodes behind it nothing.
TEST_F(LoadFailureTest, AFileThatGoesAwayBehindTheFirstNodesBoxIsReadToItsEnd)
{
    struct RemovingBoxes : BoxRecorder {
        Button MsgBox(const QString& text, QMessageBox::Icon icon, Buttons buttons, const QString& title) override
        {
            QFile::remove(path);
            return BoxRecorder::MsgBox(text, icon, buttons, title);
        }
        QString path;
    };
    SaveLearnt();
    Change({"DROP TABLE [Node 1]", "CREATE TABLE [Node 1] (Other TEXT)"});
    RemovingBoxes removing;
    removing.path = File("Bus.dav");
    const NodeLink other{handler, pump, commands, removing, errors, nullptr};
    system.setLink(&other);
    Load();
    EXPECT_FALSE(QFile::exists(removing.path));
    EXPECT_THAT(removing.boxes, SizeIs(1));
    EXPECT_EQ(Node(2).Name(), "Rear");
    system.setLink(&link);
}

TEST_F(LoadFailureTest, ATableWithoutTheColumnsIsTold)
{
    SaveLearnt();
    Change({"DROP TABLE [Node 2]", "CREATE TABLE [Node 2] (Other TEXT)",
            "UPDATE [Node 3] SET PropertyValue = 'Roof' WHERE PropertyName = 'Node Name'"});
    Load();
    ExpectBoxOfNode2();
    EXPECT_EQ(Node(3).Name(), "Roof");
}

TEST_F(LoadFailureTest, SystemInfoWithoutTheColumnsIsToldAndTheNodesAreRead)
{
    SaveLearnt();
    Change({"DROP TABLE SystemInfo", "CREATE TABLE SystemInfo (Other TEXT)"});
    Load();
    ExpectBoxOfTheFile("There is no column PropertyName.");
    EXPECT_EQ(Node(2).Name(), "Rear");
}

TEST_F(LoadFailureTest, NullsAreLeftOut)
{
    SaveLearnt();
    Change({"UPDATE [Node 2] SET PropertyValue = NULL WHERE PropertyName <> 'Node Type'",
            "UPDATE SystemInfo SET PropertyValue = NULL", "INSERT INTO [Node 2] VALUES (NULL, NULL)",
            "INSERT INTO [Node 2] VALUES (NULL, 'x')"});
    Load();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(Node(2).typeID(), 2);
    EXPECT_EQ(Node(2).Name(), "");
    EXPECT_EQ(Output(1).Name(), "Output 1");
    EXPECT_EQ(Output(1).UsageCode(), 255);
    EXPECT_EQ(Input(1).OnState(), 255);
}

TEST_F(LoadFailureTest, ATableThatEndsInsideAPointIsReadThatFar)
{
    SaveLearnt();
    Change({"DELETE FROM [Node 2] WHERE rowid > (SELECT rowid FROM [Node 2] WHERE PropertyName = 'Output Name')"});
    Load();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(Output(1).Name(), "Horn");
    EXPECT_EQ(Output(1).UsageCode(), 255);
}

TEST_F(LoadFailureTest, ManyCommandsAndStrangeOnesStayInTheFile)
{
    ASSERT_TRUE(Save());
    Change({"INSERT INTO Commands WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT 10000) "
            "SELECT x - 100, 'Name ' || x, 1 FROM n"});
    SaveLearnt();
    Load();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(Node(2).Name(), "Rear");
    EXPECT_EQ(Database::OpenDatabase(File("Bus.dav"), false, true)->OpenRecordset("Commands")->RecordCount(), 10001);
}

struct ValueRow {
    const char* name;
    const char* row;
    const char* value;
};

class StrangeValues : public LoadFailureTest, public testing::WithParamInterface<ValueRow> {};

TEST_P(StrangeValues, AreToldOnceAndCostOnlyTheirPoint)
{
    SaveLearnt();
    Output(2).setName(QStringLiteral("Lamp"));
    ASSERT_TRUE(Save());
    Change({SetValue(GetParam().row, GetParam().value)});
    Load();
    ExpectBoxOfNode2();
    EXPECT_EQ(Node(2).Name(), "Rear");
    EXPECT_EQ(Output(2).Name(), "Lamp");
}

INSTANTIATE_TEST_SUITE_P(
    LoadFailure, StrangeValues,
    testing::Values(ValueRow{"OnStateText", "On State", "'high'"}, ValueRow{"OnStateEmpty", "On State", "''"},
                    ValueRow{"OnStateTooLarge", "On State", "'32768'"},
                    ValueRow{"InUseTooLarge", "In Use", "'2147483648'"}, ValueRow{"InUseHuge", "In Use", "'1e300'"},
                    ValueRow{"InUseNoNumber", "In Use", "'nan'"}, ValueRow{"InUseFraction", "In Use", "'1.5'"},
                    ValueRow{"InUseBytes", "In Use", "x'00FF'"}),
    [](const auto& row) { return std::string(row.param.name); });

class StrangeHeads : public LoadFailureTest, public testing::WithParamInterface<ValueRow> {};

TEST_P(StrangeHeads, AreToldOnce)
{
    SaveLearnt();
    Change({SetValue(GetParam().row, GetParam().value)});
    Load();
    ExpectBoxOfNode2();
    EXPECT_EQ(Node(2).Name(), "Rear");
}

INSTANTIATE_TEST_SUITE_P(LoadFailure, StrangeHeads,
                         testing::Values(ValueRow{"TypeText", "Node Type", "'x'"},
                                         ValueRow{"TypeTooLarge", "Node Type", "'40000'"},
                                         ValueRow{"VersionTooLarge", "Node Major Version", "'256'"},
                                         ValueRow{"VersionNegative", "Node Minor Version", "'-1'"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(LoadFailureTest, ARelationshipThatIsLongerThanANodesMemoryIsTold)
{
    SaveLearnt();
    Change({"UPDATE [Node 2] SET PropertyValue = replace(hex(zeroblob(65537)), '00', 'A') "
            "WHERE PropertyName = 'Relationships'"});
    Load();
    ExpectBoxOfNode2();
    EXPECT_TRUE(Output(1).RPN().isEmpty());
}

struct CountRow {
    const char* name;
    const char* value;
    int nodes;
    std::size_t boxes;
};

class NodeCounts : public LoadFailureTest, public testing::WithParamInterface<CountRow> {};

TEST_P(NodeCounts, AreTakenOrTold)
{
    SaveLearnt();
    Change({QStringLiteral("UPDATE SystemInfo SET PropertyValue = %1 WHERE PropertyName = 'Node Count'")
                .arg(GetParam().value)});
    Load();
    EXPECT_EQ(system.NodesInSystem(), GetParam().nodes);
    EXPECT_THAT(boxes.boxes, SizeIs(GetParam().boxes));
    EXPECT_EQ(Node(2).Name(), "Rear");
}

INSTANTIATE_TEST_SUITE_P(LoadFailure, NodeCounts,
                         testing::Values(CountRow{"Larger", "'32'", 32, 0}, CountRow{"Smaller", "'1'", 3, 0},
                                         CountRow{"Blanks", "' 5 '", 5, 0}, CountRow{"Number", "6", 6, 0},
                                         CountRow{"Null", "NULL", 3, 0}, CountRow{"Negative", "'-1'", 3, 1},
                                         CountRow{"TooLarge", "'256'", 3, 1}, CountRow{"Text", "'eight'", 3, 1}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace fenrik
