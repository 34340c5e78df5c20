#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

namespace fenrik {

/// A copy of the default databases in a folder of a test's own, with a configuration and a data home beside it, so that
/// settings, ports, logs and databases of a test meet nobody else's. All goes with the object.
class PortableCopy {
public:
    /// The settings choose COM5.
    PortableCopy();

    /// The program's folder: databases, logs and, after CopyTool, the tool.
    [[nodiscard]] QString ProgramFolder() const { return Path("bin"); }
    [[nodiscard]] QString ConfigHome() const { return Path("config"); }
    [[nodiscard]] QString ConfigFolder() const { return Path("config/fenrik-diagnostics"); }

    /// A path below the copy.
    [[nodiscard]] QString Path(const char* name) const { return mFolder.filePath(QLatin1String(name)); }

    /// Puts the tool's executable into the program's folder; gives its path.
    [[nodiscard]] QString CopyTool() const;

    /// For programs that shall use the copy.
    [[nodiscard]] QProcessEnvironment Environment() const;

    /// The lines of all message logs, heads left out, the oldest log first.
    [[nodiscard]] QStringList LoggedLines() const;

    [[nodiscard]] bool HasErrorLog() const;
    [[nodiscard]] QString StoredSettings() const;

private:
    QTemporaryDir mFolder;
};

}  // namespace fenrik
