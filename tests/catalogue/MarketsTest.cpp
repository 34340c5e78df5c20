#include "catalogue/Markets.h"

#include "SystemFolder.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

TEST(Markets, ComeInTheOrderOfTheirRowsWithoutMarketZero)
{
    const SystemFolder folder;
    const auto markets = ReadMarkets(folder.Program("ncCommand.dav"));
    ASSERT_EQ(markets.size(), 2U);
    EXPECT_EQ(markets[0].id, 3);
    EXPECT_EQ(markets[0].name, "Truck");
    EXPECT_EQ(markets[1].id, 1);
}

TEST(Markets, AreNoneIfAnythingIsWrong)
{
    const SystemFolder folder;
    SystemFolder::Database(folder.Program("nomarket.dav"));
    MakeDatabase(folder.Program("null.dav"),
                 {"CREATE TABLE Market (MarketID INTEGER, MarketName TEXT)", "INSERT INTO Market VALUES (1, 'Bus')",
                  "INSERT INTO Market VALUES (2, NULL)"});
    for (const char* name : {"nomarket.dav", "null.dav", "absent.dav"})
        EXPECT_TRUE(ReadMarkets(folder.Program(name)).empty()) << name;
}

}  // namespace
}  // namespace fenrik
