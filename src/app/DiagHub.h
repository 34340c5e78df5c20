#pragma once

#include "app/Composer.h"
#include "app/Connection.h"
#include "app/DiagOptions.h"
#include "app/MessageDisplay.h"
#include "app/MessagePump.h"
#include "app/ModemLink.h"
#include "app/NodeActions.h"
#include "app/NodeDiscovery.h"
#include "app/NodeRefresh.h"
#include "app/OperatorCommands.h"
#include "app/PortState.h"
#include "app/RemoteLink.h"
#include "app/ScriptRunner.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "app/ViewSwitch.h"
#include "link/LinkHost.h"
#include "link/Transceiver.h"
#include "model/CSystem.h"
#include "model/SystemOwner.h"

#include <QTimer>

namespace fenrik {

class DiagPanels;
class frmDiag;
class ProgramHost;

/// Where the main window's helpers meet: owns them, and is for each of them the small interface through which it asks
/// the window for something. Little is decided here: most operations are a line or two that call whom they belong to.
class DiagHub : public QObject,
                public ComposerHost,
                private LinkHost,
                private TransceiverHost,
                private ConnectionHost,
                private DiscoveryHost,
                private PumpHost,
                private LiveViews,
                private UiStateHost,
                private SystemOwner,
                private RemoteProgress,
                private RemoteLinkHost,
                private ModemLinkHost {
    Q_OBJECT

public:
    /// `window` is fully laid out; it owns the hub.
    DiagHub(const Services& services, frmDiag& window, ProgramHost& program);
    ~DiagHub() override;

    /// The state of a window that was just loaded: disconnected, ready, panels clear.
    void Load();

    [[nodiscard]] CSystem& System() { return mSystem; }
    [[nodiscard]] UiState& State() { return mUi; }
    [[nodiscard]] ViewSwitch& Views() { return mViews; }
    [[nodiscard]] Connection& Link() { return mConnection; }
    [[nodiscard]] NodeDiscovery& Discovery() { return mDiscovery; }
    [[nodiscard]] NodeActions& Nodes() { return mNodes; }
    [[nodiscard]] NodeRefresh& Refresh() { return mRefresh; }
    [[nodiscard]] OperatorCommands& Commands() { return mCommands; }
    [[nodiscard]] ScriptRunner& Scripts() { return mScripts; }
    [[nodiscard]] RemoteWindowSet& RemoteWindows() { return mRemote.Windows(); }
    [[nodiscard]] DiagOptions& Options() { return mOptions; }
    [[nodiscard]] const PortState& Ports() const { return mPorts; }

    // ComposerHost
    void SetUIState(int state) override { mUi.SetUIState(state); }
    [[nodiscard]] bool IsConnected() const override { return mUi.Connected(); }
    [[nodiscard]] bool IsReady() const override { return mUi.Ready(); }
    void OpenSpecialCommand(const CMessage& message) override { mCommands.OpenSpecialCommand(message); }
    void CommandSent() override;
    void SelectLastLine() override;

    /// The menu's "Send Artificial Sync" and the sync timer behind it.
    void ToggleSendSync();

    /// Empties the list and the panels.
    void Clear();

    /// Escape: ends a running detection, download or script.
    void RequestCancel();

    void ShowText(const QString& text) { ShowMessage(text); }
    void PressCollision(bool pressed);
    void Compose(int command, bool on);

    void setConnectionType(int type);
    void ShowNodeBars() { RefreshUINodeBarNodes(); }

    /// Saves the system: SavePrompt::kYes does, SavePrompt::kAsk asks whether to if something would be lost. True if
    /// it was saved.
    bool SaveSystem(std::int32_t response);

    /// After another system was loaded: looks which of its nodes are there. While not connected all nodes of a saved
    /// system can be looked at; node 1 is selected.
    void ShowLoadedSystem();

    /// Ends the connection for good when the window closes, and offers to save the system; false if the user wants to
    /// stay.
    bool PrepareToClose();

private:
    // LinkHost
    [[nodiscard]] bool PortOpenForTx() const override { return mPorts.PortOpenForTx(); }
    [[nodiscard]] bool ModemActive() const override;
    void DisplayMessage(CMessage& message) override { mDisplay.DisplayMessage(message); }
    void sendFrame(int type, const QByteArray& payload) override;
    void CloseModemLink() override { mModem.CloseModemLink(); }
    void ShowPC(int count) override;
    void ShowBC(int count) override;
    void ShowCollisionMark(bool active, const char* kind) override;
    void TrafficWaiting() override { mPump.Wake(); }

    // TransceiverHost, ConnectionHost, DiscoveryHost
    void ShowStatus(const QString& text) override;
    void ShowMessage(const QString& text) override;
    void RefreshConnection(bool readPanels, bool detect) override { mConnection.RefreshConnection(readPanels, detect); }
    void setDisplayState(int state) override { mViews.setDisplayState(state); }
    void SetTrafficTimers(bool receive, bool sendSync) override;
    void ReadPanels() override;
    void ResetPanels() override;
    void DetectNodes() override { mDiscovery.DetectNodes(); }
    bool UnmountNode(int node) override { return mDiscovery.UnmountNode(node); }
    void SetToolbarEnabled(bool enabled) override;
    void RefreshNodeActions() override;
    void ClickNode(int number) override { mNodes.SelectNode(number); }
    void ResetStates() override;

    // PumpHost
    void CarrierWasLost() override { mConnection.CarrierWasLost(); }
    void ShowMessageList(bool visible) override;
    bool TakenByStates(const CMessage& message) override;
    void NodeAnnounced(int node) override;

    // LiveViews, UiStateHost
    void UpdateAnalog(int command) override;
    void HandlePingResponse(int pingNode, int data) override { mDiscovery.HandlePingResponse(pingNode, data); }
    void UpdateLoadShed(int data) override;
    void UpdateDiagnostics(const CMessage& message) override;
    void LightSync() override;
    void RefreshCurrentFrame(bool getNewInfo) override { mViews.RefreshCurrentFrame(getNewInfo); }
    void ShowSync(bool lit) override;

    // SystemOwner
    void SetNodeButtonPressed(const NodeButton& button, bool pressed) override;
    void SetNodeButtonEnabled(const NodeButton& button, bool enabled) override;
    void SetNodeButtonIcon(const NodeButton& button, const QString& iconKey) override;
    void RefreshUINodeBarNodes() override;
    void AdjustFormCaption() override;
    void SystemSaved(const QString& name) override;
    void HandleSelectedNodeChange() override;
    void HandleMountedNodeChange() override;

    // RemoteProgress, RemoteLinkHost, ModemLinkHost
    [[nodiscard]] int RemoteState() const override { return mRemote.Connection().RemoteState(); }
    void RDconnect() override { mRemote.Connection().RDconnect(); }
    void RDdisconnect() override { mRemote.Connection().RDdisconnect(); }
    void ModemConnect() override { mModem.ModemConnect(); }
    void DisconnectModem() override { mModem.DisconnectModem(); }
    void SetPumping(bool pumping) override { mPump.setEnabled(pumping); }
    void RefreshTrafficTimers() override { mConnection.RefreshTrafficTimers(); }
    void LeaveDisabledView() override { mNodes.LeaveDisabledView(); }

    /// Draws everything that stands on the small panel.
    void DrawPanel();
    void SendSync();

    const Services& mServices;
    frmDiag& mWindow;
    ProgramHost& mProgram;
    PortState mPorts;
    CSystem mSystem;
    ViewSwitch mViews;
    UiState mUi;
    Transceiver mTransceiver;
    NodeDiscovery mDiscovery;
    NodeActions mNodes;
    NodeRefresh mRefresh;
    OperatorCommands mCommands;
    Connection mConnection;
    RemoteLink mRemote;
    ModemLink mModem;
    MessageDisplay mDisplay;
    MessagePump mPump;
    ScriptRunner mScripts;
    DiagOptions mOptions;
    QTimer mSendSync;
};

}  // namespace fenrik
