#include "options/DatabaseInformation.h"

#include "catalogue/CommandDatabase.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStringList>

namespace fenrik {

namespace {

struct DatabaseRow {
    const char* title;
    const char* file;
};

const DatabaseRow kDatabases[] = {
    {"Default Fenrik Command Database", "ncCommand.dav"},
    {"Special Commands Database", "SpecialCommands.dav"},
};

QString Block(const DatabaseRow& row, const QString& path)
{
    const auto properties = GetDatabaseProperties(path);
    // What can't be opened has names, but nothing that stands inside it.
    if (!properties || !properties->contains(QStringLiteral("AccessVersion")))
        return {};
    const QString modified = QLocale().toString(QFileInfo(path).lastModified(), QLocale::ShortFormat);
    return QStringLiteral("%1\nDatabase Version: \t%2\nLast Modified: \t%3\nPath and Filename: \t%4")
        .arg(QLatin1String(row.title), properties->value(QStringLiteral("Version")), modified,
             QDir::toNativeSeparators(properties->value(QStringLiteral("Path"))));
}

}  // namespace

QString DatabaseInformation(const QString& programFolder)
{
    QStringList blocks;
    for (const DatabaseRow& row : kDatabases) {
        const QString block = Block(row, QDir(programFolder).filePath(QLatin1String(row.file)));
        if (!block.isEmpty())
            blocks.append(block);
    }
    return blocks.join(QStringLiteral("\n\n"));
}

}  // namespace fenrik
