#pragma once

#include <QString>

namespace fenrik {

/// Questions about files and folders; keeps nothing.
class CFileSystem {
public:
    /// True if `path` is a file. A folder of that name does not count.
    [[nodiscard]] static bool FileExists(const QString& path);

    /// True if `path` is a file or a folder.
    [[nodiscard]] static bool DirectoryExists(const QString& path);

    /// Makes the folder `path`, whose parent exists; false if that can't be done.
    static bool CreateDirectory(const QString& path);
};

}  // namespace fenrik
