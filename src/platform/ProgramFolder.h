#pragma once

#include <QString>

namespace fenrik {

/// Where the program's own files lie: databases, Help files, logs. Found once at start.
///
/// A folder with "ncCommand.dav" beside the executable is a portable copy or a build tree and is used as it is.
/// Otherwise it is `fenrik-diagnostics/` in the user's data home, filled on first start from the installed files.
class ProgramFolder {
public:
    /// `executableFolder`: where the program lies. `userFolder`: the folder in the data home.
    /// `installedFolder`: what it is filled from; files that are there already are left alone.
    ProgramFolder(const QString& executableFolder, const QString& userFolder, const QString& installedFolder);

    /// The one of this process.
    [[nodiscard]] static ProgramFolder OfThisProcess();

    /// The folder, without a separator at its end.
    [[nodiscard]] QString Path() const { return mPath; }

    /// Path of a file in it.
    [[nodiscard]] QString File(const QString& name) const;

private:
    QString mPath;
};

}  // namespace fenrik
