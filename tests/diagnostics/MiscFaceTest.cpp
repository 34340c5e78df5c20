#include "diagnostics/MiscFace.h"

#include "diagnostics/PanelFixture.h"

namespace fenrik {
namespace {

using MiscFaceTest = PanelFixture;

TEST_F(MiscFaceTest, TheSyncLampIsBrightOnlyWhileItIsLit)
{
    panel.ShowSync(true);
    EXPECT_EQ(Line(1), "[Sync]  ");
    EXPECT_TRUE(IsBright(1));
    panel.ShowSync(false);
    EXPECT_EQ(Line(1), "[Sync]  ");
    EXPECT_EQ(DimRow(face, 1), "[Sync]  ");
}

TEST_F(MiscFaceTest, ASyncLightsTheLampFor300Milliseconds)
{
    panel.LightSync();
    EXPECT_TRUE(IsBright(1));
    EXPECT_EQ(Timer("TSync").interval(), 300);
    Fire(Timer("TSync"));
    EXPECT_EQ(DimRow(face, 1), "[Sync]  ");
    EXPECT_FALSE(Timer("TSync").isActive());
}

TEST_F(MiscFaceTest, CountersHaveFivePlacesAtLeast)
{
    panel.ShowPC(123);
    panel.ShowBC(0);
    EXPECT_EQ(Line(3), "PC 00123");
    EXPECT_EQ(Line(4), "BC 00000");
    EXPECT_TRUE(IsBright(3));
}

TEST_F(MiscFaceTest, CountersGrowAndShrinkAgain)
{
    panel.ShowPC(99999);
    EXPECT_EQ(Line(3), "PC 99999");
    panel.ShowPC(100000);
    EXPECT_EQ(Line(3), "PC 100000");
    panel.ShowPC(1234567);
    EXPECT_EQ(Line(3), "PC 1234567");
    panel.ShowPC(0);
    EXPECT_EQ(Line(3), "PC 00000");
}

TEST_F(MiscFaceTest, ACollisionMarkNamesItsKindForTwoSeconds)
{
    panel.ShowCollisionMark(true, "PC");
    EXPECT_EQ(Line(2), "<- PC ->");
    EXPECT_TRUE(IsBright(2));
    EXPECT_EQ(Timer("TAniCollision").interval(), 2000);
    clock.Advance(2.0);
    Fire(Timer("TAniCollision"));
    EXPECT_EQ(Line(2), "->    <-");
    EXPECT_TRUE(IsDim(2));
    EXPECT_FALSE(Timer("TAniCollision").isActive());
}

TEST_F(MiscFaceTest, AnotherCollisionBeginsTheTwoSecondsAnew)
{
    panel.ShowCollisionMark(true, "PC");
    clock.Advance(1.5);
    panel.ShowCollisionMark(true, "NC");
    clock.Advance(0.5);
    Fire(Timer("TAniCollision"));
    EXPECT_EQ(Line(2), "<- NC ->");
    EXPECT_TRUE(Timer("TAniCollision").isActive());
    EXPECT_EQ(Timer("TAniCollision").interval(), 1500);

    clock.Advance(1.5);
    Fire(Timer("TAniCollision"));
    EXPECT_EQ(Line(2), "->    <-");
    EXPECT_EQ(Timer("TAniCollision").interval(), 2000);
}

TEST_F(MiscFaceTest, AClockThatIsSetBackDoesNotKeepTheMark)
{
    panel.ShowCollisionMark(true, "PC");
    clock.Advance(-3600.0);
    Fire(Timer("TAniCollision"));
    EXPECT_EQ(Line(2), "->    <-");
}

TEST_F(MiscFaceTest, LampAndMarkRunOutAfterAClear)
{
    panel.LightSync();
    panel.ShowCollisionMark(true, "PC");
    panel.ClearPanel();
    EXPECT_EQ(Line(1) + Line(2), QString(16, ' '));
    panel.RunOutLamps();
    clock.Advance(2.0);
    Fire(Timer("TSync"));
    Fire(Timer("TAniCollision"));
    EXPECT_EQ(DimRow(face, 1), "[Sync]  ");
    EXPECT_EQ(DimRow(face, 2), "->    <-");
}

TEST_F(MiscFaceTest, TheNodesCountIsAskedForAndDrawnBright)
{
    node.answer = 7;
    panel.ShowNC(true);
    EXPECT_EQ(Line(5), "NC 00007");
    EXPECT_TRUE(IsBright(5));
    EXPECT_EQ(node.asked, 1);
}

TEST_F(MiscFaceTest, WithoutAnAnswerTheKeptCountStands)
{
    node.answer = 7;
    panel.ShowNC(true);
    node.answer.reset();
    panel.ShowNC(true);
    EXPECT_EQ(Line(5), "NC 00007");
}

TEST_F(MiscFaceTest, SwitchedOffNobodyIsAskedAndTheKeptCountIsDim)
{
    node.answer = 7;
    panel.ShowNC(true);
    node.answer = 9;
    panel.ShowNC(false);
    EXPECT_EQ(node.asked, 1);
    EXPECT_EQ(Line(5), "NC 00007");
    EXPECT_TRUE(IsDim(5));
}

TEST_F(MiscFaceTest, AChangeOfTheNodesCountRaisesTheMark)
{
    node.answer = 0;
    panel.ShowNC(true);
    EXPECT_EQ(Line(2), QString(8, ' '));
    node.answer = 1;
    panel.ShowNC(true);
    EXPECT_EQ(Line(2), "<- NC ->");
    EXPECT_TRUE(Timer("TAniCollision").isActive());

    clock.Advance(2.0);
    Fire(Timer("TAniCollision"));
    panel.ShowNC(true);
    EXPECT_EQ(Line(2), "->    <-");
}

TEST_F(MiscFaceTest, TheSpinnerTurnsInItsCellOfTheNodesRow)
{
    panel.DrawNC(5, true);
    QString shown;
    for (int step = 0; step < 5; ++step) {
        panel.StepSpinner(false);
        shown += Line(5).at(2);
    }
    EXPECT_EQ(shown, "-\\|/-");
    panel.DrawNC(6, true);
    EXPECT_EQ(Line(5), "NC-00006");
    panel.StepSpinner(true);
    EXPECT_EQ(Line(5), "NC 00006");
}

TEST_F(MiscFaceTest, AnIdleSpinnerKeepsItsPosition)
{
    panel.StepSpinner(false);
    panel.StepSpinner(true);
    panel.StepSpinner(false);
    EXPECT_EQ(Line(5).at(2), '\\');
}

TEST_F(MiscFaceTest, AGrownNodesCountLeavesTheSpinnerAlone)
{
    panel.StepSpinner(false);
    panel.DrawNC(123456, true);
    EXPECT_EQ(Line(5), "NC-123456");
}

TEST_F(MiscFaceTest, ClearPanelEmptiesBothPictures)
{
    panel.ShowPC(1);
    panel.ShowLoadShed({}, 32);
    panel.ClearPanel();
    EXPECT_TRUE(face.Text().trimmed().isEmpty());
    EXPECT_TRUE(face17.Text().trimmed().isEmpty());
}

TEST_F(MiscFaceTest, NoiseCostsNoMoreThanItsCharacters)
{
    for (int count = 1; count <= 10000; ++count) {
        panel.ShowPC(count);
        panel.ShowCollisionMark(true, "PC");
    }
    EXPECT_EQ(Line(3), "PC 10000");
    EXPECT_EQ(Line(2), "<- PC ->");
}

}  // namespace
}  // namespace fenrik
