#include "platform/JetFunctions.h"

#include "platform/Error.h"

#include <QDateTime>
#include <QLocale>

#include <array>

namespace fenrik {

namespace {

constexpr std::array<JetFunction, 20> kFunctions{{
    {"abs", 1, "abs(%1)", false},
    {"avg", 1, "avg(%1)", false},
    {"count", 1, "count(%1)", false},
    {"max", 1, "max(%1)", false},
    {"min", 1, "min(%1)", false},
    {"sum", 1, "sum(%1)", false},
    {"iif", 3, "CASE WHEN %1 THEN %2 ELSE %3 END", false},
    {"isnull", 1, "%1 IS NULL", true},
    {"nz", 2, "coalesce(%1, %2)", false},
    {"lcase", 1, "lower(%1)", false},
    {"ucase", 1, "upper(%1)", false},
    {"lcase$", 1, "lower(%1)", false},
    {"ucase$", 1, "upper(%1)", false},
    {"left", 2, "substr(%1, 1, %2)", false},
    {"mid", 2, "substr(%1, %2)", false},
    {"mid", 3, "substr(%1, %2, %3)", false},
    {"len", 1, "length(%1)", false},
    {"trim", 1, "trim(%1, ' ')", false},
    {"ltrim", 1, "ltrim(%1, ' ')", false},
    {"rtrim", 1, "rtrim(%1, ' ')", false},
}};

constexpr std::array<const char*, 6> kDateForms{"M/d/yyyy",   "M/d/yyyy H:mm:ss",    "M/d/yyyy h:mm:ss AP",
                                                "yyyy-MM-dd", "yyyy-MM-dd HH:mm:ss", "yyyy-M-d"};

}  // namespace

const JetFunction* FindJetFunction(const QString& name, int arguments)
{
    for (const JetFunction& function : kFunctions) {
        if (function.arguments == arguments && name.compare(QLatin1String(function.name), Qt::CaseInsensitive) == 0)
            return &function;
    }
    return nullptr;
}

QString CallJetFunction(const JetFunction& function, const QStringList& arguments)
{
    // Each in one go: an argument may itself hold what looks like the place of another.
    QString sql = QString::fromLatin1(function.sql);
    if (function.arguments == 1)
        sql = sql.arg(arguments[0]);
    else if (function.arguments == 2)
        sql = sql.arg(arguments[0], arguments[1]);
    else
        sql = sql.arg(arguments[0], arguments[1], arguments[2]);
    return '(' + sql + ')';
}

QString QuotedText(const QString& text)
{
    QString inner = text;
    return '\'' + inner.replace('\'', QLatin1String("''")) + '\'';
}

QString JetDate(const QString& text)
{
    for (const char* form : kDateForms) {
        const QDateTime date = QLocale::c().toDateTime(text.trimmed(), QString::fromLatin1(form));
        if (date.isValid())
            return date.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    throw Error(ErrorNumber::kDatabaseStatement, QStringLiteral("the date \"%1\" can't be read").arg(text));
}

}  // namespace fenrik
