#include "app/MainMenus.h"
#include "app/MainToolbar.h"
#include "app/NodeBars.h"
#include "support/Printers.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::SizeIs;

// --- Toolbar -------------------------------------------------------------------------------------------------------

struct KeyRow {
    int key;
    const char* button;
};

class FunctionKeys : public testing::TestWithParam<KeyRow> {};

TEST_P(FunctionKeys, ClickTheirButtonIfItIsEnabled)
{
    MainToolbar toolbar;
    QSignalSpy clicks(&toolbar, &MainToolbar::Clicked);
    toolbar.ClickByFunctionKey(GetParam().key);
    ASSERT_THAT(clicks, SizeIs(1));
    EXPECT_EQ(clicks[0][0].toString(), GetParam().button);
    toolbar.SetEnabled(GetParam().button, false);
    toolbar.ClickByFunctionKey(GetParam().key);
    EXPECT_THAT(clicks, SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(MainToolbar, FunctionKeys,
                         testing::Values(KeyRow{Qt::Key_F4, "Clear"}, KeyRow{Qt::Key_F5, "Analog"},
                                         KeyRow{Qt::Key_F6, "InputDiagnostics"},
                                         KeyRow{Qt::Key_F7, "OutputDiagnostics"}, KeyRow{Qt::Key_F8, "States"},
                                         KeyRow{Qt::Key_F9, "FlashInfo"}, KeyRow{Qt::Key_F10, "Collision"}),
                         [](const auto& test) { return test.param.button; });

TEST(MainToolbar, OtherKeysClickNothing)
{
    MainToolbar toolbar;
    QSignalSpy clicks(&toolbar, &MainToolbar::Clicked);
    for (const int key : {int(Qt::Key_F1), int(Qt::Key_F2), int(Qt::Key_F3), int(Qt::Key_F11), int(Qt::Key_A), 0})
        toolbar.ClickByFunctionKey(key);
    EXPECT_THAT(clicks, SizeIs(0));
}

TEST(MainToolbar, EachButtonHasItsKeyAPictureAndAToolTip)
{
    MainToolbar toolbar;
    toolbar.ShowConnectionMethod(1);
    QStringList keys;
    for (const QAction* button : toolbar.actions()) {
        if (button->isSeparator())
            continue;
        keys.append(button->objectName());
        EXPECT_FALSE(button->icon().pixmap(24).isNull()) << button->objectName().toStdString();
        EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
        EXPECT_EQ(toolbar.Button(button->objectName()), button);
    }
    keys.sort();
    EXPECT_EQ(keys.join(' '),
              "About Analog Clear Collision Connect ConnectUsing DetectNodes DiagLog Disconnect FlashInfo Harnwick "
              "InputDiagnostics Log OutputDiagnostics Port RDChat RDPing RDUsers Refresh Save States System");
}

TEST(MainToolbar, OneViewIsPressedAtATimeAndTheMonitorByItself)
{
    MainToolbar toolbar;
    toolbar.Press("States");
    toolbar.Press("Collision");
    toolbar.Press("FlashInfo");
    EXPECT_FALSE(toolbar.Button("States")->isChecked());
    EXPECT_TRUE(toolbar.Button("FlashInfo")->isChecked());
    EXPECT_TRUE(toolbar.Button("Collision")->isChecked());
    toolbar.Press("Collision", false);
    EXPECT_FALSE(toolbar.Button("Collision")->isChecked());
}

TEST(MainToolbar, TheConnectionMethodShowsOnItsButton)
{
    MainToolbar toolbar;
    const QStringList methods{"Transceiver", "Modem", "Pipe Server"};
    for (int type = 1; type <= 3; ++type) {
        toolbar.ShowConnectionMethod(type);
        EXPECT_TRUE(toolbar.Button("ConnectUsing")->toolTip().contains(methods[type - 1]));
    }
}

// --- Menus ---------------------------------------------------------------------------------------------------------

struct CaptionRow {
    const char* menu;
    const char* entry;
    const char* caption;
};

class MenuEntries : public testing::TestWithParam<CaptionRow> {};

TEST_P(MenuEntries, BearTheirNameAndCaption)
{
    QMenuBar bar;
    MainMenus menus(bar, true);
    QAction* entry = menus.Entry(GetParam().entry);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->text().remove('&'), GetParam().caption);
    EXPECT_TRUE(menus.Menu(GetParam().menu)->actions().contains(entry));
    QSignalSpy chosen(&menus, &MainMenus::Chosen);
    entry->trigger();
    ASSERT_THAT(chosen, SizeIs(1));
    EXPECT_EQ(chosen[0][0].toString(), GetParam().entry);
}

INSTANTIATE_TEST_SUITE_P(
    MainMenus, MenuEntries,
    testing::Values(CaptionRow{"mnuDiag", "mnuDiagSendSync", "Send \"Artificial\" Sync"},
                    CaptionRow{"mnuListView", "mnuListViewShowAll", "Show all messages"},
                    CaptionRow{"mnuListView", "mnuListViewCompactList", "Don't display duplicate commands"},
                    CaptionRow{"mnuListView", "mnuListViewHexData", "Display message data in Hex"},
                    CaptionRow{"mnuSettings", "mnuSettingsOptions", "Tool Options"},
                    CaptionRow{"mnuSettings", "mnuSettingsLogging", "Message Logging"},
                    CaptionRow{"mnuSettings", "mnuSettingsNetwork", "Network Options"},
                    CaptionRow{"mnuSettings", "mnuSettingsDatabase", "Database Options"},
                    CaptionRow{"mnuSettings", "mnuSettingsExit", "Exit"},
                    CaptionRow{"mnuConnectMethod", "mnuConnectUsing_101", "Transceiver"},
                    CaptionRow{"mnuConnectMethod", "mnuConnectUsing_102", "Modem"},
                    CaptionRow{"mnuConnectMethod", "mnuConnectUsing_103", "Pipe Server"},
                    CaptionRow{"mnuSpecialFunctions", "mnuCommandQuery", "Command Query..."},
                    CaptionRow{"mnuSpecialFunctions", "mnuAssignEatonE33", "Assign Eaton E33 Switch Address..."},
                    CaptionRow{"mnuSpecialFunctions", "mnuRunScript", "Run Script..."},
                    CaptionRow{"mnuHelp", "mnuHelpDiagManual", "Fenrik Diagnostics Manual"},
                    CaptionRow{"mnuHelp", "mnuHelpSixSteps", "Fenrik Six Steps Guide"},
                    CaptionRow{"mnuHelp", "mnuHelpConnSpec", "Fenrik Connector Spec"},
                    CaptionRow{"mnuHelp", "mnuHelpHarnwick", "Harnwick on the Web"},
                    CaptionRow{"mnuHelp", "mnuHelpAbout", "About Fenrik Diagnostics"}),
    [](const auto& test) { return test.param.entry; });

TEST(MainMenus, FourMenusStandOnTheBar)
{
    QMenuBar bar;
    const MainMenus menus(bar, false);
    QStringList captions;
    for (const QAction* menu : bar.actions())
        captions.append(menu->text().remove('&'));
    EXPECT_EQ(captions.join('|'), "Settings|Connection Method|Special Functions|Help");
}

TEST(MainMenus, TheScriptAndItsSeparatorAreForDebugBuilds)
{
    for (const bool debug : {false, true}) {
        QMenuBar bar;
        const MainMenus menus(bar, debug);
        EXPECT_EQ(menus.Entry("mnuRunScript")->isVisible(), debug);
        const QList<QAction*> entries = menus.Menu("mnuSpecialFunctions")->actions();
        const QAction* before = entries[entries.indexOf(menus.Entry("mnuRunScript")) - 1];
        EXPECT_TRUE(before->isSeparator());
        EXPECT_EQ(before->isVisible(), debug);
    }
}

TEST(MainMenus, TheNextMethodIsTheNextVisibleAndEnabledOneAroundTheEnd)
{
    QMenuBar bar;
    MainMenus menus(bar, false);
    EXPECT_EQ(menus.NextConnectionMethod(1), 2);
    EXPECT_EQ(menus.NextConnectionMethod(2), 3);
    EXPECT_EQ(menus.NextConnectionMethod(3), 1);
    menus.Entry("mnuConnectUsing_102")->setEnabled(false);
    EXPECT_EQ(menus.NextConnectionMethod(1), 3);
    menus.Entry("mnuConnectUsing_103")->setVisible(false);
    EXPECT_EQ(menus.NextConnectionMethod(1), 1);
}

TEST(MainMenus, OneMethodIsChecked)
{
    QMenuBar bar;
    MainMenus menus(bar, false);
    for (int type = 1; type <= 3; ++type) {
        menus.ShowConnectionMethod(type);
        for (int other = 1; other <= 3; ++other)
            EXPECT_EQ(menus.Entry(QString("mnuConnectUsing_%1").arg(100 + other))->isChecked(), other == type);
    }
}

// --- Node bars -----------------------------------------------------------------------------------------------------

class NodeBarsTest : public testing::Test {
protected:
    NodeBars bars;
    std::unique_ptr<QToolBar> first{bars.First()};
    std::unique_ptr<QToolBar> second{bars.Second()};
};

TEST_F(NodeBarsTest, EachNodeHasAButtonThatTellsItsNumber)
{
    QSignalSpy clicks(&bars, &NodeBars::NodeClicked);
    for (int number = 1; number <= 32; ++number) {
        QAction* button = bars.NodeButton(number);
        ASSERT_NE(button, nullptr) << number;
        EXPECT_EQ(button->objectName(), QString("Node%1").arg(number));
        EXPECT_TRUE((number <= 16 ? first : second)->actions().contains(button));
        button->setEnabled(true);
        button->trigger();
        EXPECT_EQ(clicks.last()[0].toInt(), number);
    }
    EXPECT_EQ(bars.NodeButton(0), nullptr);
    EXPECT_EQ(bars.NodeButton(33), nullptr);
}

TEST_F(NodeBarsTest, TheActionsTellTheirKey)
{
    QSignalSpy clicks(&bars, &NodeBars::ActionClicked);
    for (const char* key : {"Mount", "Unmount", "Ping"}) {
        bars.ActionButton(key)->trigger();
        EXPECT_EQ(clicks.last()[0].toString(), key);
    }
}

TEST_F(NodeBarsTest, TheFillerDoesNothing)
{
    QSignalSpy nodes(&bars, &NodeBars::NodeClicked);
    QSignalSpy actions(&bars, &NodeBars::ActionClicked);
    auto* filler = second->findChild<QAction*>("yourmom");
    ASSERT_NE(filler, nullptr);
    filler->trigger();
    EXPECT_THAT(nodes, SizeIs(0));
    EXPECT_THAT(actions, SizeIs(0));
}

}  // namespace
}  // namespace fenrik
