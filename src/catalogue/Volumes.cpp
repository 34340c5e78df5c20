#include "catalogue/Volumes.h"

#include <QDir>
#include <QStorageInfo>

#include <algorithm>

namespace fenrik {

namespace {

const char* const kMountFolders[] = {"/media/", "/run/media/", "/mnt/", "/Volumes/"};

bool IsForUsers(const QString& root)
{
    return std::any_of(std::begin(kMountFolders), std::end(kMountFolders),
                       [&](const char* folder) { return root.startsWith(QLatin1String(folder)); });
}

bool LiesIn(const QString& folder, const QString& root)
{
    return folder == root || folder.startsWith(root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/'));
}

}  // namespace

std::vector<Volume> Volumes(const QString& home, const QStringList& mounted)
{
    std::vector<Volume> volumes{{QStringLiteral("Home"), home}, {QStringLiteral("File System"), QDir::rootPath()}};
    for (const QString& root : mounted) {
        if (IsForUsers(root))
            volumes.push_back({QDir(root).dirName(), root});
    }
    return volumes;
}

std::vector<Volume> VolumesOfThisComputer()
{
    QStringList mounted;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (volume.isValid() && volume.isReady())
            mounted.append(volume.rootPath());
    }
    return Volumes(QDir::homePath(), mounted);
}

int VolumeOf(const std::vector<Volume>& volumes, const QString& folder)
{
    int deepest = -1;
    for (int position = 0; position < int(volumes.size()); ++position) {
        const QString& root = volumes[std::size_t(position)].root;
        if (LiesIn(folder, root) && (deepest < 0 || root.size() > volumes[std::size_t(deepest)].root.size()))
            deepest = position;
    }
    return deepest;
}

QString ShortenedFolder(const QString& folder, const std::function<bool(const QString&)>& fits)
{
    QString text = folder;
    QString rest = folder;
    while (!fits(text)) {
        const auto cut = rest.indexOf(QLatin1Char('/'), 1);
        if (cut < 0)
            break;
        rest = rest.mid(cut);
        text = QStringLiteral(" ...") + rest;
    }
    return text;
}

}  // namespace fenrik
