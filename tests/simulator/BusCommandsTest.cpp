#include "simulator/BusCommands.h"
#include "simulator/Day.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace fenrik {
namespace {

constexpr int kAnalogCategory = 9;

struct CatalogueRow {
    std::string name;
    int category = 0;
};

/// The default catalogue's list: lines of number, name and category.
std::map<int, CatalogueRow> Catalogue()
{
    std::ifstream file(FENRIK_COMMAND_LIST);
    std::map<int, CatalogueRow> rows;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        std::istringstream cells(line);
        std::string number, name, category;
        std::getline(cells, number, ',');
        std::getline(cells, name, ',');
        std::getline(cells, category, ',');
        rows[std::stoi(number)] = {name, std::stoi(category)};
    }
    return rows;
}

TEST(BusCommands, ThereAreManyOfBothKinds)
{
    EXPECT_GE(PlainCommands().size(), 40u);
    EXPECT_GE(AnalogCommands().size(), 16u);
}

TEST(BusCommands, PlainOnesStandInTheDefaultCatalogue)
{
    auto catalogue = Catalogue();
    for (const auto& command : PlainCommands()) {
        EXPECT_EQ(catalogue[command.number].name, command.name);
        EXPECT_NE(catalogue[command.number].category, kAnalogCategory) << command.name;
    }
}

TEST(BusCommands, AnalogOnesAreAnalogInTheDefaultCatalogue)
{
    auto catalogue = Catalogue();
    for (const auto& command : AnalogCommands()) {
        EXPECT_EQ(catalogue[command.number].name, command.name);
        EXPECT_EQ(catalogue[command.number].category, kAnalogCategory) << command.name;
    }
}

TEST(BusCommands, TheDayNamesOnlyKnownOnes)
{
    for (const auto& step : Day()) {
        if (step.kind == DayStep::Kind::Command) {
            EXPECT_NE(CommandNumber(step.name), 0) << step.name;
        }
    }
    EXPECT_EQ(CommandNumber("No Such Command"), 0);
}

}  // namespace
}  // namespace fenrik
