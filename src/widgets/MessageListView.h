#pragma once

#include "widgets/ShapedTexts.h"

#include <QAbstractItemView>
#include <QRegion>
#include <QString>
#include <QTimer>

class QHeaderView;

namespace fenrik {

class MessageLines;

/// The list of messages. All rows have one height, taken from the font, and nothing is kept or computed for each row,
/// so that millions of rows scroll, select and paint as a hundred do. The vertical scroll bar counts rows.
///
/// One row is selected at most. The secondary mouse button leaves the selection alone and asks for the list's menu by
/// customContextMenuRequested.
///
/// New lines and changed cells are shown at once, and after that at most every 60 ms: nobody reads lines that scroll
/// faster, and with all the traffic of a line painting each frame by itself would cost more than all else that is done
/// about it. What follows from new lines - scroll bar, selection of the newest - waits with them.
class MessageListView : public QAbstractItemView {
    Q_OBJECT

public:
    explicit MessageListView(QWidget* parent = nullptr);
    ~MessageListView() override;

    /// The model is a MessageLines; the view doesn't own it.
    void setModel(QAbstractItemModel* model) override;

    [[nodiscard]] QHeaderView* Header() const { return mHeader; }

    /// What stands in the middle of a list without lines.
    void SetEmptyText(const QString& text);

    /// -1 if no row is selected.
    [[nodiscard]] int SelectedRow() const;

    /// Whether a line that is added now is to be selected and shown: without CompactList only if the selected line is
    /// the last line or nothing is selected, with CompactList always.
    [[nodiscard]] bool FollowsNewest() const;

    /// Has the model announce its lines. If the list followed when they were added, the newest is selected and scrolled
    /// to, as soon as lines are shown. Costs the same for any number of lines.
    void Flush();

    /// Shows what waits for its time.
    void ShowNews();

    /// Announces new lines and selects the last one.
    void SelectLast();
    void SelectRow(int row);

    /// The row's visible columns, separated by tabs.
    [[nodiscard]] QString RowText(int row) const;

    [[nodiscard]] int RowHeight() const { return mRowHeight; }
    [[nodiscard]] int FirstVisibleRow() const;
    /// Rows that have room from top to bottom, at least 1.
    [[nodiscard]] int WholeRows() const;
    /// Where a row stands in the viewport, over its whole width; also outside of what is seen.
    [[nodiscard]] QRect RowRect(int row) const;

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;

    /// Does nothing: a typed letter would search all lines in one go.
    void keyboardSearch(const QString& text) override;

Q_SIGNALS:
    /// A line was double clicked, or Enter was pressed on it.
    void LineChosen(int row);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] int horizontalOffset() const override;
    [[nodiscard]] int verticalOffset() const override;
    [[nodiscard]] bool isIndexHidden(const QModelIndex& index) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                       const QEvent* event) const override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;

    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    /// Leaves out that the base class asks the display server where the mouse is: no line looks different under it.
    void verticalScrollbarValueChanged(int) override {}
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void SetUpHeader();
    void SetColumnWidths();
    void FitColumn(int column);
    void UpdateRowHeight();
    void UpdateScrollBars();
    void LinesArrive();
    void LinesAreRemoved();
    void ShowNewRows();
    void Touch(const QRect& area);
    [[nodiscard]] int RowCount() const;
    [[nodiscard]] int CellPadding() const;

    void PaintRow(QPainter& painter, int row, const QRect& dirty) const;
    void PaintCell(QPainter& painter, const QModelIndex& index, const QRect& rect) const;
    void PaintEmptyText(QPainter& painter) const;

    MessageLines* mMessages = nullptr;
    QHeaderView* mHeader;
    QString mEmptyText;
    int mRowHeight = 1;
    bool mUpdatingGeometries = false;
    mutable ShapedTexts mTexts;
    QTimer mResting;       // since something was shown
    QRegion mTouched;      // changed since then
    int mFirstNew = -1;    // first row that was announced since then
    bool mBehind = false;  // lines were flushed since then
    bool mFollow = true;   // while lines are unannounced or behind: whether the newest of them counts as selected
};

}  // namespace fenrik
