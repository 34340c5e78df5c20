#include "project/Layers.h"

#include <QHash>
#include <QRegularExpression>

namespace fenrik {

namespace {

constexpr int kFeature = 6;

/// Folders of src/ by their height. A folder includes itself and those below it.
const QHash<QString, int>& Heights()
{
    static const QHash<QString, int> heights{
        {QStringLiteral("pipe"), 0},
        {QStringLiteral("platform"), 0},
        {QStringLiteral("widgets"), 0},
        {QStringLiteral("shared"), 1},
        {QStringLiteral("link"), 2},
        {QStringLiteral("catalogue"), 3},
        {QStringLiteral("model"), 4},
        {QStringLiteral("logging"), 5},
        {QStringLiteral("options"), kFeature},
        {QStringLiteral("legacy"), kFeature},
        {QStringLiteral("commands"), kFeature},
        {QStringLiteral("diagnostics"), kFeature},
        {QStringLiteral("remote"), kFeature},
        {QStringLiteral("modem"), kFeature},
        {QStringLiteral("app"), 7},
    };
    return heights;
}

/// Features that need another one by their nature.
const QSet<QString>& ArrowsBetweenFeatures()
{
    static const QSet<QString> arrows{
        QStringLiteral("legacy>diagnostics"),  // draws with the character face
        QStringLiteral("options>modem"),       // opens the detection
        QStringLiteral("options>remote"),      // edits the profiles
    };
    return arrows;
}

QString FolderOf(const QString& path)
{
    return path.section(QLatin1Char('/'), 0, 0);
}

bool SrcMayInclude(const QString& from, const QString& header)
{
    // A header without a folder is one that the build makes.
    if (!header.contains(QLatin1Char('/')))
        return true;
    const QString to = FolderOf(header);
    if (!Heights().contains(from) || !Heights().contains(to))
        return false;
    return from == to || Heights().value(to) < Heights().value(from) ||
           ArrowsBetweenFeatures().contains(from + QLatin1Char('>') + to);
}

bool SimulatorMayInclude(const QString& header)
{
    return FolderOf(header) == QStringLiteral("simulator") || header == QStringLiteral("link/Frame.h");
}

// The relay is a server: no windows, and nothing that draws them in.
bool RelayMayInclude(const QString& header)
{
    return FolderOf(header) == QStringLiteral("relay") || FolderOf(header) == QStringLiteral("pipe");
}

bool MayInclude(const QString& path, const QString& header)
{
    if (path.startsWith(QStringLiteral("src/")))
        return SrcMayInclude(FolderOf(path.mid(4)), header);
    if (path.startsWith(QStringLiteral("simulator/")))
        return SimulatorMayInclude(header);
    if (path.startsWith(QStringLiteral("relay/")))
        return RelayMayInclude(header);
    return true;
}

}  // namespace

QStringList WrongIncludes(const ProjectFile& file)
{
    static const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s*\"([^\"]+)\""));
    QStringList wrong;
    int number = 0;
    for (const QString& line : file.text.split(QLatin1Char('\n'))) {
        ++number;
        const auto match = include.match(line);
        if (match.hasMatch() && !MayInclude(file.path, match.captured(1)))
            wrong.append(QStringLiteral("%1:%2 includes %3").arg(file.path).arg(number).arg(match.captured(1)));
    }
    return wrong;
}

}  // namespace fenrik
