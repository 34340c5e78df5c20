#include "platform/JetQueries.h"

#include "platform/Error.h"
#include "platform/JetExpression.h"
#include "support/JetCatalogue.h"
#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::HasSubstr;

struct ExpressionRow {
    const char* name;
    QString jet;
    QString sql;
};

class JetExpressions : public testing::TestWithParam<ExpressionRow> {};

TEST_P(JetExpressions, AreTranslated)
{
    EXPECT_EQ(JetExpression::Parse(GetParam().jet).sql, GetParam().sql);
}

INSTANTIATE_TEST_SUITE_P(
    JetQueries, JetExpressions,
    testing::Values(
        ExpressionRow{"Column", "[Tax Scale]", R"("Tax Scale")"},
        ExpressionRow{"ColumnOfTable", "Commands.[Name]", R"("Commands"."Name")"},
        ExpressionRow{"ColumnBehindAMark", "[Commands]![Name]", R"("Commands"."Name")"},
        ExpressionRow{"AllOfTable", "[a b].*", R"("a b".*)"}, ExpressionRow{"QuoteInAName", R"([a"b])", R"("a""b")"},
        ExpressionRow{"SqlInAName", R"([x"; DROP TABLE y; --])", R"("x""; DROP TABLE y; --")"},
        ExpressionRow{"Text", R"("it's ""so""")", R"('it''s "so"')"},
        ExpressionRow{"OtherQuotes", R"('a''b')", R"('a''b')"}, ExpressionRow{"Equal", "a=1", R"(("a" = 1))"},
        ExpressionRow{"NotEqual", "((([a])<>\"x\"))", R"(("a" <> 'x'))"},
        ExpressionRow{"AndBeforeOr", "a=1 Or b=2 And c=3", R"((("a" = 1) OR (("b" = 2) AND ("c" = 3))))"},
        ExpressionRow{"Not", "Not a=1", R"((NOT ("a" = 1)))"},
        ExpressionRow{"TruthValueCompared", "(a=1)=True", R"(((-("a" = 1)) = -1))"},
        ExpressionRow{"IsNull", "a Is Null And b Is Not Null", R"((("a" IS NULL) AND ("b" IS NOT NULL)))"},
        ExpressionRow{"Between", "a Between 1 And 3", R"(("a" BETWEEN 1 AND 3))"},
        ExpressionRow{"In", "a Not In (1,2)", R"(("a" NOT IN (1, 2)))"},
        ExpressionRow{"Like", R"(a Like "50%_*?")", R"(("a" LIKE '50\%\_%_' ESCAPE '\'))"},
        ExpressionRow{"Concatenation", R"(a & "-" & b)",
                      R"((coalesce((coalesce("a", '') || coalesce('-', '')), '') || coalesce("b", '')))"},
        ExpressionRow{"PlusOfTexts", R"(a+"x")", R"(("a" || 'x'))"},
        ExpressionRow{"Arithmetic", "1+2*-a", R"((1 + (2 * (-"a"))))"},
        ExpressionRow{"DivisionGivesFractions", "a/2", R"((CAST("a" AS REAL) / 2))"},
        ExpressionRow{"Date", "#12/31/2001#", "'2001-12-31 00:00:00'"},
        ExpressionRow{"DateAndTime", "#1/2/2001 3:04:05 PM#", "'2001-01-02 15:04:05'"},
        ExpressionRow{"Function", "UCase(Trim(a))", R"((upper((trim("a", ' ')))))"},
        ExpressionRow{"FunctionOfThree", "IIf(a=1,\"%1\",b)", R"((CASE WHEN (-("a" = 1)) THEN '%1' ELSE "b" END))"},
        ExpressionRow{"CountAll", "Count(*)", "(count(*))"}),
    [](const auto& row) { return row.param.name; });

class RefusedExpressions : public testing::TestWithParam<QString> {};

TEST_P(RefusedExpressions, SayWhatHasNoCounterpart)
{
    try {
        (void)JetExpression::Parse(GetParam());
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kDatabaseStatement);
        EXPECT_FALSE(error.Description().isEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(JetQueries, RefusedExpressions,
                         testing::Values("", "a^2", "a Mod 2", "a\\2", "a And 4", "Not 4", "[Forms]![f]![c]",
                                         "MyFunction(a)", "Nz(a)", "a Like b", "a Like \"[a-c]*\"", "a Like \"#\"",
                                         "[open", "\"open", "#13/45/2001#", "(a", "a)", "a b", "1.2.3", "2x", "a Is 3",
                                         "a Between 1", "a;b", "{a}", QString(80, '('), QString(80, '-') + "a",
                                         QString(20000, 'a')));

QString ComposeError(const std::vector<JetQueryPart>& parts)
{
    try {
        return "no error: " + ComposeJetQuery(parts);
    } catch (const Error& error) {
        return error.Description();
    }
}

JetQueryPart Part(int attribute, const QString& expression, const QString& name1 = {}, const QString& name2 = {},
                  int flag = 0)
{
    return {attribute, QByteArray(), flag, name1, name2, expression};
}

TEST(JetQueries, TheMarketJoinIsRebuilt)
{
    EXPECT_EQ(ComposeJetQuery(MarketJoinParts()),
              R"(SELECT "MarketCategorys"."MarketID" AS "MarketID", "Commands"."Command" AS "CommandID", )"
              R"("Commands"."Name" AS "CommandName", "Categorys"."Name" AS "CategoryName", )"
              R"("Categorys"."CategoryID" AS "CategoryID" FROM )"
              R"((("Categorys" INNER JOIN "Commands" ON ("Categorys"."CategoryID" = "Commands"."CategoryID")) )"
              R"(INNER JOIN "MarketCategorys" ON ("Categorys"."CategoryID" = "MarketCategorys"."CategoryID")))");
}

TEST(JetQueries, PartsCountInTheirOrderNotInTheirRows)
{
    auto parts = MarketJoinParts();
    std::reverse(parts.begin(), parts.end());
    EXPECT_EQ(ComposeJetQuery(parts), ComposeJetQuery(MarketJoinParts()));
}

TEST(JetQueries, ARightJoinIsALeftJoinFromTheOtherSide)
{
    EXPECT_EQ(ComposeJetQuery({Part(5, "", "a"), Part(5, "", "b", "c"), Part(7, "a.x=c.x", "a", "c", 3)}),
              R"(SELECT * FROM ("b" AS "c" LEFT JOIN "a" ON ("a"."x" = "c"."x")))");
}

TEST(JetQueries, TwoConditionsOfOneJoinAreBothMeant)
{
    EXPECT_EQ(ComposeJetQuery({Part(5, "", "a"), Part(5, "", "b"), Part(7, "a.x=b.x", "a", "b", 2),
                               Part(7, "a.y=b.y", "a", "b", 2)}),
              R"(SELECT * FROM ("a" LEFT JOIN "b" ON ("a"."x" = "b"."x") AND ("a"."y" = "b"."y")))");
}

TEST(JetQueries, SourcesWithoutAJoinAreCrossed)
{
    EXPECT_EQ(ComposeJetQuery({Part(5, "", "a"), Part(5, "", "b"), Part(8, "a.x=b.x")}),
              R"(SELECT * FROM "a", "b" WHERE ("a"."x" = "b"."x"))");
}

TEST(JetQueries, OrderGroupsAndDistinctAreKept)
{
    EXPECT_EQ(ComposeJetQuery({Part(3, "", "5", "", 2 + 16), Part(5, "", "a"), Part(6, "x"), Part(6, "Sum(y)", "s"),
                               Part(9, "x"), Part(10, "Sum(y)>1"), Part(11, "x", "D"), Part(11, "y")}),
              R"(SELECT DISTINCT "x" AS "x", (sum("y")) AS "s" FROM "a" GROUP BY "x" HAVING ((sum("y")) > 1) )"
              R"(ORDER BY "x" DESC, "y" LIMIT 5)");
}

TEST(JetQueries, AColumnWithoutAliasHasItsNameOrTheTablesBeforeIt)
{
    EXPECT_EQ(ComposeJetQuery({Part(5, "", "a"), Part(5, "", "b"), Part(6, "a.x"), Part(6, "b.x"), Part(6, "1+1")}),
              R"(SELECT "a"."x" AS "a.x", "b"."x" AS "b.x", (1 + 1) AS "Expr1002" FROM "a", "b")");
}

TEST(JetQueries, WhatCannotBeRebuiltSaysWhy)
{
    const auto source = Part(5, "", "a");
    EXPECT_THAT(ComposeError({Part(1, "", "", "", 4), source}).toStdString(), HasSubstr("no simple select"));
    EXPECT_THAT(ComposeError({Part(2, "", "Which?"), source}).toStdString(), HasSubstr("parameters"));
    EXPECT_THAT(ComposeError({Part(4, "", "C:\\other.mdb"), source}).toStdString(), HasSubstr("another database"));
    EXPECT_THAT(ComposeError({Part(3, "", "5", "", 48), source}).toStdString(), HasSubstr("share"));
    EXPECT_THAT(ComposeError({Part(5, "SELECT 1")}).toStdString(), HasSubstr("another query"));
    EXPECT_THAT(ComposeError({}).toStdString(), HasSubstr("no source"));
    EXPECT_THAT(ComposeError({source, Part(7, "a.x=z.x", "a", "z", 1)}).toStdString(),
                HasSubstr("none of its sources"));
    EXPECT_THAT(ComposeError({source, Part(5, "", "b"), Part(7, "a.x=b.x", "a", "b", 9)}).toStdString(),
                HasSubstr("unknown kind"));
    EXPECT_THAT(ComposeError({Part(3, "", "", "", 8), source, Part(5, "", "b"), Part(6, "a.x")}).toStdString(),
                HasSubstr("tells rows apart"));
}

TEST(JetQueries, JoinsThatFormARingAreLeftOut)
{
    EXPECT_THAT(ComposeError({Part(5, "", "a"), Part(5, "", "b"), Part(5, "", "c"), Part(7, "a.x=b.x", "a", "b", 1),
                              Part(7, "b.x=c.x", "b", "c", 1), Part(7, "a.x=c.x", "a", "c", 1)})
                    .toStdString(),
                HasSubstr("ring"));
}

}  // namespace
}  // namespace fenrik
