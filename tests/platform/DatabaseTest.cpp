#include "platform/Database.h"

#include "platform/CFileSystem.h"
#include "platform/Error.h"
#include "platform/Recordset.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace fenrik {
namespace {

using testing::HasSubstr;

class DatabaseTest : public testing::Test {
protected:
    QString Path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

    QString MakeFruit() const
    {
        const QString path = Path("fruit.dav");
        MakeDatabase(path, {"CREATE TABLE Fruit (Name TEXT, Weight INTEGER)", "INSERT INTO Fruit VALUES ('Pear', 180)",
                            "CREATE VIEW Heavy AS SELECT Name FROM Fruit WHERE Weight > 100"});
        return path;
    }

    /// The Error that `action` throws; number 0 if it throws none.
    static Error ErrorOf(const std::function<void()>& action)
    {
        try {
            action();
        } catch (const Error& error) {
            return error;
        }
        return {0, QString()};
    }

    static Error ErrorOfOpening(const QString& path, bool readOnly = true)
    {
        return ErrorOf([&] { (void)Database::OpenDatabase(path, false, readOnly); });
    }

    QTemporaryDir folder;
};

TEST_F(DatabaseTest, AnAbsentFileIsNotFoundAndNotCreated)
{
    for (const bool readOnly : {true, false})
        EXPECT_EQ(ErrorOfOpening(Path("absent.dav"), readOnly).Number(), ErrorNumber::kDatabaseNotFound);
    EXPECT_FALSE(CFileSystem::FileExists(Path("absent.dav")));
}

TEST_F(DatabaseTest, AFolderIsNoDatabase)
{
    EXPECT_EQ(ErrorOfOpening(folder.path()).Number(), ErrorNumber::kDatabaseNotFound);
}

TEST_F(DatabaseTest, ATruncatedFileIsBroken)
{
    const QString path = MakeFruit();
    const qint64 size = QFileInfo(path).size();
    for (const qint64 left : {qint64(16), qint64(99), qint64(100), qint64(2000), qint64(4096), size - 1}) {
        QFile::resize(path, left);
        EXPECT_EQ(ErrorOfOpening(path).Number(), ErrorNumber::kDatabaseBroken) << left;
        MakeFruit();
    }
}

struct BrokenFile {
    const char* name;
    QByteArray bytes;
    const char* reason;
};

class BrokenFiles : public DatabaseTest, public testing::WithParamInterface<BrokenFile> {};

TEST_P(BrokenFiles, FailAndSayWhy)
{
    MakeFile(Path("broken.dav"), GetParam().bytes);

    for (const bool readOnly : {true, false}) {
        const Error error = ErrorOfOpening(Path("broken.dav"), readOnly);
        EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseBroken);
        EXPECT_THAT(error.what(), HasSubstr(GetParam().reason));
        EXPECT_THAT(error.what(), HasSubstr("broken.dav"));
    }
    QFile file(Path("broken.dav"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(Database, BrokenFiles,
                         testing::Values(BrokenFile{"Empty", "", "is empty"},
                                         BrokenFile{"OneByte", "S", "is not a database"},
                                         BrokenFile{"Foreign", QByteArray(5000, 'x'), "is not a database"},
                                         BrokenFile{"HeaderAndNoise",
                                                    QByteArray("SQLite format 3\0", 16) + QByteArray(9000, '\x5A'),
                                                    "not a database"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(DatabaseTest, AFileWithoutReadPermissionIsDenied)
{
    const QString path = MakeFruit();
    QFile::setPermissions(path, {});
    QFile::setPermissions(folder.path(), QFile::permissions(folder.path()) | QFileDevice::ExeOther);

    // The superuser may read every file, so the test goes on as nobody in particular.
    const uid_t user = geteuid();
    const bool changed = user == 0 && seteuid(65534) == 0;
    const Error error = ErrorOfOpening(path);
    ASSERT_TRUE(!changed || seteuid(user) == 0);

    EXPECT_EQ(error.Number(), ErrorNumber::kPermissionDenied);
    EXPECT_THAT(error.what(), HasSubstr("can't be opened"));
}

TEST_F(DatabaseTest, AFileMarkedReadOnlyOpensForReadingOnly)
{
    const QString path = MakeFruit();
    QFile::setPermissions(path, QFileDevice::ReadOwner);

    EXPECT_EQ(ErrorOfOpening(path, false).Number(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_EQ(ErrorOfOpening(path, true).Number(), 0);
}

TEST_F(DatabaseTest, ReadOnlyMeansThatNothingIsWritten)
{
    const QString path = MakeFruit();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    const auto database = Database::OpenDatabase(path, false, true);

    for (const char* statement : {"DROP TABLE Fruit", "CREATE TABLE More (Name TEXT)", "DELETE FROM Fruit"})
        EXPECT_EQ(ErrorOf([&] { database->Execute(statement); }).Number(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_EQ(ErrorOf([&] { database->OpenRecordset("Fruit")->AddNew(); }).Number(), ErrorNumber::kDatabaseReadOnly);

    file.seek(0);
    EXPECT_EQ(file.readAll(), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"fruit.dav"});
}

TEST_F(DatabaseTest, ExclusiveWritingKeepsAllOthersOut)
{
    const QString path = MakeFruit();
    const auto mine = Database::OpenDatabase(path, true, false);

    EXPECT_EQ(ErrorOfOpening(path, true).Number(), ErrorNumber::kPermissionDenied);
    mine->Close();
    EXPECT_EQ(ErrorOfOpening(path, true).Number(), 0);
}

TEST_F(DatabaseTest, ExclusiveReadingKeepsWritersOut)
{
    const QString path = MakeFruit();
    const auto mine = Database::OpenDatabase(path, true, true);
    const auto reader = Database::OpenDatabase(path, false, true);
    EXPECT_EQ(reader->OpenRecordset("Fruit")->RecordCount(), 1);

    const auto writer = Database::OpenDatabase(path, false, false);
    EXPECT_EQ(ErrorOf([&] { writer->Execute("DELETE FROM Fruit"); }).Number(), ErrorNumber::kPermissionDenied);
}

TEST_F(DatabaseTest, AnotherProgramsTransactionDeniesWriting)
{
    const QString path = MakeFruit();
    const auto one = Database::OpenDatabase(path, false, false);
    const auto two = Database::OpenDatabase(path, false, false);

    one->BeginTrans();
    EXPECT_EQ(ErrorOf([&] { two->BeginTrans(); }).Number(), ErrorNumber::kPermissionDenied);
}

TEST_F(DatabaseTest, AFullFileIsAFileErrorWithTheEnginesText)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    database->Execute("PRAGMA max_page_count = 3");
    const Error error = ErrorOf([&] {
        const auto fruit = database->OpenRecordset("Fruit");
        fruit->AddNew();
        fruit->SetField("Name", QString(20000, 'a'));
        fruit->Update();
    });
    EXPECT_EQ(error.Number(), ErrorNumber::kPathFileAccess);
    EXPECT_THAT(error.what(), HasSubstr("full"));
    EXPECT_EQ(database->OpenRecordset("Fruit")->RecordCount(), 1);
}

TEST_F(DatabaseTest, AReaderFindsWhatStoodBeforeAWriterWasKilled)
{
    const auto writer = Database::OpenDatabase(MakeFruit(), false, false);
    writer->Execute("PRAGMA cache_size = 1");  // so that half of the change reaches the file
    writer->BeginTrans();
    writer->Execute("UPDATE Fruit SET Weight = 0");
    writer->Execute("CREATE TABLE Half AS WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT 5000) "
                    "SELECT x FROM n");
    // What lies on the disk now is what a killed writer leaves.
    ASSERT_GT(QFileInfo(Path("fruit.dav-journal")).size(), 0);
    for (const char* end : {"", "-journal"})
        ASSERT_TRUE(QFile::copy(Path("fruit.dav") + end, Path("killed.dav") + end));

    const auto reader = Database::OpenDatabase(Path("killed.dav"), false, true);
    EXPECT_EQ(reader->OpenRecordset("Fruit")->Fields("Weight").toInt(), 180);
    EXPECT_FALSE(TableDefExists(*reader, "Half"));
}

TEST_F(DatabaseTest, AReaderLeavesNothingBesideAFileThatAnotherToolHasPutInLogMode)
{
    Database::OpenDatabase(MakeFruit(), false, false)->Execute("PRAGMA journal_mode = WAL");
    for (const bool exclusive : {false, true}) {
        const auto reader = Database::OpenDatabase(Path("fruit.dav"), exclusive, true);
        EXPECT_EQ(reader->OpenRecordset("Fruit")->RecordCount(), 1);
        EXPECT_NE(ErrorOf([&] { reader->Execute("DELETE FROM Fruit"); }).Number(), 0);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"fruit.dav"});
}

TEST_F(DatabaseTest, AQueryWithoutAnEndIsBroken)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    database->Execute("CREATE VIEW Endless AS WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n) "
                      "SELECT x FROM n");
    const Error error = ErrorOf([&] { (void)database->OpenRecordset("SELECT x FROM Endless ORDER BY x"); });
    EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseBroken);
    EXPECT_THAT(error.what(), HasSubstr("has no end"));
    EXPECT_EQ(database->OpenRecordset("Fruit")->RecordCount(), 1);
}

TEST_F(DatabaseTest, AValueThatIsTooLargeIsBroken)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    database->Execute("CREATE VIEW Huge AS SELECT zeroblob(500000000) AS x");
    EXPECT_EQ(ErrorOf([&] { (void)database->OpenRecordset("Huge"); }).Number(), ErrorNumber::kDatabaseBroken);
}

TEST_F(DatabaseTest, ANewDatabaseCanBeOpenedAgainAtOnce)
{
    (void)Database::CreateDatabase(Path("new.dav"));
    EXPECT_EQ(ErrorOfOpening(Path("new.dav")).Number(), 0);
}

TEST_F(DatabaseTest, AnExistingFileIsNotCreatedOver)
{
    MakeFile(Path("old.dav"), "kept");
    EXPECT_EQ(ErrorOf([&] { (void)Database::CreateDatabase(Path("old.dav")); }).Number(), ErrorNumber::kPathFileAccess);
    EXPECT_EQ(QFileInfo(Path("old.dav")).size(), 4);
}

TEST_F(DatabaseTest, ADatabaseInNoFolderIsNotCreated)
{
    EXPECT_EQ(ErrorOf([&] { (void)Database::CreateDatabase(Path("none/new.dav")); }).Number(),
              ErrorNumber::kPathFileAccess);
}

TEST_F(DatabaseTest, TableNamesAreTheTablesWithoutQueriesAndTheEnginesOwn)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    const QStringList before = database->TableNames();
    EXPECT_TRUE(before.contains("Fruit"));
    EXPECT_FALSE(before.contains("Heavy")) << "a query";
    database->Execute("CREATE TABLE Numbered (a INTEGER PRIMARY KEY AUTOINCREMENT)");
    EXPECT_EQ(database->TableNames(), before + QStringList("Numbered")) << "and no sqlite_sequence";
}

TEST_F(DatabaseTest, TableDefsFindsTablesAndQueriesInAnyCase)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, true);

    EXPECT_EQ(database->TableDefs("fRUIT"), "Fruit");
    EXPECT_EQ(database->TableDefs("HEAVY"), "Heavy");
    EXPECT_EQ(ErrorOf([&] { (void)database->TableDefs("Nuts"); }).Number(), ErrorNumber::kItemNotFound);
    EXPECT_TRUE(TableDefExists(*database, "fruit"));
    EXPECT_FALSE(TableDefExists(*database, "Nuts"));
}

TEST_F(DatabaseTest, TableExistsTriesToOpenTheTable)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    database->Execute("CREATE VIEW Dangling AS SELECT * FROM Nowhere");

    EXPECT_TRUE(TableExists(*database, "fruit"));
    EXPECT_FALSE(TableExists(*database, "Nuts"));
    EXPECT_TRUE(TableDefExists(*database, "Dangling"));
    EXPECT_FALSE(TableExists(*database, "Dangling"));
}

TEST_F(DatabaseTest, PropertiesAreTheFilesVersionAndTheEngines)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    database->Execute("PRAGMA user_version = 7");

    EXPECT_EQ(database->Properties("AccessVersion"), "7");
    EXPECT_THAT(database->Properties("Build").toStdString(), testing::StartsWith("3."));
    EXPECT_EQ(ErrorOf([&] { (void)database->Properties("Owner"); }).Number(), ErrorNumber::kItemNotFound);
}

TEST_F(DatabaseTest, RecreateTableEmptiesAnExistingTable)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    for (int round = 0; round < 2; ++round) {
        const auto table = RecreateTable(*database, "Node 1");
        EXPECT_EQ(table->RecordCount(), 0);
        EXPECT_EQ(table->FieldNames(), (QStringList{"PropertyName", "PropertyValue"}));
        table->AddNew();
        table->SetField("PropertyName", "Node Name");
        table->Update();
    }
    EXPECT_EQ(database->OpenRecordset("Node 1")->RecordCount(), 1);
}

TEST_F(DatabaseTest, ATableNameCanHoldAnyCharacter)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    for (const char* name : {"a\"b", "a]b", "a'b", "x; DROP TABLE Fruit", "select"}) {
        EXPECT_EQ(RecreateTable(*database, name)->RecordCount(), 0);
        EXPECT_TRUE(TableDefExists(*database, name));
    }
    EXPECT_TRUE(TableExists(*database, "Fruit"));
}

TEST_F(DatabaseTest, OneCallRunsOneStatement)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    for (const char* text : {"SELECT 1; DROP TABLE Fruit", "", "-- nothing"})
        EXPECT_EQ(ErrorOf([&] { database->Execute(text); }).Number(), ErrorNumber::kDatabaseStatement) << text;
    EXPECT_TRUE(TableExists(*database, "Fruit"));
}

TEST_F(DatabaseTest, FaultyQueriesSayWhatIsWrong)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, true);
    const auto numberOf = [&](const char* source) {
        return ErrorOf([&] { (void)database->OpenRecordset(source); }).Number();
    };

    EXPECT_EQ(numberOf("Nuts"), ErrorNumber::kTableNotFound);
    EXPECT_EQ(numberOf("SELECT * FROM [Nuts]"), ErrorNumber::kTableNotFound);
    EXPECT_EQ(numberOf("SELECT Colour FROM Fruit"), ErrorNumber::kItemNotFound);
    EXPECT_EQ(numberOf("SELECT FROM WHERE"), ErrorNumber::kDatabaseStatement);
}

TEST_F(DatabaseTest, AnUnfinishedTransactionIsRolledBackByClose)
{
    const QString path = MakeFruit();
    const auto database = Database::OpenDatabase(path, false, false);
    database->BeginTrans();
    database->Execute("DELETE FROM Fruit");
    database->Close();

    EXPECT_EQ(Database::OpenDatabase(path, false, true)->OpenRecordset("Fruit")->RecordCount(), 1);
}

TEST_F(DatabaseTest, RollbackTakesBackAndCommitKeeps)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, false);
    database->BeginTrans();
    database->Execute("DELETE FROM Fruit");
    database->Rollback();
    EXPECT_EQ(database->OpenRecordset("Fruit")->RecordCount(), 1);

    database->BeginTrans();
    database->Execute("DELETE FROM Fruit");
    database->CommitTrans();
    EXPECT_EQ(database->OpenRecordset("Fruit")->RecordCount(), 0);
}

TEST_F(DatabaseTest, AClosedDatabaseAnswersWithAnError)
{
    const auto database = Database::OpenDatabase(MakeFruit(), false, true);
    database->Close();
    database->Close();
    EXPECT_EQ(ErrorOf([&] { (void)database->OpenRecordset("Fruit"); }).Number(), ErrorNumber::kDatabaseNotFound);
    EXPECT_FALSE(TableDefExists(*database, "Fruit"));
}

}  // namespace
}  // namespace fenrik
