#include "diagnostics/Analog.h"

#include "diagnostics/AsciiMap.h"
#include "diagnostics/CharacterFace.h"
#include "diagnostics/GlyphSheets.h"
#include "diagnostics/Graphics.h"
#include "platform/Error.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct ValueRow {
    const char* name;
    std::int32_t data;
    bool decimal;
    const char* scaled;
    const char* text;
};

class AnalogValues : public testing::TestWithParam<ValueRow> {};

TEST_P(AnalogValues, AreWrittenInTheirFormat)
{
    const ValueRow& row = GetParam();
    EXPECT_EQ(Analog::ValueText(row.data, {row.decimal, QLatin1String(row.scaled)}), QString::fromUtf8(row.text));
}

INSTANTIATE_TEST_SUITE_P(
    Formats, AnalogValues,
    testing::Values(ValueRow{"Plain", 125, false, "", "125"}, ValueRow{"NegativePlain", 65535, false, "", "-1"},
                    ValueRow{"LargestPositive", 32767, false, "", "32767"},
                    ValueRow{"SmallestNegative", 32768, false, "", "-32768"},
                    ValueRow{"TenthsWithoutAWholePart", 5, true, "", ".5"}, ValueRow{"Tenths", 125, true, "", "12.5"},
                    ValueRow{"NoTenths", 0, true, "", ".0"}, ValueRow{"NegativeTenth", 65535, true, "", "-.1"},
                    ValueRow{"Positive", 7, false, "Positive", "7+"},
                    ValueRow{"ZeroIsPositive", 0, false, "Positive", "0+"},
                    ValueRow{"NegativeEndsInABlank", 65535, false, "Positive", "-1 "},
                    ValueRow{"Pounds", 30, false, "Pounds", "30#"}, ValueRow{"Degree", 21, false, "Degree", "21\u00B0"},
                    ValueRow{"UnknownSymbol", 21, false, "Furlong", "21"}),
    [](const auto& row) { return row.param.name; });

class AnalogTest : public testing::Test {
protected:
    AnalogTest() : face(sheets, {672, 740}, 32), graphics(face), analog(commands, graphics)
    {
        for (int command = 1; command <= 40; ++command) {
            commands[command].Name = QStringLiteral("Value %1").arg(command);
            commands.SetAnalogCommand(command, true);
        }
    }

    void Hear(int command, std::int32_t data, bool open = true)
    {
        commands[command].LastValue = data;
        analog.UpdateAnalog(command, open);
    }

    [[nodiscard]] QString Row(int row) const { return face.Text().split(QLatin1Char('\n')).value(row - 1).left(32); }

    AsciiMap map;
    GlyphSheets sheets{map};
    CharacterFace face;
    Graphics graphics;
    CommandTable commands;
    Analog analog;
};

TEST_F(AnalogTest, EachCommandKeepsTheRowThatItGotFirst)
{
    Hear(7, 1);
    Hear(3, 2);
    Hear(7, 3);
    EXPECT_EQ(Row(1), QStringLiteral("Value 7                        3"));
    EXPECT_EQ(Row(2), QStringLiteral("Value 3                        2"));
}

TEST_F(AnalogTest, AShorterValueWipesALongerOne)
{
    Hear(7, 12345);
    Hear(7, 6);
    EXPECT_EQ(Row(1), QStringLiteral("Value 7                        6"));
}

TEST_F(AnalogTest, AValueHeardWhileAnotherViewIsOpenShowsLater)
{
    Hear(7, 42, false);
    EXPECT_EQ(Row(1).trimmed(), QString());
    EXPECT_FALSE(analog.Empty());
    analog.RedrawAnalog();
    EXPECT_EQ(Row(1), QStringLiteral("Value 7                       42"));
}

TEST_F(AnalogTest, TheThirtyFourthCommandFallsBelowTheFaceAndTakesNoSlot)
{
    for (int command = 1; command <= 34; ++command)
        Hear(command, command);
    const QString before = face.Text();
    Hear(34, 99);
    EXPECT_EQ(face.Text(), before);
    graphics.ClearFace();
    analog.RedrawAnalog();
    EXPECT_FALSE(face.Text().contains(QStringLiteral("Value 34")));
    EXPECT_EQ(Row(32), QStringLiteral("Value 32                      32"));
}

TEST_F(AnalogTest, CommandZeroIsIgnored)
{
    Hear(0, 5);
    EXPECT_TRUE(analog.Empty());
}

TEST_F(AnalogTest, FreedSlotsAreGivenAnew)
{
    Hear(7, 1);
    analog.ResetAnalogSlots();
    EXPECT_TRUE(analog.Empty());
    Hear(3, 2);
    EXPECT_EQ(Row(1), QStringLiteral("Value 3                        2"));
}

TEST_F(AnalogTest, FormatsComeFromTheDatabaseForEveryAnalogCommandOfTheName)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("fxmaps.dav"));
    commands[2].Name = QStringLiteral("Value 1");
    MakeDatabase(path, {QStringLiteral("CREATE TABLE AnalogSymbolMaps (Name TEXT, Decimal INTEGER, scaled TEXT)"),
                        QStringLiteral("INSERT INTO AnalogSymbolMaps VALUES ('Value 1', 1, 'Pounds')")});
    analog.GetAnalogCommands(path);
    Hear(1, 15);
    Hear(2, 25);
    Hear(3, 35);
    EXPECT_EQ(Row(1), QStringLiteral("Value 1                     1.5#"));
    EXPECT_EQ(Row(2), QStringLiteral("Value 1                     2.5#"));
    EXPECT_EQ(Row(3), QStringLiteral("Value 3                       35"));
}

TEST_F(AnalogTest, AMissingDatabaseIsAnError)
{
    EXPECT_THROW(analog.GetAnalogCommands(QStringLiteral("/nowhere/fxmaps.dav")), Error);
}

}  // namespace
}  // namespace fenrik
