#include "shared/TextFormat.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct ValRow {
    const char* text;
    double value;
};

class Vals : public testing::TestWithParam<ValRow> {};

TEST_P(Vals, AreTheLeadingNumber)
{
    EXPECT_DOUBLE_EQ(Val(QString::fromUtf8(GetParam().text)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(TextFormat, Vals,
                         testing::Values(ValRow{"", 0}, ValRow{"x", 0}, ValRow{"12", 12}, ValRow{"  12", 12},
                                         ValRow{"-7", -7}, ValRow{"+7", 7}, ValRow{"1F", 1}, ValRow{"3.25V", 3.25},
                                         ValRow{".5", 0.5}, ValRow{"5.", 5}, ValRow{"1,5", 1}, ValRow{"1e3", 1000},
                                         ValRow{"1e", 1}, ValRow{"-", 0}, ValRow{".", 0}, ValRow{"0x10", 0},
                                         ValRow{"\xD9\xA3", 0}));

TEST(TextFormat, HexIsUpperCaseWithoutPadding)
{
    EXPECT_EQ(Hex(0), QStringLiteral("0"));
    EXPECT_EQ(Hex(10), QStringLiteral("A"));
    EXPECT_EQ(Hex(0xBEEF), QStringLiteral("BEEF"));
    EXPECT_EQ(Hex(-1), QStringLiteral("FFFFFFFF"));
    EXPECT_EQ(HexData(0xBEEF), QStringLiteral("0xBEEF"));
    EXPECT_EQ(HexData(0), QStringLiteral("0x0"));
}

struct HexRow {
    const char* text;
    std::int32_t value;
};

class HexTexts : public testing::TestWithParam<HexRow> {};

TEST_P(HexTexts, AreReadUpToTheFirstOtherCharacter)
{
    EXPECT_EQ(HexToLong(QString::fromLatin1(GetParam().text)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(TextFormat, HexTexts,
                         testing::Values(HexRow{"", 0}, HexRow{"0x", 0}, HexRow{"10", 16}, HexRow{"0x10", 16},
                                         HexRow{"ff", 255}, HexRow{"0xFFFF", 65535}, HexRow{"1G", 1}, HexRow{"xyz", 0},
                                         HexRow{"FFFFFFFF", -1}));

TEST(TextFormat, BooleansAreTrueAndFalse)
{
    EXPECT_EQ(BooleanText(true), QStringLiteral("True"));
    EXPECT_EQ(BooleanText(false), QStringLiteral("False"));
}

}  // namespace
}  // namespace fenrik
