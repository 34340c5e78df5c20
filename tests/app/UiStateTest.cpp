#include "app/UiState.h"

#include "AppFixture.h"
#include "app/Composer.h"
#include "app/MainMenus.h"
#include "app/MainToolbar.h"
#include "app/NodeBars.h"
#include "model/CSystem.h"
#include "widgets/StatusLine.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowRecorder : public UiStateHost {
public:
    void RefreshCurrentFrame(bool getNewInfo) override { calls.push_back(getNewInfo ? "refresh anew" : "refresh"); }
    void ShowSync(bool lit) override { calls.push_back(lit ? "sync on" : "sync off"); }

    std::vector<std::string> calls;
};

class UiStateTest : public AppTest {
protected:
    UiStateTest()
    {
        system.LoadSystem({}, {}, false);
        ui.SetUIState(UiState::kDisconnected);
        handler.setTargetPort(Transport::kRemote);
    }

    /// The enabled buttons, in the toolbar's order.
    [[nodiscard]] std::string Enabled() const
    {
        QStringList keys;
        for (const QAction* button : toolbar.actions()) {
            if (!button->isSeparator() && button->isEnabled())
                keys.append(button->objectName());
        }
        return keys.join(' ').toStdString();
    }

    /// The node bar's action buttons that can be pressed; in brackets those that are only seen.
    [[nodiscard]] std::string NodeActions() const
    {
        QStringList keys;
        for (const char* key : {"Mount", "Unmount", "Ping"}) {
            const QAction* button = nodeBars.ActionButton(key);
            if (button->isVisible())
                keys.append(button->isEnabled() ? QString(key) : QString("[%1]").arg(key));
        }
        return keys.join(' ').toStdString();
    }

    void Select(int node)
    {
        system.ActivateNode(node);
        system.SelectNode(std::uint8_t(node));
    }

    CSystem system{settings, dir.path()};
    MainToolbar toolbar;
    NodeBars nodeBars;
    std::unique_ptr<QToolBar> first{nodeBars.First()};
    std::unique_ptr<QToolBar> second{nodeBars.Second()};
    QMenuBar menuBar;
    MainMenus menus{menuBar, false};
    Composer composer{services};
    StatusLine status;
    WindowRecorder window;
    UiState ui{{toolbar, nodeBars, menus, composer, status}, portState, handler, system, window};
};

struct ButtonRow {
    const char* name;
    int remoteState;
    bool selected;
    bool mounted;
    const char* toolbar;
    const char* nodeBar;
};

class Connected : public UiStateTest, public testing::WithParamInterface<ButtonRow> {};

TEST_P(Connected, WhatMayBePressedFollowsFromPortSelectionAndMount)
{
    const ButtonRow& row = GetParam();
    remote.state = row.remoteState;
    if (row.selected)
        Select(3);
    if (row.mounted)
        system.MountNode(3);
    ui.SetUIState(UiState::kConnected);
    EXPECT_EQ(Enabled(), row.toolbar);
    EXPECT_EQ(NodeActions(), row.nodeBar);
    EXPECT_TRUE(ui.Connected());
}

INSTANTIATE_TEST_SUITE_P(
    UiState, Connected,
    testing::Values(
        ButtonRow{"OnlyLoggedOn", 2, false, false,
                  "Disconnect Save Analog Clear DiagLog RDUsers RDChat RDPing Harnwick About", "[Mount] [Ping]"},
        ButtonRow{"ListeningWithASelection", 4, true, false,
                  "Disconnect Save Analog Clear DiagLog RDUsers RDChat RDPing Harnwick About", "[Mount] [Ping]"},
        ButtonRow{"ListeningWithAMount", 5, true, true,
                  "Disconnect Save Analog Clear DiagLog RDUsers RDChat RDPing Harnwick About", "[Unmount] [Ping]"},
        ButtonRow{"NothingSelected", 6, false, false,
                  "Disconnect DetectNodes Save Analog Clear DiagLog RDUsers RDChat RDPing Harnwick About",
                  "[Mount] [Ping]"},
        ButtonRow{"Selected", 6, true, false,
                  "Disconnect DetectNodes Refresh Save Analog Clear DiagLog RDUsers RDChat RDPing Harnwick About",
                  "Mount Ping"},
        ButtonRow{"Mounted", 6, false, true,
                  "Disconnect Save Analog States FlashInfo Collision Clear DiagLog RDUsers RDChat RDPing Harnwick "
                  "About",
                  "Unmount [Ping]"},
        ButtonRow{"SelectedAndMounted", 6, true, true,
                  "Disconnect Refresh Save Analog States FlashInfo Collision Clear DiagLog RDUsers RDChat RDPing "
                  "Harnwick About",
                  "Unmount Ping"}),
    [](const auto& test) { return test.param.name; });

constexpr const char* kWhenDisconnected = "Connect ConnectUsing Port System Clear Log DiagLog RDUsers Harnwick About";

TEST_F(UiStateTest, DisconnectedOnlyTheConnectionAndItsOptionsMayBePressed)
{
    Select(3);
    system.MountNode(3);
    ui.SetUIState(UiState::kConnected);
    for (const char* key : {"OutputDiagnostics", "InputDiagnostics"})
        toolbar.SetEnabled(key, true);  // as a mount does
    handler.setTargetPort(Transport::kNone);
    ui.SetUIState(UiState::kDisconnected);
    EXPECT_EQ(Enabled(), kWhenDisconnected);
    EXPECT_EQ(NodeActions(), "[Unmount] [Ping]");
    EXPECT_FALSE(ui.Connected());
    EXPECT_EQ(status.Status(), "Disconnected");
}

TEST_F(UiStateTest, ConnectingRefreshesTheViewAndPutsTheLampOut)
{
    window.calls.clear();
    ui.SetUIState(UiState::kConnected);
    EXPECT_THAT(window.calls, ElementsAre("refresh", "sync off"));
    window.calls.clear();
    ui.SetUIState(UiState::kDisconnected);
    EXPECT_THAT(window.calls, ElementsAre("refresh"));
}

TEST_F(UiStateTest, WithoutAPortThereIsAWordAndNothingElse)
{
    handler.setTargetPort(Transport::kNone);
    window.calls.clear();
    ui.SetUIState(UiState::kConnected);
    EXPECT_EQ(status.Msg(), "Cannot connect - no valid port has been chosen");
    EXPECT_EQ(status.Status(), "Disconnected");
    EXPECT_EQ(Enabled(), kWhenDisconnected);
    EXPECT_FALSE(ui.Connected());
    EXPECT_THAT(window.calls, IsEmpty());
}

struct StatusRow {
    int remoteState;
    const char* text;
};

class Statuses : public UiStateTest, public testing::WithParamInterface<StatusRow> {};

TEST_P(Statuses, TellHowFarTheRelayHasCome)
{
    remote.state = GetParam().remoteState;
    ui.SetUIState(UiState::kConnected);
    EXPECT_EQ(status.Status(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(UiState, Statuses,
                         testing::Values(StatusRow{2, "Connected"}, StatusRow{3, "Connected"}, StatusRow{4, "Piped"},
                                         StatusRow{6, "Piped"}));

TEST_F(UiStateTest, ASerialLinkIsConnectedAndHasNoChat)
{
    PseudoTerminal terminal;
    portFolder.Link(1, terminal.Path());
    port.setPortOpen(true);
    handler.setTargetPort(Transport::kTransceiver);
    ui.SetUIState(UiState::kConnected);
    EXPECT_EQ(status.Status(), "Connected");
    EXPECT_EQ(Enabled(), "Disconnect DetectNodes Save Analog Clear DiagLog RDUsers Harnwick About");
}

TEST_F(UiStateTest, MenusFollowTheConnection)
{
    const auto enabled = [this](const char* entry) { return menus.Entry(entry)->isEnabled(); };
    EXPECT_TRUE(menus.Menu("mnuConnectMethod")->isEnabled());
    remote.state = 4;
    ui.SetUIState(UiState::kConnected);
    EXPECT_FALSE(menus.Menu("mnuConnectMethod")->isEnabled());
    EXPECT_FALSE(enabled("mnuCommandQuery"));
    EXPECT_FALSE(enabled("mnuAssignEatonE33"));
    remote.state = 6;
    ui.RefreshUIMenuActions();
    EXPECT_TRUE(enabled("mnuCommandQuery"));
    EXPECT_TRUE(enabled("mnuAssignEatonE33"));
    EXPECT_TRUE(enabled("mnuSettingsLogging"));
    EXPECT_TRUE(enabled("mnuSettingsNetwork"));
}

TEST_F(UiStateTest, SendIsOfferedWhileSendingIsPossible)
{
    const auto* send = composer.findChild<QPushButton*>("cmdSend");
    remote.state = 5;
    ui.SetUIState(UiState::kConnected);
    EXPECT_FALSE(send->isEnabled());
    remote.state = 6;
    ui.SetUIState(UiState::kConnected);
    EXPECT_TRUE(send->isEnabled());
}

TEST_F(UiStateTest, BusyDisablesAllInputAndReadyBringsItBack)
{
    QWidget frame;
    ui.AlsoDisableWhileBusy(&frame);
    for (const bool ready : {true, false, true}) {
        ui.SetUIState(ready ? UiState::kReady : UiState::kBusy);
        EXPECT_EQ(ui.Ready(), ready);
        for (const QWidget* widget :
             std::initializer_list<const QWidget*>{&composer, nodeBars.First(), nodeBars.Second(), &toolbar, &frame})
            EXPECT_EQ(widget->isEnabled(), ready) << widget->objectName().toStdString();
    }
}

TEST_F(UiStateTest, TheTwoAxesDoNotTouchEachOther)
{
    ui.SetUIState(UiState::kReady);
    ui.SetUIState(UiState::kConnected);
    EXPECT_TRUE(ui.Ready());
    ui.SetUIState(UiState::kBusy);
    EXPECT_TRUE(ui.Connected());
    ui.SetUIState(UiState::kDisconnected);
    EXPECT_FALSE(ui.Ready());
}

TEST_F(UiStateTest, OtherStatesAreIgnored)
{
    ui.SetUIState(UiState::kReady);
    const std::string before = Enabled();
    for (const int state : {0, 3, 5, 6, 9, 16, -1})
        ui.SetUIState(state);
    EXPECT_EQ(Enabled(), before);
    EXPECT_TRUE(ui.Ready());
    EXPECT_FALSE(ui.Connected());
}

TEST_F(UiStateTest, AFrameThatIsGoneIsForgotten)
{
    auto frame = std::make_unique<QWidget>();
    ui.AlsoDisableWhileBusy(frame.get());
    frame.reset();
    ui.SetUIState(UiState::kBusy);
    EXPECT_FALSE(toolbar.isEnabled());
}

}  // namespace
}  // namespace fenrik
