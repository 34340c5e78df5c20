#pragma once

#include "shared/ErrorReporter.h"

namespace fenrik {

class Boxes;
class Clock;
class ProgramFolder;
class VersionInfo;

/// The one error routine: shows frmError and appends an entry to "DiagErr.log" in the program's folder.
///
/// An entry of the file: an empty line, "FenrikII Diagnostics", date and time, and
/// ">> Error <number> description @ place".
class ErrorDialog : public ErrorReporter {
public:
    ErrorDialog(const ProgramFolder& folder, const VersionInfo& version, const Clock& clock, Boxes& boxes);

    void ShowError(int number, const QString& description, const QString& where, const QString& extra = {}) override;

private:
    [[nodiscard]] QString Details(int number, const QString& description, const QString& where) const;
    void WriteEntry(int number, const QString& description, const QString& where) const;

    const ProgramFolder& mFolder;
    const VersionInfo& mVersion;
    const Clock& mClock;
    Boxes& mBoxes;
};

}  // namespace fenrik
