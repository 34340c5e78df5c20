#include "app/DataValidator.h"

#include "platform/Error.h"
#include "support/Printers.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct TypedRow {
    const char* name;
    const char* keys;
    const char* text;
};

class TypedKeys : public testing::TestWithParam<TypedRow> {};

TEST_P(TypedKeys, LeaveWhatMayStandThere)
{
    QLineEdit field;
    field.setValidator(new DataValidator(&field));
    QTest::keyClicks(&field, GetParam().keys);
    EXPECT_EQ(field.text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(DataValidator, TypedKeys,
                         testing::Values(TypedRow{"Digits", "65535", "65535"},
                                         TypedRow{"NoLettersBehindDigits", "12F", "12"}, TypedRow{"NoSign", "-5", "5"},
                                         TypedRow{"NoPoint", "1.5", "15"}, TypedRow{"XBehindZero", "0x1F", "0x1F"},
                                         TypedRow{"NoXAlone", "x1", "1"}, TypedRow{"NoXBehindOne", "1x1", "11"},
                                         TypedRow{"NoXBehindTwoZeros", "00x1", "001"},
                                         TypedRow{"NoCapitalX", "0X1", "01"},
                                         TypedRow{"HexadecimalLettersBecomeUpperCase", "0xabcd", "0xABCD"},
                                         TypedRow{"NoOtherLettersInHexadecimal", "0x1g2", "0x12"},
                                         TypedRow{"NoSecondX", "0x1x2", "0x12"}),
                         [](const auto& test) { return test.param.name; });

class PastedTexts : public testing::TestWithParam<TypedRow> {};

TEST_P(PastedTexts, PassTheSameGateAsAWhole)
{
    QLineEdit field;
    field.setValidator(new DataValidator(&field));
    QApplication::clipboard()->setText(GetParam().keys);
    field.paste();
    EXPECT_EQ(field.text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(DataValidator, PastedTexts,
                         testing::Values(TypedRow{"Digits", "65535", "65535"},
                                         TypedRow{"Hexadecimal", "0xabcd", "0xABCD"},
                                         TypedRow{"LettersBehindDigits", "1F", ""}, TypedRow{"ASign", "-5", ""},
                                         TypedRow{"ABlank", " 5", ""}, TypedRow{"ACapitalX", "0X1", ""}),
                         [](const auto& test) { return test.param.name; });

TEST(DataValidator, BackspaceTakesTheLastCharacterDownToNothing)
{
    QLineEdit field;
    field.setValidator(new DataValidator(&field));
    field.setText("0x1F");
    for (const char* left : {"0x1", "0x", "0", ""}) {
        QTest::keyClick(&field, Qt::Key_Backspace);
        EXPECT_EQ(field.text(), left);
    }
}

struct ValueRow {
    const char* text;
    int value;
};

class DataValues : public testing::TestWithParam<ValueRow> {};

TEST_P(DataValues, AreReadAsTheyStand)
{
    EXPECT_EQ(DataValue(GetParam().text), GetParam().value);
}

// "1F" is 1: without "0x" the reading is decimal and stops at the letter.
INSTANTIATE_TEST_SUITE_P(DataValidator, DataValues,
                         testing::Values(ValueRow{"", 0}, ValueRow{"0", 0}, ValueRow{"31", 31}, ValueRow{"0x1F", 31},
                                         ValueRow{"1F", 1}, ValueRow{"F1", 0}, ValueRow{"0x", 0},
                                         ValueRow{"0xFFFF", 65535}, ValueRow{"2147483647", 2147483647}));

TEST(DataValidator, AValueThatNoNumberHoldsIsAnOverflow)
{
    try {
        (void)DataValue("2147483648");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kOverflow);
    }
}

}  // namespace
}  // namespace fenrik
