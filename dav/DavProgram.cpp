#include "dav/DavProgram.h"

#include "dav/Dump.h"
#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"

#include <QFileInfo>
#include <QIODevice>
#include <QStringList>

namespace fenrik {

namespace {

void WriteLine(QIODevice& device, const QString& text)
{
    device.write(text.toUtf8() + '\n');
}

QStringList QueryNames(Database& database)
{
    const auto rows = database.OpenRecordset(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'view'"));
    QStringList names;
    for (; !rows->EndOfFile(); rows->MoveNext())
        names.append(rows->Fields(0).toString());
    return names;
}

qlonglong RowCount(Database& database, const QString& table)
{
    // Not count(*), which walks the pages in one step that nothing can break off, though a damaged file may have no
    // end.
    return database.OpenRecordset(QStringLiteral("SELECT count(1) FROM %1").arg(QuotedName(table)))
        ->Fields(0)
        .toLongLong();
}

}  // namespace

int DavProgram::Run(const CommandLine& line)
{
    try {
        switch (line.action) {
        case CommandLine::Action::Misused:
            return Fail(kMisused, line.text + QStringLiteral("\nTry fenrik-dav --help."));
        case CommandLine::Action::ShowText:
            mOutput.write(line.text.toUtf8());
            return kGood;
        case CommandLine::Action::Convert:
            return Convert(line);
        default:
            return Read(line);
        }
    } catch (const Error& error) {
        return Fail(kUnreadable, error.Description());
    }
}

int DavProgram::Read(const CommandLine& line)
{
    const auto database = Database::OpenDatabase(line.file, false, true);
    if (line.action == CommandLine::Action::Info)
        ShowInfo(*database);
    else if (line.action == CommandLine::Action::Tables)
        ShowTables(*database);
    else
        DumpTable(*database, database->TableDefs(line.table), mOutput);
    return kGood;
}

int DavProgram::Convert(const CommandLine& line)
{
    const auto database = Database::OpenDatabase(line.file, false, true);
    const QFileInfo target(line.target);
    if (target.exists() && target.canonicalFilePath() == QFileInfo(line.file).canonicalFilePath())
        return Fail(kUnwritable, QStringLiteral("%1 can't be converted onto itself.").arg(line.target));
    if (target.exists() && !line.force)
        return Fail(kUnwritable, QStringLiteral("%1 exists already; --force replaces it.").arg(line.target));
    try {
        database->SaveCopy(line.target);
    } catch (const Error& error) {
        return Fail(kUnwritable, error.Description());
    }
    ShowLeftOut(*database, mErrors);
    return kGood;
}

void DavProgram::ShowInfo(Database& database)
{
    WriteLine(mOutput, QStringLiteral("File: %1").arg(database.Name()));
    WriteLine(mOutput, QStringLiteral("Kind: %1%2").arg(database.Kind(), database.IsGenuine() ? " (genuine)" : ""));
    WriteLine(mOutput, QStringLiteral("Version: %1").arg(database.Properties(QStringLiteral("AccessVersion"))));
    WriteLine(mOutput, QStringLiteral("Build: %1").arg(database.Properties(QStringLiteral("Build"))));
    WriteLine(mOutput, QStringLiteral("\nTables:"));
    for (const QString& table : database.TableNames())
        WriteLine(mOutput, QStringLiteral("  %1: %2 rows").arg(table).arg(RowCount(database, table)));
    WriteLine(mOutput, QStringLiteral("\nQueries:"));
    for (const QString& query : QueryNames(database))
        WriteLine(mOutput, QStringLiteral("  %1").arg(query));
    if (!database.LeftOut().empty())
        WriteLine(mOutput, QString());
    ShowLeftOut(database, mOutput);
    ShowProperties(database);
}

void DavProgram::ShowTables(const Database& database)
{
    for (const QString& table : database.TableNames())
        WriteLine(mOutput, table);
}

void DavProgram::ShowLeftOut(const Database& database, QIODevice& device)
{
    if (!database.LeftOut().empty())
        WriteLine(device, QStringLiteral("Left out:"));
    for (const LeftOutObject& object : database.LeftOut())
        WriteLine(device, QStringLiteral("  %1: %2").arg(object.name, object.reason));
}

void DavProgram::ShowProperties(Database& database)
{
    const QString table = QStringLiteral("SystemInfo");
    if (!TableDefExists(database, table))
        return;
    WriteLine(mOutput, QStringLiteral("\nSystem:"));
    const auto rows = database.OpenRecordset(table);
    for (; !rows->EndOfFile() && rows->FieldNames().size() >= 2; rows->MoveNext())
        WriteLine(mOutput, QStringLiteral("  %1: %2").arg(rows->Fields(0).toString(), rows->Fields(1).toString()));
}

int DavProgram::Fail(int code, const QString& what)
{
    WriteLine(mErrors, QStringLiteral("fenrik-dav: %1").arg(what));
    return code;
}

}  // namespace fenrik
