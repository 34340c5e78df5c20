#pragma once

#include "app/SystemChoice.h"

#include <QObject>

namespace fenrik {

class DiagHub;
class frmDiag;
class ProgramHost;
struct Services;

/// What a click on a button of the toolbar or of the node bars does. Each click is bracketed by busy and ready, also
/// one that ends in an error.
class ToolbarActions : public QObject {
    Q_OBJECT

public:
    ToolbarActions(const Services& services, DiagHub& hub, frmDiag& window, ProgramHost& program);

    /// As a click on the button of `key`.
    void Click(const QString& key);

private:
    void Run(const QString& key);
    void ClickNode(int number);
    void ClickNodeAction(const QString& key);
    void ChooseLogOptions();
    void ChooseNetworkOptions();
    void ConnectUsing();
    void DetectNodes();
    void SwitchCollisionMonitor();
    void Refresh();

    const Services& mServices;
    DiagHub& mHub;
    frmDiag& mWindow;
    ProgramHost& mProgram;
    SystemChoice mSystem;
};

}  // namespace fenrik
