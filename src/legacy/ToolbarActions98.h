#pragma once

#include <QObject>

namespace fenrik {

class FrmDiag98;
class LegacyHost;
struct LegacyServices;

/// What a click on a button of the toolbar does. The toolbar is off and the hourglass on meanwhile; over a window that
/// waits for the user it is an arrow.
class ToolbarActions98 : public QObject {
    Q_OBJECT

public:
    /// All outlive it.
    ToolbarActions98(const LegacyServices& services, FrmDiag98& window, LegacyHost& host);

    void Click(const QString& key);

private:
    void Run(const QString& key);
    void ChooseLogOptions();
    void Clear();
    void ShowAnalog();
    void ShowInformation();

    const LegacyServices& mServices;
    FrmDiag98& mWindow;
    LegacyHost& mHost;
};

}  // namespace fenrik
