#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

namespace fenrik {

class Composer;
class CMsgHandler;
class CSystem;
class MainMenus;
class MainToolbar;
class NodeBars;
class PortState;
class StatusLine;

/// The widgets whose state follows the window's.
struct UiParts {
    MainToolbar& toolbar;
    NodeBars& nodeBars;
    MainMenus& menus;
    Composer& composer;
    StatusLine& status;
};

/// What a change of state sets off.
class UiStateHost {
public:
    virtual ~UiStateHost() = default;
    virtual void RefreshCurrentFrame(bool getNewInfo) = 0;
    virtual void ShowSync(bool lit) = 0;
};

/// The window's two axes of state: connected or not (bit 1), ready for input or busy (bit 4). What may be pressed
/// follows from them, from the port, and from which nodes are selected and mounted.
class UiState {
public:
    static constexpr int kConnected = 1;
    static constexpr int kDisconnected = 2;
    static constexpr int kReady = 4;
    static constexpr int kBusy = 8;

    UiState(const UiParts& parts, const PortState& ports, const CMsgHandler& handler, const CSystem& system,
            UiStateHost& host);

    /// 1 connected, 2 disconnected, 4 ready, 8 busy; others are ignored.
    void SetUIState(int state);

    [[nodiscard]] bool Connected() const { return (mState & kConnected) != 0; }
    [[nodiscard]] bool Ready() const { return (mState & kReady) != 0; }

    /// A widget that is disabled while the window is busy, besides the toolbar, the node bars and the composer.
    void AlsoDisableWhileBusy(QWidget* widget) { mBusyWidgets.append(widget); }

    /// What may be pressed while the port is open for sending, and nothing else.
    void RefreshForPort();

    void RefreshUINodeBarActions();
    void RefreshUIToolBarActions();
    void RefreshUIMenuActions();

private:
    void ShowConnected();
    void ShowDisconnected();
    void RefreshAll();
    void EnableInput(bool enabled);

    UiParts mParts;
    const PortState& mPorts;
    const CMsgHandler& mHandler;
    const CSystem& mSystem;
    UiStateHost& mHost;
    int mState = 0;
    QList<QPointer<QWidget>> mBusyWidgets;
};

/// The window is busy for as long as the object lives, and then as it was: inside another exchange, whose end is not
/// this one's to announce, it stays busy.
class BusyMeanwhile {
public:
    explicit BusyMeanwhile(UiState& ui) : mUi(ui), mWasReady(ui.Ready()) { mUi.SetUIState(UiState::kBusy); }
    ~BusyMeanwhile()
    {
        if (mWasReady)
            mUi.SetUIState(UiState::kReady);
    }
    BusyMeanwhile(const BusyMeanwhile&) = delete;
    BusyMeanwhile& operator=(const BusyMeanwhile&) = delete;

private:
    UiState& mUi;
    bool mWasReady;
};

}  // namespace fenrik
