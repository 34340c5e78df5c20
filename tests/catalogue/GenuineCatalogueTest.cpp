// The catalogue from genuine files, as the field has them.

#include "CatalogueHostRecorder.h"
#include "catalogue/CommandCatalogue.h"
#include "catalogue/CommandDatabase.h"
#include "shared/CommandTable.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"
#include "support/DatabaseFile.h"
#include "support/JetCatalogue.h"
#include "support/Printers.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

using Version = JetFileWriter::Version;

class GenuineCatalogueTest : public testing::TestWithParam<Version> {
protected:
    void Load(const QByteArray& bytes, int market)
    {
        MakeFile(path, bytes);
        settings.SelectedMarket = market;
        catalogue.LoadCommands(path);
    }

    QTemporaryDir folder;
    QString path = folder.filePath("ncCommand.dav");
    CommandTable table;
    Settings settings;
    BoxRecorder boxes;
    CatalogueHostRecorder host;
    CommandCatalogue catalogue{table, settings, boxes, host, folder.path()};
};

INSTANTIATE_TEST_SUITE_P(Jet, GenuineCatalogueTest, testing::Values(Version::kJet3, Version::kJet4),
                         [](const auto& row) { return row.param == Version::kJet3 ? "Jet3" : "Jet4"; });

TEST_P(GenuineCatalogueTest, TheCommandsOfTheMarketAreLoadedByTheStoredQuery)
{
    Load(MakeJetCatalogue(GetParam(), 20), 0);
    EXPECT_EQ(table[1].Name, QString::fromUtf8("Heizlüfter – 20 €"));
    EXPECT_EQ(table[1].Category, QString::fromUtf8("Türen"));
    EXPECT_EQ(table[3].CategoryRank, 1);
    EXPECT_EQ(table[2].Category, "<Undefined Messages>");
    EXPECT_TRUE(boxes.boxes.empty());

    Load(MakeJetCatalogue(GetParam(), 20), 7);
    EXPECT_EQ(table[2].Name, QString::fromUtf8("Tür „hinten“"));
    EXPECT_EQ(catalogue.HiddenCategory(), "Hidden");
}

TEST_P(GenuineCatalogueTest, AStoredQueryThatCannotBeRebuiltIsToldAndAllCommandsAreLoaded)
{
    Load(MakeJetCatalogue(GetParam(), 20, {{2, {}, 10, "Which market?", {}, {}}}), 0);
    ASSERT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(boxes.boxes[0].text,
              "The query <MrkCatCmdJoin> of the file <ncCommand.dav> could not be read:  it asks for parameters.\n"
              "As a result, the commands of all markets were loaded instead of those of the selected market.");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
    EXPECT_EQ(boxes.boxes[0].title, "Fenrik Diagnostics Software");
    EXPECT_EQ(table[1].Name, QString::fromUtf8("Heizlüfter – 20 €"));
    EXPECT_EQ(table[2].Name, QString::fromUtf8("Tür „hinten“"));
}

TEST_P(GenuineCatalogueTest, ACustomFileNeedsNoMarketJoinAndTellsNothingOfIt)
{
    settings.SystemName = "Bus";
    Load(MakeJetCatalogue(GetParam(), 20, {{2, {}, 10, "Which market?", {}, {}}}), 0);
    EXPECT_TRUE(boxes.boxes.empty());
    EXPECT_EQ(table[20].Name, "Command 20");
}

TEST_P(GenuineCatalogueTest, TheFileIsAValidCommandDatabaseWithItsProperties)
{
    MakeFile(path, MakeJetCatalogue(GetParam(), 3));
    EXPECT_TRUE(IsValidCommandDatabase(path));
    const auto properties = GetDatabaseProperties(path);
    ASSERT_TRUE(properties);
    EXPECT_EQ(properties->value("Version"), "1.7");
    EXPECT_EQ(properties->value("AccessVersion"), "07.53");
    EXPECT_EQ(properties->value("Build"), "4122");
}

TEST_P(GenuineCatalogueTest, AProtectedDefaultFileEndsTheProgramAsAMissingOneDoes)
{
    JetFileWriter writer(GetParam());
    writer.SetPassword("x");
    Load(writer.Bytes(), 0);
    EXPECT_EQ(boxes.boxes.size(), 1U);
    EXPECT_FALSE(IsValidCommandDatabase(path));
}

}  // namespace
}  // namespace fenrik
