#include "widgets/ShapedTexts.h"

#include "support/Printers.h"

#include <QImage>
#include <QPainter>

#include <gmock/gmock.h>

#include <functional>

namespace fenrik {
namespace {

constexpr QSize kRoom(240, 30);

QImage Drawn(const std::function<void(QPainter&)>& draw)
{
    QImage picture(kRoom, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    draw(painter);
    return picture;
}

QImage Shaped(ShapedTexts& texts, const QString& text, QRect area, Qt::LayoutDirection direction = Qt::LeftToRight)
{
    return Drawn([&](QPainter& painter) { texts.Draw(painter, area, text, direction); });
}

/// As a painter draws it, in the middle of `area`'s height.
QImage Plain(const QString& text, QRect area, Qt::LayoutDirection direction = Qt::LeftToRight)
{
    return Drawn([&](QPainter& painter) {
        const QFontMetrics metrics = painter.fontMetrics();
        const int room = direction == Qt::RightToLeft ? area.width() - metrics.horizontalAdvance(text) : 0;
        const int top = area.top() + (area.height() - metrics.height()) / 2;
        painter.drawText(area.left() + room, top + metrics.ascent(), text);
    });
}

TEST(ShapedTexts, LookAsAPainterDrawsThem)
{
    ShapedTexts texts;
    const QRect area(5, 3, 200, 24);
    EXPECT_EQ(Shaped(texts, QStringLiteral("0.A1.26.7.8A.58"), area), Plain(QStringLiteral("0.A1.26.7.8A.58"), area));
    EXPECT_EQ(Shaped(texts, QStringLiteral("Horn"), area), Plain(QStringLiteral("Horn"), area));
    EXPECT_EQ(Shaped(texts, QStringLiteral("Horn"), area), Plain(QStringLiteral("Horn"), area)) << "a second time";
}

TEST(ShapedTexts, FiguresLookAsAPainterDrawsThem)
{
    for (const int points : {7, 9, 13, 24}) {
        ShapedTexts texts;
        QFont font;
        font.setPointSize(points);
        font.setKerning(false);
        const auto draw = [&font](const std::function<void(QPainter&)>& text) {
            return Drawn([&](QPainter& painter) {
                painter.setFont(font);
                text(painter);
            });
        };
        for (const char* figures : {"0", "65535", "A7F0", "-12,345.67", "01:02:03 +5"}) {
            const QString text = QString::fromLatin1(figures);
            const QImage shaped =
                draw([&](QPainter& painter) { texts.Draw(painter, QRect(2, 0, 230, 30), text, Qt::LeftToRight); });
            const QImage plain = draw([&](QPainter& painter) {
                const QFontMetrics metrics = painter.fontMetrics();
                painter.drawText(2, (30 - metrics.height()) / 2 + metrics.ascent(), text);
            });
            EXPECT_EQ(shaped, plain) << figures << " at " << points;
        }
    }
}

TEST(ShapedTexts, FiguresThatDoNotFitAreElided)
{
    ShapedTexts texts;
    const QString text = QStringLiteral("1234567890123456");
    const QRect area(5, 3, 60, 24);
    const QString elided = QFontMetrics(QFont()).elidedText(text, Qt::ElideRight, 60);
    ASSERT_NE(elided, text);
    EXPECT_EQ(Shaped(texts, text, area), Plain(elided, area));
}

TEST(ShapedTexts, TakeThePenOfEachPainting)
{
    ShapedTexts texts;
    const QRect area(5, 3, 200, 24);
    const QImage black = Shaped(texts, QStringLiteral("Horn"), area);
    const QImage red = Drawn([&](QPainter& painter) {
        painter.setPen(Qt::red);
        texts.Draw(painter, area, QStringLiteral("Horn"), Qt::LeftToRight);
    });
    EXPECT_NE(red, black);
    EXPECT_EQ(Shaped(texts, QStringLiteral("Horn"), area), black);
}

TEST(ShapedTexts, StandAtTheRightFromRightToLeft)
{
    ShapedTexts texts;
    const QRect area(5, 3, 200, 24);
    EXPECT_EQ(Shaped(texts, QStringLiteral("Horn"), area, Qt::RightToLeft),
              Plain(QStringLiteral("Horn"), area, Qt::RightToLeft));
}

TEST(ShapedTexts, AreElidedToTheRoomThatTheyHave)
{
    ShapedTexts texts;
    const QString text = QStringLiteral("A name that is far too long for its column");
    for (const int width : {90, 60, 90}) {
        const QRect area(5, 3, width, 24);
        const QString elided = QFontMetrics(QFont()).elidedText(text, Qt::ElideRight, width);
        ASSERT_NE(elided, text);
        EXPECT_EQ(Shaped(texts, text, area), Plain(elided, area)) << width;
    }
    EXPECT_EQ(Shaped(texts, text, QRect(0, 3, 2000, 24)), Plain(text, QRect(0, 3, 2000, 24)));
}

TEST(ShapedTexts, StayOnOneLine)
{
    ShapedTexts texts;
    const QRect area(5, 3, 200, 24);
    EXPECT_EQ(Shaped(texts, QStringLiteral("Horn\nLamp"), area), Plain(QStringLiteral("Horn Lamp"), area));
}

TEST(ShapedTexts, FollowAnotherFontOnceTheyAreCleared)
{
    ShapedTexts texts;
    const QRect area(5, 0, 200, 30);
    (void)Shaped(texts, QStringLiteral("Horn"), area);
    texts.Clear();
    QFont large;
    large.setPointSize(18);
    const auto draw = [&](const std::function<void(QPainter&)>& text) {
        return Drawn([&](QPainter& painter) {
            painter.setFont(large);
            text(painter);
        });
    };
    const QImage shaped = draw([&](QPainter& painter) { texts.Draw(painter, area, "Horn", Qt::LeftToRight); });
    const QImage plain = draw([&](QPainter& painter) {
        const QFontMetrics metrics = painter.fontMetrics();
        painter.drawText(5, (30 - metrics.height()) / 2 + metrics.ascent(), QStringLiteral("Horn"));
    });
    EXPECT_EQ(shaped, plain);
}

}  // namespace
}  // namespace fenrik
