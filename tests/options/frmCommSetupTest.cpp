#include "CommSetupFixture.h"

#include <QApplication>
#include <QClipboard>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const QString kRestart =
    QStringLiteral("The program will have to be restarted for the protocol change to take effect.");

class frmCommSetupTest : public CommSetupTest {};

TEST_F(frmCommSetupTest, ShowsTheSettings)
{
    options.SendSync = true;
    options.ShowFenrikInternal = true;
    options.NodesInSystem = 17;
    options.ModemBaudRate = 19200;
    options.ModemInitString = "AT&F";
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Network Options");
    EXPECT_EQ(Combo("CboProtocol").currentText(), "Fenrik 2000");
    EXPECT_EQ(Control<QSlider>("barNodes").value(), 17);
    EXPECT_EQ(Control<QLabel>("lblNodes").text(), "17 Nodes");
    EXPECT_TRUE(Check("cbSendSync").isChecked());
    EXPECT_TRUE(Check("cbInternal").isChecked());
    EXPECT_EQ(Combo("cmbModemBaudRate").currentText(), "19200");
    EXPECT_EQ(Text("txtModemInitString").text(), "AT&F");
    EXPECT_EQ(Text("txtModemInitString").toolTip(), "Optional.  Refer to your modem's user manual.");
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(frmCommSetupTest, TheTabOfTheConnectionMethodIsInFront)
{
    for (const int type : {1, 2, 3}) {
        options.ConnectionType = type;
        Open();
        EXPECT_EQ(Control<QTabWidget>("sstabPortSelection").currentIndex(), type - 1);
    }
}

TEST_F(frmCommSetupTest, ASettingsFileWithImpossibleNumbersOpensAllTheSame)
{
    options.ConnectionType = 99;
    options.NodesInSystem = 400;
    options.CommPort = -3;
    options.ModemBaudRate = 300;
    Open();
    EXPECT_EQ(Control<QTabWidget>("sstabPortSelection").currentIndex(), 0);
    EXPECT_EQ(Control<QLabel>("lblNodes").text(), "32 Nodes");
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(Combo("cmbModemBaudRate").currentIndex(), -1);
    dialog->close();
    EXPECT_EQ(options.ConnectionType, 99);
    EXPECT_EQ(options.ModemBaudRate, 300);
}

// --- Ports ---------------------------------------------------------------------------------------------------------

TEST_F(frmCommSetupTest, ListsThePortsAndSelectsTheChosenOnes)
{
    Open();
    const auto rows =
        ElementsAre("Communications Port 03 (COM3)", "Communications Port 05 (COM5)", "Communications Port 12 (COM12)");
    EXPECT_THAT(Rows(), rows);
    EXPECT_THAT(Rows("lstModemPorts"), rows);
    EXPECT_EQ(Selected(), "Communications Port 05 (COM5)");
    EXPECT_EQ(Selected("lstModemPorts"), "Communications Port 12 (COM12)");
    EXPECT_EQ(Ports("lstModemPorts").item(2)->data(Qt::UserRole).toInt(), 12);
    EXPECT_EQ(Ports().item(0)->toolTip(), first.Path());
}

TEST_F(frmCommSetupTest, ARowSetsThePort)
{
    Open();
    ClickRow(0);
    EXPECT_EQ(options.CommPort, 3);
    EXPECT_EQ(Text("txtPortNumber").text(), "3");
    QTest::keyClick(&Ports(), Qt::Key_End);
    EXPECT_EQ(options.CommPort, 12);
    dialog->close();
    EXPECT_EQ(options.CommPort, 12);
}

TEST_F(frmCommSetupTest, ARowOfTheModemListSetsTheModemsPort)
{
    options.ConnectionType = 2;
    Open();
    ClickRow(0, "lstModemPorts");
    EXPECT_EQ(options.ModemCommPort, 3);
    EXPECT_EQ(options.CommPort, 5);
}

TEST_F(frmCommSetupTest, OnlyPortsInUseCanBeChosenAllTheSame)
{
    std::vector<std::unique_ptr<SerialControl>> others;
    for (const int number : {3, 5, 12}) {
        others.push_back(std::make_unique<SerialControl>(ports));
        others.back()->setCommPort(number);
        others.back()->setPortOpen(true);
    }
    Open();
    EXPECT_THAT(Rows(), ElementsAre("Communications Port 03 (COM3) - In Use", "Communications Port 05 (COM5) - In Use",
                                    "Communications Port 12 (COM12) - In Use"));
    ClickRow(2);
    Press("cmdContinue");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(options.CommPort, 12);
}

TEST_F(frmCommSetupTest, WithoutPortsTheListsAreEmptyAndTheChoiceStays)
{
    // Not unplugged: the name of a terminal that is gone may be another program's a moment later.
    for (const int number : {3, 5, 12})
        portFolder.Link(number, folder.path() + QStringLiteral("/gone"));
    Open();
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_THAT(Rows("lstModemPorts"), IsEmpty());
    Press("cmdContinue");
    EXPECT_EQ(options.CommPort, 5);
    EXPECT_EQ(options.ModemCommPort, 12);
}

TEST_F(frmCommSetupTest, TheProgramsOwnOpenPortIsSelectedAndLeftAlone)
{
    port.setCommPort(3);
    port.setPortOpen(true);
    Open();
    EXPECT_EQ(Selected(), "Communications Port 03 (COM3) - In Use");
    EXPECT_TRUE(port.PortOpen());
    dialog->close();
    EXPECT_EQ(options.CommPort, 5);
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(frmCommSetupTest, TheTransceiverOnUsbStandsFirst)
{
    run.USBTransceiverPort = 5;
    run.USBTransceiverSelected = true;
    Open();
    EXPECT_EQ(Rows().value(0), "USB Transceiver");
    EXPECT_EQ(Rows().value(2), "Communications Port 05 (COM5)");
    EXPECT_EQ(Selected(), "USB Transceiver");
    EXPECT_EQ(Rows("lstModemPorts").value(0), "Communications Port 03 (COM3)");

    ClickRow(2);
    EXPECT_FALSE(run.USBTransceiverSelected);
    EXPECT_EQ(options.CommPort, 5);
    ClickRow(1);
    EXPECT_EQ(options.CommPort, 3);
    ClickRow(0);
    EXPECT_TRUE(run.USBTransceiverSelected);
    EXPECT_EQ(options.CommPort, 5);
    dialog->close();
    EXPECT_TRUE(run.USBTransceiverSelected);
}

TEST_F(frmCommSetupTest, WithoutATransceiverOnUsbTheFirstRowIsAPlainPort)
{
    Open();
    ClickRow(0);
    EXPECT_FALSE(run.USBTransceiverSelected);
}

// --- The port's number ---------------------------------------------------------------------------------------------

TEST_F(frmCommSetupTest, AnEnteredNumberSelectsItsRow)
{
    Open();
    Text("txtPortNumber").selectAll();
    QTest::keyClicks(&Text("txtPortNumber"), "12");
    EXPECT_EQ(Selected(), "Communications Port 12 (COM12)");
    Press("cmdContinue");
    EXPECT_EQ(options.CommPort, 12);
}

TEST_F(frmCommSetupTest, APortAboveSixteenCanBeEntered)
{
    run.USBTransceiverPort = 5;
    run.USBTransceiverSelected = true;
    Open();
    Text("txtPortNumber").selectAll();
    QTest::keyClicks(&Text("txtPortNumber"), "20");
    EXPECT_EQ(Selected(), "");
    QTest::keyClick(&Text("txtPortNumber"), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(options.CommPort, 20);
    EXPECT_FALSE(run.USBTransceiverSelected);
}

TEST_F(frmCommSetupTest, APastedNumberOutOfRangeIsToldAndKeepsTheWindowOpen)
{
    Open();
    for (const char* text : {"256", "0", "70000", "99999999999999999999", "-1"}) {
        boxes.boxes.clear();
        QApplication::clipboard()->setText(text);
        Text("txtPortNumber").selectAll();
        Text("txtPortNumber").paste();
        Press("cmdContinue");
        EXPECT_THAT(BoxTexts(), ElementsAre("Port number is not within a valid numeric range!")) << text;
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_TRUE(Text("txtPortNumber").hasFocus());
    }
    dialog->close();
    EXPECT_EQ(options.CommPort, 5);
}

TEST_F(frmCommSetupTest, AnEmptyNumberIsToldOnAnyTab)
{
    Open();
    Text("txtPortNumber").selectAll();
    QTest::keyClick(&Text("txtPortNumber"), Qt::Key_Delete);
    ShowTab(2);
    Press("cmdContinue");
    EXPECT_THAT(BoxTexts(), ElementsAre("Port number must contain a value!"));
    EXPECT_EQ(Control<QTabWidget>("sstabPortSelection").currentIndex(), 0);
}

// --- Modem ---------------------------------------------------------------------------------------------------------

TEST_F(frmCommSetupTest, OffersTheSpeedsAndKeepsTheInitializationString)
{
    options.ConnectionType = 2;
    Open();
    QStringList speeds;
    for (int row = 0; row < Combo("cmbModemBaudRate").count(); ++row)
        speeds.append(Combo("cmbModemBaudRate").itemText(row));
    EXPECT_THAT(speeds, ElementsAre("9600", "14400", "19200", "28800", "38400", "57600"));
    QTest::keyClick(&Combo("cmbModemBaudRate"), Qt::Key_Home);
    EXPECT_EQ(options.ModemBaudRate, 9600);
    QTest::keyClicks(&Text("txtModemInitString"), "ATM0");
    EXPECT_EQ(options.ModemInitString, "");
    dialog->close();
    EXPECT_EQ(options.ModemInitString, "ATM0");
}

TEST_F(frmCommSetupTest, ADetectedModemIsSelectedInTheList)
{
    options.ConnectionType = 2;
    Open();
    const WhenShown detection("frmModemAutoDetect", [](QDialog& window) {
        EXPECT_TRUE(window.isModal());
        auto& modems = *window.findChild<QListWidget*>("lstModems");
        auto* found = new QListWidgetItem("COM3 - Modem", &modems);
        found->setData(Qt::UserRole, 3);
        modems.setCurrentRow(0);
        QTest::mouseClick(window.findChild<QPushButton*>("cmdOk"), Qt::LeftButton);
    });
    Press("cmdDetectModems");
    EXPECT_EQ(detection.Times(), 1);
    EXPECT_EQ(Selected("lstModemPorts"), "Communications Port 03 (COM3)");
    EXPECT_EQ(options.ModemCommPort, 3);
}

TEST_F(frmCommSetupTest, ACancelledDetectionLeavesTheModemsPort)
{
    options.ConnectionType = 2;
    Open();
    const WhenShown detection("frmModemAutoDetect", [](QDialog& window) { window.close(); });
    Press("cmdDetectModems");
    EXPECT_EQ(detection.Times(), 1);
    EXPECT_EQ(options.ModemCommPort, 12);
}

// --- General -------------------------------------------------------------------------------------------------------

TEST_F(frmCommSetupTest, TheSliderSetsTheNodes)
{
    Open();
    auto& nodes = Control<QSlider>("barNodes");
    QTest::keyClick(&nodes, Qt::Key_End);
    EXPECT_EQ(options.NodesInSystem, 32);
    EXPECT_EQ(Control<QLabel>("lblNodes").text(), "32 Nodes");
    QTest::keyClick(&nodes, Qt::Key_Home);
    EXPECT_EQ(options.NodesInSystem, 1);
    EXPECT_EQ(Control<QLabel>("lblNodes").text(), "1 Nodes");
    dialog->close();
    EXPECT_THAT(host.calls, ElementsAre("nodes", "write"));
}

TEST_F(frmCommSetupTest, TheSyncBoxSetsItsSettingForThePresentNetworkOnly)
{
    Open();
    EXPECT_EQ(Check("cbSendSync").text().remove('&'), "Send \"Artificial\" Sync");
    Check("cbSendSync").click();
    EXPECT_TRUE(options.SendSync);
    Choose("CboProtocol", 0);
    EXPECT_FALSE(Check("cbSendSync").isEnabled());
    Choose("CboProtocol", 1);
    EXPECT_TRUE(Check("cbSendSync").isEnabled());
}

TEST_F(frmCommSetupTest, UnderTheOlderNetworkTheSyncBoxStartsDisabled)
{
    options.Protocol = "Fenrik 98";
    Open();
    EXPECT_EQ(Combo("CboProtocol").currentText(), "Fenrik 98");
    EXPECT_FALSE(Check("cbSendSync").isEnabled());
}

TEST_F(frmCommSetupTest, AllowingInternalCommandsIsAskedFirst)
{
    Open();
    boxes.answers = {QMessageBox::Cancel, QMessageBox::Ok};
    Check("cbInternal").click();
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text,
              "By checking this option, you will be able to send Internal System Commands to the Fenrik network.\n"
              "This is recommended for advanced users only.  Are you sure you want to enable this option?");
    EXPECT_EQ(boxes.boxes[0].title, "Allow Fenrik Internal Commands");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Ok | QMessageBox::Cancel);
    EXPECT_FALSE(Check("cbInternal").isChecked());
    EXPECT_FALSE(options.ShowFenrikInternal);

    QTest::keyClick(&Check("cbInternal"), Qt::Key_Space);
    EXPECT_TRUE(Check("cbInternal").isChecked());
    EXPECT_TRUE(options.ShowFenrikInternal);

    Check("cbInternal").click();
    EXPECT_FALSE(options.ShowFenrikInternal);
    EXPECT_THAT(boxes.boxes, SizeIs(2));
    EXPECT_THAT(host.calls, ElementsAre("categories", "categories", "categories"));
}

TEST_F(frmCommSetupTest, OneMethodAtMostCanBeMadeTheNewOne)
{
    const char* const names[] = {"chkTransceiverIsDefault", "chkModemIsDefault", "chkPipeServerIsDefault"};
    Open();
    for (const char* name : names)
        EXPECT_FALSE(Check(name).isChecked());
    for (int tab = 0; tab < 3; ++tab) {
        ShowTab(tab);
        QTest::keyClick(&Check(names[tab]), Qt::Key_Space);
        for (int other = 0; other < 3; ++other)
            EXPECT_EQ(Check(names[other]).isChecked(), other == tab);
    }
    Check(names[2]).click();
    EXPECT_FALSE(Check(names[2]).isChecked());
}

TEST_F(frmCommSetupTest, TheMethodIsTakenWhenTheWindowCloses)
{
    const char* const names[] = {"chkTransceiverIsDefault", "chkModemIsDefault", "chkPipeServerIsDefault"};
    for (const int type : {3, 2, 1}) {
        Open();
        ShowTab(type - 1);
        Check(names[type - 1]).click();
        dialog->close();
        EXPECT_EQ(options.ConnectionType, type);
    }
    options.ConnectionType = 2;
    Open();
    dialog->close();
    EXPECT_EQ(options.ConnectionType, 2);
}

// --- Closing -------------------------------------------------------------------------------------------------------

TEST_F(frmCommSetupTest, AChangeOfProtocolIsToldAndStoredForTheNextStart)
{
    Open();
    Choose("CboProtocol", 0);
    EXPECT_EQ(options.Protocol, "Fenrik 2000");
    Press("cmdContinue");
    EXPECT_THAT(BoxTexts(), ElementsAre(kRestart));
    EXPECT_EQ(options.Protocol, "Fenrik 98");
    Open();
    Press("cmdContinue");
    EXPECT_THAT(boxes.boxes, SizeIs(1));
}

TEST_F(frmCommSetupTest, AChangeOfProtocolOnTheVeryFirstRunGivesNoMessage)
{
    options.FirstRun = true;
    Open();
    Choose("CboProtocol", 0);
    Press("cmdContinue");
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(options.Protocol, "Fenrik 98");
}

TEST_F(frmCommSetupTest, AProtocolChosenAndTakenBackIsNoChange)
{
    options.Protocol = "fenrik 98";  // which is not the older network's name
    Open();
    Choose("CboProtocol", 0);
    Choose("CboProtocol", 1);
    dialog->close();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(options.Protocol, "fenrik 98");
}

TEST_F(frmCommSetupTest, ItsWindowButtonAndEscapeKeepWhatWasChosenToo)
{
    for (const bool escape : {false, true}) {
        options.ConnectionType = 1;
        options.ModemInitString.clear();
        host.calls.clear();
        Open();
        Check("chkModemIsDefault").setChecked(true);
        Text("txtModemInitString").setText("ATX");
        if (escape)
            QTest::keyClick(dialog.get(), Qt::Key_Escape);
        else
            dialog->close();
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(options.ConnectionType, 2);
        EXPECT_EQ(options.ModemInitString, "ATX");
        EXPECT_THAT(host.calls, ElementsAre("nodes", "write"));
    }
}

TEST_F(frmCommSetupTest, TheProgramsEndKeepsWhatWasChosenWithoutAWord)
{
    Open();
    Choose("CboProtocol", 0);
    Check("chkModemIsDefault").setChecked(true);
    dialog.reset();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(options.Protocol, "Fenrik 98");
    EXPECT_EQ(options.ConnectionType, 2);
    EXPECT_THAT(host.calls, ElementsAre("nodes", "write"));
}

TEST_F(frmCommSetupTest, AllControlsAreReachedByTab)
{
    options.SendSync = true;
    const std::vector<QStringList> tabs{
        {"lstPorts", "txtPortNumber", "chkTransceiverIsDefault"},
        {"lstModemPorts", "cmdDetectModems", "cmbModemBaudRate", "txtModemInitString", "chkModemIsDefault"},
        {"cbRDEnable", "cboRDProfiles", "cmdRDProfiles", "chkPipeServerIsDefault"}};
    OpenWith({ann}, ann.key());
    for (int tab = 0; tab < 3; ++tab) {
        ShowTab(tab);
        Combo("CboProtocol").setFocus();
        QStringList reached;
        do {
            reached.append(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        } while (QApplication::focusWidget() != &Combo("CboProtocol") && reached.size() < 30);
        const QStringList head{"CboProtocol", "barNodes", "cbSendSync", "cbInternal", "qt_tabwidget_tabbar"};
        EXPECT_EQ(reached, head + tabs[std::size_t(tab)] + QStringList{"cmdContinue"});
    }
}

TEST_F(frmCommSetupTest, EachTabComesToFrontByItsKey)
{
    Open();
    auto& tabs = Control<QTabWidget>("sstabPortSelection");
    const std::pair<Qt::Key, int> keys[] = {{Qt::Key_D, 1}, {Qt::Key_P, 2}, {Qt::Key_T, 0}};
    for (const auto& [key, index] : keys) {
        QTest::keyClick(dialog.get(), key, Qt::AltModifier);
        EXPECT_EQ(tabs.currentIndex(), index);
    }
}

}  // namespace
}  // namespace fenrik
