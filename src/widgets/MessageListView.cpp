#include "widgets/MessageListView.h"

#include "widgets/AccessibleMessageList.h"
#include "widgets/CalmScrollBar.h"
#include "widgets/MessageLines.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kRestMs = 60;

}  // namespace

MessageListView::MessageListView(QWidget* parent)
    : QAbstractItemView(parent), mHeader(new QHeaderView(Qt::Horizontal, this))
{
    InstallAccessibleMessageList();
    setVerticalScrollBar(new CalmScrollBar(Qt::Vertical));
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setTabKeyNavigation(false);
    SetUpHeader();
    UpdateRowHeight();
    mResting.setObjectName(QStringLiteral("TResting"));
    mResting.setParent(this);
    mResting.setSingleShot(true);
    mResting.setInterval(kRestMs);
    mResting.setTimerType(Qt::PreciseTimer);
    connect(&mResting, &QTimer::timeout, this, &MessageListView::ShowNews);
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& index) { Q_EMIT LineChosen(index.row()); });
}

MessageListView::~MessageListView()
{
    // The header goes last, with the other children, and resizes its sections once more.
    disconnect(mHeader, nullptr, this, nullptr);
}

void MessageListView::SetUpHeader()
{
    mHeader->setSectionsMovable(false);
    mHeader->setSectionsClickable(false);
    mHeader->setHighlightSections(false);
    mHeader->setStretchLastSection(true);
    mHeader->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    mHeader->setFocusPolicy(Qt::NoFocus);
    connect(mHeader, &QHeaderView::sectionResized, this, [this] {
        UpdateScrollBars();
        viewport()->update();
    });
    connect(mHeader, &QHeaderView::geometriesChanged, this, &MessageListView::updateGeometries);
    connect(mHeader, &QHeaderView::sectionHandleDoubleClicked, this, &MessageListView::FitColumn);
}

void MessageListView::setModel(QAbstractItemModel* newModel)
{
    if (mMessages)
        disconnect(mMessages, nullptr, this, nullptr);
    mMessages = qobject_cast<MessageLines*>(newModel);
    QAbstractItemView::setModel(newModel);
    mHeader->setModel(newModel);
    if (!mMessages)
        return;

    connect(mMessages, &MessageLines::FlushDue, this, &MessageListView::LinesArrive);
    connect(mMessages, &MessageLines::rowsRemoved, this, &MessageListView::LinesAreRemoved);
    connect(mMessages, &QObject::destroyed, this, [this] { mMessages = nullptr; });
    SetColumnWidths();
    doItemsLayout();
}

void MessageListView::SetColumnWidths()
{
    const int character = fontMetrics().averageCharWidth();
    int number = 0;
    for (const MessageLines::Column& column : mMessages->ListColumns()) {
        mHeader->resizeSection(number, column.characters * character + 2 * CellPadding());
        mHeader->setSectionHidden(number++, column.hidden);
    }
}

void MessageListView::FitColumn(int column)
{
    // Only what is seen is measured; all rows might be millions.
    int width = mHeader->sectionSizeHint(column);
    const int icon = column == 0 ? mRowHeight : 0;
    const int end = std::min(RowCount(), FirstVisibleRow() + WholeRows() + 1);
    for (int row = FirstVisibleRow(); row < end; ++row) {
        const QString text = model()->index(row, column).data().toString();
        width = std::max(width, fontMetrics().horizontalAdvance(text) + icon + 2 * CellPadding());
    }
    mHeader->resizeSection(column, width);
}

void MessageListView::SetEmptyText(const QString& text)
{
    mEmptyText = text;
    viewport()->update();
}

int MessageListView::RowCount() const
{
    return mMessages ? mMessages->rowCount() : 0;
}

int MessageListView::SelectedRow() const
{
    if (!selectionModel())
        return -1;
    const QItemSelection selection = selectionModel()->selection();
    return selection.isEmpty() ? -1 : selection.first().top();
}

bool MessageListView::FollowsNewest() const
{
    if (!mMessages || mMessages->AlwaysFollowed())
        return true;
    if (mMessages->HasUnseen() || mBehind)
        return mFollow;
    const int row = SelectedRow();
    return row < 0 || row == RowCount() - 1;
}

void MessageListView::LinesArrive()
{
    if (mBehind)
        return;
    const int row = SelectedRow();
    mFollow = row < 0 || row == RowCount() - 1;
}

void MessageListView::LinesAreRemoved()
{
    mTouched = {};
    mFirstNew = -1;
    mBehind = false;
    UpdateScrollBars();
    viewport()->update();
}

void MessageListView::Flush()
{
    if (!mMessages || !mMessages->HasUnseen())
        return;
    mFollow = FollowsNewest();
    mMessages->Flush();
    mBehind = true;
    if (!mResting.isActive())
        ShowNews();
}

void MessageListView::ShowNews()
{
    if (!mMessages || (!mBehind && mFirstNew < 0 && mTouched.isEmpty()))
        return;
    if (mMessages->HasUnseen()) {
        mFollow = FollowsNewest();
        mBehind = true;
        mMessages->Flush();
    }
    ShowNewRows();
    viewport()->update(mTouched);
    mTouched = {};
    if (mBehind && FollowsNewest()) {
        mBehind = false;
        SelectRow(mMessages->NewestRow());
    }
    mBehind = false;
    mResting.start();
}

void MessageListView::ShowNewRows()
{
    if (mFirstNew < 0)
        return;
    const QRect first = RowRect(mFirstNew);
    mFirstNew = -1;
    UpdateScrollBars();
    viewport()->update(viewport()->rect() & first.adjusted(0, 0, 0, viewport()->height()));
}

void MessageListView::SelectLast()
{
    if (!mMessages)
        return;
    mMessages->Flush();
    mBehind = false;
    SelectRow(RowCount() - 1);
}

void MessageListView::SelectRow(int row)
{
    if (row < 0 || row >= RowCount())
        return;
    const QModelIndex index = model()->index(row, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

QString MessageListView::RowText(int row) const
{
    QStringList texts;
    for (int column = 0; column < mHeader->count(); ++column) {
        if (!mHeader->isSectionHidden(column))
            texts.append(model()->index(row, column).data().toString());
    }
    return texts.join(QLatin1Char('\t'));
}

void MessageListView::keyboardSearch(const QString&) {}

QModelIndex MessageListView::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    const int count = RowCount();
    if (count == 0)
        return {};
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return model()->index(action == MoveEnd ? count - 1 : 0, 0);

    int row = current.row();
    switch (action) {
    case MoveUp:
    case MovePrevious:
        row -= 1;
        break;
    case MoveDown:
    case MoveNext:
        row += 1;
        break;
    case MovePageUp:
        row -= WholeRows();
        break;
    case MovePageDown:
        row += WholeRows();
        break;
    case MoveHome:
        row = 0;
        break;
    case MoveEnd:
        row = count - 1;
        break;
    case MoveLeft:
    case MoveRight:
        break;  // rows are selected as wholes; keyPressEvent scrolls sideways
    }
    return current.siblingAtRow(std::clamp(row, 0, count - 1));
}

void MessageListView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags)
{
    // One row at most: the one where the mouse is, which is the rectangle's second corner.
    const int row = FirstVisibleRow() + (rect.bottom() >= 0 ? rect.bottom() / mRowHeight : -1);
    if (row < 0 || row >= RowCount())
        return;
    const QItemSelection whole(model()->index(row, 0), model()->index(row, model()->columnCount() - 1));
    selectionModel()->select(whole, flags);
}

QItemSelectionModel::SelectionFlags MessageListView::selectionCommand(const QModelIndex& index,
                                                                      const QEvent* event) const
{
    // A click below the last line selects nothing, and so leaves what is selected.
    return index.isValid() ? QAbstractItemView::selectionCommand(index, event) : QItemSelectionModel::NoUpdate;
}

void MessageListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected);
    // Lines that the user can't see yet are behind any line that the user selects.
    if (mMessages && (mMessages->HasUnseen() || mBehind))
        mFollow = SelectedRow() < 0;
}

void MessageListView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QAbstractItemView::currentChanged(current, previous);
    viewport()->update(RowRect(previous.row()));
    viewport()->update(RowRect(current.row()));
    if (!QAccessible::isActive() || !hasFocus() || !current.isValid())
        return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(current.row());
    QAccessible::updateAccessibility(&event);
}

void MessageListView::keyPressEvent(QKeyEvent* event)
{
    const int row = SelectedRow();
    if (event->matches(QKeySequence::Copy)) {
        if (row >= 0)
            QApplication::clipboard()->setText(RowText(row));
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (row >= 0)
            Q_EMIT LineChosen(row);
        return;
    case Qt::Key_Left:
        horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
        return;
    case Qt::Key_Right:
        horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        return;
    default:
        QAbstractItemView::keyPressEvent(event);
    }
}

void MessageListView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        QAbstractItemView::mousePressEvent(event);
}

void MessageListView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        QAbstractItemView::mouseReleaseEvent(event);
}

void MessageListView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        QAbstractItemView::mouseDoubleClickEvent(event);
}

}  // namespace fenrik
