#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace fenrik {

class Database;
class Recordset;

/// The tables that a saved system adds to its database: pairs of PropertyName and PropertyValue, both texts, in an
/// order that matters. What belongs to one point of a node stands between two marker rows, whose names begin with "@"
/// and whose values are null. All functions throw Error.
namespace PropertyRows {

/// True if `database` has a table of that name.
[[nodiscard]] bool HasTable(const Database& database, const QString& name);

/// Makes the table anew and lets `write` fill it. Afterwards the database holds the new table or, after an Error, the
/// old one; what a transaction did before that stays.
void WriteTable(Database& database, const QString& name, const std::function<void(Recordset& rows)>& write);

/// Appends a row; a marker if no value is given.
void Add(Recordset& rows, const QString& name, const std::optional<QString>& value = {});

/// The value of the first row of that name; nothing if there is none or it is null.
[[nodiscard]] std::optional<QString> Find(Recordset& rows, const QString& name);

/// Calls `take` with name and value of each row behind the row `marker`, up to the next marker or the end. Nulls are
/// passed over; without that row there are none.
void ForEachBehind(Recordset& rows, const QString& marker,
                   const std::function<void(const QString& name, const QString& value)>& take);

/// A whole number from `least` to `most`. Throws Error 13 for another text and Error 6 for another number.
[[nodiscard]] int Number(const QString& text, int least, int most);

}  // namespace PropertyRows

}  // namespace fenrik
