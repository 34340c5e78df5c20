#include "legacy/LegacyFixture.h"
#include "legacy/LoadShedText.h"

namespace fenrik {
namespace {

using Panels = PanelTest;

std::string Blank(const std::string& row)
{
    return row.find_first_not_of(' ') == std::string::npos ? "blank" : row;
}

/// Where on a face of that size a text stands when its pixel place is (x, y) and its characters are 18 apart.
QImage Picture(CharacterFace& face)
{
    return face.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// True if `code`'s glyph stands at that pixel.
bool StandsAt(CharacterFace& face, int x, int y, char code, const char* sheet = "PicAscii")
{
    return Picture(face).copy(x, y, Glass::kGlyphWidth, Glass::kGlyphHeight) == GlyphPicture(sheet, 100, code);
}

// --- The narrow panel
// -------------------------------------------------------------------------------------------------

TEST_F(Panels, BeginWithADarkBarAndDarkMarksAndNoCounts)
{
    EXPECT_EQ(DimMisc(1), "*123456*");
    EXPECT_EQ(Blank(Misc(2)), "blank");
    EXPECT_EQ(DimMisc(4), "->    <-");
    EXPECT_EQ(Blank(Misc(5)), "blank");
    EXPECT_EQ(Blank(Misc(7)), "blank");
}

struct TokenRow {
    int token;
    const char* dim;
};

TEST_F(Panels, TheTokenBarLightsThePositionOfTheToken)
{
    constexpr TokenRow kRows[] = {{101, "* 23456*"}, {106, "*12345 *"}, {103, "*12 456*"}, {0, "*123456*"}};
    for (const auto& [token, dim] : kRows) {
        panels.TokenBar(token);
        EXPECT_EQ(Misc(1), "*123456*");
        EXPECT_EQ(DimMisc(1), dim) << token;
    }
}

TEST_F(Panels, TheMissedMarkLeavesTheTokenBarAlone)
{
    panels.TokenBar(102);
    panels.MissedMark(true);
    EXPECT_EQ(DimMisc(1), " 1 3456 ");
    panels.MissedMark(false);
    EXPECT_EQ(DimMisc(1), "*1 3456*");
}

TEST_F(Panels, CountsAreLitAboveZero)
{
    panels.MissedCount(0);
    panels.CollisionCount(0);
    EXPECT_EQ(DimMisc(2), "MT 00000");
    EXPECT_EQ(DimMisc(5), "BC 00000");
    panels.MissedCount(7);
    panels.CollisionCount(12345);
    EXPECT_EQ(Misc(2), "MT 00007");
    EXPECT_EQ(Misc(5), "BC 12345");
    EXPECT_EQ(Blank(DimMisc(2)), "blank");
    EXPECT_EQ(Blank(DimMisc(5)), "blank");
}

TEST_F(Panels, TheCollisionMarkNamesItsKind)
{
    panels.CollisionMark(true, "BC");
    EXPECT_EQ(Misc(4), "<- BC ->");
    EXPECT_EQ(Blank(DimMisc(4)), "blank");
    panels.CollisionMark(false);
    EXPECT_EQ(Misc(4), "->    <-");
    EXPECT_EQ(DimMisc(4), "->    <-");
}

struct Place {
    int x;
    int y;
    char code;
};

TEST_F(Panels, TheNarrowPanelsTextsStandAtTheirPixels)
{
    panels.TokenBar(101);
    panels.MissedMark(true);
    panels.MissedCount(1);
    panels.CollisionMark(true, "BC");
    panels.CollisionCount(1);
    panels.LoadShed("Load Shed 3 ON");
    constexpr Place kPlaces[] = {{22, 4, '1'}, {4, 4, '*'},   {130, 4, '*'}, {4, 27, 'M'},
                                 {4, 73, '<'}, {58, 73, 'B'}, {4, 96, 'B'},  {4, 142, 'L'}};
    for (const auto& [x, y, code] : kPlaces)
        EXPECT_TRUE(StandsAt(miscFace, x, y, code)) << code << " at " << x << ", " << y;
}

struct ShedRow {
    const char* name;
    const char* text;
    bool on;
};

class LoadShedNames : public PanelTest, public testing::WithParamInterface<ShedRow> {};

TEST_P(LoadShedNames, TellLevelAndState)
{
    const auto line = LoadShedText::Of(GetParam().name);
    EXPECT_EQ(line.text, GetParam().text);
    EXPECT_EQ(line.on, GetParam().on);
    panels.LoadShed(GetParam().name);
    EXPECT_EQ(Misc(7), line.text.leftJustified(8).left(8).toStdString());
    EXPECT_EQ(Blank(DimMisc(7)) == "blank", line.on);
}

INSTANTIATE_TEST_SUITE_P(
    Panels, LoadShedNames,
    testing::Values(ShedRow{"Load Shed 3 ON", "LS3   ON ", true}, ShedRow{"Load Shed 3 OFF", "LS3  OFF ", false},
                    // The state's blank that a level of one digit has more is not there with two.
                    ShedRow{"Load Shed 12 ON", "LS12  ON ", true}, ShedRow{"Load Shed 12 OFF", "LS12 OFF ", false},
                    ShedRow{"Level 10", "LS10  ", false}, ShedRow{"Shedding ON", "LS0   ON ", true},
                    ShedRow{"", "LS0   ", false},
                    // Both words: the second test wins.
                    ShedRow{"OFF 4 or ON", "LS4   ON ", true},
                    // Only as many characters are read from a position as its number says, so 1 is all of a 12 that
                    // stands first.
                    ShedRow{"12 ON", "LS1   ON ", true}, ShedRow{" 12 ON", "LS12  ON ", true},
                    ShedRow{"A 123456 ON", "LS1   ON ", true}, ShedRow{"AB123456 ON", "LS123  ON ", true},
                    ShedRow{"Load Shed 0 then 5 OFF", "LS5  OFF ", false}, ShedRow{"load shed 3 on", "LS3   ", false},
                    ShedRow{"Level 2.6 ON", "LS3   ON ", true}, ShedRow{"Level .4 ON", "LS4   ON ", true},
                    ShedRow{"Load Shed Level  99999999999999999999", "LS2147483647  ", false}));

TEST_F(Panels, ALevelOfTwoDigitsIsReadWholeFurtherOn)
{
    EXPECT_EQ(LoadShedText::Of("Load Shed Level 15 ON").text, "LS15  ON ");
}

// --- The wide panel
// ---------------------------------------------------------------------------------------------------

struct ValueRow {
    int value;
    int divisor;
    const char* text;
};

TEST(AnalogValues, HaveOneDecimalAndFiveCharactersAtLeast)
{
    constexpr ValueRow kRows[] = {{1275, 10, "127.5"}, {1275, 1, "1275.0"},
                                  {0, 1, "  0.0"},     {255, 1, "255.0"},
                                  {128, 10, " 12.8"},  {1, 4, "  0.3"},
                                  {1, 20, "  0.1"},    {1, 21, "  0.0"},
                                  {255, 100, "  2.6"}, {254, 100, "  2.5"},
                                  {10, -1, "-10.0"},   {0, -1, "  0.0"},
                                  {1, -100, "  0.0"},  {255, -2147483647 - 1, "  0.0"}};
    for (const auto& [value, divisor, text] : kRows)
        EXPECT_EQ(MAF98::ValueText(value, divisor), text) << value << " / " << divisor;
}

TEST_F(Panels, AnalogValuesGetRowsInTheOrderInWhichTheyAreHeard)
{
    panels.AnalogValue(1, "Volts", 12);
    panels.AnalogValue(2, "Speed", 55);
    panels.AnalogValue(1, "Volts", 13);
    EXPECT_EQ(Analog(1), "Volts                   13.0    ");
    EXPECT_EQ(Analog(2), "Speed                   55.0    ");
}

TEST_F(Panels, AnalogValuesEndAtTheirPixel)
{
    messages[1].Divisor = 10;
    panels.AnalogValue(1, "V", 1275);
    EXPECT_TRUE(StandsAt(analogFace, 4, 4, 'V'));
    EXPECT_TRUE(StandsAt(analogFace, 490, 4, '5'));
    EXPECT_TRUE(StandsAt(analogFace, 418, 4, '1'));
    messages[1].Divisor = 1;
    panels.AnalogValue(1, "V", 1275);
    EXPECT_TRUE(StandsAt(analogFace, 490, 4, '0'));
    EXPECT_TRUE(StandsAt(analogFace, 400, 4, '1')) << "six characters begin 18 pixels further to the left";
}

TEST_F(Panels, TheSecondRowStands23PixelsBelowTheFirst)
{
    panels.AnalogValue(1, "A", 1);
    panels.AnalogValue(1, "B", 1);
    EXPECT_TRUE(StandsAt(analogFace, 4, 27, 'B'));
}

TEST_F(Panels, The26thNameIsDrawnBelowTheLastRowAndNotKept)
{
    for (int i = 1; i <= 25; ++i)
        panels.AnalogValue(1, QStringLiteral("Name %1").arg(i), i);
    panels.AnalogValue(1, "Twenty-sixth", 26);
    EXPECT_EQ(Analog(25), "Name 25                 25.0    ");
    EXPECT_EQ(Analog(26), "Twenty-sixth            26.0    ");
    EXPECT_TRUE(StandsAt(analogFace, 4, 579, 'T'));
    panels.AnalogValue(1, "Another", 27);
    EXPECT_EQ(Analog(26), "Anothersixth            27.0    ") << "written over what stood there";
    panels.AnalogValue(1, "Name 3", 33);
    EXPECT_EQ(Analog(3), "Name 3                  33.0    ");
}

TEST_F(Panels, ForgettingTheNamesLeavesTheFace)
{
    panels.AnalogValue(1, "Volts", 12);
    panels.ResetAnalogNames();
    EXPECT_EQ(Analog(1), "Volts                   12.0    ");
    panels.AnalogValue(1, "Speed", 55);
    EXPECT_EQ(Analog(1), "Speed                   55.0    ");
}

TEST_F(Panels, AnyNameCanBeDrawn)
{
    panels.AnalogValue(255, QString(), 1);
    panels.AnalogValue(255, QString(300, 'W'), 2);
    panels.AnalogValue(255, "Öl \xF0\x9F\x98\x80", 3);
    EXPECT_EQ(Analog(1).substr(0, 5), "WWWWW") << "no name keeps no row";
    EXPECT_EQ(Row(analogFace, 2).left(2), QStringLiteral("Öl"));
}

TEST_F(Panels, TheSystemInformationHasFiveLines)
{
    Settings settings;
    settings.DatabaseSystemName = "Bus 12";
    settings.DatabaseCreated = "14 March 1998";
    settings.DatabaseBy = "R. Miller";
    panels.SystemInformation(settings);
    EXPECT_EQ(Blank(Analog(1)), "blank");
    EXPECT_EQ(Analog(2), "          System Info           ");
    EXPECT_EQ(Analog(3), "--------------------------------");
    EXPECT_EQ(Analog(4), "Name    : Bus 12                ");
    EXPECT_EQ(Analog(5), "Created : 14 March 1998         ");
    EXPECT_EQ(Analog(6), "By      : R. Miller             ");
    EXPECT_TRUE(StandsAt(analogFace, 184, 26, 'S'));
    EXPECT_TRUE(StandsAt(analogFace, 4, 118, 'B'));
    EXPECT_EQ(analogFace.DimText().trimmed(), "");
}

}  // namespace
}  // namespace fenrik
