#pragma once

#include "platform/Database.h"
#include "platform/Error.h"

#include <QFile>
#include <QStringList>

namespace fenrik {

/// Makes a database at `path` (anew, if there is one) by running `statements` in order.
inline void MakeDatabase(const QString& path, const QStringList& statements)
{
    QFile::remove(path);
    const auto database = Database::CreateDatabase(path);
    database->BeginTrans();
    for (const QString& statement : statements)
        database->Execute(statement);
    database->CommitTrans();
}

/// Makes a file of just these bytes.
inline void MakeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw Error(ErrorNumber::kPathFileAccess, path);
}

}  // namespace fenrik
