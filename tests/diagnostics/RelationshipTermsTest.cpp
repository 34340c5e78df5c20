#include "diagnostics/RelationshipTerms.h"

#include "model/CNode.h"
#include "shared/CommandTable.h"
#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

namespace fenrik {
namespace {

/// "ON 300": each term's operator and command.
std::vector<std::string> Terms(const QByteArray& bytes, int level = 0)
{
    std::vector<std::string> terms;
    for (const CRelation& term : RelationshipTerms::OfLevel(bytes, level))
        terms.push_back(term.Op.toStdString() + ' ' + std::to_string(term.icommand));
    return terms;
}

// In the rows below 012C is command 300, 012D 301, 012E 302.
struct Sequence {
    const char* name;
    const char* bytes;
    std::vector<std::string> terms;
};

class Sequences : public testing::TestWithParam<Sequence> {};

TEST_P(Sequences, ReadAsAPersonReadsThem)
{
    EXPECT_EQ(Terms(QByteArray::fromHex(GetParam().bytes)), GetParam().terms);
}

INSTANTIATE_TEST_SUITE_P(
    Relationship, Sequences,
    testing::Values(
        Sequence{"Empty", "", {}}, Sequence{"EndOnly", "FF", {}}, Sequence{"OneCommand", "FE012C FF", {"ON 300"}},
        Sequence{"TwoCommands", "FE012C FE012D FF", {"ON 300", "ON 301"}},
        Sequence{"NotAsModifier", "FE012CF0 FF", {"NOT 300"}}, Sequence{"AndAsModifier", "FE012CF1 FF", {"AND 300"}},
        Sequence{"OrAsModifier", "FE012CF2 FF", {"OR 300"}}, Sequence{"XorAsModifier", "FE012CF3 FF", {"XOR 300"}},
        Sequence{"UnknownModifier", "FE012C42 FF", {"(ERR) 300"}}, Sequence{"LoneNot", "F0 FF", {"NOT 0"}},
        Sequence{"LoneError", "42 FF", {"(ERR) 0"}},
        // The operator behind the last operand is that operand's; the next one stands between the first two.
        Sequence{"ThreeOperands", "FE012C FE012D FE012E F1 F2 FF", {"ON 300", "OR 0", "ON 301", "AND 302"}},
        Sequence{"NotedOperand", "FE012C FE012DF0 F1 FF", {"ON 300", "AND 0", "NOT 301"}},
        Sequence{"NoPlaceForTheOperator", "FE012C FE012DF1 F0 FF", {"ON 300", "AND 301", "NOT 0"}},
        // A modifier of 0 is not used up: it is read once more, as an operator.
        Sequence{"OnAsModifier", "FE012C00 FF", {"ON 300", "ON 0"}},
        Sequence{"CutBehindTheCommand", "FE012C", {"ON 300"}},
        Sequence{"CutInTheCommand", "FE012CF0 FE01", {"NOT 300"}}, Sequence{"CutBeforeTheCommand", "FE", {}}),
    [](const auto& row) { return row.param.name; });

const QByteArray kThreeLevels = QByteArray::fromHex("FE012CF0 FD010203 FE012DF1 FE012EF0 FD040506 FE012F FF FF FF");

TEST(RelationshipTerms, LevelZeroIsThePartBeforeTheFirstOpenedLevel)
{
    EXPECT_EQ(Terms(kThreeLevels, 0), std::vector<std::string>{"NOT 300"});
}

TEST(RelationshipTerms, EachOpenedLevelIsReadBehindItsHeader)
{
    EXPECT_EQ(Terms(kThreeLevels, 1), (std::vector<std::string>{"AND 301", "NOT 302"}));
    EXPECT_EQ(Terms(kThreeLevels, 2), std::vector<std::string>{"ON 303"});
    EXPECT_EQ(Terms(kThreeLevels, 3), std::vector<std::string>{});
}

// The tree counts every 253 as a level, also one that the reader takes for an operator.
TEST(RelationshipTerms, LevelByteInThePlaceOfAnOperatorReadsAsErrorAndStillCountsAsALevel)
{
    const QByteArray bytes = QByteArray::fromHex("FE012CFD FE012DF0 FF");
    EXPECT_EQ(Terms(bytes), (std::vector<std::string>{"(ERR) 300", "NOT 301"}));
    CNode node;
    COutput output;
    output.Init(node, 1);
    output.setRPN(bytes);
    EXPECT_EQ(output.RLevelCount(), 1);
}

TEST(RelationshipTerms, StringCutAnywhereReadsAsFarAsItGoes)
{
    for (int length = 0; length <= kThreeLevels.size(); ++length) {
        // A copy of exactly that size, so that the sanitizer sees a byte read too many.
        const auto bytes = std::make_unique<char[]>(std::size_t(length));
        std::copy_n(kThreeLevels.constData(), length, bytes.get());
        const QByteArray cut = QByteArray::fromRawData(bytes.get(), length);
        for (int level = 0; level <= 3; ++level) {
            const auto whole = Terms(kThreeLevels, level);
            EXPECT_LE(Terms(cut, level).size(), whole.size()) << length << ' ' << level;
        }
    }
}

TEST(RelationshipTerms, AnyBytesGiveNoMoreTermsThanThereAreBytes)
{
    std::mt19937 random(1);
    constexpr unsigned kUsual[] = {0, 1, 42, 240, 241, 242, 243, 253, 254, 255};
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes(int(random() % 40), '\0');
        for (char& byte : bytes)
            byte = char(kUsual[random() % std::size(kUsual)]);
        for (int level = 0; level < 4; ++level)
            ASSERT_LE(Terms(bytes, level).size(), std::size_t(bytes.size())) << bytes.toHex().toStdString();
    }
}

class TermRows : public testing::Test {
protected:
    TermRows()
    {
        commands[300].Name = QStringLiteral("Wiper");
        commands[301].Name = QStringLiteral("Horn");
        output.Init(node, 1);
    }

    QList<TermRow> Rows(const char* hex)
    {
        output.setRPN(QByteArray::fromHex(hex));
        return RelationshipTerms::RowsOf(output, 0, commands);
    }

    CommandTable commands;
    CNode node;
    COutput output;
};

TEST_F(TermRows, CommandsHaveTheirNamesAndNumbers)
{
    const QList<TermRow> expected{{QStringLiteral("NOT"), QStringLiteral("Wiper"), 300}};
    EXPECT_EQ(Rows("FE012CF0 FF"), expected);
}

TEST_F(TermRows, OperatorAmongTermsStandsAlone)
{
    const QList<TermRow> expected{{QStringLiteral("ON"), QStringLiteral("Wiper"), 300},
                                  {QStringLiteral("AND"), QString(), 0},
                                  {QStringLiteral("NOT"), QStringLiteral("Horn"), 301}};
    EXPECT_EQ(Rows("FE012C FE012DF0 F1 FF"), expected);
}

TEST_F(TermRows, LoneErrorStandsInTheFirstColumn)
{
    const QList<TermRow> expected{{QStringLiteral("(ERR)"), QString(), 0}};
    EXPECT_EQ(Rows("42 FF"), expected);
}

TEST(RelationshipTerms, AsManyOperatorsAsADamagedFileMayHoldAreReadAtOnce)
{
    const QByteArray operators(300'000, '\xF0');
    EXPECT_EQ(RelationshipTerms::OfLevel(operators, 0).size(), operators.size());
}

TEST_F(TermRows, LoneNotIsPermanentlyOn)
{
    const QList<TermRow> expected{{QString(), QStringLiteral("(Permanently On)"), 0}};
    EXPECT_EQ(Rows("F0 FF"), expected);
}

TEST_F(TermRows, OtherLoneOperatorHasNoRow)
{
    EXPECT_TRUE(Rows("F1 FF").isEmpty());
}

TEST_F(TermRows, CommandBeyondTheTableIsUnknown)
{
    EXPECT_EQ(Rows("FE0500 FF").value(0).command, QStringLiteral("Unknown"));  // 1280
    EXPECT_EQ(Rows("FEFFFF FF").value(0).command, QStringLiteral("Unknown"));
}

TEST_F(TermRows, OutputWithoutARelationshipIsUnavailable)
{
    const QList<TermRow> expected{{QStringLiteral("Unavailable"), QString(), 0}};
    EXPECT_EQ(Rows(""), expected);
}

TEST_F(TermRows, PermanentlyOnOutputSaysSoForEveryLevel)
{
    const QList<TermRow> expected{{QStringLiteral("(Permanently On)"), QString(), 0}};
    output.setPermOn(true);
    EXPECT_EQ(Rows(""), expected);
    EXPECT_EQ(Rows("FE012C FD000000 FE012D FF FF"), expected);
    EXPECT_EQ(RelationshipTerms::RowsOf(output, 1, commands), expected);
}

}  // namespace
}  // namespace fenrik
