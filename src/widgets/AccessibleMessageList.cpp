#include "widgets/AccessibleMessageList.h"

#include "widgets/MessageListView.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QHeaderView>
#include <QPointer>

#include <utility>

namespace fenrik {

namespace {

/// One line. Lines never move, so that its row names it for good; it is invalid once the list is cleared.
class AccessibleLine : public QAccessibleInterface {
public:
    AccessibleLine(MessageListView* view, int row) : mView(view), mRow(row) {}

    bool isValid() const override { return mView && mView->model() && mRow < mView->model()->rowCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return mView ? mView->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(mView); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override
    {
        QStringList parts;
        for (int column = 0; kind == QAccessible::Name && isValid() && column < mView->Header()->count(); ++column) {
            if (!mView->Header()->isSectionHidden(column))
                parts.append(mView->model()->index(mRow, column).data(Qt::AccessibleTextRole).toString());
        }
        return parts.join(QStringLiteral(", "));
    }

    QRect rect() const override
    {
        const QRect row = isValid() ? mView->RowRect(mRow) : QRect();
        return QRect(mView->viewport()->mapToGlobal(row.topLeft()), row.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        state.selectable = state.focusable = true;
        state.selected = mRow == mView->SelectedRow();
        state.focused = mView->hasFocus() && mRow == mView->currentIndex().row();
        state.offscreen = !mView->viewport()->rect().intersects(mView->RowRect(mRow));
        return state;
    }

    [[nodiscard]] int Row() const { return mRow; }

private:
    QPointer<MessageListView> mView;
    int mRow;
};

/// The list. Makes an object for a line only when it is asked for that line, and keeps a bounded number of them.
class AccessibleMessageList : public QAccessibleWidget {
public:
    explicit AccessibleMessageList(MessageListView* view) : QAccessibleWidget(view, QAccessible::List), mView(view) {}
    ~AccessibleMessageList() override { Forget(); }

    int childCount() const override { return mView->model() ? mView->model()->rowCount() : 0; }

    QAccessibleInterface* child(int row) const override
    {
        if (row < 0 || row >= childCount())
            return nullptr;
        const auto known = mLines.constFind(row);
        if (known != mLines.constEnd())
            return QAccessible::accessibleInterface(*known);
        constexpr int kMost = 4096;
        if (mLines.size() >= kMost)
            Forget();
        auto* line = new AccessibleLine(mView, row);
        mLines.insert(row, QAccessible::registerAccessibleInterface(line));
        return line;
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        return child(mView->indexAt(mView->viewport()->mapFromGlobal(QPoint(x, y))).row());
    }

    QAccessibleInterface* focusChild() const override { return child(mView->currentIndex().row()); }

    int indexOfChild(const QAccessibleInterface* line) const override
    {
        return line && line->role() == QAccessible::ListItem ? static_cast<const AccessibleLine*>(line)->Row() : -1;
    }

private:
    void Forget() const
    {
        for (const QAccessible::Id id : std::exchange(mLines, {}))
            QAccessible::deleteAccessibleInterface(id);
    }

    MessageListView* mView;
    mutable QHash<int, QAccessible::Id> mLines;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object)
{
    auto* view = qobject_cast<MessageListView*>(object);
    return view ? new AccessibleMessageList(view) : nullptr;
}

}  // namespace

void InstallAccessibleMessageList()
{
    static const bool kInstalled = [] {
        QAccessible::installFactory(MakeAccessible);
        return true;
    }();
    static_cast<void>(kInstalled);
}

}  // namespace fenrik
