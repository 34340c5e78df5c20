// The geometry of MessageListView and what it paints.

#include "widgets/MessageListView.h"

#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace fenrik {

namespace {

/// A distance of many rows as a coordinate; what is farther than a coordinate reaches is off the screen anyway.
int Pixels(std::int64_t rows, int rowHeight)
{
    constexpr std::int64_t kFar = std::numeric_limits<int>::max() / 2;
    return int(std::clamp(rows * rowHeight, -kFar, kFar));
}

}  // namespace

int MessageListView::FirstVisibleRow() const
{
    return verticalScrollBar()->value();
}

int MessageListView::WholeRows() const
{
    return std::max(1, viewport()->height() / mRowHeight);
}

int MessageListView::CellPadding() const
{
    return style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
}

QRect MessageListView::RowRect(int row) const
{
    if (row < 0 || row >= RowCount())
        return {};
    const int y = Pixels(std::int64_t(row) - FirstVisibleRow(), mRowHeight);
    return QRect(0, y, viewport()->width(), mRowHeight);
}

QRect MessageListView::visualRect(const QModelIndex& index) const
{
    if (!index.isValid() || isIndexHidden(index))
        return {};
    const QRect row = RowRect(index.row());
    return QRect(mHeader->sectionViewportPosition(index.column()), row.y(), mHeader->sectionSize(index.column()),
                 row.height());
}

QModelIndex MessageListView::indexAt(const QPoint& point) const
{
    const int column = mHeader->logicalIndexAt(point.x());
    if (column < 0 || point.y() < 0)
        return {};
    const std::int64_t row = std::int64_t(FirstVisibleRow()) + point.y() / mRowHeight;
    return row < RowCount() ? model()->index(int(row), column) : QModelIndex();
}

bool MessageListView::isIndexHidden(const QModelIndex& index) const
{
    return mHeader->isSectionHidden(index.column());
}

int MessageListView::horizontalOffset() const
{
    return mHeader->offset();
}

int MessageListView::verticalOffset() const
{
    return Pixels(FirstVisibleRow(), mRowHeight);
}

void MessageListView::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    if (!index.isValid())
        return;
    ShowNewRows();  // the bar has to reach them
    const int row = index.row();
    const int first = FirstVisibleRow();
    const int last = first + WholeRows() - 1;
    const int bottom = row - WholeRows() + 1;  // the first row when `row` is the last
    if (hint == PositionAtCenter)
        verticalScrollBar()->setValue(row - WholeRows() / 2);
    else if (hint == PositionAtTop || (hint == EnsureVisible && row < first))
        verticalScrollBar()->setValue(row);
    else if (hint == PositionAtBottom || row > last)
        verticalScrollBar()->setValue(bottom);
}

QRegion MessageListView::visualRegionForSelection(const QItemSelection& selection) const
{
    QRegion region;
    const int first = FirstVisibleRow();
    for (const QItemSelectionRange& range : selection) {
        const int top = std::max(range.top(), first);
        const int bottom = std::min(range.bottom(), first + WholeRows());
        if (range.isValid() && top <= bottom)
            region += RowRect(top) | RowRect(bottom);
    }
    return region;
}

void MessageListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>&)
{
    const int first = FirstVisibleRow();
    const int top = std::max(topLeft.row(), first);
    const int bottom = std::min(bottomRight.row(), first + WholeRows());
    if (top > bottom)
        return;
    QRect cells;
    for (int column = topLeft.column(); column <= bottomRight.column(); ++column)
        cells |= visualRect(topLeft.sibling(top, column)) | visualRect(topLeft.sibling(bottom, column));
    Touch(cells);
}

void MessageListView::Touch(const QRect& area)
{
    if (mResting.isActive())
        mTouched += area;
    else
        viewport()->update(area);
}

void MessageListView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QAbstractItemView::rowsInserted(parent, start, end);
    mFirstNew = mFirstNew < 0 ? start : std::min(mFirstNew, start);
    if (!mResting.isActive())
        ShowNewRows();
}

void MessageListView::UpdateRowHeight()
{
    constexpr int kMargin = 2;
    const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    mRowHeight = std::max(fontMetrics().height(), icon) + 2 * kMargin;
}

void MessageListView::updateGeometries()
{
    if (mUpdatingGeometries)
        return;
    mUpdatingGeometries = true;
    UpdateRowHeight();
    const int height = mHeader->isHidden() ? 0 : std::max(mHeader->minimumHeight(), mHeader->sizeHint().height());
    setViewportMargins(0, height, 0, 0);
    const QRect area = viewport()->geometry();
    mHeader->setGeometry(area.left(), area.top() - height, area.width(), height);
    mUpdatingGeometries = false;

    // Outside of the guard: a bar that comes or goes resizes the viewport, and the header has to follow.
    UpdateScrollBars();
    QAbstractItemView::updateGeometries();
}

void MessageListView::UpdateScrollBars()
{
    verticalScrollBar()->setPageStep(WholeRows());
    verticalScrollBar()->setRange(0, std::max(0, RowCount() - WholeRows()));
    horizontalScrollBar()->setSingleStep(mRowHeight);
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, std::max(0, mHeader->length() - viewport()->width()));
}

void MessageListView::scrollContentsBy(int dx, int dy)
{
    if (dx)
        mHeader->setOffset(horizontalScrollBar()->value());
    // With all the traffic of a line the list moves by a row for each frame; painting the text of all rows each time
    // would cost more than everything else that is done about a frame.
    if (dx || std::abs(dy) >= WholeRows()) {
        viewport()->update();
        return;
    }
    viewport()->scroll(0, dy * mRowHeight);
    mTouched.translate(0, dy * mRowHeight);
}

void MessageListView::changeEvent(QEvent* event)
{
    QAbstractItemView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    mTexts.Clear();
    doItemsLayout();
}

void MessageListView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    if (RowCount() == 0) {
        PaintEmptyText(painter);
        return;
    }
    const QRect dirty = event->rect();
    const int first = FirstVisibleRow() + dirty.top() / mRowHeight;
    const int last = std::min(RowCount() - 1, FirstVisibleRow() + dirty.bottom() / mRowHeight);
    for (int row = first; row <= last; ++row) {
        if (event->region().intersects(RowRect(row)))
            PaintRow(painter, row, dirty);
    }
}

void MessageListView::PaintRow(QPainter& painter, int row, const QRect& dirty) const
{
    const QRect rect = RowRect(row);
    const bool selected = row == SelectedRow();
    if (selected)
        painter.fillRect(rect, palette().highlight());
    else if (row % 2 != 0)
        painter.fillRect(rect, palette().alternateBase());
    painter.setPen(palette().color(selected ? QPalette::HighlightedText : QPalette::Text));

    for (int column = 0; column < mHeader->count(); ++column) {
        const QModelIndex index = model()->index(row, column);
        const QRect cell = visualRect(index);
        if (cell.intersects(dirty))
            PaintCell(painter, index, cell);
    }
    if (!hasFocus() || row != currentIndex().row())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = rect;
    option.state |= QStyle::State_KeyboardFocusChange;
    option.backgroundColor = palette().color(selected ? QPalette::Highlight : QPalette::Base);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void MessageListView::PaintCell(QPainter& painter, const QModelIndex& index, const QRect& rect) const
{
    QRect inner = rect.adjusted(CellPadding(), 0, -CellPadding(), 0);
    const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
    if (!icon.isNull()) {
        const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
        const QRect place(inner.left(), inner.top() + (inner.height() - size) / 2, size, size);
        const QRect drawn = QStyle::visualRect(layoutDirection(), inner, place);
        // The pictures are drawn for the list's ground; on the highlight some would vanish.
        if (selectionModel()->isRowSelected(index.row()))
            painter.fillRect(drawn, palette().base());
        icon.paint(&painter, drawn);
        (isRightToLeft() ? inner.adjust(0, 0, -size - CellPadding(), 0) : inner.adjust(size + CellPadding(), 0, 0, 0));
    }
    if (inner.width() <= 0)
        return;
    mTexts.Draw(painter, inner, index.data().toString(), layoutDirection());
}

void MessageListView::PaintEmptyText(QPainter& painter) const
{
    // Not the palette's placeholder colour, which dark themes often leave dark.
    QColor faint = palette().color(QPalette::Text);
    faint.setAlphaF(0.6F);
    painter.setPen(faint);
    const QRect area = viewport()->rect().adjusted(CellPadding(), 0, -CellPadding(), 0);
    painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, mEmptyText);
}

}  // namespace fenrik
