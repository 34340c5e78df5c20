#include "model/SystemDatabase.h"

#include "model/CSystem.h"
#include "model/PropertyRows.h"
#include "platform/Boxes.h"
#include "platform/CFileSystem.h"
#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>

#include <algorithm>

namespace fenrik {

namespace {

const QString kSystemInfo = QStringLiteral("SystemInfo");
const QString kNodeCount = QStringLiteral("Node Count");
const QString kVersion = QStringLiteral("Version");
const QChar kMark = QLatin1Char('+');

// Short, since a system's name may be nearly as long as a file's name can be.
QString WorkFileBeside(const QString& path)
{
    const QString unique = QUuid::createUuid().toString(QUuid::Id128).left(8);
    return QFileInfo(path).path() + QStringLiteral("/saving-") + unique;
}

/// Removes what killed saves have left beside `work`, which was written right now. A save that still runs, perhaps at
/// another computer, has written within the last day.
void RemoveLeftovers(const QString& work)
{
    static const QRegularExpression kName(QStringLiteral("^saving-[0-9a-f]{8}(-journal)?$"));
    const QFileInfo present(work);
    for (const QFileInfo& file : present.dir().entryInfoList({QStringLiteral("saving-*")}, QDir::Files)) {
        if (kName.match(file.fileName()).hasMatch() && file.lastModified() < present.lastModified().addDays(-1))
            QFile::remove(file.filePath());
    }
}

void Rename(const QString& from, const QString& to)
{
    QFile file(from);
    if (!file.rename(to))
        throw Error(ErrorNumber::kPathFileAccess,
                    QStringLiteral("The database %1 can't be written: %2").arg(to, file.errorString()));
}

QString ReadVersion(Database& database)
{
    if (!PropertyRows::HasTable(database, kSystemInfo))
        return {};
    return PropertyRows::Find(*database.OpenRecordset(kSystemInfo), kVersion).value_or(QString());
}

QString Marked(const QString& version)
{
    const QString number = version.isEmpty() ? QStringLiteral("1") : version;
    return number.endsWith(kMark) ? number : number + kMark;
}

int ReadNodeCount(Database& database)
{
    if (!PropertyRows::HasTable(database, kSystemInfo))
        return 0;
    const auto rows = database.OpenRecordset(QStringLiteral("SELECT * FROM [SystemInfo]"));
    const auto count = PropertyRows::Find(*rows, kNodeCount);
    return count ? PropertyRows::Number(*count, 0, 255) : 0;
}

}  // namespace

bool SystemDatabase::Step(const QString& path, const std::function<void()>& step)
{
    const SaveWords words{QStringLiteral("Make System Database"), QStringLiteral("Make System Database"),
                          QStringLiteral("system")};
    const SaveResult result = RunSaveStep(mBoxes, words, path, step);
    mWhole = mWhole && result == SaveResult::Done;
    return result != SaveResult::Ended;
}

bool SystemDatabase::Make(const QString& path, const QString& defaultPath)
{
    const bool written = CFileSystem::FileExists(path) ? WriteFile(path, path) : MakeNew(path, defaultPath);
    return written && mWhole;
}

bool SystemDatabase::MakeNew(const QString& path, const QString& defaultPath)
{
    const QString work = WorkFileBeside(path);
    const auto copy = [&] {
        Database::OpenDatabase(defaultPath, false, true)->SaveCopy(work);
        RemoveLeftovers(work);
    };
    const auto giveName = [&] { Rename(work, path); };
    const bool made = Step(path, copy) && WriteFile(work, path) && Step(path, giveName);
    QFile::remove(work);
    return made;
}

bool SystemDatabase::WriteFile(const QString& file, const QString& path)
{
    std::unique_ptr<Database> database;
    const auto open = [&] { database = Database::OpenDatabase(file, false, false); };
    // Without a database there is nothing to go on with, whatever the answer was.
    return Step(path, open) && database && WriteTables(*database, path);
}

bool SystemDatabase::WriteTables(Database& database, const QString& path)
{
    QString version;
    return Step(path, [&] { database.BeginTrans(); }) && Step(path, [&] { version = ReadVersion(database); }) &&
           Step(path, [&] { WriteSystemInfo(database, Marked(version)); }) && WriteNodes(database) &&
           Step(path, [&] { database.CommitTrans(); });
}

void SystemDatabase::WriteSystemInfo(Database& database, const QString& version) const
{
    PropertyRows::WriteTable(database, kSystemInfo, [&](Recordset& rows) {
        PropertyRows::Add(rows, kNodeCount, QString::number(mSystem.NodesInSystem()));
        PropertyRows::Add(rows, kVersion, version);
    });
}

bool SystemDatabase::WriteNodes(Database& database)
{
    for (int position = 1; position <= mSystem.NodesInSystem(); ++position) {
        const SaveResult result = mSystem.Nodes()[position].MakeSystemDatabase(database);
        mWhole = mWhole && result == SaveResult::Done;
        if (result == SaveResult::Ended)
            return false;
    }
    return true;
}

void SystemDatabase::Load(const QString& path, std::uint8_t& nodesInSystem, bool quickie)
{
    const std::unique_ptr<Database> database = Open(path);
    if (database)
        TryLoading([&] { nodesInSystem = std::max(nodesInSystem, std::uint8_t(ReadNodeCount(*database))); });
    if (nodesInSystem > mSystem.NodesInSystem())
        mSystem.setNodesInSystem(nodesInSystem);
    // The nodes would only say once more, each of them, that the file can't be opened.
    if (!database || quickie)
        return;
    for (int position = 1; position <= mSystem.NodesInSystem(); ++position)
        mSystem.Nodes()[position].LoadSystemDatabase(*database);
}

std::unique_ptr<Database> SystemDatabase::Open(const QString& path)
{
    std::unique_ptr<Database> database;
    TryLoading([&] { database = Database::OpenDatabase(path, false, true); });
    return database;
}

void SystemDatabase::TryLoading(const std::function<void()>& step)
{
    try {
        step();
    } catch (const Error& error) {
        if (mBoxes)
            mBoxes->MsgBox(QStringLiteral("An unexpected error has occurred while trying to load a system database: "
                                          "%1\nAs a result, some system information might not be completely loaded.")
                               .arg(error.Description()),
                           QMessageBox::Warning, QMessageBox::Ok, QStringLiteral("Load System Database"));
    }
}

}  // namespace fenrik
