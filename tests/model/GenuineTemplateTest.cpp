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

}  // namespace
}  // namespace fenrik
