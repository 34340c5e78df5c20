#pragma once

#include "modem/DialSequence.h"

#include <QDialog>

#include <memory>
#include <optional>

namespace Ui {
class frmDialer;
}

namespace fenrik {

class Boxes;
class Error;
class ErrorReporter;
class PhoneNumbers;
class SerialControl;

/// What the dialler needs of the program around it.
class DialerHost {
public:
    virtual ~DialerHost() = default;
    virtual void OpenNetworkOptions() = 0;  ///< modal, over the dialler
};

/// References to what the dialler works with; all outlive it.
struct DialerParts {
    Settings& settings;
    RunState& run;
    EventPump& pump;
    Boxes& boxes;
    ErrorReporter& errors;
    PhoneNumbers& numbers;
    DialerHost& host;
};

/// "Dial Remote Fenrik System": asks for a phone number and dials it. The window lives through every wait, and its
/// status line tells the step. Cancel ends the dial at any step and has the modem hang up, which takes two seconds.
/// A dial that fails leaves the port open for the next one.
class frmDialer : public QDialog, private DialView {
    Q_OBJECT

public:
    explicit frmDialer(const DialerParts& parts, QWidget* parent = nullptr);
    ~frmDialer() override;

    /// Shows the window, modal over `owner`, until it is closed. `connected` tells if a module passes the network
    /// through on `port`, which is then open; otherwise it is closed. Nobody else reads `port` meanwhile.
    void ShowDialer(QWidget* owner, SerialControl& port, bool& connected);

    void reject() override;

private:
    void ShowStatus(const QString& text) override;
    void Dial();
    [[nodiscard]] std::optional<Error> TryDial(const QString& number);
    void EndDial(const std::optional<Error>& failure);
    void TellFailure(const Error& failure);
    void Remember(const QString& number);
    void SetInputEnabled(bool enabled);
    void BeConnected();
    void Cancel();
    void HangUpAndHide();
    void OpenSettings();

    const DialerParts mParts;
    std::unique_ptr<MModem> mModem;
    std::unique_ptr<DialSequence> mSequence;
    bool mDialing = false;
    bool mCanceling = false;
    bool mConnected = false;
    std::unique_ptr<Ui::frmDialer> mUi;
};

}  // namespace fenrik
