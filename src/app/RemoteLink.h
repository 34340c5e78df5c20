#pragma once

#include "app/PortState.h"
#include "app/RemoteWindowSet.h"
#include "remote/RemoteConnection.h"
#include "remote/RemoteView.h"
#include "widgets/WaitCursor.h"

#include <optional>

namespace fenrik {

class CSystem;
class frmDiag;
class NodeDiscovery;
class UiState;

/// What a remote connection asks of the main window that neither its parts nor its helpers can do.
class RemoteLinkHost {
public:
    virtual ~RemoteLinkHost() = default;
    virtual void AdjustFormCaption() = 0;
    virtual void RefreshTrafficTimers() = 0;  ///< by PortOpenForRx and PortOpenForTx
    virtual void LeaveDisabledView() = 0;
};

/// The remote connection in the main window: owns it and the windows around it, and does for it what it asks of the
/// window.
class RemoteLink : private RemoteStateView, private RemoteConnectionHost {
public:
    /// All references outlive the object.
    RemoteLink(const Services& services, const PortState& ports, CSystem& system, NodeDiscovery& discovery, UiState& ui,
               frmDiag& window, RemoteLinkHost& host);
    ~RemoteLink() override;

    [[nodiscard]] RemoteConnection& Connection() { return mConnection; }
    [[nodiscard]] const RemoteConnection& Connection() const { return mConnection; }
    [[nodiscard]] RemoteWindowSet& Windows() { return mWindows; }

private:
    // RemoteStateView
    void ShowStatus(const QString& text) override;
    void ShowMessage(const QString& text) override;
    void ShowChatButton(const char* image, bool chat, bool ping) override;
    void ShowWaitCursor(bool wait) override;
    void AdjustFormCaption() override { mHost.AdjustFormCaption(); }
    void RefreshTrafficTimers() override { mHost.RefreshTrafficTimers(); }
    void RefreshActions() override;

    // RemoteConnectionHost
    [[nodiscard]] std::optional<RemoteLogon> CurrentProfile() const override;
    void OpenPortOptions() override;
    void SetUIState(int state) override;
    [[nodiscard]] bool PortOpenForRx() const override { return mPorts.PortOpenForRx(); }
    [[nodiscard]] bool NodeMounted() const override;
    void UnmountNode() override;
    void ForgetMountedNode() override;
    void ResetPanels() override;

    const Services& mServices;
    const PortState& mPorts;
    CSystem& mSystem;
    NodeDiscovery& mDiscovery;
    UiState& mUi;
    frmDiag& mWindow;
    RemoteLinkHost& mHost;
    std::optional<WaitCursor> mHourglass;
    RemoteConnection mConnection;
    RemoteWindowSet mWindows;
};

}  // namespace fenrik
