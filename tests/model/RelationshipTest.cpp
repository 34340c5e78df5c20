#include "model/Relationship.h"

#include "model/TrimBlanks.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

TEST(Relationship, NamesItsOperators)
{
    EXPECT_EQ(Relationship::OperatorText(240), QStringLiteral("NOT"));
    EXPECT_EQ(Relationship::OperatorText(241), QStringLiteral("AND"));
    EXPECT_EQ(Relationship::OperatorText(242), QStringLiteral("OR"));
    EXPECT_EQ(Relationship::OperatorText(243), QStringLiteral("XOR"));
    EXPECT_EQ(Relationship::OperatorText(0), QStringLiteral("ON"));
    for (const int byte : {1, 239, 244, 253, 255})
        EXPECT_EQ(Relationship::OperatorText(std::uint8_t(byte)), QStringLiteral("(ERR)")) << byte;
}

TEST(Relationship, EndsWithItsOutermostLevel)
{
    RelationshipReader reader;
    for (const int byte : {253, 1, 2, 3, 255, 254})
        EXPECT_FALSE(reader.Take(std::uint8_t(byte)));
    EXPECT_TRUE(reader.Take(255));
    EXPECT_EQ(reader.Bytes().size(), 7);
}

TEST(TrimBlanks, TakesBlanksAtTheEndsAndNothingElse)
{
    EXPECT_EQ(TrimBlanks(QByteArray("  \t a \n ")), QByteArray("\t a \n"));
    EXPECT_EQ(TrimBlanks(QByteArray("   ")), QByteArray());
    EXPECT_EQ(TrimBlanks(QStringLiteral(" x ")), QStringLiteral("x"));
}

}  // namespace
}  // namespace fenrik
