#include "widgets/ShapedTexts.h"

#include <QPainter>

#include <memory>

namespace fenrik {

namespace {

// Not the letters of hexadecimal numbers together with points: those move closer to each other.
const QString kFigures = QStringLiteral("0123456789.,:-+ ABCDEF");
const QString kPoints = QStringLiteral(".,:");
constexpr qsizetype kFirstLetter = 16;

void Shape(QStaticText& shaped, QString text, const QPainter& painter)
{
    shaped.setTextFormat(Qt::PlainText);
    shaped.setText(text.replace(QLatin1Char('\n'), QLatin1Char(' ')));  // it would begin a second line
    shaped.prepare({}, painter.font());
}

}  // namespace

void ShapedTexts::Draw(QPainter& painter, const QRect& area, const QString& text, Qt::LayoutDirection direction)
{
    if (text.isEmpty() || (direction == Qt::LeftToRight && DrawFigures(painter, area, text)))
        return;
    Shaped& known = Find(text, painter);
    const QStaticText* shown = &known.whole;
    if (shown->size().width() > area.width()) {
        if (known.elidedWidth != area.width())
            Shape(known.elided, painter.fontMetrics().elidedText(text, Qt::ElideRight, area.width()), painter);
        known.elidedWidth = area.width();
        shown = &known.elided;
    }
    const QSizeF size = shown->size();
    const int left = direction == Qt::RightToLeft ? area.right() + 1 - qRound(size.width()) : area.left();
    painter.drawStaticText(QPoint(left, area.top() + (area.height() - int(size.height())) / 2), *shown);
}

void ShapedTexts::Clear()
{
    mTexts.clear();
    mFont = QRawFont();
}

bool ShapedTexts::DrawFigures(QPainter& painter, const QRect& area, const QString& text)
{
    if (!SetFigures(text, painter.font()) || mWidth > area.width())
        return false;
    mRun.setRawFont(mFont);
    mRun.setGlyphIndexes(mGlyphs);
    mRun.setPositions(mPositions);
    const QFontMetrics metrics = painter.fontMetrics();
    painter.drawGlyphRun(QPoint(area.left(), area.top() + (area.height() - metrics.height()) / 2 + metrics.ascent()),
                         mRun);
    return true;
}

bool ShapedTexts::SetFigures(const QString& text, const QFont& font)
{
    if (!mFont.isValid()) {
        mFont = QRawFont::fromFont(font);
        mFigureGlyphs = mFont.glyphIndexesForString(kFigures);
        mFigureSteps = mFont.advancesForGlyphIndexes(mFigureGlyphs);
    }
    mGlyphs.clear();
    mPositions.clear();
    QPointF position;
    bool letters = false;
    bool points = false;
    for (const QChar character : text) {
        const qsizetype figure = kFigures.indexOf(character);
        if (figure < 0 || figure >= mFigureGlyphs.size() || mFigureGlyphs[figure] == 0)
            return false;
        letters = letters || figure >= kFirstLetter;
        points = points || kPoints.contains(character);
        mGlyphs.append(mFigureGlyphs[figure]);
        mPositions.append(position);
        position += mFigureSteps[figure];
    }
    mWidth = position.x();
    return !(letters && points);
}

ShapedTexts::Shaped& ShapedTexts::Find(const QString& text, const QPainter& painter)
{
    if (Shaped* known = mTexts.object(text))
        return *known;
    auto fresh = std::make_unique<Shaped>();
    Shape(fresh->whole, text, painter);
    Shaped& shaped = *fresh;
    mTexts.insert(text, fresh.release());
    return shaped;
}

}  // namespace fenrik
