#include "catalogue/CommandDatabase.h"

#include "platform/CFileSystem.h"
#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"

#include <QDir>
#include <QFileInfo>

namespace fenrik {

namespace {

std::unique_ptr<Database> TryOpen(const QString& path)
{
    try {
        return Database::OpenDatabase(path, false, true);
    } catch (const Error&) {
        return nullptr;
    }
}

bool HoldsCatalogue(Database& database)
{
    try {
        const QString firstRow = QLatin1String(kAllCommandsQuery) + QLatin1String("LIMIT 1");
        return !database.OpenRecordset(firstRow)->EndOfFile();
    } catch (const Error&) {
        return false;
    }
}

bool HasDatabaseName(const QString& path)
{
    return path.endsWith(QLatin1String(".dav"), Qt::CaseInsensitive);
}

QString VersionOf(Database& database)
{
    try {
        const auto rows =
            database.OpenRecordset(QStringLiteral("SELECT * FROM [SystemInfo] WHERE [PropertyName] = 'Version'"));
        const QVariant version = rows->Fields(QStringLiteral("PropertyValue"));
        return version.isValid() ? version.toString() : QString::fromLatin1(kNoVersion);
    } catch (const Error&) {
        return QString::fromLatin1(kNoVersion);
    }
}

QString PropertyOf(const Database& database, const QString& name)
{
    try {
        return database.Properties(name);
    } catch (const Error&) {
        return {};  // somebody has begun to write the file meanwhile
    }
}

}  // namespace

std::unique_ptr<Database> OpenCommandDatabase(const QString& path, const QString& defaultPath, CatalogueStatus& status)
{
    const bool isDefault = QDir::cleanPath(path).compare(QDir::cleanPath(defaultPath), Qt::CaseInsensitive) == 0;
    auto database = TryOpen(path);
    if (database) {
        const bool good = HasDatabaseName(path) && HoldsCatalogue(*database);
        const auto corrupt = isDefault ? CatalogueStatus::DefaultCorrupt : CatalogueStatus::CustomCorrupt;
        status = good ? CatalogueStatus::Good : corrupt;
        return database;
    }
    if (isDefault) {
        status = CatalogueStatus::DefaultMissing;
        return nullptr;
    }
    // What is wrong with the substitute does not count, as long as it opens.
    database = TryOpen(defaultPath);
    status = database ? CatalogueStatus::CustomMissing : CatalogueStatus::BothMissing;
    return database;
}

bool IsValidCommandDatabase(const QString& path)
{
    if (!HasDatabaseName(path))
        return false;
    const auto database = TryOpen(path);
    return database && HoldsCatalogue(*database);
}

std::optional<QMap<QString, QString>> GetDatabaseProperties(const QString& path)
{
    if (path.isEmpty() || !CFileSystem::FileExists(path))
        return std::nullopt;

    QMap<QString, QString> properties{{QStringLiteral("Name"), QFileInfo(path).fileName()},
                                      {QStringLiteral("Path"), path},
                                      {QStringLiteral("Version"), QString::fromLatin1(kNoVersion)}};
    const auto database = TryOpen(path);
    if (!database)
        return properties;

    properties[QStringLiteral("Version")] = VersionOf(*database);
    for (const QString& name : {QStringLiteral("AccessVersion"), QStringLiteral("Build")})
        properties[name] = PropertyOf(*database, name);
    return properties;
}

}  // namespace fenrik
