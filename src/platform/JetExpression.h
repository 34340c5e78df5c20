#pragma once

#include <QString>
#include <QStringList>

namespace fenrik {

/// An expression of a stored Jet query, translated for SQLite. Names stand between quotes, every operation between
/// brackets; nothing of the text is taken over as it stands. What has no counterpart (user functions, references to
/// forms, wildcards in brackets, powers, ...) throws Error kDatabaseStatement with a text that names it.
///
/// A comparison is 1 or 0 in SQLite and -1 or 0 in Jet: `sql` is fit for a condition, `value` for a column.
struct JetExpression {
    QString sql;
    QString value;
    QStringList column;  ///< if the whole expression is a column: [name] or [table, name]; name may be "*"
    QStringList tables;  ///< every table that it names

    [[nodiscard]] static JetExpression Parse(const QString& text);
};

}  // namespace fenrik
