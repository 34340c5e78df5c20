#include "diagnostics/TreePlace.h"

#include "diagnostics/PointTreeModel.h"

#include <QScrollBar>
#include <QTreeView>

namespace fenrik {

void TreePlace::Note(const QTreeView& tree)
{
    const QAbstractItemModel& rows = *tree.model();
    if (rows.rowCount() == 0)
        return;
    mOpen.clear();
    for (int row = 0; row < rows.rowCount(); ++row) {
        const QModelIndex point = rows.index(row, 0);
        if (tree.isExpanded(point))
            mOpen.insert(point.data(PointTreeModel::KeyRole).toString());
    }
    mFromTop = tree.verticalScrollBar()->value();
    mFromLeft = tree.horizontalScrollBar()->value();
}

void TreePlace::Restore(QTreeView& tree, int node)
{
    if (node != mNode)
        *this = TreePlace();
    mNode = node;
    const QAbstractItemModel& rows = *tree.model();
    for (int row = 0; row < rows.rowCount(); ++row) {
        const QModelIndex point = rows.index(row, 0);
        if (mOpen.contains(point.data(PointTreeModel::KeyRole).toString()))
            tree.expand(point);
    }
    tree.doItemsLayout();  // the scroll bars don't reach that far before
    tree.verticalScrollBar()->setValue(mFromTop);
    tree.horizontalScrollBar()->setValue(mFromLeft);
}

}  // namespace fenrik
