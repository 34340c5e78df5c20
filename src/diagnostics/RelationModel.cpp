#include "diagnostics/RelationModel.h"

namespace fenrik {

void RelationModel::SetRows(const QList<TermRow>& rows)
{
    if (rows == mRows)
        return;
    beginResetModel();
    mRows = rows;
    endResetModel();
}

int RelationModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(mRows.size());
}

int RelationModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant RelationModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const TermRow& row = mRows.at(index.row());
    if (role == Qt::DisplayRole)
        return index.column() == OpColumn ? row.op : row.command;
    if (role == TagRole)
        return row.number;
    return {};
}

QVariant RelationModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == OpColumn ? tr("Op") : tr("Command");
}

}  // namespace fenrik
