#pragma once

namespace fenrik {

class DiagHub;
class frmDiag;
class ProgramHost;
struct Services;

/// The toolbar's "System": the user chooses which system the tool works with.
class SystemChoice {
public:
    /// All references outlive the object.
    SystemChoice(const Services& services, DiagHub& hub, frmDiag& window, ProgramHost& program);

    /// Offers to save the present system, lets the user choose, and loads what was chosen. A dialog that is cancelled
    /// leaves all as it was. Not to be called inside an exchange: it replaces the nodes.
    void Choose();

private:
    [[nodiscard]] bool AskUser();
    void Load();

    const Services& mServices;
    DiagHub& mHub;
    frmDiag& mWindow;
    ProgramHost& mProgram;
};

}  // namespace fenrik
