#include "model/CDigitalInput.h"
#include "model/CNode.h"
#include "model/COutput.h"
#include "model/CSystem.h"
#include "shared/Settings.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

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

}  // namespace
}  // namespace fenrik
