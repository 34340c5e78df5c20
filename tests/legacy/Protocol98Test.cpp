#include "legacy/Protocol98.h"

#include "legacy/LegacyDatabase.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"
#include "support/ErrorRecorder.h"
#include "support/JetFileWriter.h"
#include "support/Printers.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = MessageEntry98::Kind;

constexpr const char* kNotLegacy = "This Database does not contain 98 Protocol Information";
constexpr const char* kMayBeInvalid = "\nThe FenrikII Diagnostic tool will connect to the Fenrik system "
                                      "but the resulting data may be invalid.";
constexpr const char* kEmpty = "There are no entries in the system table.";
const std::string kLess = std::string("There are less than 255 entries in the System Table!") + kMayBeInvalid;
const std::string kGreater = std::string("There are greater than 255 entries in the System Table!") + kMayBeInvalid;

class Protocol : public testing::Test {
protected:
    Protocol()
    {
        settings.DatabasePath = dir.path();
        settings.DatabaseName = "Bus.dav";
    }

    [[nodiscard]] QString Path() const { return dir.filePath("Bus.dav"); }

    /// The table with these rows, each as the values of an INSERT.
    void MakeTable(const QStringList& rows)
    {
        QStringList statements{kInfoTable, kSystemTable};
        for (const QString& row : rows)
            statements.append(QStringLiteral("INSERT INTO System VALUES (%1)").arg(row));
        MakeDatabase(Path(), statements);
    }

    const MessageEntry98& Entry(int message) const { return protocol.Messages()[std::size_t(message)]; }

    QTemporaryDir dir;
    Settings settings;
    BoxRecorder boxes;
    ErrorRecorder errors;
    Protocol98 protocol{settings, boxes, errors};
};

// --- Whether it is there
// ----------------------------------------------------------------------------------------------

TEST_F(Protocol, ADatabaseThatIsThereIsConfirmed)
{
    MakeLegacyDatabase(Path(), 1);
    EXPECT_TRUE(protocol.IsChosen());
    EXPECT_TRUE(protocol.ConfirmDB());
}

struct GoneRow {
    const char* name;
    void (*spoil)(Settings& settings);
    bool chosen;
};

class Gone : public Protocol, public testing::WithParamInterface<GoneRow> {};

TEST_P(Gone, IsNotConfirmed)
{
    MakeLegacyDatabase(Path(), 1);
    GetParam().spoil(settings);
    EXPECT_FALSE(protocol.ConfirmDB());
    EXPECT_EQ(protocol.IsChosen(), GetParam().chosen);
    EXPECT_THAT(errors.reports, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Legacy, Gone,
                         testing::Values(GoneRow{"NoName", [](Settings& s) { s.DatabaseName.clear(); }, false},
                                         GoneRow{"NoPath", [](Settings& s) { s.DatabasePath.clear(); }, false},
                                         GoneRow{"AnotherName", [](Settings& s) { s.DatabaseName = "x.dav"; }, true},
                                         GoneRow{"AnotherFolder", [](Settings& s) { s.DatabasePath += "/x"; }, true},
                                         GoneRow{"AFolder", [](Settings& s) { s.DatabaseName = "."; }, true}),
                         [](const auto& test) { return test.param.name; });

// --- Whether it is one
// ------------------------------------------------------------------------------------------------

struct CheckRow {
    const char* name;
    QStringList statements;
    bool good;
};

class Check : public Protocol, public testing::WithParamInterface<CheckRow> {};

TEST_P(Check, LooksForTablesAndColumns)
{
    MakeDatabase(Path(), GetParam().statements);
    EXPECT_EQ(Protocol98::Complaint(Path()), GetParam().good ? "" : kNotLegacy);
}

INSTANTIATE_TEST_SUITE_P(
    Legacy, Check,
    testing::Values(
        CheckRow{"AsTheyAre", {kInfoTable, kSystemTable}, true},
        CheckRow{"InAnyCase",
                 {"CREATE TABLE iNFO (a)", "CREATE TABLE SYSTEM (MESSAGE, nAME, DESCRIPTION, IGNORE, divisor)"},
                 true},
        CheckRow{"WithMoreTablesAndColumns",
                 {kInfoTable, "CREATE TABLE System (id, message, name, description, \"Ignore\", Divisor, colour)",
                  "CREATE TABLE Other (a)"},
                 true},
        CheckRow{"WithAnIndexAndAnOwnTableOfTheEngine",
                 {kInfoTable, kSystemTable, "CREATE TABLE Numbers (a INTEGER PRIMARY KEY AUTOINCREMENT)"},
                 true},
        CheckRow{"WithoutInfo", {kSystemTable}, false}, CheckRow{"WithoutSystem", {kInfoTable}, false},
        CheckRow{"WithNeither", {"CREATE TABLE Commands (Command, Name, CategoryID)"}, false},
        CheckRow{"WithoutAColumn", {kInfoTable, "CREATE TABLE System (message, name, description, \"Ignore\")"}, false},
        CheckRow{"WithAColumnOfAnotherName",
                 {kInfoTable, "CREATE TABLE System (message, name, descr, \"Ignore\", Divisor)"},
                 false},
        CheckRow{"WithAQueryInPlaceOfATable",
                 {"CREATE TABLE System (message, name, description, \"Ignore\", Divisor)",
                  "CREATE VIEW Info AS SELECT 1 AS a"},
                 false}),
    [](const auto& test) { return test.param.name; });

TEST_F(Protocol, WhatIsNoDatabaseIsToldWithItsReason)
{
    MakeFile(Path(), "no database at all");
    const auto text = Protocol98::Complaint(Path()).toStdString();
    EXPECT_THAT(text, testing::StartsWith("An error occured loading the database : "));
    EXPECT_THAT(text, testing::EndsWith("\nPlease select another Database."));
    EXPECT_THAT(Protocol98::Complaint(dir.filePath("gone.dav")).toStdString(), HasSubstr("gone.dav"));
}

// --- Loading
// ----------------------------------------------------------------------------------------------------------

TEST_F(Protocol, TheTableIsLoadedByNumber)
{
    MakeTable({"3, 'Oil', 'Analog', 0, 10", "200, 'Shed 1 ON', 'LOADSHED', -1, 1", "0, 'First', 'Body', 1, 2"});
    EXPECT_TRUE(protocol.LoadMessageTable());
    EXPECT_EQ(Entry(3).Name, "Oil");
    EXPECT_EQ(Entry(3).Description, "Analog");
    EXPECT_EQ(Entry(3).kind, Kind::Analog);
    EXPECT_EQ(Entry(3).Divisor, 10);
    EXPECT_FALSE(Entry(3).Ignore);
    EXPECT_EQ(Entry(200).kind, Kind::LoadShed);
    EXPECT_TRUE(Entry(200).Ignore);
    EXPECT_TRUE(Entry(0).Ignore);
    EXPECT_EQ(Entry(0).kind, Kind::Plain);
    EXPECT_EQ(Entry(1).Name, "") << "has no row";
    EXPECT_EQ(Entry(1).Description, "");
}

TEST_F(Protocol, LoadingForgetsWhatWasLoadedBefore)
{
    MakeTable({"3, 'Oil', 'Analog', 0, 10"});
    EXPECT_TRUE(protocol.LoadMessageTable());
    MakeTable({"4, 'Air', 'Analog', 0, 10"});
    EXPECT_TRUE(protocol.LoadMessageTable());
    EXPECT_EQ(Entry(3).Name, "");
    EXPECT_EQ(Entry(4).Name, "Air");
}

struct FieldRow {
    const char* values;
    int message;
    const char* name;
    const char* description;
    bool ignore;
    int divisor;
};

class Fields : public Protocol, public testing::WithParamInterface<FieldRow> {};

TEST_P(Fields, AreReadWhateverTheyHold)
{
    MakeTable({GetParam().values});
    EXPECT_TRUE(protocol.LoadMessageTable());
    const MessageEntry98& entry = Entry(GetParam().message);
    EXPECT_EQ(entry.Name, GetParam().name);
    EXPECT_EQ(entry.Description, GetParam().description);
    EXPECT_EQ(entry.Ignore, GetParam().ignore);
    EXPECT_EQ(entry.Divisor, GetParam().divisor);
}

INSTANTIATE_TEST_SUITE_P(Legacy, Fields,
                         testing::Values(FieldRow{"7, NULL, NULL, NULL, NULL", 7, "No DB Entry", "", false, 1},
                                         FieldRow{"7, '', '', '', ''", 7, "No DB Entry", "", false, 1},
                                         FieldRow{"7, 'Horn', 'Body', 0, 0", 7, "Horn", "Body", false, 1},
                                         FieldRow{"NULL, 'Horn', 'Body', 0, 1", 0, "Horn", "Body", false, 1},
                                         FieldRow{"'12', 'Horn', 'Body', 'True', '100'", 12, "Horn", "Body", true, 100},
                                         FieldRow{"'12 horns', 'Horn', 'Body', 'false', '5 x'", 12, "Horn", "Body",
                                                  false, 5},
                                         FieldRow{"'horn', 'Horn', 'Body', 'no', 'x'", 0, "Horn", "Body", false, 1},
                                         FieldRow{"12.4, 'Horn', 'Body', '-1', 2.6", 12, "Horn", "Body", true, 3},
                                         FieldRow{"255.4, 'Horn', 'Body', 1, -4", 255, "Horn", "Body", true, -4},
                                         FieldRow{"7, 5, 6, 0, 0.4", 7, "5", "6", false, 1}));

TEST_F(Protocol, TheLastOfTwoRowsOfANumberStands)
{
    MakeTable({"7, 'First', '', 0, 1", "7, 'Second', '', 0, 1"});
    EXPECT_TRUE(protocol.LoadMessageTable());
    EXPECT_EQ(Entry(7).Name, "Second");
}

struct CountRow {
    int rows;
    std::string warning;  ///< empty: none
};

class RowCounts : public Protocol, public testing::WithParamInterface<CountRow> {};

TEST_P(RowCounts, AreWarnedOfAndTheToolConnects)
{
    MakeLegacyDatabase(Path(), GetParam().rows);
    EXPECT_TRUE(protocol.LoadMessageTable());
    ASSERT_THAT(boxes.boxes, SizeIs(GetParam().warning.empty() ? 0 : 1));
    if (boxes.boxes.empty())
        return;
    EXPECT_EQ(boxes.boxes[0].text.toStdString(), GetParam().warning);
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
}

// 255 rows are enough, though the numbers run from 0 to 255.
INSTANTIATE_TEST_SUITE_P(Legacy, RowCounts,
                         testing::Values(CountRow{0, kEmpty}, CountRow{1, kLess}, CountRow{254, kLess},
                                         CountRow{255, {}}, CountRow{256, {}}, CountRow{257, kGreater},
                                         CountRow{300, kGreater}));

TEST_F(Protocol, ReadingStopsAtANumberThatIsTooHigh)
{
    MakeTable({"1, 'One', '', 0, 1", "256, 'High', '', 0, 1", "2, 'Two', '', 0, 1"});
    EXPECT_TRUE(protocol.LoadMessageTable());
    EXPECT_EQ(boxes.boxes.at(0).text.toStdString(), kGreater);
    EXPECT_EQ(Entry(1).Name, "One");
    EXPECT_EQ(Entry(2).Name, "");
}

struct BrokenRow {
    const char* name;
    QStringList statements;
    const char* description;  ///< part of it
};

class Broken : public Protocol, public testing::WithParamInterface<BrokenRow> {};

TEST_P(Broken, IsToldAndTheToolDoesNotConnect)
{
    MakeDatabase(Path(), GetParam().statements);
    EXPECT_FALSE(protocol.LoadMessageTable());
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    const QStringList lines = boxes.boxes[0].text.split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[0], "There was an error loading Bus.dav");
    EXPECT_THAT(lines[1].toStdString(), testing::MatchesRegex("Error number : [0-9]+"));
    EXPECT_THAT(lines[2].toStdString(), testing::StartsWith("Description : "));
    EXPECT_THAT(lines[2].toStdString(), HasSubstr(GetParam().description));
    EXPECT_EQ(lines[3], "The FenrikII Diagnostic tool will not be able to connect to the  Fenrik system ");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
}

INSTANTIATE_TEST_SUITE_P(
    Legacy, Broken,
    testing::Values(BrokenRow{"WithoutATable", {"CREATE TABLE Other (a)"}, "System"},
                    BrokenRow{
                        "WithoutAColumn", {"CREATE TABLE System (message, name, description, \"Ignore\")"}, "Divisor"},
                    BrokenRow{"WithANegativeNumber",
                              {kSystemTable, "INSERT INTO System VALUES (-1, 'x', '', 0, 1)"},
                              "Subscript out of range"},
                    BrokenRow{"WithANumberOfNoSize",
                              {kSystemTable, "INSERT INTO System VALUES (1, 'x', '', 0, 99999999999)"},
                              "Overflow"}),
    [](const auto& test) { return test.param.name; });

class GenuineFiles : public Protocol, public testing::WithParamInterface<JetFileWriter::Version> {};

TEST_P(GenuineFiles, AreReadAsTheyAre)
{
    JetFileWriter writer(GetParam());
    writer.AddTable("Info", {{"SystemName", JetType::kText}}, {{"Bus 12"}});
    writer.AddTable("System",
                    {{"ID", JetType::kLong},
                     {"Message", JetType::kInteger},
                     {"Name", JetType::kText},
                     {"Description", JetType::kText},
                     {"Ignore", JetType::kBoolean},
                     {"Divisor", JetType::kLong}},
                    {{1, 50, "Volts", "Analog", false, 10}, {2, 11, "Alive", QVariant(), true, QVariant()}});
    MakeFile(Path(), writer.Bytes());
    EXPECT_EQ(Protocol98::Complaint(Path()), "");
    EXPECT_TRUE(protocol.LoadMessageTable());
    EXPECT_EQ(Entry(50).Name, "Volts");
    EXPECT_EQ(Entry(50).kind, Kind::Analog);
    EXPECT_FALSE(Entry(50).Ignore);
    EXPECT_EQ(Entry(50).Divisor, 10);
    EXPECT_TRUE(Entry(11).Ignore);
    EXPECT_EQ(Entry(11).Divisor, 1);
}

INSTANTIATE_TEST_SUITE_P(Legacy, GenuineFiles,
                         testing::Values(JetFileWriter::Version::kJet3, JetFileWriter::Version::kJet4));

TEST_F(Protocol, AFileThatIsNoDatabaseIsTold)
{
    MakeFile(Path(), "no database at all");
    EXPECT_FALSE(protocol.LoadMessageTable());
    EXPECT_THAT(boxes.boxes, SizeIs(1));
}

}  // namespace
}  // namespace fenrik
