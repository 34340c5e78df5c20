#include "model/Fixed4.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct Division {
    std::int64_t value;
    std::int64_t divisor;
    std::int64_t tenThousandths;
};

class Divisions : public testing::TestWithParam<Division> {};

TEST_P(Divisions, AreExactToFourDecimals)
{
    const auto [value, divisor, expected] = GetParam();
    EXPECT_EQ(Fixed4::Quotient(value, divisor).TenThousandths(), expected);
}

INSTANTIATE_TEST_SUITE_P(Fixed4, Divisions,
                         testing::Values(Division{125, 10, 125000}, Division{65535, 1000, 655350}, Division{1, 2, 5000},
                                         Division{1, 3, 3333}, Division{2, 3, 6667}, Division{-1, 2, -5000},
                                         Division{0, 7, 0},
                                         // 0.00005 and 0.00015 lie half way: the even digit wins.
                                         Division{1, 20000, 0}, Division{3, 20000, 2}, Division{-1, 20000, 0},
                                         Division{-3, 20000, -2}));

TEST(Fixed4, RoundsATieToTheEvenNumber)
{
    EXPECT_EQ(Fixed4::RoundedQuotient(1, 2), 0);
    EXPECT_EQ(Fixed4::RoundedQuotient(3, 2), 2);
    EXPECT_EQ(Fixed4::RoundedQuotient(5, 2), 2);
    EXPECT_EQ(Fixed4::RoundedQuotient(7, 3), 2);
}

TEST(Fixed4, ComparesByValue)
{
    EXPECT_EQ(Fixed4::Whole(12), Fixed4::Quotient(120, 10));
    EXPECT_LT(Fixed4::Whole(-1), Fixed4());
    EXPECT_DOUBLE_EQ(Fixed4::FromTenThousandths(97000).ToDouble(), 9.7);
}

}  // namespace
}  // namespace fenrik
