#include "diagnostics/Graphics.h"

#include "diagnostics/FaceFixture.h"

namespace fenrik {
namespace {

class GraphicsTest : public FaceFixture {
protected:
    CharacterFace face{sheets, QSize(672, 740), Graphics::kColumns};
    Graphics graphics{face};
};

QString Padded(const QString& text)
{
    return text.leftJustified(32);
}

TEST_F(GraphicsTest, AFaceHas32RowsOf32Columns)
{
    EXPECT_EQ(face.Text().split('\n'), QStringList(32, QString(32, ' ')));
}

TEST_F(GraphicsTest, AStringStartsInItsCell)
{
    graphics.PutString(u"Inputs", 3, 2, false, false);
    EXPECT_EQ(Row(face, 2), Padded("  Inputs"));
    EXPECT_EQ(DimRow(face, 2), Padded(""));
}

TEST_F(GraphicsTest, ARightAlignedStringEndsInItsCell)
{
    graphics.PutString(u"12.5", 32, 1, true, true);
    EXPECT_EQ(Row(face, 1), QString("12.5").rightJustified(32));
    EXPECT_EQ(DimRow(face, 1), QString("12.5").rightJustified(32));
}

TEST_F(GraphicsTest, ARightAlignedStringLosesWhatLiesLeftOfTheFace)
{
    graphics.PutString(u"ABCDEF", 4, 1, false, true);
    EXPECT_EQ(Row(face, 1), Padded("CDEF"));
}

TEST_F(GraphicsTest, AStringShowsBeyondColumn32UpToThePicturesEdge)
{
    graphics.PutString(u"12345678901234567890123456789012345678901234567890", 1, 1, false, false);
    EXPECT_EQ(Row(face, 1), "1234567890123456789012345678901234567");
}

TEST_F(GraphicsTest, TheLastRowIs32AndRow34LiesBelowTheFace)
{
    graphics.PutString(u"last", 1, 32, false, false);
    graphics.PutString(u"below", 1, 33, false, false);
    graphics.PutString(u"below", 1, 34, false, false);
    EXPECT_EQ(Row(face, 32), Padded("last"));
    EXPECT_FALSE(face.Text().contains("below"));
}

TEST_F(GraphicsTest, ColumnAndRowZeroLieOutside)
{
    graphics.PutString(u"AB", 0, 1, false, false);
    graphics.PutString(u"CD", 1, 0, false, false);
    EXPECT_EQ(Row(face, 1), Padded("B"));
    EXPECT_FALSE(face.Text().contains('C'));
}

TEST_F(GraphicsTest, TheDegreeSignIsWrittenByItsCode)
{
    graphics.PutString(QString("72") + QChar(248), 1, 1, false, false);
    EXPECT_EQ(Row(face, 1), Padded(QString("72°")));
}

TEST_F(GraphicsTest, CharactersThatTheSetLacksAreQuestionMarks)
{
    graphics.PutString(u"5 €", 1, 1, false, false);
    EXPECT_EQ(Row(face, 1), Padded("5 ?"));
}

TEST_F(GraphicsTest, ACharacterIsPutAtAPixelPlace)
{
    graphics.PutChar(490, 579, u'7', false);
    EXPECT_EQ(Row(face, 26), Padded(QString(27, ' ') + '7'));
}

TEST_F(GraphicsTest, LinesFollowEachOther)
{
    graphics.PutLines({"one", "two"}, 2, 5, true, false);
    EXPECT_EQ(DimRow(face, 5), Padded(" one"));
    EXPECT_EQ(DimRow(face, 6), Padded(" two"));
}

TEST_F(GraphicsTest, TitleLinesStandAtTheLeftOrTheRightFromTheTop)
{
    graphics.PutTitleLines({"left", "lines"}, false, false);
    graphics.PutTitleLines({"right"}, true, true);
    EXPECT_EQ(Row(face, 1), "left" + QString(23, ' ') + "right");
    EXPECT_EQ(Row(face, 2), Padded("lines"));
    EXPECT_EQ(DimRow(face, 1), QString("right").rightJustified(32));
}

TEST_F(GraphicsTest, ClearFaceEmptiesTheFaceAndEndsTheOpening)
{
    graphics.StartOpening();
    graphics.PutString(u"Inputs", 1, 1, false, false);
    ASSERT_FALSE(graphics.OpeningEnded());
    graphics.ClearFace();
    EXPECT_EQ(Row(face, 1), Padded(""));
    EXPECT_TRUE(graphics.OpeningEnded());
}

}  // namespace
}  // namespace fenrik
