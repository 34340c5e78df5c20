#include "shared/CommandTable.h"

#include "platform/Error.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

class CommandTableTest : public testing::Test {
protected:
    CommandTable table;
};

TEST_F(CommandTableTest, StartsWithAllNumbersUndefined)
{
    EXPECT_EQ(table[1].Name, QStringLiteral("<Undefined message    1>"));
    EXPECT_EQ(table[42].Name, QStringLiteral("<Undefined message   42>"));
    EXPECT_EQ(table[1279].Name, QStringLiteral("<Undefined message 1279>"));
    EXPECT_EQ(table[1279].Category, QStringLiteral("<Undefined Messages>"));
    EXPECT_EQ(table[1].CategoryRank, 0);
    EXPECT_EQ(table.Count(1), 0);
    EXPECT_FALSE(table.AnalogCommand(1));
}

TEST_F(CommandTableTest, OutsideTheTableIsASubscriptOutOfRange)
{
    const CommandTable& constant = table;
    for (const int number : {-1, 1280, 100000}) {
        for (const auto& access :
             std::initializer_list<std::function<void()>>{[&] { (void)table[number]; }, [&] { (void)constant[number]; },
                                                          [&] { table.SetAnalogCommand(number, true); }}) {
            try {
                access();
                ADD_FAILURE() << number;
            } catch (const Error& error) {
                EXPECT_EQ(error.Number(), ErrorNumber::kSubscriptOutOfRange);
            }
        }
    }
    EXPECT_NO_THROW((void)table[0]);
    EXPECT_NO_THROW((void)table[1279]);
}

TEST_F(CommandTableTest, CountsUpAndRestartsAtZeroAfter32767)
{
    table.CountUp(7);
    EXPECT_EQ(table.Count(7), 1);
    for (int i = 1; i < 32767; ++i)
        table.CountUp(7);
    EXPECT_EQ(table.Count(7), 32767);
    table.CountUp(7);
    EXPECT_EQ(table.Count(7), 0);
    EXPECT_EQ(table.Count(8), 0);
}

TEST_F(CommandTableTest, ANumberOutsideTheTableIsNotCounted)
{
    table.CountUp(-1);
    table.CountUp(1280);
    EXPECT_EQ(table.Count(-1), 0);
    EXPECT_EQ(table.Count(1280), 0);
    EXPECT_FALSE(table.AnalogCommand(-1));
    EXPECT_FALSE(table.AnalogCommand(1280));
}

TEST_F(CommandTableTest, ClearKeepsCountersAndLastValues)
{
    table.CountUp(5);
    table[5].LastValue = 77;
    table[5].Name = "Horn";
    table[5].Category = "Outputs";
    table[5].CategoryRank = 3;
    table.SetAnalogCommand(5, true);
    const int generation = table.Generation();

    table.Clear();
    EXPECT_EQ(table.Count(5), 1);
    EXPECT_EQ(table[5].LastValue, 77);
    EXPECT_EQ(table[5].Name, QStringLiteral("<Undefined message    5>"));
    EXPECT_EQ(table[5].Category, QString::fromLatin1(CommandTable::kUndefinedCategory));
    EXPECT_EQ(table[5].CategoryRank, 0);
    EXPECT_FALSE(table.AnalogCommand(5));
    EXPECT_GT(table.Generation(), generation);
}

TEST_F(CommandTableTest, FindsTheFirstNumberOfAName)
{
    table[0].Name = "Horn";  // number 0 is no command
    table[20].Name = "Horn";
    table[10].Name = "Horn";
    EXPECT_EQ(table.GetCommandNumber("Horn"), 10);
    EXPECT_EQ(table.GetCommandNumber("horn"), 1280);
    EXPECT_EQ(table.GetCommandNumber(QString()), 1280);
}

TEST_F(CommandTableTest, NamesANumber)
{
    table[1].Name = "Horn";
    table[1279].Name = "Last";
    EXPECT_EQ(table.FriendlyName(1), QStringLiteral("Horn"));
    EXPECT_EQ(table.FriendlyName(1279), QStringLiteral("Last"));
    EXPECT_EQ(table.FriendlyName(0), QStringLiteral("Unknown"));
    EXPECT_EQ(table.FriendlyName(1280), QStringLiteral("Unknown"));
    EXPECT_EQ(table.FriendlyName(-5), QStringLiteral("Unknown"));
}

}  // namespace
}  // namespace fenrik
