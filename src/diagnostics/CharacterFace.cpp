#include "diagnostics/CharacterFace.h"

#include "diagnostics/CodePage437.h"
#include "diagnostics/FaceDescription.h"
#include "diagnostics/FacePainter.h"
#include "diagnostics/Glass.h"
#include "diagnostics/GlyphSheets.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace fenrik {

bool CharacterFace::Cell::InPlace(int column, int row) const
{
    return used && x == Glass::kMargin + column * Glass::kCellWidth && y == Glass::kMargin + row * Glass::kCellHeight;
}

QRect CharacterFace::Cell::Rect() const
{
    return used ? QRect(x, y, Glass::kGlyphWidth, Glass::kGlyphHeight) : QRect();
}

CharacterFace::CharacterFace(const GlyphSheets& sheets, QSize size, int columns, QWidget* parent)
    : QWidget(parent), mSheets(sheets), mColumns(columns),
      mRowCount((size.height() - Glass::kMargin - Glass::kGlyphHeight) / Glass::kCellHeight + 1),
      mStoredColumns((size.width() - Glass::kMargin) / Glass::kGlyphWidth),
      mCells(std::size_t(mRowCount * mStoredColumns)), mShown(mCells), mCrowded(std::size_t(mRowCount))
{
    DescribeFacesToScreenReaders();
    setFixedSize(size);
    setAttribute(Qt::WA_OpaquePaintEvent);
    mRefresh.setSingleShot(true);
    connect(&mRefresh, &QTimer::timeout, this, [this] { update(TakeChanges()); });
}

void CharacterFace::Put(int x, int y, std::uint8_t code, bool dim)
{
    if (x < 0 || y < 0 || x + Glass::kGlyphWidth > width() || y + Glass::kGlyphHeight > height())
        return;
    const int column = (x - Glass::kMargin + Glass::kCellWidth / 2) / Glass::kCellWidth;
    const int row = (y - Glass::kMargin + Glass::kCellHeight / 2) / Glass::kCellHeight;
    At(std::min(row, mRowCount - 1), column) = {std::int16_t(x), std::int16_t(y), code, dim, true};
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
    if (crowded || mCrowded[std::size_t(row - 1)])
        WipeRow(row - 1, column - 1);
    mCrowded[std::size_t(row - 1)] = crowded;

    const int y = Glass::kMargin + (row - 1) * Glass::kCellHeight;
    for (int i = 0; i < count; ++i)
        At(row - 1, column - 1 + i) = {std::int16_t(left + i * pitch), std::int16_t(y),
                                       std::uint8_t(codes[std::size_t(i)]), dim, true};
}

void CharacterFace::WipeRow(int row, int column)
{
    std::fill(&At(row, column), &At(row, 0) + mStoredColumns, Cell());
}

void CharacterFace::Clear()
{
    std::fill(mCells.begin(), mCells.end(), Cell());
    std::fill(mCrowded.begin(), mCrowded.end(), false);
}

void CharacterFace::Refresh()
{
    if (!mRefresh.isActive())
        mRefresh.start();
}

/// Where glyphs came, went or changed since the last call.
QRect CharacterFace::TakeChanges()
{
    QRect changed;
    for (std::size_t i = 0; i < mCells.size(); ++i) {
        if (mCells[i] == mShown[i])
            continue;
        changed |= mCells[i].Rect() | mShown[i].Rect();
        mShown[i] = mCells[i];
    }
    return changed;
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
    const double ratio = devicePixelRatioF();
    QPainter painter(this);
    FacePainter face(painter, mSheets.At(ratio), size(), ratio, event->rect());
    face.DrawGround();
    PaintGrid(face);
    face.DrawEdge();
    PaintLoose(face);  // a crowded row reaches into the margin
}

void CharacterFace::PaintGrid(FacePainter& painter) const
{
    for (int row = painter.FirstRow(); row <= painter.LastRow(); ++row) {
        for (int column = painter.FirstColumn(); column <= painter.LastColumn(); ++column) {
            const Cell& cell = At(row, column);
            const bool inPlace = cell.InPlace(column, row);
            painter.DrawCell(column, row, inPlace ? cell.code : CodePage437::kBlank, inPlace && cell.dim);
        }
    }
}

/// What stands between the cells of the grid.
void CharacterFace::PaintLoose(FacePainter& painter) const
{
    for (int row = std::max(0, painter.FirstRow() - 1); row <= std::min(painter.LastRow() + 1, mRowCount - 1); ++row) {
        for (int column = 0; column < mStoredColumns; ++column) {
            const Cell& cell = At(row, column);
            if (cell.used && !cell.InPlace(column, row))
                painter.DrawGlyph({cell.x, cell.y}, cell.code, cell.dim);
        }
    }
}

}  // namespace fenrik
