#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"
#include "support/DatabaseFile.h"
#include "support/JetCatalogue.h"
#include "support/Printers.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::HasSubstr;
using Rows = std::vector<JetFileWriter::Row>;
using Version = JetFileWriter::Version;

class JetFileTest : public testing::TestWithParam<Version> {
protected:
    JetFileTest() : writer(GetParam()) {}

    std::unique_ptr<Database> Open(const QByteArray& bytes)
    {
        MakeFile(path, bytes);
        return Database::OpenDatabase(path, false, true);
    }
    std::unique_ptr<Database> Open() { return Open(writer.Bytes()); }

    Error ErrorOfOpening(const QByteArray& bytes, bool readOnly = true)
    {
        MakeFile(path, bytes);
        try {
            (void)Database::OpenDatabase(path, false, readOnly);
        } catch (const Error& error) {
            return error;
        }
        return {0, QString()};
    }

    static Rows RowsOf(Database& database, const QString& source)
    {
        Rows rows;
        for (const auto set = database.OpenRecordset(source); !set->EndOfFile(); set->MoveNext()) {
            rows.emplace_back();
            for (int column = 0; column < set->FieldNames().size(); ++column)
                rows.back().push_back(set->Fields(column));
        }
        return rows;
    }

    [[nodiscard]] bool IsJet3() const { return GetParam() == Version::kJet3; }

    QTemporaryDir folder;
    QString path = folder.filePath("genuine.dav");
    JetFileWriter writer;
};

INSTANTIATE_TEST_SUITE_P(Jet, JetFileTest, testing::Values(Version::kJet3, Version::kJet4),
                         [](const auto& row) { return row.param == Version::kJet3 ? "Jet3" : "Jet4"; });

TEST_P(JetFileTest, EveryTypeIsRead)
{
    writer.AddTable("All",
                    {{"Flag", JetType::kBoolean},
                     {"Byte", JetType::kByte},
                     {"Integer", JetType::kInteger},
                     {"Long", JetType::kLong},
                     {"Money", JetType::kMoney},
                     {"Single", JetType::kSingle},
                     {"Double", JetType::kDouble},
                     {"Date", JetType::kDate},
                     {"Binary", JetType::kBinary},
                     {"Text", JetType::kText},
                     {"Ole", JetType::kOle},
                     {"Memo", JetType::kMemo},
                     {"Guid", JetType::kGuid},
                     {"Decimal", JetType::kNumeric, 4}},
                    Rows{{true, 200, -5, -70000, 12.3456, 0.5, 1e300, 36000.5, QByteArray("a\0b", 3), "Tür €",
                          QByteArray("\0\xFF", 2), "Memo", QByteArray("0123456789abcdef"), -12.5}});
    const auto database = Open();

    const Rows rows = RowsOf(*database, "All");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0], (JetFileWriter::Row{-1LL, 200LL, -5LL, -70000LL, 12.3456, 0.5, 1e300, "1998-07-24 12:00:00",
                                           QByteArray("a\0b", 3), "Tür €", QByteArray("\0\xFF", 2), "Memo",
                                           "{33323130-3534-3736-3839-616263646566}", -12.5}));
}

TEST_P(JetFileTest, NullsStayNullsAndEmptyTextsStayEmpty)
{
    writer.AddTable(
        "Nulls",
        {{"Flag", JetType::kBoolean}, {"Long", JetType::kLong}, {"Text", JetType::kText}, {"Memo", JetType::kMemo}},
        Rows{{false, {}, {}, {}}, {true, 0, "", ""}, {false, {}, "x", {}}});
    const auto database = Open();
    EXPECT_EQ(RowsOf(*database, "Nulls"), (Rows{{0LL, {}, {}, {}}, {-1LL, 0LL, "", ""}, {0LL, {}, "x", {}}}));
}

TEST_P(JetFileTest, RowsKeepTheirOrderOverManyPages)
{
    Rows rows;
    for (qlonglong i = 0; i < 5000; ++i)
        rows.push_back({i, QString("Property %1").arg((i * 7919) % 5000)});
    writer.AddTable("Node 1", {{"Number", JetType::kLong}, {"PropertyName", JetType::kText}}, rows);
    EXPECT_EQ(RowsOf(*Open(), "Node 1"), rows);
}

TEST_P(JetFileTest, ATableLargerThanOneMapOfPagesIsReadWhole)
{
    Rows rows;
    for (qlonglong i = 0; i < 9000; ++i)
        rows.push_back({i, QString(IsJet3() ? 240 : 250, QChar(int('a' + i % 26)))});
    writer.AddTable("Large", {{"Number", JetType::kLong}, {"Text", JetType::kText}}, rows);
    const QByteArray bytes = writer.Bytes();
    ASSERT_GT(bytes.size(), 2 << 20);
    EXPECT_EQ(RowsOf(*Open(bytes), "Large"), rows);
}

TEST_P(JetFileTest, ARowThatHasMovedToAnotherPageIsReadInItsPlaceAndOnce)
{
    writer.PutRowsElsewhere();
    const Rows rows{{1LL, "one"}, {2LL, "two"}, {3LL, "three"}};
    writer.AddTable("Moved", {{"Number", JetType::kLong}, {"Text", JetType::kText}}, rows);
    EXPECT_EQ(RowsOf(*Open(), "Moved"), rows);
}

TEST_P(JetFileTest, RowsOfManyLongTextsAreRead)
{
    const Rows rows{{QString(200, 'a'), QString(250, 'b'), QString(100, 'c'), QString(255, 'd'), 1LL},
                    {"x", QString(255, 'y'), "z", {}, 2LL},
                    {QString(255, 'k'), {}, {}, {}, 3LL}};
    writer.AddTable("Long",
                    {{"A", JetType::kText},
                     {"B", JetType::kText},
                     {"C", JetType::kText},
                     {"D", JetType::kText},
                     {"N", JetType::kLong}},
                    rows);
    EXPECT_EQ(RowsOf(*Open(), "Long"), rows);
}

TEST_P(JetFileTest, LongValuesAreReadFromTheRowFromOneFurtherRowAndFromAChain)
{
    Rows rows;
    for (const int length : {0, 1, 60, 61, 900, 2000, 5000, 100000})
        rows.push_back({QByteArray(length, char(length)), QString(length, QChar('a' + length % 7))});
    writer.AddTable("Values", {{"Ole", JetType::kOle}, {"Memo", JetType::kMemo}}, rows);
    EXPECT_EQ(RowsOf(*Open(), "Values"), rows);
}

TEST_P(JetFileTest, ATableOf255ColumnsIsRead)
{
    std::vector<JetFileWriter::Column> columns;
    JetFileWriter::Row row;
    for (qlonglong i = 0; i < 255; ++i) {
        columns.push_back({QString("Column %1").arg(i), i % 3 ? JetType::kLong : JetType::kText});
        row.push_back(i % 3 ? QVariant(i) : i % 2 ? QVariant(QString::number(i)) : QVariant());
    }
    writer.AddTable("Wide", columns, Rows{row, row});
    EXPECT_EQ(RowsOf(*Open(), "Wide"), (Rows{row, row}));
}

TEST_P(JetFileTest, NamesThatLookLikeSqlAreNames)
{
    const QStringList names{"x\"; DROP TABLE \"Kept", "a'b", "a]b", "select", "1 OR 1=1 --", "Tür"};
    writer.AddTable("Kept", {{"a\", \"b\" INTEGER); --", JetType::kLong}}, Rows{{7}});
    for (const QString& name : names)
        writer.AddTable(name, {{name, JetType::kLong}}, Rows{{1}, {2}});
    const auto database = Open();
    for (const QString& name : names) {
        const auto rows = database->OpenRecordset(name);
        EXPECT_EQ(rows->RecordCount(), 2) << name.toStdString();
        EXPECT_EQ(rows->FieldNames(), QStringList{name});
    }
    EXPECT_EQ(database->OpenRecordset("Kept")->RecordCount(), 1);
    EXPECT_TRUE(database->LeftOut().empty());
}

TEST_P(JetFileTest, ATableThatTheEngineCannotNameIsLeftOutAndTheOthersAreRead)
{
    writer.AddTable("sqlite_mine", {{"a", JetType::kLong}}, Rows{{1}});
    writer.AddTable("Twice", {{"a", JetType::kLong}}, Rows{{1}});
    writer.AddTable("TWICE", {{"b", JetType::kLong}}, Rows{{2}});
    writer.AddObject("Linked", 6, 77);
    const auto database = Open();

    QStringList names;
    for (const LeftOutObject& object : database->LeftOut()) {
        names.append(object.name);
        EXPECT_FALSE(object.reason.isEmpty());
    }
    EXPECT_EQ(names, (QStringList{"sqlite_mine", "TWICE", "Linked"}));
    EXPECT_EQ(database->OpenRecordset("Twice")->FieldNames(), QStringList{"a"});
}

TEST_P(JetFileTest, SystemTablesStayOutside)
{
    const auto database = Open();
    for (const char* name : {"MSysObjects", "MSysQueries", "MSysDb"})
        EXPECT_FALSE(TableDefExists(*database, name)) << name;
}

TEST_P(JetFileTest, StoredQueriesAreViewsAlsoOfOtherQueries)
{
    const auto part = [](int attribute, const char* expression, const char* name = "") {
        return JetQueryPart{attribute, {}, 0, QString::fromLatin1(name), {}, QString::fromLatin1(expression)};
    };
    writer.AddQuery("First", {part(5, "", "Second"), part(11, "b", "D")});
    writer.AddQuery("Second", {part(5, "", "T"), part(6, "a", "b"), part(8, "a>1")});
    writer.AddQuery("Dangling", {part(5, "", "Nowhere")});
    writer.AddQuery("OnDangling", {part(5, "", "Dangling")});
    writer.AddQuery("Asks", {part(5, "", "T"), part(8, "a=[Which number?]")});
    writer.AddQuery("Itself", {part(5, "", "Itself")});
    writer.AddTable("T", {{"a", JetType::kLong}}, Rows{{1}, {2}, {3}});
    const auto database = Open();

    EXPECT_EQ(RowsOf(*database, "First"), (Rows{{3LL}, {2LL}}));
    QStringList names;
    for (const LeftOutObject& object : database->LeftOut())
        names.append(object.name);
    names.sort();
    EXPECT_EQ(names, (QStringList{"Asks", "Dangling", "Itself", "OnDangling"}));
}

TEST_P(JetFileTest, TheVersionsAreWhatTheFileSays)
{
    writer.SetVersionProperties("07.53", 4122);
    const auto database = Open();
    EXPECT_TRUE(database->IsGenuine());
    EXPECT_EQ(database->Kind(), IsJet3() ? "Jet 3" : "Jet 4");
    EXPECT_EQ(database->Properties("AccessVersion"), "07.53");
    EXPECT_EQ(database->Properties("Build"), "4122");
}

TEST_P(JetFileTest, AFileThatSaysNothingHasItsKindForAVersion)
{
    const auto database = Open();
    EXPECT_EQ(database->Properties("AccessVersion"), database->Kind());
    EXPECT_FALSE(database->Properties("Build").isEmpty());
}

TEST_P(JetFileTest, AGenuineFileIsNeverWritten)
{
    const QByteArray bytes = MakeJetCatalogue(GetParam(), 20);
    const Error error = ErrorOfOpening(bytes, false);
    EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_THAT(error.what(), HasSubstr("Jet database"));

    const auto database = Open(bytes);
    EXPECT_TRUE(database->ReadOnly());
    try {
        database->Execute("DROP TABLE Commands");
        FAIL();
    } catch (const Error& refused) {
        EXPECT_EQ(refused.Number(), ErrorNumber::kDatabaseReadOnly);
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
}

TEST_P(JetFileTest, ACopyOfAGenuineFileIsAnOrdinaryDatabase)
{
    Open(MakeJetCatalogue(GetParam(), 20))->SaveCopy(folder.filePath("copy.dav"));
    const auto copy = Database::OpenDatabase(folder.filePath("copy.dav"), false, false);
    EXPECT_FALSE(copy->IsGenuine());
    EXPECT_EQ(copy->Properties("AccessVersion"), "1");
    EXPECT_EQ(copy->OpenRecordset("Commands")->RecordCount(), 20);
    EXPECT_EQ(copy->OpenRecordset("MrkCatCmdJoin")->RecordCount(), 20);
    EXPECT_EQ(RecreateTable(*copy, "SystemInfo")->RecordCount(), 0);
}

TEST_P(JetFileTest, APasswordIsTold)
{
    writer.SetPassword(IsJet3() ? QByteArray("secret") : QByteArray("s\0e\0c\0", 6));
    const Error error = ErrorOfOpening(writer.Bytes());
    EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseBroken);
    EXPECT_THAT(error.what(), HasSubstr("protected by a password"));
    EXPECT_THAT(error.what(), HasSubstr("genuine.dav"));
}

TEST_P(JetFileTest, EncryptedPagesAreTold)
{
    QByteArray bytes = writer.Bytes();
    constexpr qsizetype kKeyOffset = 0x3E;
    bytes[kKeyOffset] = char(bytes[kKeyOffset] ^ 1);  // the mask of the first page lets single bits through
    const Error error = ErrorOfOpening(bytes);
    EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseBroken);
    EXPECT_THAT(error.what(), HasSubstr("is encrypted"));
}

TEST_P(JetFileTest, AnybodyMayOpenItAtTheSameTimeAlsoWhenOpenedExclusively)
{
    MakeFile(path, MakeJetCatalogue(GetParam(), 3));
    const auto mine = Database::OpenDatabase(path, true, true);
    const auto other = Database::OpenDatabase(path, true, true);
    EXPECT_EQ(mine->OpenRecordset("Commands")->RecordCount(), other->OpenRecordset("Commands")->RecordCount());
}

TEST_P(JetFileTest, AHeaderAloneIsDamaged)
{
    const QByteArray bytes = writer.Bytes();
    for (const int size : {20, 100, 2047, 2048, 4096, 2 * writer.PageSize()})
        EXPECT_EQ(ErrorOfOpening(bytes.left(size)).Number(), ErrorNumber::kDatabaseBroken) << size;
    for (const QByteArray& name :
         {QByteArray("\0\1\0\0Standard Jet DB\0", 20), QByteArray("\0\1\0\0Standard ACE DB\0", 20)}) {
        EXPECT_EQ(ErrorOfOpening(name + QByteArray(100000, '\0')).Number(), ErrorNumber::kDatabaseBroken);
        EXPECT_EQ(ErrorOfOpening(name + QByteArray(100000, '\xFF')).Number(), ErrorNumber::kDatabaseBroken);
    }
}

TEST_P(JetFileTest, AFileWithoutACatalogueIsDamagedAndNotEmpty)
{
    const QByteArray bytes = writer.Bytes();
    const QByteArray noPages = bytes.left(2 * writer.PageSize()) + QByteArray("\2\1", 2) +
                               QByteArray(bytes.size() - 2 * writer.PageSize() - 2, '\0');
    EXPECT_EQ(ErrorOfOpening(noPages).Number(), ErrorNumber::kDatabaseBroken);
}

TEST_P(JetFileTest, AFileCutOffAnywhereIsDamaged)
{
    const QByteArray bytes = MakeJetCatalogue(GetParam(), 200);
    for (qsizetype size = 20; size < bytes.size(); size += 3001)
        EXPECT_EQ(ErrorOfOpening(bytes.left(size)).Number(), ErrorNumber::kDatabaseBroken) << size;
}

TEST_P(JetFileTest, ALongValueThatLeadsBackToItselfIsDamage)
{
    writer.AddTable("Values", {{"Ole", JetType::kOle}}, Rows{{QByteArray(20000, 'v')}});
    QByteArray bytes = writer.Bytes();
    const QByteArray part(500, 'v');
    const qsizetype at = bytes.lastIndexOf(part, bytes.size() - 3 * writer.PageSize());
    ASSERT_GT(at, 0);
    const auto page = at / writer.PageSize();
    const qsizetype start = bytes.indexOf(part, page * writer.PageSize());
    const char pointer[4]{0, char(page & 0xFF), char(page >> 8), 0};
    bytes.replace(start - 4, 4, QByteArray(pointer, 4));

    const Error error = ErrorOfOpening(bytes);
    EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseBroken);
    EXPECT_THAT(error.what(), HasSubstr("leads back"));
}

TEST_P(JetFileTest, TwoTablesOfOneDefinitionAreDamage)
{
    const quint32 page = writer.AddTable("One", {{"a", JetType::kLong}}, Rows{{1}});
    writer.AddObject("Two", 1, qint32(page));
    EXPECT_THAT(ErrorOfOpening(writer.Bytes()).what(), HasSubstr("share"));
}

TEST_P(JetFileTest, ATableWhosePageIsNoDefinitionIsDamage)
{
    writer.AddObject("Bent", 1, 1);
    EXPECT_EQ(ErrorOfOpening(writer.Bytes()).Number(), ErrorNumber::kDatabaseBroken);
}

}  // namespace
}  // namespace fenrik
