// Calling a vehicle: the search for a modem, the dialler, the network through the module, and the ends of a call.

#include "e2e/ToolTest.h"
#include "modem/frmModemAutoDetect.h"
#include "platform/Boxes.h"
#include "shared/Clock.h"
#include "shared/EventPump.h"
#include "shared/RunState.h"
#include "support/ErrorRecorder.h"
#include "support/PseudoTerminal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr char kVehicle[] = "quiet\nmodem dial-time 0.2\n";

/// Each dial takes the pauses that the module needs, so these cases take their real time.
class SlowModem : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        QSettings settings(copy.ConfigFolder() + "/settings.ini", QSettings::IniFormat);
        settings.setValue("Settings/ConnectionType", "2");
        settings.setValue("Settings/ModemCommPort", "6");
        settings.setValue("Settings/LastPhoneNumber", "555-0100");
    }

    void Start(const char* scenario = kVehicle)
    {
        ASSERT_NO_FATAL_FAILURE(vehicle.StartAsModem(scenario));
        ASSERT_NO_FATAL_FAILURE(StartTool());
    }

    /// Presses "Connect" and works the dialler; returns when what follows is over.
    void Connect(const std::function<void(QDialog&)>& work)
    {
        boxes.WorkNext(QStringLiteral("frmDialer"), work);
        Click("Toolbar", "Connect");
    }

    static void Press(QDialog& dialog, const char* button)
    {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
    }
    static QString Status(QDialog& dialog) { return dialog.findChild<QLabel*>("lblStatus")->text(); }

    void StartConnectedByModem(const char* scenario = kVehicle)
    {
        ASSERT_NO_FATAL_FAILURE(Start(scenario));
        Connect([](QDialog& dialog) { Press(dialog, "cmdDial"); });
        ASSERT_EQ(Text("txtStatus"), "Connected");
        ASSERT_EQ(Text("txtMsg"), "Nodes Detected");
    }

    /// Dials `number` and gives what the dialler says then.
    QString Dial(const char* number)
    {
        QString status;
        Connect([&](QDialog& dialog) {
            dialog.findChild<QLineEdit*>("tbPhoneNumber")->setText(QLatin1String(number));
            Press(dialog, "cmdDial");
            status = Status(dialog);
            Press(dialog, "cmdCancel");
        });
        return status;
    }

    void Send(const char* data)
    {
        Find<QComboBox>("CboCategory").setCurrentText("Doors and Ramp");
        Find<QComboBox>("CboCommand").setCurrentText("Front Door Is Open");
        Find<QLineEdit>("TxtData").setText(QLatin1String(data));
        QTest::mouseClick(&Find<QPushButton>("cmdSend"), Qt::LeftButton);
    }
};

TEST_F(SlowModem, IsFoundAmongTheOtherPorts)
{
    const PseudoTerminal silent;
    ASSERT_NO_FATAL_FAILURE(vehicle.StartAsModem(kVehicle));
    QFile::link(silent.Path(), copy.ConfigFolder() + "/ports/com3");
    QFile::link("/dev/null", copy.ConfigFolder() + "/ports/com4");

    const SystemClock clock;
    QtEventPump pump(clock);
    Boxes standardBoxes;
    ErrorRecorder errors;
    RunState run;
    const ComPorts ports(copy.ConfigFolder() + "/ports", [] { return QList<SerialDevice>(); });
    frmModemAutoDetect window(ports, run, pump, standardBoxes, errors);
    boxes.LeaveAlone(window.objectName());
    window.show();
    QTest::mouseClick(window.findChild<QPushButton*>("cmdDetect"), Qt::LeftButton);
    EXPECT_EQ(window.findChild<QLabel*>("lblStatus")->text(), "1 modem detected");
    auto& list = *window.findChild<QListWidget*>("lstModems");
    ASSERT_EQ(list.count(), 1);
    EXPECT_EQ(list.item(0)->text(), "COM6 - Fenrik Simulated Modem 56K");
    list.setCurrentRow(0);
    QTest::mouseClick(window.findChild<QPushButton*>("cmdOk"), Qt::LeftButton);
    EXPECT_EQ(window.SelectedPort(), 6);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(SlowModem, TellsTheStepsOfADialAndCarriesTheNetwork)
{
    ASSERT_NO_FATAL_FAILURE(Start("quiet\nmodem dial-time 0.2\nmodem notes every 4\n"));
    QStringList told;
    QTimer watch;
    Connect([&](QDialog& dialog) {
        EXPECT_EQ(Status(dialog), "Enter the phone number and click 'Dial'...");
        QObject::connect(&watch, &QTimer::timeout, &dialog, [&] {
            if (told.isEmpty() || told.constLast() != Status(dialog))
                told.append(Status(dialog));
        });
        watch.start(5);
        Press(dialog, "cmdDial");
        EXPECT_FALSE(dialog.isVisible());
    });
    watch.stop();
    EXPECT_THAT(told, ElementsAre("Looking for the modem on COM6...", "Dialing 5550100...", "Connect 57600",
                                  "Fenrik Modem Module v1.4"));
    ASSERT_EQ(Text("txtStatus"), "Connected");
    EXPECT_EQ(Text("txtMsg"), "Nodes Detected");
    EXPECT_TRUE(IsEnabled("Nodebar", "Node8"));

    // Traffic, and a message whose data is all backslashes, in both directions.
    int lines = LineCount();
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 1 on false 23644"));
    ASSERT_TRUE(Eventually([&] { return LineCount() > lines; }));
    EXPECT_THAT(Line(lines), StartsWith("Head Lamps Low Beam|On|False|23644|"));
    Send("23644");
    EXPECT_TRUE(Eventually([this] { return vehicle.Log().back().meaning == "59 state=1 ext=0 data=23644"; }))
        << vehicle.Log().back().meaning.toStdString();

    // A node's whole configuration.
    Click("Nodebar", "Node3");
    boxes.AnswerNext(QMessageBox::Yes);
    Click("Toolbar", "Refresh");
    EXPECT_EQ(Text("txtMsg"), "Node information successfully updated.");
}

TEST_F(SlowModem, ThatLosesItsCarrierIsToldWhenAllIsPutAwayAndDialledAgain)
{
    ASSERT_NO_FATAL_FAILURE(StartConnectedByModem());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("modem drop"));
    ASSERT_TRUE(Eventually([this] { return Text("txtStatus") == "Disconnected"; }));
    ASSERT_TRUE(Eventually([this] { return vehicle.HasNote("port closed"); }));
    EXPECT_TRUE(Eventually([this] { return IsEnabled("Toolbar", "Connect"); }));
    QStringList texts;
    ASSERT_TRUE(Eventually([&] { return !(texts += boxes.Take()).isEmpty(); }));
    EXPECT_THAT(texts, ElementsAre("Carrier lost, disconnected"));

    Connect([](QDialog& dialog) { Press(dialog, "cmdDial"); });
    EXPECT_EQ(Text("txtStatus"), "Connected");
    EXPECT_EQ(Text("txtMsg"), "Nodes Detected");
}

TEST_F(SlowModem, HangsUpAtDisconnect)
{
    ASSERT_NO_FATAL_FAILURE(StartConnectedByModem());
    Click("Toolbar", "Disconnect");
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_TRUE(vehicle.HasNote("module hears \\P"));
    EXPECT_TRUE(vehicle.HasNote("module hears \\h"));
    EXPECT_TRUE(vehicle.HasNote("modem hears ATZ"));
    EXPECT_THAT(boxes.Take(), IsEmpty()) << "the carrier that the hang-up ends isn't lost";
}

TEST_F(SlowModem, TrafficThatStreamsComesThroughWhole)
{
    ASSERT_NO_FATAL_FAILURE(StartConnectedByModem("quiet\nmodem dial-time 0.2\nmodem notes every 7\n"));
    const int lines = LineCount();
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("burst 2000 of 1 on false 23644"));
    EXPECT_TRUE(Eventually([&] { return LineCount() >= lines + 2000; })) << LineCount() - lines;
    for (int row = lines; row < lines + 2000; ++row)
        ASSERT_THAT(Line(row), StartsWith("Head Lamps Low Beam|On|False|23644|")) << row;
}

struct CallRow {
    const char* name;
    const char* number;
    const char* status;
};

class SlowModemCalls : public SlowModem, public testing::WithParamInterface<CallRow> {};

TEST_P(SlowModemCalls, ThatFailAreTold)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(Dial(GetParam().number), QLatin1String(GetParam().status));
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("port closed"); }));
}

INSTANTIATE_TEST_SUITE_P(Modem, SlowModemCalls,
                         testing::Values(CallRow{"Busy", "555-0102", "Unable to connect, BUSY."},
                                         CallRow{"NoAnswer", "(555) 01.03", "Unable to connect, NO ANSWER."},
                                         CallRow{"NoCarrier", "5550104", "Unable to connect, NO CARRIER."}),
                         [](const auto& row) { return row.param.name; });

TEST_F(SlowModem, WithoutAModuleIsNotConnected)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(Dial("555-0105"), "");
    EXPECT_THAT(boxes.Take(), ElementsAre("The modem module did not respond as expected while attempting to enter pass "
                                          "through mode."));
    EXPECT_TRUE(vehicle.HasNote("modem hears ATH0")) << "the canceled dialler has hung up";
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
}

TEST_F(SlowModem, WithASetInitializationStringIsDialledAllTheSame)
{
    QSettings(copy.ConfigFolder() + "/settings.ini", QSettings::IniFormat)
        .setValue("Settings/ModemInitString", "AT&F0X4");
    ASSERT_NO_FATAL_FAILURE(StartConnectedByModem());
    EXPECT_TRUE(vehicle.HasNote("modem hears AT&F0X4"));
}

TEST_F(SlowModem, TakesWhatTheDiallersSettingsChangeForTheNextDial)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Connect([this](QDialog& dialog) {
        boxes.WorkNext(QStringLiteral("frmCommSetup"), [&dialog](QDialog& options) {
            EXPECT_EQ(options.parentWidget(), &dialog);
            EXPECT_TRUE(options.isModal());
            options.findChild<QLineEdit*>("txtModemInitString")->setText("ATM0");
            Press(options, "cmdContinue");
        });
        Press(dialog, "cmdSettings");
        Press(dialog, "cmdDial");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Text("txtStatus"), "Connected");
    EXPECT_TRUE(vehicle.HasNote("modem hears ATM0"));
}

TEST_F(SlowModem, IsCanceledWhileItDials)
{
    ASSERT_NO_FATAL_FAILURE(Start("quiet\nmodem dial-time 30\n"));
    QElapsedTimer timer;
    Connect([&](QDialog& dialog) {
        QTimer::singleShot(1500, &dialog, [&] {
            timer.start();
            Press(dialog, "cmdCancel");
            EXPECT_EQ(Status(dialog), "Canceling...");
        });
        Press(dialog, "cmdDial");
    });
    EXPECT_LT(timer.elapsed(), 3000);
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_TRUE(vehicle.HasNote("modem gives the call up"));
    EXPECT_TRUE(IsEnabled("Toolbar", "Connect"));
}

TEST_F(SlowModem, ThatIsPulledOutWhileItDialsIsTold)
{
    ASSERT_NO_FATAL_FAILURE(Start("quiet\nmodem dial-time 30\n"));
    Connect([&](QDialog& dialog) {
        QTimer::singleShot(1500, &dialog, [&] { vehicle.Control("unplug"); });
        Press(dialog, "cmdDial");
        EXPECT_EQ(Status(dialog), "Unable to connect, .");
        Press(dialog, "cmdCancel");
    });
    EXPECT_THAT(Text("txtMsg"), HasSubstr("Comm Port 6 has gone away"));

    ASSERT_NO_FATAL_FAILURE(vehicle.Control("plug"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("modem dial-time 0.2"));
    Connect([](QDialog& dialog) { Press(dialog, "cmdDial"); });
    EXPECT_EQ(Text("txtStatus"), "Connected");
}

TEST_F(SlowModem, HangsUpWhenTheProgramEnds)
{
    ASSERT_NO_FATAL_FAILURE(StartConnectedByModem());
    CloseTool();
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("port closed"); }));
    EXPECT_TRUE(vehicle.HasNote("modem comes back to commands"));
    EXPECT_TRUE(vehicle.HasNote("modem hears ATH0"));
    EXPECT_THAT(copy.StoredSettings().toStdString(), HasSubstr("LastPhoneNumber=555-0100"));
}

TEST_F(SlowModem, HangsUpWhenTheProgramEndsWhileItDials)
{
    ASSERT_NO_FATAL_FAILURE(Start("quiet\nmodem dial-time 30\n"));
    Connect([&](QDialog& dialog) {
        QTimer::singleShot(1500, program->Window(), [this] { program->Window()->close(); });
        Press(dialog, "cmdDial");
    });
    EXPECT_FALSE(program->Window()->isVisible());
    program.reset();
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("port closed"); }));
    EXPECT_TRUE(vehicle.HasNote("modem hears ATH0"));
}

TEST_F(SlowModem, LeavesTheDiallerOpenIfItIsNotToCloseItself)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Connect([&](QDialog& dialog) {
        dialog.findChild<QCheckBox*>("cbAutoClose")->setChecked(false);
        Press(dialog, "cmdDial");
        EXPECT_EQ(Status(dialog), "Fenrik Modem Module v1.4");
        // What the vehicle says meanwhile is not lost.
        vehicle.Control("send 1 on false 7");
        QTest::qWait(300);
        Press(dialog, "cmdClose");
    });
    EXPECT_EQ(Text("txtStatus"), "Connected");
    EXPECT_THAT(LinesFrom(0), Contains(StartsWith("Head Lamps Low Beam|On|False|7|")));
}

}  // namespace
}  // namespace fenrik
