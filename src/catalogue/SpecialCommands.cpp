#include "catalogue/SpecialCommands.h"

#include "catalogue/CatalogueHost.h"
#include "catalogue/FieldValues.h"
#include "platform/Database.h"
#include "platform/Recordset.h"
#include "shared/LoadFailure.h"
#include "shared/TextFormat.h"

namespace fenrik {

namespace {

constexpr double kVersionWithMount = 1.1;

// A row of [Defaults], or what takes its place if a command has none.
struct Defaults {
    QVariant state = 0;
    QVariant extended = 0;
    QVariant extra = QString();
    QVariant icon = QStringLiteral("Info");
};

QVariant Or(const QVariant& value, const QVariant& defaultValue)
{
    return value.isValid() ? value : defaultValue;
}

Defaults DefaultsOf(const Recordset& row, const Defaults& substitute)
{
    return {Or(row.Fields(QStringLiteral("State")), substitute.state),
            Or(row.Fields(QStringLiteral("extended")), substitute.extended),
            Or(row.Fields(QStringLiteral("Extra")), substitute.extra),
            Or(row.Fields(QStringLiteral("Icon")), substitute.icon)};
}

std::map<int, Defaults> ReadDefaults(Database& database)
{
    std::map<int, Defaults> defaults;
    const auto rows = database.OpenRecordset(QStringLiteral("SELECT * FROM [Defaults] ORDER BY [Command]"));
    for (; !rows->EndOfFile(); rows->MoveNext())
        defaults[NumberField<int>(rows->Fields(QStringLiteral("Command")))] = DefaultsOf(*rows, {});
    return defaults;
}

double ReadVersion(Database& database)
{
    const auto rows = database.OpenRecordset(QStringLiteral("Version"));
    return Val(TextField(rows->Fields(QStringLiteral("Version"))));
}

bool ReadRequiresMount(const Recordset& row)
{
    try {
        return row.Fields(QStringLiteral("Requires Mount")).toBool();
    } catch (const Error&) {
        return false;  // some files claim the version but lack the column
    }
}

}  // namespace

void SpecialCommands::LoadSpecialCommands(const QString& path, Boxes& boxes)
{
    mByNumber.clear();
    try {
        ReadAll(path);
    } catch (const Error&) {
        TellLoadFailure(boxes, QStringLiteral("SpecialCommands.dav"));
        mHost.EndProgram();
    }
}

CSpecialCommand* SpecialCommands::Find(int number) const
{
    const auto found = mByNumber.find(number);
    return found == mByNumber.end() ? nullptr : found->second.get();
}

CSpecialCommand& SpecialCommands::Known(int number) const
{
    if (CSpecialCommand* command = Find(number))
        return *command;
    throw Error(ErrorNumber::kItemNotFound, QStringLiteral("Command %1 has no row in [General].").arg(number));
}

void SpecialCommands::ReadAll(const QString& path)
{
    const auto database = Database::OpenDatabase(path, false, true);
    ReadGeneral(*database, ReadVersion(*database));
    ReadDetails(*database);
}

void SpecialCommands::ReadGeneral(Database& database, double version)
{
    const auto rows = database.OpenRecordset(QStringLiteral("SELECT * FROM [General] ORDER BY [Command]"));
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        auto command = std::make_unique<CSpecialCommand>(mCommands, mHost);
        command->MyCommand = NumberField<std::int16_t>(rows->Fields(QStringLiteral("Command")));
        command->CodeMask = NumberField<std::int32_t>(rows->Fields(QStringLiteral("CodeMask")));
        command->CodeShift = NumberField<std::uint8_t>(rows->Fields(QStringLiteral("CodeShift")));
        command->NodeMask = NumberField<std::int32_t>(Or(rows->Fields(QStringLiteral("NodeMask")), 0));
        command->NodeShift = NumberField<std::uint8_t>(Or(rows->Fields(QStringLiteral("NodeShift")), 0));
        // The column's type drops a blank at the end, so it is put back here.
        command->TextSeperator = rows->Fields(QStringLiteral("Text Seperator")).toString() + ' ';
        if (version >= kVersionWithMount)
            command->RequiresMount = ReadRequiresMount(*rows);

        const int number = command->MyCommand;
        if (!mByNumber.emplace(number, std::move(command)).second)
            throw Error(ErrorNumber::kDuplicateKey, QStringLiteral("Command %1 stands twice.").arg(number));
    }
}

void SpecialCommands::ReadDetails(Database& database)
{
    const std::map<int, Defaults> defaults = ReadDefaults(database);
    for (const auto& [number, unused] : defaults)
        (void)Known(number);

    const auto rows = database.OpenRecordset(QStringLiteral("SELECT * FROM [Details] ORDER BY [Command],[Code]"));
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const int number = NumberField<int>(rows->Fields(QStringLiteral("Command")));
        const auto found = defaults.find(number);
        const Defaults values = DefaultsOf(*rows, found == defaults.end() ? Defaults() : found->second);
        Known(number).AddItem(TextField(rows->Fields(QStringLiteral("Name"))),
                              NumberField<std::int32_t>(rows->Fields(QStringLiteral("Code"))), values.state.toBool(),
                              values.extended.toBool(), values.extra.toString(), values.icon.toString());
    }
}

}  // namespace fenrik
