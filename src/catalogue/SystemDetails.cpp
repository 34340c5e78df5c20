#include "catalogue/SystemDetails.h"

#include "catalogue/CommandDatabase.h"
#include "shared/TextFormat.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace fenrik {

namespace {

QString NodesText(int images)
{
    if (images == 0)
        return SystemDetails().nodes;
    return images == 1 ? QStringLiteral("1 Node in System") : QStringLiteral("%1 Nodes in System").arg(images);
}

QString DefaultVersionText(const QString& version)
{
    const QString text = QStringLiteral("Using default database");
    return Val(version) > 0 ? text + QStringLiteral(", Version ") + version : text;
}

}  // namespace

SystemDetails DetailsOf(const SystemList& list, const SystemLine& line)
{
    SystemDetails details;
    const QString database = list.DatabaseOf(line);
    details.path = QDir::toNativeSeparators(database.isEmpty() ? line.folder : database);
    if (!line.IsDefault())
        details.nodes = NodesText(SystemList::NodeImagesOf(line));

    const auto properties = GetDatabaseProperties(database);
    const QString version = properties ? properties->value(QStringLiteral("Version")) : QString();
    if (line.IsDefault())
        details.version = DefaultVersionText(version);
    else if (properties)
        details.version = version;
    if (properties)
        details.modified = QLocale().toString(QFileInfo(database).lastModified(), QLocale::ShortFormat);
    return details;
}

}  // namespace fenrik
