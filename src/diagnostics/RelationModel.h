#pragma once

#include "diagnostics/RelationshipTerms.h"

#include <QAbstractTableModel>

namespace fenrik {

/// The terms of the relationship level in focus, for the list of them.
class RelationModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Columns { OpColumn, CommandColumn, ColumnCount };
    enum Roles { TagRole = Qt::UserRole };  ///< number of the command, 0 for none

    using QAbstractTableModel::QAbstractTableModel;

    void SetRows(const QList<TermRow>& rows);
    [[nodiscard]] const QList<TermRow>& Rows() const { return mRows; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QList<TermRow> mRows;
};

}  // namespace fenrik
