#include "legacy/Protocol98.h"

#include "platform/Boxes.h"
#include "platform/CFileSystem.h"
#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"
#include "platform/SubscriptOutOfRange.h"
#include "shared/ErrorReporter.h"
#include "shared/Settings.h"
#include "shared/TextFormat.h"

#include <QSet>

#include <cmath>
#include <limits>

namespace fenrik {

namespace {

constexpr int kTables = 2;
constexpr int kColumns = 5;
constexpr int kHighestMessage = 255;
constexpr int kFullTable = 255;  // messages run to 255, so one may be missing and nobody is told

int CountOf(const QStringList& names, const QSet<QString>& wanted)
{
    return int(std::count_if(names.begin(), names.end(),
                             [&wanted](const QString& name) { return wanted.contains(name.toUpper()); }));
}

QString OddTable(const char* what)
{
    return QLatin1String(what) + QStringLiteral("\nThe FenrikII Diagnostic tool will connect to the Fenrik system "
                                                "but the resulting data may be invalid.");
}

/// The numeric value of a field, rounded; a text counts by the digits that it begins with, no value as 0.
std::int32_t Number(const QVariant& field)
{
    const double value = std::nearbyint(Val(field.toString()));
    if (std::abs(value) > std::numeric_limits<std::int32_t>::max())
        throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow"));
    return std::int32_t(value);
}

bool Truth(const QVariant& field)
{
    const QString text = field.toString();
    return text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || Val(text) != 0;
}

MessageEntry98 Entry(const Recordset& rows)
{
    const QString name = rows.Fields(QStringLiteral("name")).toString();
    const std::int32_t divisor = Number(rows.Fields(QStringLiteral("Divisor")));
    return {name.isEmpty() ? QStringLiteral("No DB Entry") : name,
            rows.Fields(QStringLiteral("description")).toString(), Truth(rows.Fields(QStringLiteral("Ignore"))),
            divisor == 0 ? 1 : divisor};
}

}  // namespace

bool Protocol98::IsChosen() const
{
    return !mSettings.DatabasePath.isEmpty() && !mSettings.DatabaseName.isEmpty();
}

QString Protocol98::DatabaseFile() const
{
    return mSettings.DatabasePath + QLatin1Char('/') + mSettings.DatabaseName;
}

bool Protocol98::ConfirmDB()
{
    bool there = false;
    Guarded(mErrors, "Protcol98:ConfirmDB", [this, &there] {
        there = IsChosen() && CFileSystem::DirectoryExists(mSettings.DatabasePath) &&
                CFileSystem::FileExists(DatabaseFile());
    });
    return there;
}

QString Protocol98::Complaint(const QString& path)
{
    try {
        const auto database = Database::OpenDatabase(path, false, true);
        const int tables = CountOf(database->TableNames(), {QStringLiteral("SYSTEM"), QStringLiteral("INFO")});
        const int columns =
            tables == kTables
                ? CountOf(database->OpenRecordset(QStringLiteral("SELECT * FROM System WHERE 1 = 0"))->FieldNames(),
                          {QStringLiteral("NAME"), QStringLiteral("MESSAGE"), QStringLiteral("DESCRIPTION"),
                           QStringLiteral("IGNORE"), QStringLiteral("DIVISOR")})
                : 0;
        return columns == kColumns ? QString()
                                   : QStringLiteral("This Database does not contain 98 Protocol Information");
    } catch (const Error& error) {
        return QStringLiteral("An error occured loading the database : %1\nPlease select another Database.")
            .arg(error.Description());
    }
}

bool Protocol98::LoadMessageTable()
{
    mMessages.fill({});
    try {
        const auto database = Database::OpenDatabase(DatabaseFile(), false, true);
        const auto rows =
            database->OpenRecordset(QStringLiteral(" Select message,name,description,Ignore,Divisor FROM System "));
        const QString warning = ReadRows(*rows);
        if (!warning.isEmpty())
            mBoxes.MsgBox(warning, QMessageBox::Warning);
        return true;
    } catch (const Error& error) {
        mBoxes.MsgBox(QStringLiteral("There was an error loading %1\nError number : %2\nDescription : %3\n"
                                     "The FenrikII Diagnostic tool will not be able to connect to the  Fenrik system ")
                          .arg(mSettings.DatabaseName)
                          .arg(error.Number())
                          .arg(error.Description()),
                      QMessageBox::Warning);
        return false;
    }
}

/// Gives the warning; empty if all is well. The rows before one that is too high stay in force.
QString Protocol98::ReadRows(Recordset& rows)
{
    if (rows.EndOfFile())
        return QStringLiteral("There are no entries in the system table.");
    int count = 0;
    for (; !rows.EndOfFile(); rows.MoveNext(), ++count) {
        const std::int32_t message = Number(rows.Fields(QStringLiteral("message")));
        if (message > kHighestMessage)
            return OddTable("There are greater than 255 entries in the System Table!");
        if (message < 0)
            throw SubscriptOutOfRange();
        mMessages[std::size_t(message)] = Entry(rows);
    }
    return count < kFullTable ? OddTable("There are less than 255 entries in the System Table!") : QString();
}

}  // namespace fenrik
