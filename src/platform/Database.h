#pragma once

#include "platform/JetCopy.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <optional>
#include <vector>

struct sqlite3;

namespace fenrik {

class Recordset;

/// One open database file. A thin class over SQLite with the operation names of the engine that the files come
/// from. That engine's own files, Jet databases, are known by their header, read whole into a private copy in memory,
/// and never written. Rows of a table are in insertion order, nulls stay nulls, table and column names are not case
/// sensitive.
///
/// Every operation throws Error; its number says what is wrong: kDatabaseNotFound, kDatabaseBroken,
/// kPermissionDenied, kTableNotFound, kItemNotFound, kDatabaseReadOnly, kDatabaseStatement, or kPathFileAccess for
/// an engine's failure to read or write (its text names the reason, as a full disk).
class Database {
public:
    /// Opens `path`. The file must exist: nothing is created. The header and the schema are read at once, so that
    /// an empty, foreign or truncated file fails here.
    /// `exclusive` keeps other programs out while open: all of them, or the writers if opened read-only.
    /// A file in use fails with kPermissionDenied, one marked as read-only fails with kDatabaseReadOnly if opened
    /// for writing, and so does a Jet file; a Jet file keeps nobody out.
    [[nodiscard]] static std::unique_ptr<Database> OpenDatabase(const QString& path, bool exclusive, bool readOnly);

    /// Makes an empty database at `path`, which must not exist yet, and opens it for writing.
    [[nodiscard]] static std::unique_ptr<Database> CreateDatabase(const QString& path);

    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Rows of a table, or of a query if `source` begins with "select". The recordset keeps the engine's connection
    /// alive; only a recordset on a table can add rows.
    [[nodiscard]] std::unique_ptr<Recordset> OpenRecordset(const QString& source);

    /// Runs a statement that gives no rows (DROP, CREATE, DELETE).
    void Execute(const QString& statement);

    /// The name of the table as the file spells it. Throws kItemNotFound if there is no table or query of that name.
    [[nodiscard]] QString TableDefs(const QString& name) const;

    /// The tables of the file, as it spells them; stored queries and the engine's own tables are not among them.
    [[nodiscard]] QStringList TableNames() const;

    /// "AccessVersion": the file's own version number; "Build": the engine's version, of a Jet file what the file says
    /// of its maker's. Others throw kItemNotFound.
    [[nodiscard]] QString Properties(const QString& name) const;

    /// Brackets several writes: all of them happen or none. An unfinished transaction is rolled back by Close.
    void BeginTrans();
    void CommitTrans();
    void Rollback();

    /// Writes all tables and queries to an SQLite file at `target`, whole or not at all: whatever fails leaves there
    /// what was there. A target that is marked as read-only, or is itself a Jet file, fails with kDatabaseReadOnly;
    /// one that somebody has open fails with kPermissionDenied; one that is damaged or no database is replaced.
    /// What an unfinished transaction has changed is part of the copy.
    void SaveCopy(const QString& target) const;

    void Close();
    [[nodiscard]] QString Name() const { return mPath; }
    [[nodiscard]] bool ReadOnly() const { return mReadOnly; }

    /// True for a Jet file.
    [[nodiscard]] bool IsGenuine() const { return mGenuine.has_value(); }

    /// "SQLite", "Jet 3", "Jet 4", "ACE 12", ...
    [[nodiscard]] QString Kind() const;

    /// The stored queries of a Jet file that could not be rebuilt, and its tables that could not be copied, each with
    /// the reason.
    [[nodiscard]] const std::vector<LeftOutObject>& LeftOut() const;

private:
    Database(const QString& path, bool readOnly) : mPath(path), mReadOnly(readOnly) {}
    void KeepOthersOut();
    void CheckReadable();
    void ReadGenuine();
    [[nodiscard]] const std::shared_ptr<sqlite3>& Engine() const;

    QString mPath;
    bool mReadOnly;
    std::shared_ptr<sqlite3> mConnection;
    std::optional<JetCopy> mGenuine;
};

/// Puts a table or column name from outside between the engine's quotes. Names never reach SQL any other way.
[[nodiscard]] QString QuotedName(const QString& name);

/// True if a recordset can be opened on `name`.
[[nodiscard]] bool TableExists(Database& database, const QString& name);

/// True if `name` is among the table definitions.
[[nodiscard]] bool TableDefExists(const Database& database, const QString& name);

/// Drops the table if it is there, makes it anew with the columns PropertyName and PropertyValue, and gives a
/// recordset on it.
[[nodiscard]] std::unique_ptr<Recordset> RecreateTable(Database& database, const QString& name);

}  // namespace fenrik
