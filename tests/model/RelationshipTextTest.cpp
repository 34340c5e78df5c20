#include "model/RelationshipText.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

QByteArray Bytes(const char* hex)
{
    return QByteArray::fromHex(hex);
}

struct Pair {
    const char* name;
    const char* relationship;
    const char* readBack;
};

class RelationshipTexts : public testing::TestWithParam<Pair> {};

// A relationship read from a file is not the one that was written there: see RelationshipFromText. Files of all ages
// are read by this rule, which costs a relationship the ends of its inner levels.
TEST_P(RelationshipTexts, AreReadFromTheirEnd)
{
    const QString text = RelationshipToText(Bytes(GetParam().relationship));
    EXPECT_EQ(RelationshipFromText(text), Bytes(GetParam().readBack));
}

INSTANTIATE_TEST_SUITE_P(RelationshipText, RelationshipTexts,
                         testing::Values(Pair{"OneCommand", "FE012CFF", "FE012CFFFF"},
                                         Pair{"ANull", "FE0107F1FE00C8F2FF", "FE0107F1FE00C8F2FFFF"},
                                         Pair{"NullAtTheEnd", "FE0100", "FE0100FF"},
                                         Pair{"Levels", "FE0107FFFD010203FE0108FF", "FE0107FD010203FE0108FFFF"},
                                         Pair{"Nothing", "", "FF"}, Pair{"Ended", "FF", "FFFF"},
                                         Pair{"PairOfEnds", "FFFF", "FFFF"}, Pair{"ThreeEnds", "FFFFFF", "FFFF"},
                                         Pair{"EndBeforeNull", "FF00", "00FF"}, Pair{"PermanentlyOn", "FFF0", "F0FF"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RelationshipText, HasNoNullAndDoublesTheLastByte)
{
    EXPECT_EQ(RelationshipToText(Bytes("4100FF")), QString::fromLatin1("A\xFF\x01\xFF\xFF"));
}

TEST(RelationshipText, EveryOtherByteIsOneCharacterOfItsOwn)
{
    QByteArray all;
    for (int byte = 1; byte < 255; ++byte)
        all.append(char(byte));
    const QString text = RelationshipToText(all);
    EXPECT_EQ(text.size(), 254);
    EXPECT_EQ(text[0x80 - 1], QChar(0x20AC));
    EXPECT_EQ(text[0x81 - 1], QChar(0x0081));
    EXPECT_EQ(text[0x9F - 1], QChar(0x0178));
    EXPECT_EQ(text[0xFE - 1], QChar(0x00FE));
    EXPECT_EQ(RelationshipFromText(text), all + '\xFF');
}

TEST(RelationshipText, AsManyEndsAsADamagedFileMayHoldAreReadAtOnce)
{
    EXPECT_EQ(RelationshipFromText(QString(2'000'000, QChar(0xFF))), Bytes("FFFF"));
}

TEST(RelationshipText, ACharacterOfNoByteIsAQuestionMark)
{
    EXPECT_EQ(RelationshipFromText(QString::fromUtf8("\xE4\xBA\x95\xC2\x80")), "??\xFF");
}

}  // namespace
}  // namespace fenrik
