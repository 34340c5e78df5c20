#include "CatalogueHostRecorder.h"
#include "catalogue/CommandCatalogue.h"
#include "catalogue/SpecialCommands.h"
#include "platform/Database.h"
#include "platform/Recordset.h"
#include "shared/CommandTable.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"
#include "support/Printers.h"

#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace fenrik {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Ge;
using testing::Le;

QString BuiltFile(const char* name)
{
    return QStringLiteral(FENRIK_BUILT_DATA "/%1").arg(name);
}

/// The default databases as the build made them, loaded the way that the program loads them.
class DefaultDataTest : public testing::Test {
protected:
    void SetUp() override
    {
        special.LoadSpecialCommands(BuiltFile("SpecialCommands.dav"), boxes);
        LoadMarket(1);
    }

    void LoadMarket(int market)
    {
        settings.SelectedMarket = market;
        catalogue.LoadCommands(BuiltFile("ncCommand.dav"));
    }

    /// All numbers that the table defines at present.
    std::set<int> Defined() const
    {
        std::set<int> numbers;
        for (int number = 1; number < CommandTable::kSize; ++number) {
            if (table[number].Category != CommandTable::kUndefinedCategory)
                numbers.insert(number);
        }
        return numbers;
    }

    static std::vector<QVariant> Values(const char* file, const char* query)
    {
        std::vector<QVariant> values;
        const auto database = Database::OpenDatabase(BuiltFile(file), false, true);
        const auto rows = database->OpenRecordset(query);
        for (; !rows->EndOfFile(); rows->MoveNext())
            values.push_back(rows->Fields(0));
        return values;
    }

    static int Count(const char* file, const char* query) { return Values(file, query).at(0).toInt(); }

    CommandTable table;
    Settings settings;
    BoxRecorder boxes;
    CatalogueHostRecorder host;
    CommandCatalogue catalogue{table, settings, boxes, host, QStringLiteral(FENRIK_BUILT_DATA)};
    SpecialCommands special{table, host};
};

TEST_F(DefaultDataTest, EverythingLoadsWithoutABox)
{
    EXPECT_TRUE(boxes.boxes.empty());
    EXPECT_EQ(host.ends, 0);
    EXPECT_TRUE(IsValidCommandDatabase(BuiltFile("ncCommand.dav")));
    EXPECT_EQ(catalogue.HiddenCategory(), "Reserved");
    EXPECT_EQ(GetDatabaseProperties(BuiltFile("ncCommand.dav"))->value("Version"), "1.0");
}

struct List {
    const char* source;
    const char* file;
    const char* table;
};

class Lists : public testing::TestWithParam<List> {};

TEST_P(Lists, GiveOneRowForEachLine)
{
    QFile source(QStringLiteral(FENRIK_DATA_SOURCES "/%1").arg(GetParam().source));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    const int lines = int(source.readAll().count('\n')) - 1;

    const auto database = Database::OpenDatabase(BuiltFile(GetParam().file), false, true);
    EXPECT_GT(lines, 0);
    EXPECT_EQ(database->OpenRecordset(GetParam().table)->RecordCount(), lines);
}

INSTANTIATE_TEST_SUITE_P(DefaultData, Lists,
                         testing::Values(List{"commands/Commands.csv", "ncCommand.dav", "Commands"},
                                         List{"commands/Categorys.csv", "ncCommand.dav", "Categorys"},
                                         List{"commands/Market.csv", "ncCommand.dav", "Market"},
                                         List{"commands/MarketCategorys.csv", "ncCommand.dav", "MarketCategorys"},
                                         List{"commands/SystemInfo.csv", "ncCommand.dav", "SystemInfo"},
                                         List{"special/General.csv", "SpecialCommands.dav", "General"},
                                         List{"special/Defaults.csv", "SpecialCommands.dav", "Defaults"},
                                         List{"special/Details.csv", "SpecialCommands.dav", "Details"},
                                         List{"maps/AnalogSymbolMaps.csv", "fxmaps.dav", "AnalogSymbolMaps"}),
                         [](const auto& row) { return QString(row.param.table).toStdString(); });

TEST_F(DefaultDataTest, TheCatalogueIsAVehiclesSize)
{
    EXPECT_GE(Count("ncCommand.dav", "SELECT count(*) FROM Commands"), 400);
    EXPECT_GE(Count("ncCommand.dav", "SELECT count(DISTINCT CategoryID) FROM Commands"), 20);
    EXPECT_GE(Count("ncCommand.dav", "SELECT count(*) FROM Commands WHERE CategoryID = 9"), 16);
    EXPECT_GE(Count("ncCommand.dav", "SELECT count(*) FROM Commands WHERE CategoryID = 99"), 1);
    EXPECT_GE(Count("ncCommand.dav", "SELECT count(*) FROM Commands WHERE Command BETWEEN 1024 AND 1279"), 20);
}

TEST_F(DefaultDataTest, NumbersFitTheTableAndNamesTheLogsColumn)
{
    for (const QVariant& number : Values("ncCommand.dav", "SELECT Command FROM Commands"))
        EXPECT_THAT(number.toInt(), AllOf(Ge(1), Le(1279)));
    for (const QVariant& name : Values("ncCommand.dav", "SELECT Name FROM Commands"))
        EXPECT_THAT(name.toString().size(), AllOf(Ge(1), Le(27))) << name.toString().toStdString();
}

TEST_F(DefaultDataTest, NamesAreUniqueInAnyCase)
{
    EXPECT_EQ(Count("ncCommand.dav", "SELECT count(*) - count(DISTINCT lower(Name)) FROM Commands"), 0);
    EXPECT_EQ(Count("ncCommand.dav", "SELECT count(*) - count(DISTINCT lower(Name)) FROM Categorys"), 0);
}

TEST_F(DefaultDataTest, EveryCommandHasACategoryAndEveryCategoryAMarket)
{
    EXPECT_EQ(Count("ncCommand.dav", "SELECT count(*) FROM Commands WHERE CategoryID NOT IN "
                                     "(SELECT CategoryID FROM Categorys)"),
              0);
    EXPECT_EQ(Count("ncCommand.dav", "SELECT count(*) FROM Categorys WHERE CategoryID NOT IN "
                                     "(SELECT CategoryID FROM MarketCategorys)"),
              0);
}

TEST_F(DefaultDataTest, NumbersThatTheToolSendsOrTestsAreNamedInEveryMarket)
{
    for (const int market : {1, 2, 3, 4}) {
        LoadMarket(market);
        for (const int number : {901, 902, 903, 905, 920, 921, 922, 923, 926, 937, 940, 950,
                                 969, 976, 977, 978, 979, 980, 981, 983, 985, 987, 988, 1000})
            EXPECT_THAT(Defined(), Contains(number)) << "market " << market;
    }
}

TEST_F(DefaultDataTest, InternalNumbersAreInternalCategories)
{
    for (int number = 1015; number <= 1023; ++number)
        EXPECT_GE(table[number].CategoryRank, 99) << number;
    for (int number = 850; number <= 857; ++number)
        EXPECT_EQ(table[number].Category, catalogue.HiddenCategory()) << number;
}

TEST_F(DefaultDataTest, AnalogCommandsAreVehicleCommands)
{
    int analog = 0;
    for (int number = 0; number < CommandTable::kSize; ++number) {
        if (!table.AnalogCommand(number))
            continue;
        ++analog;
        EXPECT_THAT(number, AllOf(Ge(1), Le(899)));
    }
    EXPECT_GE(analog, 16);
}

TEST_F(DefaultDataTest, TheFourMarketsDifferAndShareMarketZero)
{
    EXPECT_EQ(Values("ncCommand.dav", "SELECT MarketID FROM Market WHERE MarketID > 0"),
              (std::vector<QVariant>{1LL, 2LL, 3LL, 4LL}));

    LoadMarket(0);
    const std::set<int> shared = Defined();
    EXPECT_GE(shared.size(), 300U);

    std::set<std::set<int>> subsets;
    for (const int market : {1, 2, 3, 4}) {
        LoadMarket(market);
        const std::set<int> subset = Defined();
        EXPECT_GT(subset.size(), shared.size());
        EXPECT_THAT(subset, testing::IsSupersetOf(shared));
        subsets.insert(subset);
    }
    EXPECT_EQ(subsets.size(), 4U);
}

TEST_F(DefaultDataTest, SpecialCommandsAreVersionOneOne)
{
    EXPECT_EQ(Values("SpecialCommands.dav", "SELECT Version FROM Version"), std::vector<QVariant>{"1.1"});
    EXPECT_GE(special.Count(), 6);
}

TEST_F(DefaultDataTest, SpecialCommandsAreNamedAndTheirMasksDoNotOverlap)
{
    int withNode = 0;
    int withMount = 0;
    for (const QVariant& number : Values("SpecialCommands.dav", "SELECT Command FROM General")) {
        const CSpecialCommand* command = special.Find(number.toInt());
        ASSERT_NE(command, nullptr);
        EXPECT_THAT(Defined(), Contains(number.toInt()));
        EXPECT_EQ(command->CodeMask & command->NodeMask, 0) << number.toInt();
        EXPECT_EQ((command->CodeMask | command->NodeMask) & ~0xFFFF, 0) << number.toInt();
        EXPECT_FALSE(command->itemList().empty());
        withNode += command->HasNodePart() ? 1 : 0;
        withMount += command->RequiresMount ? 1 : 0;
    }
    EXPECT_GE(withNode, 6);
    EXPECT_GE(withMount, 1);
}

TEST_F(DefaultDataTest, EveryItemCanBeSentAndReadBack)
{
    for (const QVariant& number : Values("SpecialCommands.dav", "SELECT Command FROM General")) {
        CSpecialCommand& command = *special.Find(number.toInt());
        const std::size_t count = command.itemList().size();
        for (std::size_t item = 0; item < count; ++item) {
            const std::int32_t key = command.itemList()[item]->Code();
            command.SelectCode(key, true);
            command.SetscNode(3);
            command.SelectItem(command.scData(), command.scState(), command.scExtended(), false);
            EXPECT_EQ(command.itemList().size(), count) << number.toInt() << " item " << key;
            EXPECT_EQ(command.scNode(), 3);
        }
    }
}

TEST_F(DefaultDataTest, IconsAndHintsOfTheItemsAreKnown)
{
    const std::set<QString> icons{"On",   "Off",  "Command", "Analog", "Info",  "Lamp",
                                  "Door", "Node", "Panel",   "Sleep",  "Wrench"};
    int hints = 0;
    for (const QVariant& number : Values("SpecialCommands.dav", "SELECT Command FROM General")) {
        for (const auto& item : special.Find(number.toInt())->itemList()) {
            EXPECT_THAT(icons, Contains(item->Icon()));
            hints += item->Extra().startsWith('#') ? 1 : 0;
        }
    }
    EXPECT_GE(hints, 1);
}

TEST_F(DefaultDataTest, TheEatonSwitchIsAssignedByItemOneSixtyOne)
{
    CSpecialCommand& command = *special.Find(969);
    ASSERT_NE(command.GetItem(161), nullptr);
    command.SelectCode(161, true);

    EXPECT_EQ(command.scName(), "Assign Eaton E33 Address");
    EXPECT_EQ(command.scCode(), 40);
    EXPECT_EQ(command.scState(), 0);
    EXPECT_EQ(command.scExtended(), 1);
    EXPECT_TRUE(command.HasNodePart());
    EXPECT_TRUE(command.RequiresMount);
}

TEST_F(DefaultDataTest, EveryAnalogCommandHasItsSymbolAndRoomForItsValue)
{
    std::set<QString> mapped;
    for (const QVariant& name : Values("fxmaps.dav", "SELECT Name FROM AnalogSymbolMaps"))
        mapped.insert(name.toString());
    for (const QVariant& name : Values("ncCommand.dav", "SELECT Name FROM Commands WHERE CategoryID = 9")) {
        EXPECT_THAT(mapped, Contains(name.toString()));
        EXPECT_LE(name.toString().size(), 24);  // of 32 columns; the longest value is "-3276.8" and a symbol
    }
    EXPECT_EQ(Count("fxmaps.dav", "SELECT count(DISTINCT scaled) FROM AnalogSymbolMaps WHERE scaled IN "
                                  "('Positive', 'Pounds', 'Degree')"),
              3);
    EXPECT_EQ(Count("fxmaps.dav", "SELECT count(DISTINCT Decimal) FROM AnalogSymbolMaps"), 2);
}

TEST_F(DefaultDataTest, TheGlyphMapIsTheSheetsSixteenBySixteen)
{
    const auto database = Database::OpenDatabase(BuiltFile("fxmaps.dav"), false, true);
    const auto rows = database->OpenRecordset("SELECT * FROM AsciiGraphicsMap");
    ASSERT_EQ(rows->RecordCount(), 256);
    for (int number = 0; number < 256; ++number, rows->MoveNext()) {
        EXPECT_EQ(rows->Fields("number").toInt(), number);
        EXPECT_EQ(rows->Fields("xloc").toInt(), number % 16 * 14);
        EXPECT_EQ(rows->Fields("yloc").toInt(), number / 16 * 20);
        const QVariant character = rows->Fields("char");
        EXPECT_EQ(character.isValid(), number != 0 && number != 255) << number;
        if (number >= 32 && number < 127) {
            EXPECT_EQ(character.toString(), QString(QChar(number)));
        }
    }
}

TEST_F(DefaultDataTest, TheGlyphMapIsCodePage437)
{
    const auto characterOf = [](int number) {
        return Values("fxmaps.dav",
                      QStringLiteral("SELECT char FROM AsciiGraphicsMap WHERE number = %1").arg(number).toLatin1())
            .at(0)
            .toString();
    };
    EXPECT_EQ(characterOf(1), QString::fromUtf8("☺"));
    EXPECT_EQ(characterOf(16), QString::fromUtf8("►"));
    EXPECT_EQ(characterOf(127), QString::fromUtf8("⌂"));
    EXPECT_EQ(characterOf(128), QString::fromUtf8("Ç"));
    EXPECT_EQ(characterOf(196), QString::fromUtf8("─"));
    EXPECT_EQ(characterOf(219), QString::fromUtf8("█"));
    EXPECT_EQ(characterOf(248), QString::fromUtf8("°"));
    EXPECT_EQ(characterOf(254), QString::fromUtf8("■"));
    EXPECT_EQ(Count("fxmaps.dav", "SELECT count(*) - count(DISTINCT char) FROM AsciiGraphicsMap WHERE char NOT NULL"),
              0);
}

}  // namespace
}  // namespace fenrik
