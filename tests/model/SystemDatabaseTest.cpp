// Saved systems: what stands in the file, and what comes back from it.

#include "SavedSystemFixture.h"

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

using SystemDatabaseTest = SavedSystemTest;

TEST_F(SystemDatabaseTest, IsACopyOfTheDefaultDatabaseWithItsOwnTables)
{
    EXPECT_TRUE(Save());
    const auto database = Database::OpenDatabase(File("Bus.dav"), false, true);
    EXPECT_EQ(database->OpenRecordset("Commands")->Fields("Name").toString(), "Horn");
    EXPECT_THAT(Rows("SystemInfo"), ElementsAre("Node Count=3", "Version=1+"));
    for (const char* table : {"Node 1", "Node 2", "Node 3"})
        EXPECT_TRUE(TableDefExists(*database, table)) << table;
    EXPECT_FALSE(TableDefExists(*database, "Node 4"));
    EXPECT_EQ(database->OpenRecordset("Node 1")->FieldNames(), QStringList({"PropertyName", "PropertyValue"}));
}

TEST_F(SystemDatabaseTest, HasTheRowsOfANodeInOrder)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    const QStringList rows = Rows("Node 2");
    const QStringList head{"Node Name=Rear", "Node Type=2",       "Node Major Version=3", "Node Minor Version=14",
                           "@Input 1",       "Input Name=Door",   "On State=18",          "@END",
                           "@Input 2",       "Input Name=Input 2"};
    EXPECT_EQ(rows.mid(0, head.size()), head);
    const QStringList output{"@Output 1",
                             "Output Name=Horn",
                             "In Use=1",
                             "Relationships=" + QString::fromLatin1("\xFE\x01\xFF\x01\xFF\xFF"),
                             "@END",
                             "@Output 2",
                             "Output Name=Output 2",
                             "In Use=255",
                             "@END"};
    EXPECT_EQ(rows.mid(rows.indexOf("@Output 1"), output.size()), output);
    EXPECT_EQ(rows.size(), 4 + 4 * Node(2).Inputs() + 4 * Node(2).Outputs() + 1);
}

TEST_F(SystemDatabaseTest, BringsBackWhatWasSaved)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    Load();
    EXPECT_TRUE(system.Defined());
    EXPECT_EQ(system.Name(), "Bus");
    EXPECT_EQ(system.Database(), File("Bus.dav"));
    EXPECT_EQ(Node(2).Name(), "Rear");
    EXPECT_EQ(Node(2).typeID(), 2);
    EXPECT_EQ(Node(2).osMajVersion(), 3);
    EXPECT_EQ(Node(2).osMinVersion(), 14);
    EXPECT_EQ(Input(1).Name(), "Door");
    EXPECT_EQ(Input(1).OnState(), 18);
    EXPECT_EQ(Output(1).Name(), "Horn");
    EXPECT_EQ(Output(1).UsageCode(), 1);
    EXPECT_EQ(Output(2).Name(), "Output 2");
    EXPECT_EQ(Output(2).UsageCode(), 255);
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(SystemDatabaseTest, ARelationshipWithANullSurvivesWithOneMoreEnd)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    Load();
    EXPECT_EQ(Output(1).RPN(), QByteArray::fromHex("FE0100FFFF"));
}

TEST_F(SystemDatabaseTest, ARelationshipThatIsAlwaysTrueIsOnlySeenByItsCode)
{
    LearnNode2();
    Output(1).setRPN(QByteArray::fromHex("FFF0"));
    Output(1).setUsageCode(COutput::kPermanentlyOn);
    EXPECT_TRUE(Save());
    Load();
    EXPECT_EQ(Output(1).RPN(), QByteArray::fromHex("F0FF"));
    EXPECT_TRUE(Output(1).PermOn());
}

TEST_F(SystemDatabaseTest, AnOutputWithoutARelationshipRowKeepsItsRelationship)
{
    LearnNode2();
    Output(1).setRPN({});
    EXPECT_TRUE(Save());
    EXPECT_THAT(Rows("Node 2").filter("Relationships"), IsEmpty());
    Output(1).setRPN(QByteArray::fromHex("FE0101FF"));
    Node(2).LoadSystemDatabase(File("Bus.dav"));
    EXPECT_EQ(Output(1).RPN(), QByteArray::fromHex("FE0101FF"));
}

TEST_F(SystemDatabaseTest, ANodeOfNoTypeBringsItsNameAndNothingElse)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    Change({"UPDATE [Node 2] SET PropertyValue = '254' WHERE PropertyName = 'Node Type'"});
    Load();
    EXPECT_EQ(Node(2).Name(), "Rear");
    EXPECT_EQ(Node(2).typeID(), 254);
    EXPECT_EQ(Node(2).osMajVersion(), 0);
    EXPECT_EQ(Node(2).CDigitalInputs().Count(), 0);
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(SystemDatabaseTest, LoadingMarksTheSystemThroughItsNamesAndNotItsVersions)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    Load();
    EXPECT_TRUE(system.Dirty());  // by the names, which tell no one that they came from a file

    Change({"UPDATE [Node 1] SET PropertyValue = NULL", "UPDATE [Node 3] SET PropertyValue = NULL",
            "UPDATE [Node 2] SET PropertyValue = NULL WHERE PropertyName = 'Node Name'"});
    Load();
    EXPECT_EQ(Node(2).osMinVersion(), 14);
    EXPECT_FALSE(system.Dirty());
}

struct VersionRow {
    const char* name;
    const char* statement;
    const char* version;
};

class Versions : public SavedSystemTest, public testing::WithParamInterface<VersionRow> {};

TEST_P(Versions, AreMarkedOnce)
{
    EXPECT_TRUE(Save());
    Change({GetParam().statement});
    EXPECT_TRUE(Save());
    EXPECT_THAT(Rows("SystemInfo"), ElementsAre("Node Count=3", QString("Version=") + GetParam().version));
}

INSTANTIATE_TEST_SUITE_P(
    SystemDatabase, Versions,
    testing::Values(
        VersionRow{"Design", "UPDATE SystemInfo SET PropertyValue = '1' WHERE PropertyName = 'Version'", "1+"},
        VersionRow{"Marked", "UPDATE SystemInfo SET PropertyValue = '1+' WHERE PropertyName = 'Version'", "1+"},
        VersionRow{"Longer", "UPDATE SystemInfo SET PropertyValue = '2.04' WHERE PropertyName = 'Version'", "2.04+"},
        VersionRow{"Empty", "UPDATE SystemInfo SET PropertyValue = '' WHERE PropertyName = 'Version'", "1+"},
        VersionRow{"Null", "UPDATE SystemInfo SET PropertyValue = NULL WHERE PropertyName = 'Version'", "1+"},
        VersionRow{"NoRow", "DELETE FROM SystemInfo WHERE PropertyName = 'Version'", "1+"},
        VersionRow{"NoTable", "DROP TABLE SystemInfo", "1+"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(SystemDatabaseTest, KeepsTheCommandsOfAFileThatIsThere)
{
    EXPECT_TRUE(Save());
    Change({"UPDATE Commands SET Name = 'Bell'", "CREATE TABLE Notes (Text TEXT)"});
    LearnNode2();
    EXPECT_TRUE(Save());
    const auto database = Database::OpenDatabase(File("Bus.dav"), false, true);
    EXPECT_EQ(database->OpenRecordset("Commands")->Fields("Name").toString(), "Bell");
    EXPECT_TRUE(TableDefExists(*database, "Notes"));
    EXPECT_THAT(Rows("Node 2"), Contains("Node Name=Rear"));
}

TEST_F(SystemDatabaseTest, CountsTheNodesOfTheFile)
{
    settings.NodesInSystem = 9;
    system.LoadSystem({}, {}, false);
    EXPECT_TRUE(Save());
    settings.NodesInSystem = 3;
    Load();
    EXPECT_EQ(system.NodesInSystem(), 9);
    EXPECT_EQ(Node(9).number(), 9);
    EXPECT_EQ(Node(9).Parent(), &system);
}

TEST_F(SystemDatabaseTest, AFileOfFewerNodesTakesNoneAway)
{
    EXPECT_TRUE(Save());
    settings.NodesInSystem = 8;
    Load();
    EXPECT_EQ(system.NodesInSystem(), 8);
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(SystemDatabaseTest, AFileWithoutSystemInfoLoadsWithTheCallersCount)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    Change({"DROP TABLE SystemInfo"});
    system.LoadSystem({}, {}, false);
    std::uint8_t nodes = 5;
    system.LoadSystemDatabase(File("Bus.dav"), nodes, false);
    EXPECT_EQ(nodes, 5);
    EXPECT_EQ(system.NodesInSystem(), 5);
    EXPECT_EQ(Node(2).Name(), "Rear");
}

TEST_F(SystemDatabaseTest, InAHurryOnlyCountsTheNodes)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    settings.NodesInSystem = 1;
    Load("Bus", true);
    EXPECT_EQ(system.NodesInSystem(), 3);
    EXPECT_EQ(Node(2).Name(), "");
}

TEST_F(SystemDatabaseTest, ANodeReadsItselfFromASavedSystem)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    system.LoadSystem({}, {}, false);
    std::uint8_t nodes = 3;
    Node(2).ReadNode(File("Bus.dav"), nodes, true);
    EXPECT_EQ(Node(2).Name(), "Rear");
    EXPECT_EQ(Output(1).Name(), "Horn");
    EXPECT_EQ(nodes, 3);
}

TEST_F(SystemDatabaseTest, TheFileFollowsTheImagesOfTheFolder)
{
    LearnNode2();
    EXPECT_TRUE(Save());
    QByteArray image(NodeImage::kSize, ' ');
    image[2] = 1;
    image[3] = 2;
    image[14] = 2;
    MakeFile(File("Bus_Node 1.bin"), image);
    Change({"DROP TABLE [Node 1]"});
    Load();
    EXPECT_EQ(system.NodesInSystem(), 3);
    EXPECT_EQ(Node(1).typeID(), 2);
    EXPECT_EQ(Node(2).Name(), "Rear");
}

// Numbers with a hole file a node at another node's position; its table goes by the number all the same, and the count
// by the positions.
TEST_F(SystemDatabaseTest, ANodeIsSavedUnderItsNumberAndNotItsPosition)
{
    QByteArray image(NodeImage::kSize, ' ');
    image[2] = 5;
    image[3] = 6;
    image[14] = 2;
    MakeFile(File("Bus_Node 5.bin"), image);
    Load();
    ASSERT_EQ(Node(1).number(), 5);
    EXPECT_TRUE(Save("Car"));
    EXPECT_THAT(Rows("SystemInfo", "Car.dav"), Contains("Node Count=5"));
    EXPECT_THAT(Rows("Node 5", "Car.dav"), Contains("Node Type=2"));
    EXPECT_FALSE(TableDefExists(*Database::OpenDatabase(File("Car.dav"), false, true), "Node 1"));
}

TEST_F(SystemDatabaseTest, NamesThatLookLikeStatementsAreNames)
{
    const QString evil = QStringLiteral("x'); DROP TABLE \"Commands\"; -- ]\"'@END");
    LearnNode2();
    Node(2).setName(evil);
    Output(1).setName(evil);
    Input(1).setName(QStringLiteral("@END"));
    EXPECT_TRUE(Save());
    Load();
    EXPECT_EQ(Node(2).Name(), evil);
    EXPECT_EQ(Output(1).Name(), evil);
    EXPECT_EQ(Input(1).Name(), "@END");
    EXPECT_EQ(Input(1).OnState(), 18);
    EXPECT_TRUE(TableDefExists(*Database::OpenDatabase(File("Bus.dav"), false, true), "Commands"));
}

TEST_F(SystemDatabaseTest, ASystemOfManyFullNodesComesBackWhole)
{
    settings.NodesInSystem = 32;
    system.LoadSystem({}, {}, false);
    for (int number = 1; number <= 32; ++number) {
        Node(number).setTypeID(0);
        Node(number).setName(QStringLiteral("N%1").arg(number));
        COutput& last = Node(number).COutputs()[Node(number).Outputs()];
        last.setName(QStringLiteral("L%1").arg(number));
    }
    EXPECT_TRUE(Save());
    Load();
    for (int number = 1; number <= 32; ++number) {
        EXPECT_EQ(Node(number).Name(), QStringLiteral("N%1").arg(number));
        EXPECT_EQ(Node(number).COutputs()[Node(number).Outputs()].Name(), QStringLiteral("L%1").arg(number));
    }
}

}  // namespace
}  // namespace fenrik
