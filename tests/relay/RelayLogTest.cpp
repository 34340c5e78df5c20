#include "relay/RelayLog.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <sstream>

namespace fenrik {
namespace {

TEST(RelayLog, LeavesLinesOutThatComeTooFastAndCountsThem)
{
    std::ostringstream out;
    RelayLog log(out, RelayLog::Stamp::None);
    for (int i = 0; i < int(RelayLog::kBurst) + 30; ++i)
        log.Line(5, "line");
    EXPECT_EQ(std::ranges::count(out.str(), '\n'), int(RelayLog::kBurst));
    log.Line(6, "later");
    EXPECT_THAT(out.str(), testing::EndsWith("30 lines left out\nlater\n"));
}

TEST(RelayLog, GoesOnAfterALineThatCouldNotBeWritten)
{
    std::ostringstream text;
    RelayLog log(text, RelayLog::Stamp::None);
    log.Line(0, "one");
    text.setstate(std::ios::badbit);
    log.Line(0, "two");
    EXPECT_EQ(text.str(), "one\ntwo\n");
}

TEST(RelayLog, StampsItsLinesUnlessSomebodyElseDoes)
{
    std::ostringstream plain;
    RelayLog(plain, RelayLog::Stamp::None).Always("line");
    EXPECT_EQ(plain.str(), "line\n");
    std::ostringstream stamped;
    RelayLog(stamped, RelayLog::Stamp::Time).Always("line");
    EXPECT_THAT(stamped.str(), testing::MatchesRegex("[0-9]+-[0-9]+-[0-9]+ [0-9]+:[0-9]+:[0-9]+ line\n"));
}

TEST(RateBudget, RefillsByTheSecondUpToItsMost)
{
    RateBudget budget(10, 5);
    EXPECT_TRUE(budget.Has(100));
    budget.Spend(8);
    EXPECT_FALSE(budget.Has(100.2));
    EXPECT_TRUE(budget.Has(100.4));
    EXPECT_TRUE(budget.Has(1000));
    budget.Spend(5);
    EXPECT_FALSE(budget.Has(1000));
}

}  // namespace
}  // namespace fenrik
