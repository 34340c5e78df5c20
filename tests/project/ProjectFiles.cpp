#include "project/ProjectFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>

namespace fenrik {

namespace {

constexpr int kPatienceMs = 60000;

QStringList TrackedPaths()
{
    QProcess git;
    git.start(QStringLiteral("git"),
              {QStringLiteral("-C"), ProjectRoot(), QStringLiteral("ls-files"), QStringLiteral("-z")});
    if (!git.waitForFinished(kPatienceMs) || git.exitCode() != 0)
        return {};
    return QString::fromUtf8(git.readAllStandardOutput()).split(QChar(0), Qt::SkipEmptyParts);
}

QStringList PathsInTree()
{
    const QDir root(ProjectRoot());
    QStringList paths;
    QDirIterator files(root.path(), QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = root.relativeFilePath(files.next());
        const bool hidden = path.startsWith(QLatin1Char('.')) && !path.startsWith(QStringLiteral(".ci/"));
        if (!hidden && !path.startsWith(QStringLiteral("build/")))
            paths.append(path);
    }
    return paths;
}

QList<ProjectFile> ReadAll()
{
    QStringList paths = TrackedPaths();
    if (paths.isEmpty())
        paths = PathsInTree();
    QList<ProjectFile> files;
    for (const QString& path : paths) {
        QFile content(ProjectRoot() + QLatin1Char('/') + path);
        // A tracked file may be gone from the tree while its removal is not committed yet.
        if (!content.open(QIODevice::ReadOnly))
            continue;
        ProjectFile file{path, {}};
        if (!file.IsSource() && content.peek(2) != "#!")
            continue;
        file.text = QString::fromUtf8(content.readAll());
        if (file.IsSource() || file.IsShellScript())
            files.append(file);
    }
    return files;
}

}  // namespace

bool ProjectFile::IsShellScript() const
{
    const QString firstLine = text.section(QLatin1Char('\n'), 0, 0);
    return firstLine.startsWith(QStringLiteral("#!")) && firstLine.endsWith(QStringLiteral("sh"));
}

QString ProjectRoot()
{
    return QStringLiteral(FENRIK_SOURCE_DIR);
}

const QList<ProjectFile>& ProjectFiles()
{
    static const QList<ProjectFile> files = ReadAll();
    return files;
}

QString Complaint(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(kPatienceMs))
        return program + QStringLiteral(": ") + process.errorString();
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return {};
    return QStringLiteral("%1 failed (%2)\n").arg(program).arg(process.exitCode()) +
           QString::fromUtf8(process.readAll());
}

}  // namespace fenrik
