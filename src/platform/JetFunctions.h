#pragma once

#include <QString>
#include <QStringList>

namespace fenrik {

/// A function of Jet's expressions that SQLite can do too: "%1" to "%3" in `sql` are its arguments.
struct JetFunction {
    const char* name;
    int arguments;
    const char* sql;
    bool isLogical;
};

/// The function of that name (in any case) with that many arguments, or null.
[[nodiscard]] const JetFunction* FindJetFunction(const QString& name, int arguments);

[[nodiscard]] QString CallJetFunction(const JetFunction& function, const QStringList& arguments);

/// `text` as a text of SQL.
[[nodiscard]] QString QuotedText(const QString& text);

/// A date between number signs ("12/31/2001", "2001-12-31", with or without a time) in the form that dates have in the
/// copy. Throws Error kDatabaseStatement for any other form.
[[nodiscard]] QString JetDate(const QString& text);

}  // namespace fenrik
