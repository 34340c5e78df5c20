#include "diagnostics/FacePainter.h"

#include "diagnostics/Glass.h"
#include "diagnostics/GlyphSheets.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace fenrik {

namespace {

/// The cell that a pixel belongs to, with the gap behind each cell as part of it.
int CellAt(int pixel, int pitch)
{
    return std::max(0, pixel - Glass::kMargin) / pitch;
}

int CellsIn(int length, int pitch, int glyph)
{
    return (length - Glass::kMargin - glyph) / pitch + 1;
}

}  // namespace

FacePainter::FacePainter(QPainter& painter, const GlyphAtlas& glyphs, QSize face, double ratio, const QRect& dirty)
    : mPainter(painter), mGlyphs(glyphs), mFace(face), mRatio(ratio), mDirty(dirty),
      mFirstRow(CellAt(dirty.top(), Glass::kCellHeight)),
      mLastRow(std::min(CellAt(dirty.bottom(), Glass::kCellHeight),
                        CellsIn(face.height(), Glass::kCellHeight, Glass::kGlyphHeight) - 1)),
      mFirstColumn(CellAt(dirty.left(), Glass::kCellWidth)),
      mLastColumn(std::min(CellAt(dirty.right(), Glass::kCellWidth),
                           CellsIn(face.width(), Glass::kCellWidth, Glass::kGlyphWidth) - 1))
{
    mPainter.setClipRect(dirty);
    mPainter.scale(1.0 / ratio, 1.0 / ratio);
}

int FacePainter::Pixels(int logical) const
{
    return qRound(logical * mRatio);
}

void FacePainter::DrawGround()
{
    // Only where no cell covers it: filling all of a large face would cost as much as its glyphs.
    const QColor ground = QColor::fromRgb(Glass::kGround);
    const int width = Pixels(mFace.width()) + 1;
    const int height = Pixels(mFace.height()) + 1;
    const int margin = Pixels(Glass::kMargin);
    const int right = Pixels(Glass::kMargin + (mLastColumn + 1) * Glass::kCellWidth);
    mPainter.fillRect(0, 0, margin, height, ground);
    mPainter.fillRect(right, 0, width - right, height, ground);
    for (int row = mFirstRow - 1; row <= mLastRow; ++row) {
        const int top = row < 0 ? 0 : Pixels(Glass::kMargin + row * Glass::kCellHeight) + mGlyphs.glyph.height();
        const int next = Pixels(Glass::kMargin + (row + 1) * Glass::kCellHeight);
        const int bottom = row == mLastRow ? std::max(next, height) : next;
        mPainter.fillRect(0, top, width, bottom - top, ground);
    }
}

void FacePainter::DrawCell(int column, int row, std::uint8_t code, bool dim)
{
    const int left = Glass::kMargin + column * Glass::kCellWidth;
    const int width = Pixels(left + Glass::kCellWidth) - Pixels(left);
    Copy({left, Glass::kMargin + row * Glass::kCellHeight}, width, code, dim);
}

void FacePainter::DrawGlyph(QPoint corner, std::uint8_t code, bool dim)
{
    Copy(corner, mGlyphs.glyph.width(), code, dim);
}

void FacePainter::Copy(QPoint place, int width, std::uint8_t code, bool dim)
{
    const int height = mGlyphs.glyph.height();
    const QRect source(0, code * height, width, height);
    mPainter.drawImage(QPoint(Pixels(place.x()), Pixels(place.y())), dim ? mGlyphs.dim : mGlyphs.bright, source);
}

void FacePainter::DrawEdge()
{
    const int margin = Glass::kMargin;
    if (QRect(QPoint(), mFace).adjusted(margin, margin, -margin, -margin).contains(mDirty))
        return;
    const int width = int(std::ceil(mFace.width() * mRatio));
    const int height = int(std::ceil(mFace.height() * mRatio));
    const int depth = Pixels(margin) - 1;
    for (int step = 0; step < depth; ++step) {
        QColor shade = QColor::fromRgb(Glass::kEdge);
        shade.setAlphaF(float(1.0 - double(step) / depth));
        mPainter.setPen(shade);
        mPainter.drawRect(step, step, width - 1 - 2 * step, height - 1 - 2 * step);
    }
}

}  // namespace fenrik
