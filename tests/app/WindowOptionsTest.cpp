#include "WindowFixture.h"
#include "options/PortList.h"
#include "support/WhenShown.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QTabWidget>
#include <QToolButton>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class WindowOptionsTest : public WindowTest {
protected:
    template <typename T>
    static T& In(QDialog& dialog, const char* name)
    {
        return *dialog.findChild<T*>(name);
    }

    /// Opens the network options by the toolbar, works them, and leaves by "Continue".
    void Network(const std::function<void(QDialog&)>& work)
    {
        const WhenShown dialog("frmCommSetup", [&work](QDialog& options) {
            EXPECT_TRUE(options.isModal());
            work(options);
            In<QPushButton>(options, "cmdContinue").click();
        });
        Click("Port");
        EXPECT_EQ(dialog.Times(), 1);
    }

    void Tool(const std::function<void(QDialog&)>& work)
    {
        const WhenShown dialog("FrmOptions", [&work](QDialog& options) {
            EXPECT_TRUE(options.isModal());
            work(options);
            options.close();
        });
        Click("Harnwick");
        EXPECT_EQ(dialog.Times(), 1);
    }

    std::vector<std::unique_ptr<WhenShown>> mClosers;

    [[nodiscard]] int VisibleNodes()
    {
        int visible = 0;
        for (int number = 1; number <= NodeBars::kNodes; ++number)
            visible += Window().Nodes().NodeButton(number)->isVisible() ? 1 : 0;
        return visible;
    }
};

TEST_F(WindowOptionsTest, WhatIsChosenForTheNetworkHoldsAndIsWritten)
{
    ASSERT_TRUE(Start("FirstRun=True\n"));
    Network([](QDialog& options) {
        EXPECT_EQ(In<PortList>(options, "lstPorts").SelectedPort(), 5);
        In<QSlider>(options, "barNodes").setValue(20);
        In<QCheckBox>(options, "cbSendSync").click();
        In<QTabWidget>(options, "sstabPortSelection").setCurrentIndex(1);
        In<QLineEdit>(options, "txtModemInitString").setText("ATM0");
        In<QCheckBox>(options, "chkModemIsDefault").click();
    });
    EXPECT_EQ(VisibleNodes(), 20);
    EXPECT_TRUE(Entry("mnuConnectUsing_102").isChecked());
    EXPECT_THAT(Button("ConnectUsing").toolTip().toStdString(), testing::HasSubstr("Modem"));
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_TRUE(Button("Connect").isEnabled());
    EXPECT_EQ(Stored("Settings/NodesInSystem"), "20");
    EXPECT_EQ(Stored("Settings/SendSync"), "True");
    EXPECT_EQ(Stored("Settings/ModemInitString"), "ATM0");
    EXPECT_EQ(Stored("Settings/ConnectionType"), "2");
    EXPECT_EQ(Stored("Settings/FirstRun"), "True");  // until the program's end
}

TEST_F(WindowOptionsTest, TheMenuOpensTheSameWindows)
{
    ASSERT_TRUE(Start());
    const WhenShown network("frmCommSetup", [](QDialog& options) { options.close(); });
    const WhenShown tool("FrmOptions", [](QDialog& options) { options.close(); });
    const WhenShown about("frmAbout", [](QDialog& window) { QTest::keyClick(&window, Qt::Key_Escape); });
    Entry("mnuSettingsNetwork").trigger();
    Entry("mnuSettingsOptions").trigger();
    Entry("mnuHelpAbout").trigger();
    EXPECT_EQ(network.Times(), 1);
    EXPECT_EQ(tool.Times(), 1);
    EXPECT_EQ(about.Times(), 1);
    Click("About");
    EXPECT_EQ(about.Times(), 2);
}

TEST_F(WindowOptionsTest, WhileConnectedTheNetworkOptionsLeaveTheConnectionAlone)
{
    StartAndConnect("AutoDetect=False\n");
    EXPECT_FALSE(Button("Port").isEnabled());
    const WhenShown network("frmCommSetup", [](QDialog& options) {
        EXPECT_EQ(In<PortList>(options, "lstPorts").currentItem()->text(), "Communications Port 05 (COM5) - In Use");
        In<QCheckBox>(options, "cbSendSync").click();
        options.close();
    });
    Entry("mnuSettingsNetwork").trigger();
    EXPECT_EQ(network.Times(), 1);
    EXPECT_EQ(Status(), "Connected");
    EXPECT_TRUE(Control<QTimer>("TSendSync").isActive());
    vehicle.Send({902, true, false, 0});
    EXPECT_TRUE(Until([this] { return Lines().size() == 1; }));
}

TEST_F(WindowOptionsTest, AConnectionIsEndedByTheMethodThatMadeIt)
{
    StartAndConnect("AutoDetect=False\n");
    const WhenShown network("frmCommSetup", [](QDialog& options) {
        In<QTabWidget>(options, "sstabPortSelection").setCurrentIndex(2);
        In<QCheckBox>(options, "chkPipeServerIsDefault").click();
        options.close();
    });
    Entry("mnuSettingsNetwork").trigger();
    EXPECT_EQ(Stored("Settings/ConnectionType"), "3");
    Click("Disconnect");
    EXPECT_EQ(Status(), "Disconnected");
    const ComPorts ports(dir.filePath("config/ports"), [] { return QList<SerialDevice>(); });
    SerialControl other(ports);
    other.setCommPort(5);
    other.setPortOpen(true);
    EXPECT_TRUE(other.PortOpen());
}

TEST_F(WindowOptionsTest, ASavedSystemKeepsItsNumberOfNodes)
{
    ASSERT_TRUE(Start());
    System().LoadSystem("My Bus", ProgramFile(""), false);
    ASSERT_TRUE(System().Defined());
    const int before = System().NodesInSystem();
    Network([](QDialog& options) { In<QSlider>(options, "barNodes").setValue(30); });
    EXPECT_EQ(System().NodesInSystem(), before);
    EXPECT_EQ(Stored("Settings/NodesInSystem"), "30");
}

TEST_F(WindowOptionsTest, FewerNodesThanTheSelectedOneSelectNone)
{
    ASSERT_TRUE(Start());
    System().ActivateNode(3);
    System().SelectNode(3);
    Network([](QDialog& options) { In<QSlider>(options, "barNodes").setValue(2); });
    EXPECT_EQ(System().SelectedNodeNumber(), 0);
    EXPECT_EQ(VisibleNodes(), 2);
}

TEST_F(WindowOptionsTest, AMountedNodeIsNotDropped)
{
    StartAndConnect("AutoDetect=False\n");
    System().ActivateNode(3);
    System().SelectNode(3);
    System().MountNode(3);
    const WhenShown network("frmCommSetup", [](QDialog& options) {
        In<QSlider>(options, "barNodes").setValue(1);
        options.close();
    });
    Entry("mnuSettingsNetwork").trigger();
    EXPECT_NE(System().MountedNode(), nullptr);
    EXPECT_EQ(VisibleNodes(), 3);
    System().UnmountNode();
}

TEST_F(WindowOptionsTest, InternalCommandsAppearInTheCategoryListAtOnce)
{
    ASSERT_TRUE(Start());
    EXPECT_EQ(Control<QComboBox>("CboCategory").findText("<Send Byte>"), -1);
    user.answers = {QMessageBox::Ok};
    Network([](QDialog& options) { In<QCheckBox>(options, "cbInternal").click(); });
    EXPECT_EQ(Control<QComboBox>("CboCategory").findText("<Send Byte>"), 0);
}

TEST_F(WindowOptionsTest, AChangedProtocolLeavesTheRunningWindowsAsTheyAre)
{
    ASSERT_TRUE(Start("FirstRun=False\n"));
    Network([](QDialog& options) { In<QComboBox>(options, "CboProtocol").setCurrentIndex(0); });
    EXPECT_THAT(user.seen,
                ElementsAre("The program will have to be restarted for the protocol change to take effect."));
    EXPECT_EQ(Stored("Settings/Protocol"), "Fenrik 98");
    Tool([](QDialog& options) { EXPECT_TRUE(In<QCheckBox>(options, "ChkHex").isVisible()); });
}

TEST_F(WindowOptionsTest, TheListTurnsToHexWhileTheBoxIsChecked)
{
    StartAndConnect("AutoDetect=False\n");
    vehicle.Send({902, true, false, 31});
    ASSERT_TRUE(Until([this] { return Lines().size() == 1; }));
    const auto data = [this] { return Window().Messages().index(0, MessageListModel::Data).data().toString(); };
    EXPECT_EQ(data(), "31");
    Tool([&data](QDialog& options) {
        In<QCheckBox>(options, "ChkHex").click();
        EXPECT_EQ(data(), "0x1F");
    });
    EXPECT_EQ(Stored("Settings/HexData"), "True");
}

TEST_F(WindowOptionsTest, TurningTheCompactListOnEmptiesTheList)
{
    StartAndConnect("AutoDetect=False\n");
    vehicle.Send({902, true, false, 31});
    ASSERT_TRUE(Until([this] { return Lines().size() == 1; }));
    Tool([](QDialog& options) {
        In<QCheckBox>(options, "ChkCompactList").click();
        In<QCheckBox>(options, "ChkCompactList").click();
    });
    EXPECT_EQ(Lines().size(), 1);
    Tool([](QDialog& options) { In<QCheckBox>(options, "ChkCompactList").click(); });
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_TRUE(Window().Messages().CompactList());
    Tool([](QDialog& options) { In<QCheckBox>(options, "ChkCompactList").click(); });
    EXPECT_FALSE(Window().Messages().CompactList());
}

TEST_F(WindowOptionsTest, AllMessagesAreOfferedForSendingAtOnce)
{
    ASSERT_TRUE(Start());
    Tool([this](QDialog& options) {
        In<QCheckBox>(options, "ChkListAllMsgs").click();
        EXPECT_EQ(Control<QComboBox>("CboCategory").itemText(0), "<Undefined Messages>");
    });
}

TEST_F(WindowOptionsTest, TheToolOptionsNameTheDatabase)
{
    ASSERT_TRUE(Start());
    Tool([](QDialog& options) { EXPECT_EQ(In<QLineEdit>(options, "txtDatabase").text(), "Default - ncCommand.dav"); });
}

TEST_F(WindowOptionsTest, ABrokenSettingsFileIsKeptBesideTheFirstOneWrittenOnly)
{
    ASSERT_TRUE(Start("BaudRate=fast\n"));
    user.seen.clear();
    Tool([](QDialog&) {});
    Tool([](QDialog&) {});
    QFile broken(SettingsFile() + ".broken");
    ASSERT_TRUE(broken.open(QIODevice::ReadOnly));
    EXPECT_TRUE(broken.readAll().contains("BaudRate=fast"));
}

TEST_F(WindowOptionsTest, EndingTheProgramUnderAnOpenWindowOfOptionsKeepsWhatWasChosen)
{
    ASSERT_TRUE(Start("FirstRun=True\n"));
    const WhenShown network("frmCommSetup", [this](QDialog& options) {
        In<QSlider>(options, "barNodes").setValue(9);
        In<QComboBox>(options, "CboProtocol").setCurrentIndex(0);
        In<QTabWidget>(options, "sstabPortSelection").setCurrentIndex(2);
        In<QCheckBox>(options, "chkPipeServerIsDefault").click();
        Window().close();
    });
    QTimer::singleShot(0, &Window(), [this] { Click("Port"); });
    QApplication::exec();
    EXPECT_EQ(network.Times(), 1);
    EXPECT_EQ(Stored("Settings/NodesInSystem"), "9");
    EXPECT_EQ(Stored("Settings/Protocol"), "Fenrik 98");
    EXPECT_EQ(Stored("Settings/ConnectionType"), "3");
    EXPECT_EQ(Stored("Settings/FirstRun"), "False");
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(WindowOptionsTest, EveryButtonAndEveryEntryHasSomethingToDo)
{
    ASSERT_TRUE(Start());
    for (const char* name : {"frmCommSetup", "FrmOptions", "frmAbout", "FrmMsgLogging", "frmDBProperties"})
        mClosers.push_back(std::make_unique<WhenShown>(name, [](QDialog& dialog) { dialog.close(); }));
    for (const char* key : {"Port", "Harnwick", "About", "Log", "System", "ConnectUsing", "Clear", "Save"}) {
        Click(key);
        EXPECT_FALSE(Msg().contains("not part of this version")) << key;
    }
}

TEST_F(WindowOptionsTest, EveryButtonTellsItsKey)
{
    ASSERT_TRUE(Start());
    const auto buttons = Window().Toolbar().findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QAction* button : buttons) {
        if (button->isSeparator() || button->objectName().isEmpty())
            continue;
        EXPECT_TRUE(button->toolTip().endsWith(")")) << button->objectName().toStdString();
    }
}

}  // namespace
}  // namespace fenrik
