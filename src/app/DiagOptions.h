#pragma once

#include "app/OptionDialogs.h"
#include "options/OptionsHost.h"

namespace fenrik {

class DiagHub;
class frmDiag;
class ProgramHost;

/// The windows of options over the main window of Fenrik 2000, and what follows there from a choice in one of them.
class DiagOptions : private OptionsHost {
public:
    /// All outlive the object.
    DiagOptions(const Services& services, DiagHub& hub, frmDiag& window, ProgramHost& program);

    /// Over `parent`, which is the main window or one above it.
    void OpenNetworkOptions(QWidget* parent);

    void OpenToolOptions();
    void OpenAbout();

private:
    void WriteSettings() override;
    void ApplyNodesInSystem() override;
    void ShowHexData() override;
    void ShowCategories() override;

    const Services& mServices;
    DiagHub& mHub;
    frmDiag& mWindow;
    ProgramHost& mProgram;
    OptionDialogs mDialogs;
};

}  // namespace fenrik
