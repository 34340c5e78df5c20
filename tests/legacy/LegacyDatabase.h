#pragma once

#include "support/DatabaseFile.h"

#include <QString>
#include <QStringList>

namespace fenrik {

inline const QString kInfoTable =
    QStringLiteral("CREATE TABLE Info (SystemName TEXT, DateCreated TEXT, CreatedBy TEXT)");
inline const QString kSystemTable =
    QStringLiteral("CREATE TABLE System (message, name, description, \"Ignore\", Divisor)");

/// A system database with `rows` rows, numbered from 0: names "M0", "M1", ...
inline void MakeLegacyDatabase(const QString& path, int rows)
{
    QStringList statements{kInfoTable, QStringLiteral("INSERT INTO Info VALUES ('Bus 12', '14 March 1998', 'Miller')"),
                           kSystemTable};
    for (int i = 0; i < rows; ++i)
        statements.append(QStringLiteral("INSERT INTO System VALUES (%1, 'M%1', 'Body', 0, 1)").arg(i));
    MakeDatabase(path, statements);
}

}  // namespace fenrik
