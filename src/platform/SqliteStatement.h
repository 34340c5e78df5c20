#pragma once

#include <QString>
#include <QVariant>

struct sqlite3;
struct sqlite3_stmt;

namespace fenrik {

/// One prepared statement of the engine: the common ground of Database and Recordset, used by nothing else.
/// Every engine failure is thrown as the Error that Database's description tells.
class SqliteStatement {
public:
    /// `connection` outlives the statement. `sql` holds one statement and no second one behind it.
    SqliteStatement(sqlite3* connection, const QString& sql);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;

    /// Gives the parameter at `position`, from 1, its value; an invalid QVariant is null.
    void Bind(int position, const QVariant& value);

    /// Goes to the next row; false when there is none.
    bool Step();

    /// Makes the statement ready to run again; the parameters keep their values.
    void Reset();

    [[nodiscard]] int ColumnCount() const;
    [[nodiscard]] QString ColumnName(int column) const;

    /// Integers as qlonglong, reals as double, texts as QString, blobs as QByteArray, null as an invalid QVariant.
    [[nodiscard]] QVariant Value(int column) const;

private:
    sqlite3* mConnection;
    sqlite3_stmt* mStatement = nullptr;
};

/// Makes every statement on `connection` end. A view that calls itself, or a damaged tree of pages, can have more rows
/// than can ever be read; a statement on it then fails with kDatabaseBroken.
void LimitStatements(sqlite3* connection);

/// Throws the connection's last failure; `code` is the engine's result code of it.
[[noreturn]] void ThrowEngineError(sqlite3* connection, int code);

}  // namespace fenrik
