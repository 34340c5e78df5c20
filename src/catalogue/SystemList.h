#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace fenrik {

/// A system that can be chosen. The first line of a list is the default database, whose name here is empty.
struct SystemLine {
    QString name;
    QString folder;  ///< of its files, with a separator at its end

    [[nodiscard]] bool IsDefault() const { return name.isEmpty(); }
};

/// The systems that the user can choose from. A system named S is a command database "S.dav", node images
/// "S_Node <n>.bin", or both, in one folder.
class SystemList {
public:
    /// Every node image has this size; other ".bin" files are none.
    static constexpr qint64 kImageSize = 32'768;

    enum class Added : std::uint8_t { Yes, ListedBefore, Invalid };

    /// `programFolder` holds the default database and saved systems.
    explicit SystemList(const QString& programFolder);

    /// Lists anew: the default database, the system in use, and what the program's folder has. The system in use is
    /// left out if it has no files any more; empty texts if there is none.
    void Fill(const QString& currentName, const QString& currentFolder);

    /// Adds the system that the file `path` belongs to.
    Added Add(const QString& path);

    [[nodiscard]] const std::vector<SystemLine>& Lines() const { return mLines; }

    /// Position of the first line of that name, from 0; -1 if there is none. The empty name is the default's.
    [[nodiscard]] int PositionOf(const QString& name) const;

    /// Position of the line that the file `path` belongs to; -1 if there is none.
    [[nodiscard]] int PositionOfFile(const QString& path) const;

    /// Name of the system that the file `path` belongs to.
    [[nodiscard]] static QString NameOf(const QString& path);

    /// Full path of a line's command database, empty if it has no usable one.
    [[nodiscard]] QString DatabaseOf(const SystemLine& line) const;

    /// Number of a line's node images. Those of a system whose longer name begins with this one count as well, since
    /// loading takes them as well.
    [[nodiscard]] static int NodeImagesOf(const SystemLine& line);

private:
    void AddCurrent(const QString& name, const QString& folder);
    void AddFiles(const QString& extension);
    [[nodiscard]] static bool IsValid(const QString& path);
    [[nodiscard]] SystemLine LineOf(const QString& path) const;

    QString mProgramFolder;
    std::vector<SystemLine> mLines;
};

/// The command database "name.dav" in `folder`, whatever the case of its extension's letters; empty if there is none.
[[nodiscard]] QString FindSystemDatabase(const QString& folder, const QString& name);

}  // namespace fenrik
