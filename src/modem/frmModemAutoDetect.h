#pragma once

#include "modem/MModem.h"
#include "platform/SerialControl.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmModemAutoDetect;
}

namespace fenrik {

class Boxes;
class ComPorts;
class ErrorReporter;
class EventPump;
struct RunState;

/// "Modem Auto Detect": asks each of the ports 1 to 16 for a modem and lists those that have one. It opens the ports
/// with a control of its own, so the program's connection goes on meanwhile; its port counts as having no modem.
/// A silent port costs three seconds; the window can be closed at any time.
class frmModemAutoDetect : public QDialog {
    Q_OBJECT

public:
    /// All references outlive the window.
    frmModemAutoDetect(const ComPorts& ports, RunState& run, EventPump& pump, Boxes& boxes, ErrorReporter& errors,
                       QWidget* parent = nullptr);
    ~frmModemAutoDetect() override;

    /// False once the user has chosen a port.
    [[nodiscard]] bool Canceled() const { return mCanceled; }

    /// COM number of the selected row, 0 with none.
    [[nodiscard]] int SelectedPort() const;

    void reject() override;

private:
    void Detect();
    void Scan();
    void CheckPort(int number);
    void AddModem(int number, const QString& text);
    void ShowCount();
    void Choose();

    EventPump& mPump;
    Boxes& mBoxes;
    ErrorReporter& mErrors;
    SerialControl mPort;
    MModem mModem;
    bool mScanning = false;
    bool mCanceled = true;
    std::unique_ptr<Ui::frmModemAutoDetect> mUi;
};

}  // namespace fenrik
