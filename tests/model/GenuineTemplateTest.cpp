// Systems beside genuine Jet files, which the tool reads and never writes.

#include "SavedSystemFixture.h"
#include "support/JetCatalogue.h"

namespace fenrik {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::SizeIs;

class GenuineTemplateTest : public SavedSystemTest {
protected:
    const QByteArray genuine = MakeJetCatalogue(JetFileWriter::Version::kJet4, 20);
};

TEST_F(GenuineTemplateTest, IsCopiedWithAllItsTablesIntoAFileThatCanBeWritten)
{
    MakeFile(File("ncCommand.dav"), genuine);
    LearnNode2();
    EXPECT_TRUE(Save());
    EXPECT_TRUE(Save());
    EXPECT_TRUE(BytesOf(File("ncCommand.dav")) == genuine);
    EXPECT_TRUE(BytesOf(File("Bus.dav")).startsWith("SQLite format 3"));
    const auto database = Database::OpenDatabase(File("Bus.dav"), false, true);
    EXPECT_EQ(database->OpenRecordset("Commands")->RecordCount(), 20);
    EXPECT_TRUE(TableDefExists(*database, "MrkCatCmdJoin"));
    EXPECT_THAT(Rows("SystemInfo"), Contains("Version=1.7+"));
    Load();
    EXPECT_EQ(Node(2).Name(), "Rear");
}

TEST_F(GenuineTemplateTest, AsTheTargetIsReadAndNotWritten)
{
    MakeFile(File("Bus.dav"), genuine);
    Load();
    EXPECT_TRUE(boxes.boxes.empty());
    EXPECT_FALSE(Save());
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_THAT(boxes.boxes[0].text.toStdString(), HasSubstr("is marked as read-only."));
    EXPECT_TRUE(BytesOf(File("Bus.dav")) == genuine);
}

TEST_F(GenuineTemplateTest, AsASystemGivesWhatItHasOfItsNodes)
{
    using Rows = std::vector<JetFileWriter::Row>;
    const std::vector<JetFileWriter::Column> columns{{"PropertyName", JetType::kText},
                                                     {"PropertyValue", JetType::kText}};
    JetFileWriter writer(JetFileWriter::Version::kJet4);
    writer.AddTable("SystemInfo", columns, Rows{{"Node Count", "4"}, {"Version", "1.7"}});
    writer.AddTable("Node 2", columns,
                    Rows{{"Node Name", "Rear"},
                         {"Node Type", "2"},
                         {"Node Major Version", "3"},
                         {"Node Minor Version", "14"},
                         {"@Input 1", {}},
                         {"Input Name", "Tür „hinten“"},
                         {"On State", "18"},
                         {"@END", {}},
                         {"@Output 1", {}},
                         {"Output Name", "Horn"},
                         {"In Use", "1"},
                         {"Relationships", QString::fromLatin1("\xFE\x01\xFF\xFF")},
                         {"@END", {}}});
    writer.AddTable("Node 4", columns, Rows{{"Node Name", "Roof"}, {"Node Type", "254"}});
    MakeFile(File("Bus.dav"), writer.Bytes());
    Load();
    EXPECT_TRUE(boxes.boxes.empty());
    ASSERT_EQ(system.NodesInSystem(), 4);
    EXPECT_EQ(Node(2).Name(), "Rear");
    EXPECT_EQ(Node(2).osMinVersion(), 14);
    EXPECT_EQ(Input(1).Name(), "Tür „hinten“");
    EXPECT_EQ(Input(1).OnState(), 18);
    EXPECT_EQ(Output(1).RPN(), QByteArray::fromHex("FE01FFFF"));
    EXPECT_EQ(Node(4).Name(), "Roof");
    EXPECT_EQ(Node(4).Outputs(), 0);
}

}  // namespace
}  // namespace fenrik
