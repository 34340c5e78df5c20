#include "diagnostics/AsciiMap.h"

#include "diagnostics/GlyphSheets.h"
#include "platform/Error.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace fenrik {
namespace {

class AsciiMapTest : public testing::Test {
protected:
    void MakeMaps(const QString& rows)
    {
        MakeDatabase(path, {"CREATE TABLE AsciiGraphicsMap (number, char, xloc, yloc)",
                            "INSERT INTO AsciiGraphicsMap VALUES " + rows});
    }

    int NumberOfError()
    {
        try {
            PopulateAsciiMaps(map, path);
        } catch (const Error& error) {
            return error.Number();
        }
        return 0;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("fxmaps.dav");
    AsciiMap map;
};

TEST_F(AsciiMapTest, EachRowFillsTheEntryOfItsNumber)
{
    MakeMaps("(65, 'A', 14, 80), (255, 'x', 210, 300)");
    PopulateAsciiMaps(map, path);
    EXPECT_EQ(map.entries[65].character, "A");
    EXPECT_EQ(map.entries[65].xloc, 14);
    EXPECT_EQ(map.entries[65].yloc, 80);
    EXPECT_EQ(map.entries[255].xloc, 210);
}

TEST_F(AsciiMapTest, ANullCharacterIsOneBlank)
{
    MakeMaps("(0, NULL, 1, 2)");
    PopulateAsciiMaps(map, path);
    EXPECT_EQ(map.entries[0].character, " ");
    EXPECT_EQ(map.entries[0].xloc, 1);
}

TEST_F(AsciiMapTest, AnEntryWithoutARowStays)
{
    map.entries[66].xloc = 77;
    MakeMaps("(65, 'A', 14, 80)");
    PopulateAsciiMaps(map, path);
    EXPECT_EQ(map.entries[66].xloc, 77);
}

TEST_F(AsciiMapTest, ANumberOutsideTheTableIsASubscriptError)
{
    MakeMaps("(256, 'A', 14, 80)");
    EXPECT_EQ(NumberOfError(), ErrorNumber::kSubscriptOutOfRange);
    MakeMaps("(-1, 'A', 14, 80)");
    EXPECT_EQ(NumberOfError(), ErrorNumber::kSubscriptOutOfRange);
    MakeMaps("(4294967361, 'A', 14, 80)");  // 65 in its low half
    EXPECT_EQ(NumberOfError(), ErrorNumber::kSubscriptOutOfRange);
}

TEST_F(AsciiMapTest, APlaceThatIsTooLargeIsAnOverflow)
{
    MakeMaps("(65, 'A', 2147483648, 80)");
    EXPECT_EQ(NumberOfError(), ErrorNumber::kOverflow);
}

TEST_F(AsciiMapTest, AGlyphFromFarOutsideTheSheetIsBlack)
{
    map.entries[65].xloc = std::numeric_limits<std::int32_t>::max();
    map.entries[65].yloc = std::numeric_limits<std::int32_t>::min();
    const GlyphSheets sheets(map);
    const GlyphAtlas& atlas = sheets.At(2);
    EXPECT_EQ(atlas.bright.pixelColor(0, 65 * atlas.glyph.height()), Qt::black);
}

TEST_F(AsciiMapTest, APlaceThatIsNoNumberIsATypeError)
{
    MakeMaps("(65, 'A', 'left', 80)");
    EXPECT_EQ(NumberOfError(), ErrorNumber::kTypeMismatch);
    MakeMaps("(65, 'A', NULL, 80)");
    EXPECT_EQ(NumberOfError(), ErrorNumber::kTypeMismatch);
}

TEST_F(AsciiMapTest, AMissingFileAndAMissingTableAreErrors)
{
    EXPECT_EQ(NumberOfError(), ErrorNumber::kDatabaseNotFound);
    MakeDatabase(path, {"CREATE TABLE Other (number)"});
    EXPECT_EQ(NumberOfError(), ErrorNumber::kTableNotFound);
}

}  // namespace
}  // namespace fenrik
