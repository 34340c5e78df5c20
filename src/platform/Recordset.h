#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <vector>

struct sqlite3;

namespace fenrik {

/// A snapshot of rows, read in one pass when it is opened, with a current row; made by Database::OpenRecordset.
/// On a table it can also add rows, in order.
class Recordset {
public:
    Recordset(std::shared_ptr<sqlite3> connection, const QString& sql, const QString& table, bool readOnly);

    void MoveFirst();
    void MoveNext();
    [[nodiscard]] bool EndOfFile() const { return mCurrent >= mRows.size(); }  ///< `EOF`, which is a macro in C
    [[nodiscard]] int RecordCount() const { return int(mRows.size()); }

    /// Goes to the first row that meets `criterion`, of the form "Column = 'text'" (quotes inside the text are
    /// doubled; case is ignored, as the engine of the files does). Not found: NoMatch is true, the row stays.
    void FindFirst(const QString& criterion);
    [[nodiscard]] bool NoMatch() const { return mNoMatch; }

    /// The value in the current row, an invalid QVariant for null. With two columns of one name the first is meant.
    /// Throws kItemNotFound for an unknown column, kNoCurrentRecord at the end.
    [[nodiscard]] QVariant Fields(const QString& name) const;
    [[nodiscard]] QVariant Fields(int position) const;
    [[nodiscard]] const QStringList& FieldNames() const { return mNames; }

    /// Starts a new row, whose fields SetField fills and which Update appends to the table.
    void AddNew();
    void SetField(const QString& name, const QVariant& value);
    void Update();

    void Close();

private:
    [[nodiscard]] int PositionOf(const QString& name) const;

    std::shared_ptr<sqlite3> mConnection;
    QString mTable;
    bool mReadOnly;
    QStringList mNames;
    QHash<QString, int> mPositions;
    std::vector<std::vector<QVariant>> mRows;
    std::size_t mCurrent = 0;
    bool mNoMatch = false;
    bool mAdding = false;
    std::vector<QVariant> mNewRow;
};

}  // namespace fenrik
