#include "diagnostics/OpenGraphics.h"

#include "diagnostics/FaceFixture.h"
#include "diagnostics/Graphics.h"

namespace fenrik {
namespace {

class OpenGraphicsTest : public FaceFixture {
protected:
    void Type(int characters)
    {
        for (int i = 0; i < characters && banner.Running(); ++i)
            Fire(*banner.findChild<QTimer*>("TOpenGraphics"));
    }

    QStringList lines = OpenGraphics::BannerLines("1.0.3", "001", false);
    CharacterFace face{sheets, QSize(672, 740), Graphics::kColumns};
    Graphics graphics{face};
    OpenGraphics banner{graphics, lines};
};

TEST_F(OpenGraphicsTest, TheLinesAreCentredOn32Columns)
{
    EXPECT_EQ(lines, QStringList({"       Fenrik Diagnostics        ", "         Version 1.0.3          ",
                                  "          [build 001]           "}));
}

TEST_F(OpenGraphicsTest, ABetaBuildSaysSo)
{
    EXPECT_EQ(OpenGraphics::BannerLines("1.0.3", "001", true)[2], "        [build 001 BETA]        ");
}

TEST_F(OpenGraphicsTest, ALineThatIsTooLongIsNotCut)
{
    const QString version(40, '9');
    EXPECT_EQ(OpenGraphics::BannerLines(version, "001", false)[1], "Version " + version);
}

TEST_F(OpenGraphicsTest, NothingIsTypedBeforeTheEventLoopRuns)
{
    banner.Start();
    EXPECT_TRUE(banner.Running());
    EXPECT_TRUE(face.Text().trimmed().isEmpty());
}

TEST_F(OpenGraphicsTest, ACursorRunsAheadOfTheText)
{
    banner.Start();
    Type(13);
    EXPECT_EQ(Row(face, 2).trimmed(), "Fenrik_");
}

TEST_F(OpenGraphicsTest, TheWholeBannerStandsAtTheEndWithoutACursor)
{
    banner.Start();
    Type(1000);
    EXPECT_FALSE(banner.Running());
    QStringList shown;
    for (const QString& row : face.Text().split('\n'))
        if (!row.trimmed().isEmpty())
            shown.append(row);
    EXPECT_EQ(shown, QStringList({lines[0].left(32), lines[1], lines[2]}));
}

TEST_F(OpenGraphicsTest, ItTakesAboutTwoSeconds)
{
    const int characters = int(lines.join(QString()).size());
    const int milliseconds = characters * banner.findChild<QTimer*>("TOpenGraphics")->interval();
    EXPECT_GE(milliseconds, 1500);
    EXPECT_LE(milliseconds, 2500);
}

TEST_F(OpenGraphicsTest, ClearFaceStopsItAtOnce)
{
    banner.Start();
    Type(40);
    graphics.ClearFace();
    Type(1);
    EXPECT_TRUE(face.Text().trimmed().isEmpty());
    EXPECT_FALSE(banner.Running());
}

TEST_F(OpenGraphicsTest, AClearBeforeTheFirstActivationDoesNotPreventIt)
{
    graphics.ClearFace();
    banner.Start();
    Type(1000);
    EXPECT_TRUE(face.Text().contains("[build 001]"));
}

TEST_F(OpenGraphicsTest, ItIsShownOnceOnly)
{
    banner.Start();
    Type(1000);
    graphics.ClearFace();
    banner.Start();
    EXPECT_FALSE(banner.Running());
    EXPECT_TRUE(face.Text().trimmed().isEmpty());
}

}  // namespace
}  // namespace fenrik
