#include "catalogue/CommandCatalogue.h"

#include "CatalogueFiles.h"
#include "CatalogueHostRecorder.h"
#include "shared/CommandTable.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"
#include "support/Printers.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

class CommandCatalogueTest : public testing::Test {
protected:
    CommandCatalogueTest() { UseSystem({}); }

    QString Path(const QString& name) const { return folder.filePath(name); }

    /// The user has chosen the system `name`; empty for none.
    void UseSystem(const QString& name)
    {
        settings.SystemName = name;
        settings.SystemPath = name.isEmpty() ? QString() : folder.path();
    }

    void Load(const QString& name) { catalogue.LoadCommands(Path(name)); }
    void LoadDefault() { Load("ncCommand.dav"); }

    QString NameOf(int command) const { return table[command].Name; }

    void ExpectOneBox(const QString& text) const
    {
        ASSERT_EQ(boxes.boxes.size(), 1U);
        EXPECT_EQ(boxes.boxes[0].text, text);
        EXPECT_EQ(boxes.boxes[0].title, "Fenrik Diagnostics Software");
        EXPECT_EQ(boxes.boxes[0].buttons, Boxes::Buttons(QMessageBox::Ok));
    }

    static QString UnexpectedError(const QString& name)
    {
        return QString("There was an unexpected error reading the file <%1.dav>.  The file may be corrupt.\n"
                       "As a result, you may not be able to use all the commands defined for this system.  "
                       "It is recommended that you select another custom system database by clicking the "
                       "''Select System'' icon on the main toolbar.")
            .arg(name);
    }

    QTemporaryDir folder;
    CommandTable table;
    Settings settings;
    BoxRecorder boxes;
    CatalogueHostRecorder host;
    CommandCatalogue catalogue{table, settings, boxes, host, folder.path()};
};

TEST_F(CommandCatalogueTest, NamesCategoriesRanksAndAnalogFlagsComeFromTheFile)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements());
    LoadDefault();

    EXPECT_EQ(NameOf(12), "Head Lamp");
    EXPECT_EQ(table[12].Category, "Lamps");
    EXPECT_EQ(table[12].CategoryRank, 1);
    EXPECT_FALSE(table.AnalogCommand(12));
    EXPECT_EQ(table[300].CategoryRank, 9);
    EXPECT_TRUE(table.AnalogCommand(300));
    EXPECT_EQ(table[1016].CategoryRank, 99);
    EXPECT_EQ(catalogue.HiddenCategory(), "Secret");
    EXPECT_TRUE(boxes.boxes.empty());
    EXPECT_EQ(host.ends, 0);
}

TEST_F(CommandCatalogueTest, NumbersWithoutARowStayUndefined)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements());
    LoadDefault();

    EXPECT_EQ(NameOf(1), "<Undefined message    1>");
    EXPECT_EQ(NameOf(999), "<Undefined message  999>");
    EXPECT_EQ(NameOf(1279), "<Undefined message 1279>");
    EXPECT_EQ(table[1279].Category, "<Undefined Messages>");
}

TEST_F(CommandCatalogueTest, ASecondLoadForgetsWhatTheFirstFound)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements());
    MakeDatabase(Path("small.dav"), CategoryStatements() + QStringList{"INSERT INTO Commands VALUES (5, 'Horn', 1)"});
    LoadDefault();
    const int before = table.Generation();
    UseSystem("small");
    Load("small.dav");

    EXPECT_EQ(NameOf(5), "Horn");
    EXPECT_EQ(NameOf(12), "<Undefined message   12>");
    EXPECT_FALSE(table.AnalogCommand(300));
    EXPECT_GT(table.Generation(), before);
}

TEST_F(CommandCatalogueTest, TheLastCommandsChangeIsAnnouncedAfterTheLastRow)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements());
    const int before = table.Generation();
    table.Clear();
    const int ofClear = table.Generation() - before;
    LoadDefault();
    EXPECT_EQ(table.Generation() - before, 2 * ofClear + 1);
}

struct Failure {
    const char* name;
    const char* system;  // empty for none
    QStringList standard;
    bool standardThere;
    bool customThere;
    const char* text;  // %1 stands for the folder
    bool ends;
};

const char* const kLoadedInstead =
    "\nThe default system database was loaded instead.  To select another custom system database, click the "
    "''Select System'' icon on the main toolbar.";

class Failures : public CommandCatalogueTest, public testing::WithParamInterface<Failure> {};

TEST_P(Failures, AreToldAndTheProgramEndsOrGoesOn)
{
    const Failure& failure = GetParam();
    UseSystem(failure.system);
    if (failure.standardThere)
        MakeDatabase(Path("ncCommand.dav"), failure.standard);
    if (failure.customThere)
        MakeDatabase(Path("Bus 7.dav"), CategoryStatements());

    Load(QLatin1String(failure.system).isEmpty() ? "ncCommand.dav" : "Bus 7.dav");

    QString text = QString(failure.text).replace("%1", folder.path());
    if (!failure.ends)
        text += kLoadedInstead;
    ExpectOneBox(text);
    EXPECT_EQ(host.ends, failure.ends ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    CommandCatalogue, Failures,
    testing::Values(Failure{"DefaultMissing",
                            "",
                            {},
                            false,
                            false,
                            "The default system database file <ncCommand.dav> was not found in the path <%1>.\n"
                            "Because this file is required, Diagnostics will shut down.",
                            true},
                    Failure{"BothMissing",
                            "Bus 7",
                            {},
                            false,
                            false,
                            "The custom system database file <Bus 7.dav> was not found in the path <%1>.\n"
                            "The default system database <ncCommand.dav> was also not found.\n"
                            "Because these files are required, Diagnostics will shut down.",
                            true},
                    Failure{"CustomMissing", "Bus 7", CatalogueStatements(), true, false,
                            "The custom system database <Bus 7.dav> was not found in the path <%1>.", false},
                    Failure{"DefaultCorrupt", "", CategoryStatements(), true, false,
                            "The system database file <ncCommand.dav> is corrupt.\n"
                            "Because this file is required, Diagnostics will shut down.",
                            true},
                    Failure{"CustomCorrupt", "Bus 7", CatalogueStatements(), true, true,
                            "The custom system database <Bus 7.dav> in the folder <%1> is corrupt.", false}),
    [](const auto& row) { return row.param.name; });

TEST_F(CommandCatalogueTest, AMissingCustomFileIsReplacedByTheDefaultOne)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements("Default Lamp"));
    UseSystem("gone");
    Load("gone.dav");
    EXPECT_EQ(NameOf(12), "Default Lamp");
}

TEST_F(CommandCatalogueTest, ACorruptCustomFileStaysOpenDespiteItsText)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements("Default Lamp"));
    MakeDatabase(Path("thin.dav"), CategoryStatements());
    UseSystem("thin");
    Load("thin.dav");
    EXPECT_EQ(NameOf(12), "<Undefined message   12>");
    EXPECT_EQ(catalogue.HiddenCategory(), "Secret");
}

TEST_F(CommandCatalogueTest, NothingIsTouchedOnceTheProgramEnds)
{
    MakeDatabase(Path("ncCommand.dav"), CategoryStatements());
    LoadDefault();
    ASSERT_EQ(host.ends, 1);
    EXPECT_EQ(catalogue.HiddenCategory(), "");
}

struct BadFile {
    const char* name;
    const char* system;
    QStringList more;
    const char* named;
};

class BadFiles : public CommandCatalogueTest, public testing::WithParamInterface<BadFile> {};

TEST_P(BadFiles, EndInOneUnexpectedErrorAndTheRestIsLoaded)
{
    UseSystem(GetParam().system);
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements() + GetParam().more);
    LoadDefault();

    ExpectOneBox(UnexpectedError(GetParam().named));
    EXPECT_EQ(host.ends, 0);
    EXPECT_EQ(NameOf(12), "Head Lamp");
    EXPECT_EQ(NameOf(1016), "Probe");
}

INSTANTIATE_TEST_SUITE_P(
    CommandCatalogue, BadFiles,
    testing::Values(
        BadFile{"NumberBehindTheTable", "", {"INSERT INTO Commands VALUES (1280, 'Far', 1)"}, "ncCommand"},
        BadFile{"TwoOfThem",
                "",
                {"INSERT INTO Commands VALUES (1280, 'Far', 1)", "INSERT INTO Commands VALUES (70000, 'Farther', 1)"},
                "ncCommand"},
        BadFile{"NumberBeforeTheTable", "", {"INSERT INTO Commands VALUES (-1, 'Near', 1)"}, "ncCommand"},
        BadFile{"NumberIsAWord", "", {"INSERT INTO Commands VALUES ('twelve', 'Word', 1)"}, "ncCommand"},
        BadFile{"NumberIsNull", "", {"INSERT INTO Commands VALUES (NULL, 'Null', 1)"}, "ncCommand"},
        BadFile{"NameIsNull", "", {"INSERT INTO Commands VALUES (13, NULL, 1)"}, "ncCommand"},
        BadFile{"RankTooLarge",
                "",
                {"INSERT INTO Categorys VALUES (40000, 'Big')", "INSERT INTO Commands VALUES (13, 'Big', 40000)"},
                "ncCommand"},
        BadFile{"NoAnalogCategory", "", {"DELETE FROM Categorys WHERE CategoryID = 9"}, "ncCommand"},
        BadFile{"NamedAfterTheSystem", "Bus 7", {"INSERT INTO Commands VALUES (1280, 'Far', 1)"}, "Bus 7"}),
    [](const auto& row) { return row.param.name; });

TEST_F(CommandCatalogueTest, ARefusedMarketQueryIsAnUnexpectedError)
{
    MakeDatabase(Path("ncCommand.dav"),
                 CatalogueStatements() + QStringList{"CREATE TABLE Market (MarketID INTEGER, MarketName TEXT)"});
    LoadDefault();
    ExpectOneBox(UnexpectedError("ncCommand"));
    EXPECT_EQ(NameOf(12), "<Undefined message   12>");
}

TEST_F(CommandCatalogueTest, EachLoadTellsItsOwnErrors)
{
    MakeDatabase(Path("ncCommand.dav"),
                 CatalogueStatements() + QStringList{"INSERT INTO Commands VALUES (1280, 'Far', 1)"});
    LoadDefault();
    LoadDefault();
    EXPECT_EQ(boxes.boxes.size(), 2U);
}

TEST_F(CommandCatalogueTest, TheDefaultFileGivesTheMarketsSubsetAndMarketZero)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements() + MarketStatements());
    settings.SelectedMarket = 2;
    LoadDefault();

    EXPECT_EQ(NameOf(21), "Always");
    EXPECT_EQ(table[21].CategoryRank, 99);
    EXPECT_EQ(NameOf(22), "Two");
    EXPECT_EQ(table[22].CategoryRank, 9);
    EXPECT_TRUE(table.AnalogCommand(22));
    EXPECT_EQ(NameOf(23), "<Undefined message   23>");
    EXPECT_EQ(NameOf(12), "<Undefined message   12>");
}

TEST_F(CommandCatalogueTest, AMarketWithoutCommandsLeavesAllUndefinedAndIsNoError)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements() + MarketStatements() +
                                            QStringList{"DELETE FROM MrkCatCmdJoin WHERE MarketID = 0"});
    settings.SelectedMarket = 4;
    LoadDefault();
    EXPECT_EQ(NameOf(21), "<Undefined message   21>");
    EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(CommandCatalogueTest, ACustomSystemFromTheStartHasAllItsCommandsDespiteItsMarkets)
{
    MakeDatabase(Path("bus.dav"), CatalogueStatements() + MarketStatements());
    UseSystem("bus");
    Load("bus.dav");
    EXPECT_EQ(NameOf(12), "Head Lamp");
    EXPECT_EQ(NameOf(21), "<Undefined message   21>");
}

// The flag is only ever set: after a load without a system the subset sticks for the rest of the run.
TEST_F(CommandCatalogueTest, AfterALoadWithoutASystemTheSubsetAppliesToCustomFilesToo)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements());
    MakeDatabase(Path("bus.dav"), CatalogueStatements() + MarketStatements());
    settings.SelectedMarket = 3;
    LoadDefault();
    UseSystem("bus");
    Load("bus.dav");

    EXPECT_EQ(NameOf(23), "Three");
    EXPECT_EQ(NameOf(12), "<Undefined message   12>");
}

TEST_F(CommandCatalogueTest, WithoutAMarketTableTheDefaultFileGivesAllItsCommands)
{
    MakeDatabase(Path("ncCommand.dav"), CatalogueStatements());
    settings.SelectedMarket = 2;
    LoadDefault();
    EXPECT_EQ(NameOf(12), "Head Lamp");
}

}  // namespace
}  // namespace fenrik
