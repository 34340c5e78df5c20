#include "model/PropertyRows.h"

#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"

#include <QVariant>

#include <cmath>

namespace fenrik::PropertyRows {

namespace {

const QString kName = QStringLiteral("PropertyName");
const QString kValue = QStringLiteral("PropertyValue");

void Undo(Database& database)
{
    try {
        database.Execute(QStringLiteral("ROLLBACK TO TableOfRows"));
        database.Execute(QStringLiteral("RELEASE TableOfRows"));
    } catch (const Error&) {
        // After some failures, as of a full disk, the engine has undone the whole transaction of its own accord.
    }
}

}  // namespace

void WriteTable(Database& database, const QString& name, const std::function<void(Recordset& rows)>& write)
{
    database.Execute(QStringLiteral("SAVEPOINT TableOfRows"));
    try {
        write(*RecreateTable(database, name));
        database.Execute(QStringLiteral("RELEASE TableOfRows"));
    } catch (const Error&) {
        Undo(database);
        throw;
    }
}

bool HasTable(const Database& database, const QString& name)
{
    try {
        return !database.TableDefs(name).isEmpty();
    } catch (const Error& error) {
        if (error.Number() == ErrorNumber::kItemNotFound)
            return false;
        throw;
    }
}

void Add(Recordset& rows, const QString& name, const std::optional<QString>& value)
{
    rows.AddNew();
    rows.SetField(kName, name);
    if (value)
        rows.SetField(kValue, *value);
    rows.Update();
}

std::optional<QString> Find(Recordset& rows, const QString& name)
{
    rows.FindFirst(QStringLiteral("[PropertyName] = '%1'").arg(name));
    if (rows.NoMatch())
        return std::nullopt;
    const QVariant value = rows.Fields(kValue);
    return value.isNull() ? std::nullopt : std::optional(value.toString());
}

void ForEachBehind(Recordset& rows, const QString& marker,
                   const std::function<void(const QString& name, const QString& value)>& take)
{
    rows.FindFirst(QStringLiteral("[PropertyName] = '%1'").arg(marker));
    if (rows.NoMatch())
        return;
    for (rows.MoveNext(); !rows.EndOfFile(); rows.MoveNext()) {
        const QString name = rows.Fields(kName).toString();
        if (name.startsWith(QLatin1Char('@')))
            return;
        if (const QVariant value = rows.Fields(kValue); !value.isNull())
            take(name, value.toString());
    }
}

int Number(const QString& text, int least, int most)
{
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    if (!isNumber || value != std::trunc(value))
        throw Error(ErrorNumber::kTypeMismatch, QStringLiteral("\"%1\" is not a whole number").arg(text.left(40)));
    if (value < least || value > most)
        throw Error(ErrorNumber::kOverflow,
                    QStringLiteral("%1 is outside %2 to %3").arg(text.left(40)).arg(least).arg(most));
    return int(value);
}

}  // namespace fenrik::PropertyRows
