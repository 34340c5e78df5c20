#pragma once

#include <QString>

namespace fenrik {

class Boxes;
class ProgramFolder;
class Shell;

/// Opens the Help files that lie in "Help" of the program's folder.
class HelpFiles {
public:
    HelpFiles(const ProgramFolder& folder, Shell& shell, Boxes& boxes);

    /// Opens the file of a menu entry ("mnuHelpDiagManual" ...); false if the entry stands for no file.
    bool OpenFor(const QString& entry);

private:
    void Open(const QString& file);

    const ProgramFolder& mFolder;
    Shell& mShell;
    Boxes& mBoxes;
};

}  // namespace fenrik
