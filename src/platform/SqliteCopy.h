#pragma once

#include <QString>

struct sqlite3;

namespace fenrik {

/// Writes the whole of `source` (its tables, views and version number) to a database file at `target`, in place of
/// what is there. It is written beside the target, brought to the disk and then renamed, so that at any time the
/// target is either the old file or the complete new one. A failure leaves the target alone, leaves no other file
/// behind, and is thrown as the Error that Database's description tells.
void CopyDatabase(sqlite3* source, const QString& target);

}  // namespace fenrik
