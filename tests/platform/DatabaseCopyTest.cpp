#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QDir>
#include <QTemporaryDir>

#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace fenrik {
namespace {

using testing::HasSubstr;

/// Meanwhile no file grows beyond `bytes`, as on a disk that is full.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        mOldHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &mOld);
        const rlimit small{bytes, mOld.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &mOld);
        std::signal(SIGXFSZ, mOldHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit mOld{};
    void (*mOldHandler)(int) = nullptr;
};

class DatabaseCopyTest : public testing::Test {
protected:
    DatabaseCopyTest()
    {
        MakeDatabase(Path("fruit.dav"), {"CREATE TABLE Fruit (Name TEXT, Weight INTEGER)",
                                         "INSERT INTO Fruit VALUES ('Pear', 180), (NULL, NULL), ('Apple', 150)",
                                         "CREATE VIEW Heavy AS SELECT Name FROM Fruit WHERE Weight > 160"});
        fruit = Database::OpenDatabase(Path("fruit.dav"), false, true);
    }

    QString Path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

    QByteArray Bytes(const char* name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList Files() const { return QDir(folder.path()).entryList(QDir::Files); }

    Error ErrorOfSaving(const char* name) const
    {
        try {
            fruit->SaveCopy(Path(name));
        } catch (const Error& error) {
            return error;
        }
        return {0, QString()};
    }

    QTemporaryDir folder;
    std::unique_ptr<Database> fruit;
};

TEST_F(DatabaseCopyTest, ACopyHasTheTablesTheRowsInOrderTheNullsAndTheQueries)
{
    fruit->SaveCopy(Path("copy.dav"));

    const auto copy = Database::OpenDatabase(Path("copy.dav"), false, false);
    const auto rows = copy->OpenRecordset("Fruit");
    ASSERT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->Fields("Name"), QVariant("Pear"));
    rows->MoveNext();
    EXPECT_FALSE(rows->Fields("Name").isValid());
    EXPECT_FALSE(rows->Fields("Weight").isValid());
    EXPECT_EQ(copy->OpenRecordset("Heavy")->RecordCount(), 1);
    EXPECT_EQ(copy->Properties("AccessVersion"), fruit->Properties("AccessVersion"));
    EXPECT_EQ(Files(), (QStringList{"copy.dav", "fruit.dav"}));
}

TEST_F(DatabaseCopyTest, ACopyCanBeWrittenAndTheOriginalDoesNotNotice)
{
    const QByteArray before = Bytes("fruit.dav");
    fruit->SaveCopy(Path("copy.dav"));
    Database::OpenDatabase(Path("copy.dav"), false, false)->Execute("DELETE FROM Fruit");

    EXPECT_EQ(Bytes("fruit.dav"), before);
    EXPECT_EQ(fruit->OpenRecordset("Fruit")->RecordCount(), 3);
}

TEST_F(DatabaseCopyTest, ACopyTakesThePlaceOfAnOlderFileAndKeepsItsPermissions)
{
    MakeDatabase(Path("copy.dav"), {"CREATE TABLE Old (Name TEXT)"});
    QFile::setPermissions(Path("copy.dav"), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    fruit->SaveCopy(Path("copy.dav"));

    EXPECT_FALSE(TableDefExists(*Database::OpenDatabase(Path("copy.dav"), false, true), "Old"));
    EXPECT_FALSE(QFile::permissions(Path("copy.dav")) & QFileDevice::ReadOther);
}

TEST_F(DatabaseCopyTest, ADamagedOrForeignFileIsReplaced)
{
    for (const QByteArray& old : {QByteArray(), QByteArray("SQLite format 3\0", 16) + QByteArray(900, 'x'),
                                  QByteArray("a letter to my aunt")}) {
        MakeFile(Path("copy.dav"), old);
        fruit->SaveCopy(Path("copy.dav"));
        EXPECT_TRUE(TableDefExists(*Database::OpenDatabase(Path("copy.dav"), false, true), "Fruit"));
    }
}

TEST_F(DatabaseCopyTest, AJetFileIsNeverReplaced)
{
    const QByteArray jet = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4076, '\0');
    MakeFile(Path("copy.dav"), jet);
    EXPECT_EQ(ErrorOfSaving("copy.dav").Number(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_EQ(Bytes("copy.dav"), jet);
}

TEST_F(DatabaseCopyTest, ATargetMarkedReadOnlyIsLeftAlone)
{
    MakeDatabase(Path("copy.dav"), {"CREATE TABLE Old (Name TEXT)"});
    QFile::setPermissions(Path("copy.dav"), QFileDevice::ReadOwner);
    const QByteArray before = Bytes("copy.dav");

    const Error error = ErrorOfSaving("copy.dav");
    EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_THAT(error.what(), HasSubstr("read-only"));
    EXPECT_EQ(Bytes("copy.dav"), before);
}

TEST_F(DatabaseCopyTest, ATargetThatSomebodyHasOpenIsDenied)
{
    MakeDatabase(Path("copy.dav"), {"CREATE TABLE Old (Name TEXT)"});
    const auto other = Database::OpenDatabase(Path("copy.dav"), true, false);
    EXPECT_EQ(ErrorOfSaving("copy.dav").Number(), ErrorNumber::kPermissionDenied);
    EXPECT_TRUE(TableDefExists(*other, "Old"));
    EXPECT_EQ(Files(), (QStringList{"copy.dav", "fruit.dav"}));
}

TEST_F(DatabaseCopyTest, AFolderThatIsNotThereIsAFileErrorWithWords)
{
    const Error error = ErrorOfSaving("none/copy.dav");
    EXPECT_EQ(error.Number(), ErrorNumber::kPathFileAccess);
    EXPECT_THAT(error.what(), HasSubstr("can't be written"));
}

TEST_F(DatabaseCopyTest, AFullDiskLeavesWhatWasThereAndNothingElse)
{
    MakeDatabase(Path("copy.dav"), {"CREATE TABLE Old (Name TEXT)"});
    const QByteArray before = Bytes("copy.dav");
    Error error(0, {});
    {
        const FileSizeLimit full(4096);
        error = ErrorOfSaving("copy.dav");
    }
    EXPECT_EQ(error.Number(), ErrorNumber::kPathFileAccess);
    EXPECT_THAT(error.what(), HasSubstr("copy.dav"));
    EXPECT_EQ(Bytes("copy.dav"), before);
    EXPECT_EQ(Files(), (QStringList{"copy.dav", "fruit.dav"}));
}

TEST_F(DatabaseCopyTest, ARenameThatFailsLeavesNoFileBehind)
{
    QDir(folder.path()).mkdir("copy.dav");
    EXPECT_EQ(ErrorOfSaving("copy.dav").Number(), ErrorNumber::kPathFileAccess);
    EXPECT_EQ(Files(), QStringList{"fruit.dav"});
    EXPECT_TRUE(QFileInfo(Path("copy.dav")).isDir());
}

}  // namespace
}  // namespace fenrik
