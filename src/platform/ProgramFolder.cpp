#include "platform/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>

namespace fenrik {

namespace {

/// Copies what is missing. What can't be copied is missed later by whoever needs it, who has the words for it.
void Fill(const QString& folder, const QString& source)
{
    QDir().mkpath(folder);
    QDirIterator files(source, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString target = folder + QLatin1Char('/') + QDir(source).relativeFilePath(file);
        if (QFileInfo::exists(target))
            continue;
        QDir().mkpath(QFileInfo(target).path());
        if (QFile::copy(file, target))
            QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner | QFile::ReadOwner);
    }
}

}  // namespace

ProgramFolder::ProgramFolder(const QString& executableFolder, const QString& userFolder, const QString& installedFolder)
{
    if (QFileInfo::exists(executableFolder + QStringLiteral("/ncCommand.dav"))) {
        mPath = executableFolder;
        return;
    }
    mPath = userFolder;
    Fill(userFolder, installedFolder);
}

ProgramFolder ProgramFolder::OfThisProcess()
{
    const QString executable = QCoreApplication::applicationDirPath();
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {executable, data + QStringLiteral("/fenrik-diagnostics"),
            QDir::cleanPath(executable + QStringLiteral("/../share/fenrik-diagnostics"))};
}

QString ProgramFolder::File(const QString& name) const
{
    return mPath + QLatin1Char('/') + name;
}

}  // namespace fenrik
