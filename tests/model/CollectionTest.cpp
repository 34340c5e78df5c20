#include "model/Collection.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

Collection<int> Three()
{
    Collection<int> numbers;
    numbers.Add(std::make_unique<int>(10), QStringLiteral("ten"));
    numbers.Add(std::make_unique<int>(20), QStringLiteral("twenty"));
    numbers.Add(std::make_unique<int>(30), QStringLiteral("thirty"));
    return numbers;
}

TEST(Collection, CountsFromOne)
{
    const auto numbers = Three();
    EXPECT_EQ(numbers.Count(), 3);
    EXPECT_EQ(numbers[1], 10);
    EXPECT_EQ(numbers[3], 30);
    EXPECT_EQ(numbers.Find(2), &numbers[2]);
}

class PositionsOutside : public testing::TestWithParam<int> {};

TEST_P(PositionsOutside, HaveNoObject)
{
    const auto numbers = Three();
    EXPECT_FALSE(numbers.Contains(GetParam()));
    EXPECT_EQ(numbers.Find(GetParam()), nullptr);
    try {
        (void)numbers[GetParam()];
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kSubscriptOutOfRange);
    }
}

INSTANTIATE_TEST_SUITE_P(Collection, PositionsOutside, testing::Values(-1, 0, 4));

TEST(Collection, FindsAPositionByItsKey)
{
    const auto numbers = Three();
    EXPECT_EQ(numbers.PositionOf(QStringLiteral("twenty")), 2);
    EXPECT_EQ(numbers.PositionOf(QStringLiteral("forty")), 0);
}

TEST(Collection, TakesEachKeyOnce)
{
    auto numbers = Three();
    EXPECT_FALSE(numbers.Add(std::make_unique<int>(99), QStringLiteral("ten")));
    EXPECT_EQ(numbers.Count(), 3);
    EXPECT_EQ(numbers[1], 10);
}

TEST(Collection, ReplacesAnObjectTogetherWithItsKey)
{
    auto numbers = Three();
    numbers.Replace(2, std::make_unique<int>(21), QStringLiteral("twenty-one"));
    EXPECT_EQ(numbers.Count(), 3);
    EXPECT_EQ(numbers[2], 21);
    EXPECT_EQ(numbers.PositionOf(QStringLiteral("twenty-one")), 2);
    EXPECT_EQ(numbers.PositionOf(QStringLiteral("twenty")), 0);
}

}  // namespace
}  // namespace fenrik
