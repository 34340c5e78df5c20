#include "model/CDigitalInput.h"
#include "model/CNode.h"
#include "model/COutput.h"
#include "model/CRelation.h"
#include "model/CSystem.h"
#include "model/Fixed4.h"
#include "model/Relationship.h"
#include "model/TrimBlanks.h"
#include "shared/Settings.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

// --- Fixed-point numbers -------------------------------------------------------------------------------------------

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

// --- Outputs -------------------------------------------------------------------------------------------------------

class PointsTest : public testing::Test {
protected:
    PointsTest()
    {
        system.setNodesInSystem(1);
        node().setTypeID(0);
    }
    CNode& node() { return *system.Node(1); }
    COutput& output(int number = 3) { return node().COutputs()[number]; }
    CDigitalInput& input(int number = 3) { return node().CDigitalInputs()[number]; }

    Settings settings;
    CSystem system{settings, QStringLiteral("/program")};
};

TEST_F(PointsTest, ANewOutputKnowsNothing)
{
    const COutput& fresh = output();
    EXPECT_EQ(fresh.Name(), QStringLiteral("Output 3"));
    EXPECT_EQ(fresh.number(), 3);
    EXPECT_EQ(fresh.UsageCode(), 255);
    EXPECT_FALSE(fresh.IsInUse());
    EXPECT_EQ(fresh.State(), 0);
    EXPECT_EQ(fresh.Fault(), QStringLiteral("No Faults Detected"));
    EXPECT_TRUE(fresh.RPN().isEmpty());
    EXPECT_EQ(fresh.RLevelCount(), 0);
    EXPECT_FALSE(fresh.PermOn());
    EXPECT_FALSE(fresh.Flashing());
    EXPECT_EQ(fresh.Loadshed(), Fixed4::Whole(-1));
    EXPECT_EQ(fresh.Sequence(), 0);
    EXPECT_EQ(fresh.PWMValue(), 0);
    EXPECT_EQ(fresh.DelayOn(), Fixed4());
    EXPECT_EQ(fresh.DelayOff(), Fixed4());
    EXPECT_EQ(fresh.Pin(), QStringLiteral("F"));
    EXPECT_EQ(fresh.RelationshipRef(), 0);
    EXPECT_EQ(fresh.NameRef(), 0);
    EXPECT_EQ(fresh.CommentRef(), 0);
    EXPECT_EQ(fresh.FaultDetectType(), 0);
    EXPECT_EQ(fresh.Parent(), &node());
}

TEST_F(PointsTest, AnOutputThatWasPermanentlyOnStaysSo)
{
    output().setUsageCode(2);
    EXPECT_TRUE(output().PermOn());
    output().setUsageCode(1);
    EXPECT_TRUE(output().PermOn());
}

TEST_F(PointsTest, AnOutputIsInUseUnlessItsCodeSaysOtherwise)
{
    for (const int code : {0, 3, 255}) {
        output().setUsageCode(code);
        EXPECT_FALSE(output().IsInUse()) << code;
    }
    for (const int code : {1, 2, 4, 254, -1}) {
        output().setUsageCode(code);
        EXPECT_TRUE(output().IsInUse()) << code;
    }
}

TEST_F(PointsTest, FlashingOf5IsTrue)
{
    output().setFlashing(5);
    EXPECT_TRUE(output().Flashing());
    output().setFlashing(0);
    EXPECT_FALSE(output().Flashing());
}

TEST_F(PointsTest, OverrideAndResolvedAreBitsOfTheirOwn)
{
    output().setOverride(true);
    EXPECT_EQ(output().State(), 0x0100);
    output().setResolved(true);
    EXPECT_EQ(output().State(), 0x0300);
    output().setOverride(false);
    EXPECT_EQ(output().State(), 0x0200);
    EXPECT_TRUE(output().Resolved());
    EXPECT_DOUBLE_EQ(output().Value(), 0.0);
}

struct Permanence {
    const char* name;
    QByteArray relationship;
    bool permanent;
};

class Permanences : public PointsTest, public testing::WithParamInterface<Permanence> {};

TEST_P(Permanences, FollowFromTheFirstBytes)
{
    output().setRPN(GetParam().relationship);
    EXPECT_EQ(output().PermOn(), GetParam().permanent);
    EXPECT_EQ(output().RPN(), GetParam().relationship);
}

INSTANTIATE_TEST_SUITE_P(COutput, Permanences,
                         testing::Values(Permanence{"Empty", "", false}, Permanence{"EndEndNot", "\xFF\xFF\xF0", true},
                                         Permanence{"EndEndNotAndMore", "\xFF\xFF\xF0\x01", true},
                                         Permanence{"EndNot", "\xFF\xF0", true},
                                         Permanence{"EndNotAndMore", "\xFF\xF0\xFF", false},
                                         Permanence{"End", "\xFF", false}, Permanence{"EndEnd", "\xFF\xFF", false},
                                         Permanence{"Not", "\xF0\xFF", false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(PointsTest, NoRelationshipEverEndsPermanence)
{
    output().setPermOn(true);
    output().setRPN("\xFE\x01\x02\xFF");
    EXPECT_TRUE(output().PermOn());
}

TEST_F(PointsTest, LevelsAreCountedByTheirOpeningBytes)
{
    output().setRPN("\xFE\x01\x02\xF1\xFF");
    EXPECT_EQ(output().RLevelCount(), 0);
    output().setRPN("\xFD\x01\x02\x03\xFF\xFD\x01\x02\x03\xFF\xFF");
    EXPECT_EQ(output().RLevelCount(), 2);
}

TEST_F(PointsTest, AnOutputMarksTheSystem)
{
    output().isDirty();
    EXPECT_TRUE(system.Dirty());
    COutput alone;
    alone.isDirty();
}

// --- Inputs --------------------------------------------------------------------------------------------------------

void ExpectNewInput(const CDigitalInput& fresh)
{
    EXPECT_EQ(fresh.Name(), QStringLiteral("Input 3"));
    EXPECT_EQ(fresh.number(), 3);
    EXPECT_EQ(fresh.State(), 0);
    EXPECT_EQ(fresh.InCommand(), 0);
    EXPECT_FALSE(fresh.IsInUse());
    EXPECT_EQ(fresh.OnState(), 255);
    EXPECT_EQ(fresh.SwitchType(), 0);
    EXPECT_EQ(fresh.ThreeWay(), 99);
    EXPECT_EQ(fresh.Pin(), QStringLiteral("17"));
    EXPECT_EQ(fresh.NameRef(), 0xFFFF);
    EXPECT_EQ(fresh.CommentRef(), 0xFFFF);
    EXPECT_EQ(fresh.OnExecuteRef(), 0);
    EXPECT_EQ(fresh.OffExecuteRef(), 0);
    EXPECT_EQ(fresh.OffDelay(), Fixed4());
}

TEST_F(PointsTest, ANewInputKnowsNothing)
{
    ExpectNewInput(input());
    EXPECT_EQ(input().Parent(), &node());
}

TEST_F(PointsTest, AnInputIsResetByInit)
{
    CDigitalInput& used = input();
    used.setName(QStringLiteral("Door"));
    used.setInCommand(12);
    used.setOnState(17);
    used.setSwitchType(5);
    used.setThreeWay(1);
    used.setPin(QStringLiteral("X"));
    used.setNameRef(1);
    used.setCommentRef(2);
    used.setOnExecuteRef(3);
    used.setOffExecuteRef(4);
    used.setOffDelay(Fixed4::Whole(5));
    used.StateOr(3);
    EXPECT_TRUE(used.IsInUse());

    used.Init(node(), 3);
    ExpectNewInput(used);
}

TEST_F(PointsTest, StateBitsAreSetAndClearedAlone)
{
    input().StateOr(0x8003);
    input().StateAndNot(0x0001);
    EXPECT_EQ(input().State(), 0x8002);
}

// --- Relationships -------------------------------------------------------------------------------------------------

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

TEST(Relationship, LosesBlanksAtItsEndsAndNothingElse)
{
    EXPECT_EQ(TrimBlanks(QByteArray("  \t a \n ")), QByteArray("\t a \n"));
    EXPECT_EQ(TrimBlanks(QByteArray("   ")), QByteArray());
    EXPECT_EQ(TrimBlanks(QStringLiteral(" x ")), QStringLiteral("x"));
}

TEST(CRelation, IsAPureOperatorWhenNew)
{
    EXPECT_EQ(CRelation().icommand, 0);
    EXPECT_TRUE(CRelation().Op.isEmpty());
}

}  // namespace
}  // namespace fenrik
