#include "diagnostics/Loadshed.h"

#include "diagnostics/PanelFixture.h"

namespace fenrik {
namespace {

class LoadshedTest : public PanelFixture {
protected:
    Loadshed loadshed{panel};
};

TEST_F(LoadshedTest, NodesThatWereNotHeardAreDim)
{
    loadshed.ShowLoadShed(2);
    EXPECT_EQ(Row(face, 6), "N:01 L=0");
    EXPECT_EQ(DimRow(face, 7), "N:02 L=0");
    EXPECT_EQ(Row(face, 8), QString(8, ' '));
}

TEST_F(LoadshedTest, AReportedLevelIsBright)
{
    loadshed.UpdateLoadShed(0x0305, 16);
    EXPECT_EQ(Row(face, 8), "N:03 L=5");
    EXPECT_TRUE(IsBright(8));
    EXPECT_EQ(DimRow(face, 7), "N:02 L=0");
    EXPECT_EQ(loadshed.Table()[2].level, 5);
}

TEST_F(LoadshedTest, AReportedLevelZeroIsBrightAsWell)
{
    loadshed.UpdateLoadShed(0x0100, 16);
    EXPECT_EQ(Row(face, 6), "N:01 L=0");
    EXPECT_TRUE(IsBright(6));
}

TEST_F(LoadshedTest, ANodeThatAnnouncesItselfClearsItsLevel)
{
    loadshed.UpdateLoadShed(0x0305, 16);
    loadshed.UpdateLoadShed(3 * 256, 16);
    EXPECT_EQ(Row(face, 8), "N:03 L=0");
}

TEST_F(LoadshedTest, Nodes17To32StandOnTheOtherPicture)
{
    loadshed.UpdateLoadShed(0x1104, 32);
    loadshed.UpdateLoadShed(0x2007, 32);
    EXPECT_EQ(Row(face17, 6), "N:17 L=4");
    EXPECT_EQ(Row(face17, 21), "N:32 L=7");
    EXPECT_EQ(Row(face, 6), "N:01 L=0");
    EXPECT_EQ(Row(face, 21), "N:16 L=0");
}

TEST_F(LoadshedTest, LevelsOfMoreDigitsStayWhole)
{
    loadshed.UpdateLoadShed(0x01FF, 16);
    loadshed.UpdateLoadShed(0x020C, 16);
    EXPECT_EQ(Row(face, 6), "N:01 L=255");
    EXPECT_EQ(Row(face, 7), "N:02 L=12");
    loadshed.UpdateLoadShed(0x0101, 16);
    EXPECT_EQ(Row(face, 6), "N:01 L=1");
}

TEST_F(LoadshedTest, NodesThatNoNetworkHasAreIgnored)
{
    loadshed.UpdateLoadShed(0x0005, 32);
    loadshed.UpdateLoadShed(0x2105, 32);
    loadshed.UpdateLoadShed(0xFF05, 32);
    for (const LoadShedEntry& entry : loadshed.Table())
        EXPECT_FALSE(entry.heard);
}

TEST_F(LoadshedTest, NoMoreThan32NodesAreDrawn)
{
    loadshed.ShowLoadShed(40);
    EXPECT_EQ(Row(face17, 21), "N:32 L=0");
    EXPECT_EQ(Row(face17, 22), QString(8, ' '));
}

TEST_F(LoadshedTest, AResetForgetsTheLevelsAndDrawsNothing)
{
    loadshed.UpdateLoadShed(0x0305, 16);
    loadshed.ResetLoadShedArray();
    EXPECT_EQ(Row(face, 8), "N:03 L=5");
    loadshed.ShowLoadShed(16);
    EXPECT_EQ(DimRow(face, 8), "N:03 L=0");
}

}  // namespace
}  // namespace fenrik
