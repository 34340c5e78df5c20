#include "diagnostics/CharacterFace.h"

#include "diagnostics/FaceFixture.h"
#include "support/PaintCounter.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QTest>

#include <functional>

namespace fenrik {
namespace {

/// A face on a screen of a pixel ratio that a test sets.
class FaceOnScreen : public CharacterFace {
public:
    using CharacterFace::CharacterFace;

    double ratio = 1.0;

protected:
    int metric(PaintDeviceMetric which) const override
    {
        if (which == PdmDevicePixelRatio)
            return int(ratio);
        return which == PdmDevicePixelRatioScaled ? int(ratio * devicePixelRatioFScale())
                                                  : CharacterFace::metric(which);
    }
};

class CharacterFaceTest : public FaceFixture {
protected:
    QImage Picture() { return face.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    /// What stands on the picture where the glyph with its corner at (x, y) does.
    QImage PictureAt(int x, int y)
    {
        QImage picture = Picture().copy(
            QRect(qRound(x * face.ratio), qRound(y * face.ratio), qRound(14 * face.ratio), qRound(20 * face.ratio)));
        picture.setDevicePixelRatio(1.0);
        return picture;
    }

    FaceOnScreen face{sheets, QSize(148, 702), 8};
};

TEST_F(CharacterFaceTest, AnEmptyFaceReadsAsBlankRows)
{
    const QStringList rows = face.property("text").toString().split('\n');
    EXPECT_EQ(rows, QStringList(30, QString(8, ' ')));
    EXPECT_EQ(face.property("dimText").toString(), face.property("text").toString());
}

TEST_F(CharacterFaceTest, BrightAndDimCharactersAreToldApart)
{
    face.Put(4, 4, 'A', false);
    face.Put(22, 4, 'B', true);
    EXPECT_EQ(Row(face, 1), "AB      ");
    EXPECT_EQ(DimRow(face, 1), " B      ");
}

TEST_F(CharacterFaceTest, AGlyphIsCopiedFromItsSheet)
{
    face.Put(4, 4, 'A', false);
    face.Put(22, 27, 'B', true);
    EXPECT_EQ(PictureAt(4, 4), GlyphPicture("PicAscii", 100, 'A'));
    EXPECT_EQ(PictureAt(22, 27), GlyphPicture("PicAsciiDim", 100, 'B'));
}

TEST_F(CharacterFaceTest, TheUnlitDotsOfABlankAreThoseOfTheBackground)
{
    const QImage before = Picture();
    face.Put(4, 4, ' ', false);
    EXPECT_EQ(Picture(), before);
}

TEST_F(CharacterFaceTest, ALaterGlyphCoversAnEarlierOne)
{
    face.Put(4, 4, 'A', false);
    (void)Picture();
    face.Put(4, 4, 'B', false);
    EXPECT_EQ(PictureAt(4, 4), GlyphPicture("PicAscii", 100, 'B'));
    EXPECT_EQ(Row(face, 1), "B       ");
}

TEST_F(CharacterFaceTest, ClearBringsTheBackgroundBack)
{
    const QImage empty = Picture();
    face.Put(4, 4, 'A', false);
    ASSERT_NE(Picture(), empty);
    face.Clear();
    EXPECT_EQ(Picture(), empty);
    EXPECT_EQ(Row(face, 1), QString(8, ' '));
}

TEST_F(CharacterFaceTest, GlyphsKeepTheirPixelPlace)
{
    face.Put(4, 26, 'A', false);
    EXPECT_EQ(PictureAt(4, 26), GlyphPicture("PicAscii", 100, 'A'));
    EXPECT_EQ(Row(face, 2), "A       ");
}

struct Place {
    const char* name;
    int x;
    int y;
};

class PlacesOutside : public CharacterFaceTest, public testing::WithParamInterface<Place> {};

TEST_P(PlacesOutside, AreLeftOut)
{
    const QImage empty = Picture();
    face.Put(GetParam().x, GetParam().y, 'A', false);
    EXPECT_EQ(Picture(), empty);
    EXPECT_EQ(face.Text().count('A'), 0);
}

INSTANTIATE_TEST_SUITE_P(CharacterFace, PlacesOutside,
                         testing::Values(Place{"Left", -14, 4}, Place{"PartlyLeft", -1, 4}, Place{"Above", 4, -19},
                                         Place{"Right", 148, 4}, Place{"PartlyRight", 135, 4}, Place{"Below", 4, 702},
                                         Place{"PartlyBelow", 4, 683}, Place{"FarAway", 1 << 30, 1 << 30}),
                         [](const auto& row) { return row.param.name; });

class Ratios : public CharacterFaceTest, public testing::WithParamInterface<int> {};

TEST_P(Ratios, ShowTheGlyphsOfTheirSheetWhenTheScreenChanges)
{
    face.Put(4, 4, 'A', false);
    face.Put(22, 27, 'B', true);
    (void)Picture();
    face.ratio = GetParam() / 100.0;
    EXPECT_EQ(Picture().size(), QSize(148, 702) * face.ratio);
    EXPECT_EQ(PictureAt(4, 4), GlyphPicture("PicAscii", GetParam(), 'A'));
    EXPECT_EQ(PictureAt(22, 27), GlyphPicture("PicAsciiDim", GetParam(), 'B'));
}

INSTANTIATE_TEST_SUITE_P(CharacterFace, Ratios, testing::Values(150, 200));

TEST_F(CharacterFaceTest, OtherRatiosScaleTheNextLargerSheet)
{
    constexpr int kFullBlock = 219;
    face.Put(22, 4, kFullBlock, false);
    for (const double ratio : {1.25, 1.75, 3.0}) {
        face.ratio = ratio;
        const QRgb middle = Picture().pixel(qRound(29 * ratio), qRound(14 * ratio));
        EXPECT_GT(qGreen(middle), 150) << ratio;
        EXPECT_LT(qGreen(Picture().pixel(qRound(65 * ratio), qRound(14 * ratio))), 60) << ratio;
    }
}

TEST_F(CharacterFaceTest, AGlyphThatTheTablePutsOutsideTheSheetReadsNothingThere)
{
    map.entries['A'].xloc = 5000;
    map.entries['B'].yloc = -300;
    face.Put(4, 4, 'A', false);
    face.Put(22, 4, 'B', false);
    QImage black(14, 20, QImage::Format_RGB32);
    black.fill(Qt::black);
    EXPECT_EQ(PictureAt(4, 4), black);
    EXPECT_EQ(PictureAt(22, 4), black);
}

TEST_F(CharacterFaceTest, ATextThatFitsStandsInItsCells)
{
    face.PutFitted("PC 00123", 1, 3, false);
    EXPECT_EQ(Row(face, 3), "PC 00123");
    EXPECT_EQ(PictureAt(4 + 7 * 18, 50), GlyphPicture("PicAscii", 100, '3'));
}

TEST_F(CharacterFaceTest, ALongerTextMovesTogetherAndBackAgain)
{
    const QImage empty = Picture();
    face.PutFitted("PC 123456", 1, 3, false);
    EXPECT_EQ(Row(face, 3), "PC 123456");
    EXPECT_EQ(PictureAt(4 + 8 * 16, 50), GlyphPicture("PicAscii", 100, '6'));

    face.PutFitted("        ", 1, 3, false);
    EXPECT_EQ(Row(face, 3), QString(8, ' '));
    EXPECT_EQ(Picture(), empty);
}

TEST_F(CharacterFaceTest, ATextBeyondAllRoomKeepsItsEnd)
{
    face.PutFitted("PC 2147483647", 1, 3, false);
    EXPECT_EQ(Row(face, 3), "2147483647");
}

TEST_F(CharacterFaceTest, MovingTogetherLeavesTheCellsBeforeAlone)
{
    face.Put(4, 50, 'N', false);
    face.PutFitted("123456", 4, 3, false);
    EXPECT_EQ(Row(face, 3), "N  123456");
    EXPECT_EQ(PictureAt(4, 50), GlyphPicture("PicAscii", 100, 'N'));
}

TEST_F(CharacterFaceTest, FittedRowsOutsideTheFaceAreLeftOut)
{
    for (const int row : {0, -1, 31})
        face.PutFitted("A", 1, row, false);
    face.PutFitted("A", 9, 1, false);
    face.PutFitted("A", 0, 1, false);
    EXPECT_EQ(face.Text().count('A'), 0);
}

TEST_F(CharacterFaceTest, ManyChangesArePaintedTogether)
{
    PaintCounter paints(face);
    face.setPace(16);
    face.show();
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 5000 && paints.count == 0)
        QCoreApplication::processEvents();
    ASSERT_GT(paints.count, 0);

    const int before = paints.count;
    timer.restart();
    for (int i = 0; i < 2000; ++i) {
        face.Put(4, 4, std::uint8_t('A' + i % 26), false);
        face.Refresh();
        QCoreApplication::processEvents();
    }
    EXPECT_LE(paints.count - before, timer.elapsed() / 16 + 1);
    while (timer.elapsed() < 5000 && paints.count == before)
        QCoreApplication::processEvents();
    EXPECT_GT(paints.count, before);
}

/// What of the shown face is painted because of `change`.
QRegion PaintedBy(CharacterFace& face, const std::function<void()>& change)
{
    const auto settle = [&face] {
        face.Refresh();
        for (int turn = 0; turn < 5; ++turn)
            QCoreApplication::processEvents();
    };
    face.show();
    (void)QTest::qWaitForWindowExposed(&face);
    settle();
    PaintCounter paints(face);
    change();
    settle();
    return paints.painted;
}

TEST_F(CharacterFaceTest, OnlyTheCellsThatChangeArePainted)
{
    face.PutFitted("PC 00123", 1, 3, false);
    const QRegion painted = PaintedBy(face, [this] { face.PutFitted("PC 00124", 1, 3, false); });
    EXPECT_EQ(painted, QRegion(4 + 7 * 18, 50, 14, 20));
}

TEST_F(CharacterFaceTest, WhatStandsAsItDidIsNotPainted)
{
    face.PutFitted("PC 00123", 1, 3, false);
    const QRegion painted = PaintedBy(face, [this] {
        face.Clear();
        face.PutFitted("PC 00123", 1, 3, false);
    });
    EXPECT_EQ(painted, QRegion());
}

TEST_F(CharacterFaceTest, WhatGoesIsPaintedOver)
{
    face.PutFitted("PC 00123", 1, 3, false);
    const QRegion painted = PaintedBy(face, [this] {
        face.Clear();
        face.PutFitted("PC", 1, 3, false);
    });
    EXPECT_EQ(painted, QRegion(4 + 2 * 18, 50, 5 * 18 + 14, 20));
}

TEST_F(CharacterFaceTest, PaintingPartsMakesTheSamePictureAsPaintingAll)
{
    for (const int percent : {100, 125, 150, 175, 200}) {
        face.ratio = percent / 100.0;
        face.Clear();
        face.PutFitted("PC 123456", 1, 3, false);
        face.PutFitted("N:01 L=0", 1, 4, true);
        face.Put(30, 130, 'X', false);
        QPixmap parts(face.size() * face.ratio);
        parts.setDevicePixelRatio(face.ratio);
        parts.fill(Qt::red);
        for (const QRect& part : {QRect(0, 0, 148, 60), QRect(0, 60, 70, 642), QRect(70, 60, 78, 642)})
            face.render(&parts, part.topLeft(), part, QWidget::RenderFlags());
        EXPECT_EQ(parts.toImage().convertToFormat(QImage::Format_RGB32), Picture()) << percent;
    }
}

TEST_F(CharacterFaceTest, ScreenReadersAreToldTheText)
{
    face.Put(4, 4, 'A', false);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&face);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->text(QAccessible::Description), face.Text());
}

}  // namespace
}  // namespace fenrik
