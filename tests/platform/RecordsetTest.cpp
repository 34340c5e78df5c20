#include "platform/Recordset.h"

#include "platform/Database.h"
#include "platform/Error.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;

class RecordsetTest : public testing::Test {
protected:
    void SetUp() override
    {
        const QString path = folder.filePath("info.dav");
        MakeDatabase(path, {"CREATE TABLE Info (PropertyName TEXT, PropertyValue TEXT)",
                            "INSERT INTO Info VALUES ('Zebra', 'first')", "INSERT INTO Info VALUES ('@END', NULL)",
                            "INSERT INTO Info VALUES ('Ant', 'third')", "INSERT INTO Info VALUES ('Zebra', 'again')",
                            "CREATE TABLE Kinds (Whole INTEGER, Real REAL, Word TEXT, Bytes BLOB, Missing TEXT)",
                            "INSERT INTO Kinds VALUES (5000000000, 2.5, 'Bär', x'00FF', NULL)"});
        database = Database::OpenDatabase(path, false, false);
    }

    std::vector<QString> Values(const QString& source, const QString& column) const
    {
        std::vector<QString> values;
        const auto rows = database->OpenRecordset(source);
        for (; !rows->EndOfFile(); rows->MoveNext())
            values.push_back(rows->Fields(column).toString());
        return values;
    }

    template <class Action>
    static int NumberOfError(Action action)
    {
        try {
            action();
        } catch (const Error& error) {
            return error.Number();
        }
        return 0;
    }

    QTemporaryDir folder;
    std::unique_ptr<Database> database;
};

TEST_F(RecordsetTest, RowsComeInTheOrderOfTheirInsertion)
{
    EXPECT_THAT(Values("Info", "PropertyName"), ElementsAre("Zebra", "@END", "Ant", "Zebra"));
}

TEST_F(RecordsetTest, RowsThatFollowDeletedOnesStillComeLast)
{
    database->Execute("DELETE FROM Info WHERE PropertyName = 'Zebra'");
    database->Execute("INSERT INTO Info VALUES ('Bee', '')");
    EXPECT_THAT(Values("Info", "PropertyName"), ElementsAre("@END", "Ant", "Bee"));
}

TEST_F(RecordsetTest, NullsStayNulls)
{
    const auto rows = database->OpenRecordset("Info");
    EXPECT_TRUE(rows->Fields("PropertyValue").isValid());
    rows->MoveNext();
    EXPECT_FALSE(rows->Fields("PropertyValue").isValid());
}

TEST_F(RecordsetTest, ValuesKeepTheirKind)
{
    const auto rows = database->OpenRecordset("Kinds");
    EXPECT_EQ(rows->Fields("Whole"), QVariant(qlonglong(5000000000)));
    EXPECT_EQ(rows->Fields("Real"), QVariant(2.5));
    EXPECT_EQ(rows->Fields("Word"), QVariant(QString::fromUtf8("Bär")));
    EXPECT_EQ(rows->Fields("Bytes"), QVariant(QByteArray("\0\xFF", 2)));
    EXPECT_FALSE(rows->Fields("Missing").isValid());
}

TEST_F(RecordsetTest, ColumnNamesAreNotCaseSensitive)
{
    EXPECT_EQ(database->OpenRecordset("info")->Fields("propertyNAME").toString(), "Zebra");
}

TEST_F(RecordsetTest, OfTwoColumnsOfOneNameTheFirstIsMeant)
{
    const auto rows = database->OpenRecordset("SELECT 'a' AS X, 'b' AS x");
    EXPECT_EQ(rows->Fields("X").toString(), "a");
    EXPECT_EQ(rows->Fields(1).toString(), "b");
}

TEST_F(RecordsetTest, AnUnknownColumnIsAnError)
{
    const auto rows = database->OpenRecordset("Info");
    EXPECT_EQ(NumberOfError([&] { (void)rows->Fields("Colour"); }), ErrorNumber::kItemNotFound);
    EXPECT_EQ(NumberOfError([&] { (void)rows->Fields(2); }), ErrorNumber::kItemNotFound);
    EXPECT_EQ(NumberOfError([&] { (void)rows->Fields(-1); }), ErrorNumber::kItemNotFound);
    EXPECT_EQ(NumberOfError([&] { rows->FindFirst("[Colour] = 'red'"); }), ErrorNumber::kItemNotFound);
}

TEST_F(RecordsetTest, ThereIsNothingToReadAtTheEnd)
{
    const auto rows = database->OpenRecordset("SELECT * FROM Info WHERE PropertyName = 'None'");
    EXPECT_TRUE(rows->EndOfFile());
    EXPECT_EQ(rows->RecordCount(), 0);
    rows->MoveFirst();
    rows->MoveNext();
    EXPECT_TRUE(rows->EndOfFile());
    EXPECT_EQ(NumberOfError([&] { (void)rows->Fields("PropertyName"); }), ErrorNumber::kNoCurrentRecord);
}

TEST_F(RecordsetTest, MoveFirstStartsAgain)
{
    const auto rows = database->OpenRecordset("Info");
    while (!rows->EndOfFile())
        rows->MoveNext();
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields("PropertyValue").toString(), "first");
    EXPECT_EQ(rows->RecordCount(), 4);
}

struct Search {
    const char* name;
    const char* criterion;
    const char* found;  // value of the row, null for no match
};

class Searches : public RecordsetTest, public testing::WithParamInterface<Search> {};

TEST_P(Searches, FindTheFirstRowOrStay)
{
    database->Execute("INSERT INTO Info VALUES ('Ant''s nest', 'fifth')");
    const auto rows = database->OpenRecordset("Info");
    rows->MoveNext();
    rows->MoveNext();
    rows->MoveNext();

    rows->FindFirst(GetParam().criterion);

    EXPECT_EQ(rows->NoMatch(), GetParam().found == nullptr);
    EXPECT_EQ(rows->Fields("PropertyValue").toString(), GetParam().found ? GetParam().found : "again");
}

INSTANTIATE_TEST_SUITE_P(Recordset, Searches,
                         testing::Values(Search{"FromTheStart", "[PropertyName] = 'Zebra'", "first"},
                                         Search{"InAnyCase", "[propertyname] = 'ANT'", "third"},
                                         Search{"WithoutBrackets", "PropertyName='Ant'", "third"},
                                         Search{"WithAnApostrophe", "[PropertyName] = 'Ant''s nest'", "fifth"},
                                         Search{"Unknown", "[PropertyName] = 'Zebr'", nullptr},
                                         Search{"NullIsNotEmptyText", "[PropertyValue] = ''", nullptr}),
                         [](const auto& row) { return row.param.name; });

TEST_F(RecordsetTest, ASearchAfterAFailedOneClearsNoMatch)
{
    const auto rows = database->OpenRecordset("Info");
    rows->FindFirst("[PropertyName] = 'None'");
    EXPECT_TRUE(rows->NoMatch());
    rows->FindFirst("[PropertyName] = 'Ant'");
    EXPECT_FALSE(rows->NoMatch());
}

TEST_F(RecordsetTest, AnotherFormOfCriterionIsAnError)
{
    const auto rows = database->OpenRecordset("Info");
    for (const char* criterion : {"", "PropertyName", "PropertyName > 'a'", "[PropertyName] = 'a' OR 1"})
        EXPECT_EQ(NumberOfError([&] { rows->FindFirst(criterion); }), ErrorNumber::kDatabaseStatement) << criterion;
}

TEST_F(RecordsetTest, AddedRowsComeLastAndUnsetFieldsAreNull)
{
    const auto rows = database->OpenRecordset("Info");
    for (const char* name : {"@Input 1", "Input Name"}) {
        rows->AddNew();
        rows->SetField("propertyname", name);
        rows->Update();
    }
    EXPECT_EQ(rows->RecordCount(), 4);
    EXPECT_EQ(rows->Fields("PropertyValue").toString(), "first");

    const auto again = database->OpenRecordset("Info");
    EXPECT_THAT(Values("Info", "PropertyName"), ElementsAre("Zebra", "@END", "Ant", "Zebra", "@Input 1", "Input Name"));
    again->FindFirst("[PropertyName] = '@Input 1'");
    EXPECT_FALSE(again->Fields("PropertyValue").isValid());
}

TEST_F(RecordsetTest, EveryKindOfValueSurvivesBeingStored)
{
    const auto rows = database->OpenRecordset("Kinds");
    const QString allLatin = QString::fromLatin1("\x01\xFF\x80'\"");
    rows->AddNew();
    rows->SetField("Whole", true);
    rows->SetField("Real", -0.25);
    rows->SetField("Word", allLatin);
    rows->SetField("Bytes", QByteArray("\0\1", 2));
    rows->SetField("Missing", QVariant());
    rows->Update();

    const auto again = database->OpenRecordset("Kinds");
    again->MoveNext();
    EXPECT_EQ(again->Fields("Whole").toInt(), -1);
    EXPECT_EQ(again->Fields("Real").toDouble(), -0.25);
    EXPECT_EQ(again->Fields("Word").toString(), allLatin);
    EXPECT_EQ(again->Fields("Bytes").toByteArray(), QByteArray("\0\1", 2));
    EXPECT_FALSE(again->Fields("Missing").isValid());
}

TEST_F(RecordsetTest, ATreeOfPagesThatHasNoEndIsBroken)
{
    const QString path = folder.filePath("endless.dav");
    MakeEndlessTable(path);
    const auto endless = Database::OpenDatabase(path, false, true);
    EXPECT_EQ(NumberOfError([&] { (void)endless->OpenRecordset("T"); }), ErrorNumber::kDatabaseBroken);
}

TEST_F(RecordsetTest, MoreBytesThanFitAreBroken)
{
    database->Execute("CREATE VIEW Large AS WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT 20) "
                      "SELECT zeroblob(16000000) AS x FROM n");
    EXPECT_EQ(NumberOfError([&] { (void)database->OpenRecordset("Large"); }), ErrorNumber::kDatabaseBroken);
}

TEST_F(RecordsetTest, AQueryTakesNoRows)
{
    const auto rows = database->OpenRecordset("SELECT * FROM Info");
    EXPECT_EQ(NumberOfError([&] { rows->AddNew(); }), ErrorNumber::kDatabaseReadOnly);
}

TEST_F(RecordsetTest, FieldsAreSetOnlyInANewRow)
{
    const auto rows = database->OpenRecordset("Info");
    EXPECT_EQ(NumberOfError([&] { rows->SetField("PropertyName", "x"); }), ErrorNumber::kNoCurrentRecord);
    EXPECT_EQ(NumberOfError([&] { rows->Update(); }), ErrorNumber::kNoCurrentRecord);
    rows->AddNew();
    rows->Update();
    EXPECT_EQ(NumberOfError([&] { rows->Update(); }), ErrorNumber::kNoCurrentRecord);
}

TEST_F(RecordsetTest, ARecordsetOutlivesItsDatabase)
{
    const auto rows = database->OpenRecordset("Info");
    database.reset();
    EXPECT_EQ(rows->Fields("PropertyValue").toString(), "first");
    rows->AddNew();
    rows->SetField("PropertyName", "Late");
    rows->Update();
    rows->Close();
    EXPECT_TRUE(rows->EndOfFile());

    database = Database::OpenDatabase(folder.filePath("info.dav"), true, true);
    EXPECT_EQ(Values("Info", "PropertyName").back(), "Late");
}

}  // namespace
}  // namespace fenrik
