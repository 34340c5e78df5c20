#pragma once

#include "app/HelpFiles.h"

#include <QObject>

namespace fenrik {

class DiagHub;
class frmDiag;
class ProgramHost;
class ToolbarActions;
struct Services;

/// What the entries of the menus do.
class MenuActions : public QObject {
    Q_OBJECT

public:
    MenuActions(const Services& services, DiagHub& hub, frmDiag& window, ProgramHost& program, ToolbarActions& toolbar);

    /// Sets the check marks of `mnuListView` and `mnuDiag` before one of them opens.
    void ShowListChecks();
    void ShowDiagChecks();

private:
    void Choose(const QString& entry);
    [[nodiscard]] bool ChooseAsButton(const QString& entry);
    [[nodiscard]] bool ChooseListOption(const QString& entry);
    [[nodiscard]] bool ChooseOperatorCommand(const QString& entry);
    void SetCheck(const QString& entry, bool checked);
    void TellBusy();
    void ChooseConnectionMethod(const QString& entry);

    const Services& mServices;
    DiagHub& mHub;
    frmDiag& mWindow;
    ProgramHost& mProgram;
    ToolbarActions& mToolbar;
    HelpFiles mHelp;
};

}  // namespace fenrik
