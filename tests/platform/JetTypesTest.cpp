#include "platform/JetTypes.h"

#include "platform/Error.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct TextRow {
    const char* name;
    JetText encoding;
    QByteArray bytes;
    QString text;
};

class JetTexts : public testing::TestWithParam<TextRow> {};

TEST_P(JetTexts, AreDecoded)
{
    EXPECT_EQ(DecodeJetText(GetParam().bytes, GetParam().encoding), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    JetTypes, JetTexts,
    testing::Values(TextRow{"Ansi", JetText::Ansi, "T\xFCr \x80 \x81", QString::fromUtf8("Tür € \xC2\x81")},
                    TextRow{"AnsiIsNeverCompressed", JetText::Ansi, "\xFF\xFE", QString::fromUtf8("ÿþ")},
                    TextRow{"Unicode", JetText::Unicode, QByteArray("A\0\xAC\x20", 4), QString::fromUtf8("A€")},
                    TextRow{"Compressed", JetText::Unicode, "\xFF\xFET\xFCr", QString::fromUtf8("Tür")},
                    TextRow{"CompressedSwitchesBothWays", JetText::Unicode,
                            QByteArray("\xFF\xFE"
                                       "A\0\xAC\x20\0B",
                                       8),
                            QString::fromUtf8("A€B")},
                    TextRow{"CompressedAndEmpty", JetText::Unicode, "\xFF\xFE", ""},
                    TextRow{"HalfACharacterIsDropped", JetText::Unicode, QByteArray("A\0B", 3), "A"},
                    TextRow{"HalfAWideCharacterIsDropped", JetText::Unicode, QByteArray("\xFF\xFE\0\xAC", 4), ""}),
    [](const auto& row) { return row.param.name; });

struct ValueRow {
    const char* name;
    int type;
    QByteArray bytes;
    QVariant value;
};

class JetValues : public testing::TestWithParam<ValueRow> {};

TEST_P(JetValues, AreDecoded)
{
    EXPECT_EQ(DecodeJetValue(GetParam().type, GetParam().bytes, JetText::Unicode, 2), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    JetTypes, JetValues,
    testing::Values(
        ValueRow{"Byte", JetType::kByte, "\xC8", 200LL}, ValueRow{"Integer", JetType::kInteger, "\xFE\xFF", -2LL},
        ValueRow{"Long", JetType::kLong, QByteArray("\0\0\0\x80", 4), -2147483648LL},
        ValueRow{"BigInteger", JetType::kBigInteger, QByteArray(8, '\xFF'), -1LL},
        ValueRow{"Single", JetType::kSingle, QByteArray("\0\0\0\x3F", 4), 0.5},
        ValueRow{"Double", JetType::kDouble, QByteArray("\0\0\0\0\0\0\xF8\x3F", 8), 1.5},
        ValueRow{"Money", JetType::kMoney, QByteArray("\x40\xE2\x01\0\0\0\0\0", 8), 12.3456},
        ValueRow{"MoneyBeyondADouble", JetType::kMoney, QByteArray(7, '\xFF') + '\x7F', "922337203685477.5807"},
        ValueRow{"LeastMoney", JetType::kMoney, QByteArray(7, '\0') + '\x80', "-922337203685477.5808"},
        ValueRow{"Date", JetType::kDate, QByteArray("\0\0\0\0\x10\x94\xE1\x40", 8), "1998-07-24 12:00:00"},
        ValueRow{"DateBeforeTheFirst", JetType::kDate, QByteArray("\0\0\0\0\0\0\xF4\xBF", 8), "1899-12-29 06:00:00"},
        ValueRow{"DateBeyondAllYears", JetType::kDate, QByteArray("\0\0\0\0\0\0\x59\x41", 8), 6553600.0},
        ValueRow{"Guid", JetType::kGuid, QByteArray("0123456789abcdef"), "{33323130-3534-3736-3839-616263646566}"},
        ValueRow{"Numeric", JetType::kNumeric, QByteArray(13, '\0') + QByteArray("\xE2\x04\0\0", 4), 12.5},
        ValueRow{"NegativeNumeric", JetType::kNumeric, '\x80' + QByteArray(12, '\0') + QByteArray("\x05\0\0\0", 4),
                 -0.05},
        ValueRow{"NumericBeyondADouble", JetType::kNumeric,
                 QByteArray(9, '\0') + QByteArray("\x01\0\0\0", 4) + QByteArray(4, '\xFF'), 85899345.91},
        ValueRow{"LargestNumeric", JetType::kNumeric, '\0' + QByteArray(16, '\xFF'),
                 "3402823669209384634633746074317682114.55"},
        ValueRow{"Binary", JetType::kBinary, QByteArray("a\0b", 3), QByteArray("a\0b", 3)},
        ValueRow{"UnknownType", 99, "xyz", QByteArray("xyz")}),
    [](const auto& row) { return row.param.name; });

TEST(JetTypes, AFieldTooShortForItsTypeIsDamage)
{
    for (int type = 0; type < 25; ++type) {
        try {
            (void)DecodeJetValue(type, QByteArrayView(), JetText::Unicode, 0);
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseBroken);
        }
    }
    EXPECT_THROW((void)DecodeJetValue(JetType::kLong, QByteArray("abc"), JetText::Ansi, 0), Error);
    EXPECT_THROW((void)DecodeJetValue(JetType::kNumeric, QByteArray(16, 'a'), JetText::Ansi, 0), Error);
}

}  // namespace
}  // namespace fenrik
