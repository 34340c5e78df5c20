#include "options/FieldChecks.h"

#include "support/BoxRecorder.h"
#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

TEST(FieldChecks, ATextPasses)
{
    BoxRecorder boxes;
    EXPECT_TRUE(FieldChecks(boxes).validateTextField("Name", "x"));
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST(FieldChecks, AnEmptyTextIsToldUnderTheFieldsName)
{
    BoxRecorder boxes;
    EXPECT_FALSE(FieldChecks(boxes).validateTextField("Name", "  "));
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Name must contain a value!");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
}

struct Number {
    const char* name;
    const char* text;
    int value;  ///< 0: refused
    const char* box = "";
};

class Numbers : public testing::TestWithParam<Number> {};

TEST_P(Numbers, AreCheckedInThisOrder)
{
    BoxRecorder boxes;
    const auto number = FieldChecks(boxes).validateNumericField("Port", GetParam().text, 1, 255);
    EXPECT_EQ(number.value_or(0), GetParam().value);
    if (GetParam().value != 0) {
        EXPECT_THAT(boxes.boxes, IsEmpty());
        return;
    }
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, QLatin1String(GetParam().box));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
}

constexpr const char* kEmpty = "Port must contain a value!";
constexpr const char* kNoNumber = "Port must contain a numeric value!";
constexpr const char* kOutOfRange = "Port is not within a valid numeric range!";

INSTANTIATE_TEST_SUITE_P(
    FieldChecks, Numbers,
    testing::Values(Number{"Lowest", "1", 1}, Number{"Highest", "255", 255}, Number{"Blanks", " 17 ", 17},
                    Number{"Empty", "", 0, kEmpty}, Number{"OnlyBlanks", "   ", 0, kEmpty},
                    Number{"Word", "five", 0, kNoNumber}, Number{"TwoNumbers", "5 6", 0, kNoNumber},
                    Number{"NotANumber", "nan", 0, kNoNumber}, Number{"Zero", "0", 0, kOutOfRange},
                    Number{"Negative", "-5", 0, kOutOfRange}, Number{"TooLarge", "256", 0, kOutOfRange},
                    Number{"Fraction", "5.5", 0, kOutOfRange}, Number{"Endless", "inf", 0, kOutOfRange},
                    Number{"BeyondAllIntegers", "99999999999999999999", 0, kOutOfRange}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace fenrik
