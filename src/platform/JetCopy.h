#pragma once

#include <QMap>
#include <QString>

#include <memory>
#include <vector>

struct sqlite3;

namespace fenrik {

/// What of a Jet file is not in its copy, and why.
struct LeftOutObject {
    QString name;
    QString reason;
};

/// A Jet file's tables and stored queries as a private database of SQLite in memory, which can't be written.
struct JetCopy {
    std::shared_ptr<sqlite3> connection;
    QString kind;           ///< "Jet 3", "Jet 4", "ACE 12", ...
    QString accessVersion;  ///< what the file says of itself; the kind if it says nothing
    QString build;          ///< the same for the build of the program that made it; the library's version if nothing
    std::vector<LeftOutObject> leftOut;
};

/// Copies all tables, and makes a view of each stored select query that can be rebuilt. `bytes` is the whole file;
/// `name` is told in errors. Throws Error kDatabaseBroken if the file is damaged, protected or encrypted.
[[nodiscard]] JetCopy CopyJetFile(const QByteArray& bytes, const QString& name);

}  // namespace fenrik
