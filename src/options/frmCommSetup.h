#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmCommSetup;
}

namespace fenrik {

class Boxes;
class ComPorts;
class ErrorReporter;
class EventPump;
class ModemChoice;
class OptionsHost;
class PipeSettings;
class PortChoice;
class ProfileBoxes;
class RDMain;
class SerialControl;
struct RunState;
struct Settings;

/// "Network Options": how the program reaches the network. Most values go into the settings as they are chosen; the
/// protocol, the connection method, the modem's initialization string and an entered port number when the window
/// closes, however that happens; the profile when it closes by "Continue". Then all settings are written.
class frmCommSetup : public QDialog {
    Q_OBJECT

public:
    /// What it works on. All outlive the dialog.
    struct Parts {
        Settings& settings;
        RunState& run;
        RDMain& remote;
        const PipeSettings& profiles;
        const ComPorts& ports;
        const SerialControl& port;  ///< the program's own, left alone while it is open
        Boxes& boxes;
        ErrorReporter& errors;
        EventPump& pump;
        OptionsHost& host;
    };

    /// Tries all ports, which takes a moment.
    explicit frmCommSetup(const Parts& parts, QWidget* parent = nullptr);

    /// If the program has ended with the window open, what was chosen is kept, without a word.
    ~frmCommSetup() override;

    void done(int result) override;

private:
    void SetUpHelpers();
    void ShowSettings();
    void ShowNodes(int count);
    void ShowPorts();
    void SetUpGeneral();
    void SetUpMethods();
    void ShowPictures();
    void ChooseProtocol(const QString& protocol);
    void AllowInternal(bool checked);
    void DetectModems();
    void Continue();
    void Unload();
    void TakeMethod();
    [[nodiscard]] bool ProtocolChanged() const;

    const Parts mParts;
    std::unique_ptr<Ui::frmCommSetup> mUi;
    PortChoice* mPort = nullptr;
    ModemChoice* mModem = nullptr;
    ProfileBoxes* mProfiles = nullptr;
    bool mUnloaded = false;
};

}  // namespace fenrik
