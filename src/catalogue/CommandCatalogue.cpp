#include "catalogue/CommandCatalogue.h"

#include "catalogue/FieldValues.h"
#include "platform/Database.h"
#include "platform/Recordset.h"
#include "shared/CommandTable.h"
#include "shared/Settings.h"

#include <QDir>

namespace fenrik {

namespace {

constexpr int kAnalogCategoryId = 9;
constexpr int kHiddenCategoryId = 99;

// Columns of both queries, by position.
enum Column { kCommand, kFriendlyName, kCategoryName, kCategoryId };

constexpr const char* kMarketJoin = "MrkCatCmdJoin";
constexpr const char* kTitle = "Fenrik Diagnostics Software";

}  // namespace

CommandCatalogue::CommandCatalogue(CommandTable& table, const Settings& settings, Boxes& boxes, CatalogueHost& host,
                                   const QString& programFolder)
    : mTable(table), mSettings(settings), mBoxes(boxes), mHost(host), mProgramFolder(programFolder)
{
}

void CommandCatalogue::LoadCommands(const QString& database)
{
    mTable.Clear();
    mErrorShown = false;
    if (mSettings.SystemName.isEmpty())
        mDefaultDatabase = true;

    CatalogueStatus status = CatalogueStatus::Good;
    const auto opened = OpenCommandDatabase(database, QDir(mProgramFolder).filePath("ncCommand.dav"), status);
    if (status != CatalogueStatus::Good)
        ShowStatus(status);

    const bool goesOn = status == CatalogueStatus::Good || status == CatalogueStatus::CustomMissing ||
                        status == CatalogueStatus::CustomCorrupt;
    if (!goesOn) {
        mHost.EndProgram();
        return;
    }
    ReadCatalogue(*opened);
    mTable.NamesChanged();
}

// A failed step is told, and the next one is tried: half a catalogue is of more use than none.
void CommandCatalogue::ReadCatalogue(Database& database)
{
    const bool hasMarkets =
        TableDefExists(database, QStringLiteral("Market")) && !(mDefaultDatabase && TellLostJoin(database));
    mAnalogCategory.clear();
    mHiddenCategory.clear();
    Step([&] { mAnalogCategory = CategoryName(database, kAnalogCategoryId); });
    Step([&] { mHiddenCategory = CategoryName(database, kHiddenCategoryId); });

    std::unique_ptr<Recordset> rows;
    Step([&] { rows = database.OpenRecordset(CommandsQuery(hasMarkets)); });
    for (; rows && !rows->EndOfFile(); rows->MoveNext())
        Step([&] { ReadRow(*rows); });
}

// In a genuine file the market join is a stored query, which may be more than the reader of such files can rebuild. The
// commands themselves are there all the same. True if it was told.
bool CommandCatalogue::TellLostJoin(const Database& database)
{
    for (const LeftOutObject& object : database.LeftOut()) {
        if (object.name.compare(QLatin1String(kMarketJoin), Qt::CaseInsensitive) != 0)
            continue;
        ShowBox({QStringLiteral("The query <%1> of the file <%2.dav> could not be read:  %3.")
                     .arg(object.name, FileName(), object.reason),
                 QStringLiteral("As a result, the commands of all markets were loaded instead of those of the "
                                "selected market.")},
                QMessageBox::Warning);
        return true;
    }
    return false;
}

void CommandCatalogue::ReadRow(const Recordset& row)
{
    const int command = NumberField<int>(row.Fields(kCommand));
    CommandEntry& entry = mTable[command];
    entry.CategoryRank = NumberField<std::int16_t>(row.Fields(kCategoryId));
    entry.Category = TextField(row.Fields(kCategoryName));
    entry.Name = TextField(row.Fields(kFriendlyName));
    mTable.SetAnalogCommand(command, entry.Category == mAnalogCategory);
}

QString CommandCatalogue::CommandsQuery(bool hasMarkets) const
{
    if (!mDefaultDatabase || !hasMarkets)
        return QString::fromLatin1(kAllCommandsQuery);
    // Market 0 is part of every subset.
    return QStringLiteral("Select MrkCatCmdJoin.CommandID as command, MrkCatCmdJoin.CommandName as FriendlyName, "
                          "MrkCatCmdJoin.CategoryName as CatName, MrkCatCmdJoin.CategoryID as CatID "
                          "FROM MrkCatCmdJoin WHERE MarketID in (0,%1) ORDER BY MrkCatCmdJoin.CommandID")
        .arg(mSettings.SelectedMarket);
}

QString CommandCatalogue::CategoryName(Database& database, int categoryId)
{
    const auto rows = database.OpenRecordset(
        QStringLiteral("SELECT Categorys.Name As CategoryName FROM Categorys WHERE Categorys.CategoryID = %1")
            .arg(categoryId));
    return TextField(rows->Fields(QStringLiteral("CategoryName")));
}

void CommandCatalogue::Step(const std::function<void()>& step)
{
    try {
        step();
    } catch (const Error&) {
        ShowUnexpectedError();
    }
}

void CommandCatalogue::ShowStatus(CatalogueStatus status)
{
    const bool goesOn = status == CatalogueStatus::CustomMissing || status == CatalogueStatus::CustomCorrupt;
    ShowBox(WordsFor(status), goesOn ? QMessageBox::Warning : QMessageBox::Critical);
}

QStringList CommandCatalogue::WordsFor(CatalogueStatus status) const
{
    const QString name = mSettings.SystemName;
    const QString folder = mSettings.SystemPath;
    // Said of a corrupt database, too, which stays open all the same and gives what it still holds.
    const QString loadedInstead =
        QStringLiteral("The default system database was loaded instead.  To select another custom "
                       "system database, click the ''Select System'' icon on the main toolbar.");
    const QString shutDown = QStringLiteral("Because this file is required, Diagnostics will shut down.");

    switch (status) {
    case CatalogueStatus::Good:
        break;
    case CatalogueStatus::DefaultMissing:
        return {QStringLiteral("The default system database file <ncCommand.dav> was not found in the path <%1>.")
                    .arg(mProgramFolder),
                shutDown};
    case CatalogueStatus::BothMissing:
        return {QStringLiteral("The custom system database file <%1.dav> was not found in the path <%2>.")
                    .arg(name, folder),
                QStringLiteral("The default system database <ncCommand.dav> was also not found."),
                QStringLiteral("Because these files are required, Diagnostics will shut down.")};
    case CatalogueStatus::CustomMissing:
        return {QStringLiteral("The custom system database <%1.dav> was not found in the path <%2>.").arg(name, folder),
                loadedInstead};
    case CatalogueStatus::DefaultCorrupt:
        return {QStringLiteral("The system database file <ncCommand.dav> is corrupt."), shutDown};
    case CatalogueStatus::CustomCorrupt:
        return {QStringLiteral("The custom system database <%1.dav> in the folder <%2> is corrupt.").arg(name, folder),
                loadedInstead};
    }
    return {};
}

QString CommandCatalogue::FileName() const
{
    return mSettings.SystemName.isEmpty() ? QStringLiteral("ncCommand") : mSettings.SystemName;
}

// Once for each load: a file with a hundred bad rows is told of in one box, not in a hundred.
void CommandCatalogue::ShowUnexpectedError()
{
    if (mErrorShown)
        return;
    mErrorShown = true;
    ShowBox({QStringLiteral("There was an unexpected error reading the file <%1.dav>.  The file may be corrupt.")
                 .arg(FileName()),
             QStringLiteral("As a result, you may not be able to use all the commands defined for this system.  "
                            "It is recommended that you select another custom "
                            "system database by clicking the ''Select System'' icon on the main toolbar.")},
            QMessageBox::Warning);
}

void CommandCatalogue::ShowBox(const QStringList& lines, QMessageBox::Icon icon)
{
    mBoxes.MsgBox(lines.join('\n'), icon, QMessageBox::Ok, QString::fromLatin1(kTitle));
}

}  // namespace fenrik
