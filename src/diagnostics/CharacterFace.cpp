#include "diagnostics/CharacterFace.h"

#include "diagnostics/CodePage437.h"
#include "diagnostics/FaceBackground.h"
#include "diagnostics/FaceDescription.h"
#include "diagnostics/Glass.h"
#include "diagnostics/GlyphSheets.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cstring>

namespace fenrik {

namespace {

constexpr int kRefreshMilliseconds = 16;
constexpr int kPerRow = 16;

/// Copies a rectangle between two 32-bit images; what does not fit into `to` is left out.
void CopyPixels(const QImage& from, QRect part, QImage& to, QPoint place)
{
    const int width = std::min(part.width(), to.width() - place.x());
    const int height = std::min(part.height(), to.height() - place.y());
    if (width <= 0 || height <= 0)
        return;
    const uchar* source = from.constScanLine(part.y()) + part.x() * 4;
    uchar* target = to.scanLine(place.y()) + place.x() * 4;
    for (int line = 0; line < height; ++line) {
        std::memcpy(target, source, std::size_t(width) * 4);
        source += from.bytesPerLine();
        target += to.bytesPerLine();
    }
}

}  // namespace

CharacterFace::CharacterFace(const GlyphSheets& sheets, QSize size, int columns, QWidget* parent)
    : QWidget(parent), mSheets(sheets), mColumns(columns),
      mRowCount((size.height() - Glass::kMargin - Glass::kGlyphHeight) / Glass::kCellHeight + 1),
      mStoredColumns((size.width() - Glass::kMargin) / Glass::kGlyphWidth),
      mCells(std::size_t(mRowCount * mStoredColumns)), mRows(std::size_t(mRowCount))
{
    DescribeFacesToScreenReaders();
    setFixedSize(size);
    setAttribute(Qt::WA_OpaquePaintEvent);
    mRefresh.setSingleShot(true);
    mRefresh.setInterval(kRefreshMilliseconds);
    connect(&mRefresh, &QTimer::timeout, this, [this] {
        update(mDirty);
        mDirty = {};
    });
}

void CharacterFace::Put(int x, int y, std::uint8_t code, bool dim)
{
    if (x < 0 || y < 0 || x + Glass::kGlyphWidth > width() || y + Glass::kGlyphHeight > height())
        return;
    const int column = (x - Glass::kMargin + Glass::kCellWidth / 2) / Glass::kCellWidth;
    const int row = (y - Glass::kMargin + Glass::kCellHeight / 2) / Glass::kCellHeight;
    Store(At(std::min(row, mRowCount - 1), column), x, y, code, dim);
}

void CharacterFace::PutFitted(std::string_view codes, int column, int row, bool dim)
{
    if (codes.empty() || column < 1 || row < 1 || row > mRowCount)
        return;
    const int left = Glass::kMargin + (column - 1) * Glass::kCellWidth;
    const int most = (width() - left) / Glass::kGlyphWidth;
    if (most <= 0)
        return;
    codes.remove_prefix(codes.size() - std::min(codes.size(), std::size_t(most)));

    const int count = int(codes.size());
    const int pitch = std::min(Glass::kCellWidth, (width() - left) / count);
    const bool crowded = pitch < Glass::kCellWidth;
    if (crowded || mRows[std::size_t(row - 1)].crowded)
        WipeRow(row - 1, column - 1);
    mRows[std::size_t(row - 1)].crowded = crowded;

    const int y = Glass::kMargin + (row - 1) * Glass::kCellHeight;
    for (int i = 0; i < count; ++i)
        Store(At(row - 1, column - 1 + i), left + i * pitch, y, std::uint8_t(codes[std::size_t(i)]), dim);
}

void CharacterFace::Store(Cell& cell, int x, int y, std::uint8_t code, bool dim)
{
    cell = {std::int16_t(x), std::int16_t(y), code, dim, true, true};
    mDirty |= QRect(x, y, Glass::kGlyphWidth, Glass::kGlyphHeight);
}

void CharacterFace::WipeRow(int row, int column)
{
    mRows[std::size_t(row)].wiped = true;
    for (; column < mStoredColumns; ++column)
        At(row, column).used = false;
    mDirty |= QRect(0, row * Glass::kCellHeight, width(), Glass::kCellHeight + Glass::kMargin);
}

void CharacterFace::Clear()
{
    std::fill(mCells.begin(), mCells.end(), Cell());
    std::fill(mRows.begin(), mRows.end(), Row());
    mCleared = true;
    mDirty = rect();
}

void CharacterFace::Refresh()
{
    if (!mRefresh.isActive() && !mDirty.isEmpty())
        mRefresh.start();
}

QString CharacterFace::Lines(bool onlyDim) const
{
    QString lines;
    lines.reserve(mRowCount * (mColumns + 1));
    for (int row = 0; row < mRowCount; ++row) {
        QString line(mStoredColumns, QLatin1Char(' '));
        int length = mColumns;
        for (int column = 0; column < mStoredColumns; ++column) {
            const Cell& cell = At(row, column);
            if (!cell.used || (onlyDim && !cell.dim))
                continue;
            line[column] = CodePage437::CharacterOf(cell.code);
            if (line[column] != QLatin1Char(' '))
                length = std::max(length, column + 1);
        }
        lines += QStringView(line).left(length);
        if (row + 1 < mRowCount)
            lines += QLatin1Char('\n');
    }
    return lines;
}

void CharacterFace::paintEvent(QPaintEvent* event)
{
    BringUpToDate();
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.drawImage(0, 0, mImage);
}

void CharacterFace::BringUpToDate()
{
    const double ratio = devicePixelRatioF();
    const GlyphAtlas& glyphs = mSheets.At(ratio);
    if (mBackground.isNull() || mBackground.devicePixelRatio() != ratio) {
        mBackground = FaceBackground(size(), ratio, glyphs);
        mImage = QImage(mBackground.size(), QImage::Format_RGB32);
        mImage.setDevicePixelRatio(ratio);
        mCleared = true;
    }
    if (mCleared) {
        CopyPixels(mBackground, mBackground.rect(), mImage, {});
        for (Cell& cell : mCells)
            cell.stale = cell.used;
    }
    mCleared = false;
    for (int row = 0; row < mRowCount; ++row)
        DrawRow(glyphs, row);
}

void CharacterFace::DrawRow(const GlyphAtlas& glyphs, int row)
{
    const bool wiped = mRows[std::size_t(row)].wiped;
    if (wiped)
        CopyBackground(row);
    mRows[std::size_t(row)].wiped = false;
    for (int column = 0; column < mStoredColumns; ++column) {
        Cell& cell = At(row, column);
        if (cell.used && (cell.stale || wiped))
            CopyGlyph(glyphs, cell);
        cell.stale = false;
    }
}

void CharacterFace::CopyBackground(int row)
{
    const double ratio = mImage.devicePixelRatio();
    const int top = qRound((row * Glass::kCellHeight + Glass::kMargin) * ratio);
    const int height = qRound(Glass::kGlyphHeight * ratio);
    CopyPixels(mBackground, QRect(0, top, mBackground.width(), height), mImage, {0, top});
}

void CharacterFace::CopyGlyph(const GlyphAtlas& glyphs, const Cell& cell)
{
    const double ratio = mImage.devicePixelRatio();
    const QPoint corner(cell.code % kPerRow * glyphs.glyph.width(), cell.code / kPerRow * glyphs.glyph.height());
    CopyPixels(cell.dim ? glyphs.dim : glyphs.bright, QRect(corner, glyphs.glyph), mImage,
               {qRound(cell.x * ratio), qRound(cell.y * ratio)});
}

}  // namespace fenrik
