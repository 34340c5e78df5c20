#pragma once

#include <QString>

class QIODevice;

namespace fenrik {

class Database;

/// Writes the rows of a table or query as comma-separated text in UTF-8, under a line with the names of the columns.
/// Throws Error kTableNotFound if there is no such table.
void DumpTable(Database& database, const QString& table, QIODevice& output);

}  // namespace fenrik
