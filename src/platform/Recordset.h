#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <vector>

struct sqlite3;

namespace fenrik {

class SqliteStatement;

/// A snapshot of rows, read in one pass when it is opened, with a current row; made by Database::OpenRecordset. More
/// than kMostRows, or more than kMostBytes in them, fail with kDatabaseBroken.
/// On a table it can also add rows, in order; a recordset opened after that shows them, this one does not.
class Recordset {
public:
    static constexpr std::size_t kMostRows = 500'000;
    static constexpr qsizetype kMostBytes = 256 << 20;

    Recordset(std::shared_ptr<sqlite3> connection, const QString& sql, const QString& table, bool readOnly);

    void MoveFirst();
    void MoveNext();                                                           ///< at the end: nothing
    [[nodiscard]] bool EndOfFile() const { return mCurrent >= mRows.size(); }  ///< `EOF`, which is a macro in C
    [[nodiscard]] int RecordCount() const { return int(mRows.size()); }

    /// Goes to the first row that meets `criterion`, of the form "[Column] = 'text'" (quotes inside the text are
    /// doubled; case is ignored, as the engine of the files does). Not found: NoMatch is true, the row stays.
    /// Another form throws kDatabaseStatement.
    void FindFirst(const QString& criterion);
    [[nodiscard]] bool NoMatch() const { return mNoMatch; }

    /// The value in the current row, an invalid QVariant for null. With two columns of one name the first is meant.
    /// Throws kItemNotFound for an unknown column, kNoCurrentRecord at the end.
    [[nodiscard]] QVariant Fields(const QString& name) const;
    [[nodiscard]] QVariant Fields(int position) const;
    [[nodiscard]] const QStringList& FieldNames() const { return mNames; }

    /// Starts a new row of nulls, whose fields SetField fills and which Update appends to the table. Throws
    /// kDatabaseReadOnly on a query or in a database opened for reading. A row that the engine refuses stays as it
    /// is and can be tried again.
    void AddNew();
    void SetField(const QString& name, const QVariant& value);
    void Update();

    void Close();

private:
    using Row = std::vector<QVariant>;

    void ReadNames(const SqliteStatement& statement);
    void ReadRows(SqliteStatement& statement);
    [[nodiscard]] Row ReadRow(const SqliteStatement& statement) const;
    [[nodiscard]] int PositionOf(const QString& name) const;
    void CheckAdding() const;

    std::shared_ptr<sqlite3> mConnection;
    QString mTable;
    bool mReadOnly;
    QStringList mNames;
    QHash<QString, int> mPositions;
    std::vector<Row> mRows;
    std::size_t mCurrent = 0;
    bool mNoMatch = false;
    Row mNewRow;  // empty while no row is being added
};

}  // namespace fenrik
