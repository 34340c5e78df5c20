#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace fenrik {

/// Where a search for files can begin: what a list of drives is elsewhere.
struct Volume {
    QString name;
    QString root;  ///< a folder, without a separator at its end unless it is the root
};

/// The user's home, the whole file system, and the disks and sticks that were plugged in or mounted, which are those of
/// `mounted` (the folders of all mounts) that lie where the system puts such.
[[nodiscard]] std::vector<Volume> Volumes(const QString& home, const QStringList& mounted);

/// The volumes of this computer.
[[nodiscard]] std::vector<Volume> VolumesOfThisComputer();

/// Position in `volumes` of the one that `folder` lies deepest in; -1 if it lies in none.
[[nodiscard]] int VolumeOf(const std::vector<Volume>& volumes, const QString& folder);

/// `folder`, or, where that does not fit, " .../" and as many of its last folders as do. The last one always stays.
[[nodiscard]] QString ShortenedFolder(const QString& folder, const std::function<bool(const QString&)>& fits);

}  // namespace fenrik
