#include "link/Transceiver.h"

#include "LinkFixture.h"

#include "link/ConnectAdvice.h"
#include "platform/Error.h"
#include "platform/VersionInfo.h"
#include "shared/RunState.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WindowRecorder : public TransceiverHost {
public:
    void ShowStatus(const QString& text) override { statuses.push_back(text.toStdString()); }
    void ShowMessage(const QString& text) override { messages.push_back(text.toStdString()); }
    void RefreshConnection(bool readPanels, bool detect) override { refreshes.push_back({readPanels, detect}); }

    std::vector<std::string> statuses;
    std::vector<std::string> messages;
    std::vector<std::pair<bool, bool>> refreshes;
};

class TransceiverTest : public LinkTest {
protected:
    TransceiverTest()
    {
        folder.Link(4, terminal.Path());
        settings.CommPort = 4;
        settings.ConnectionType = 1;
        QObject::connect(&port, &SerialControl::OnComm, &port, [this] { transceiver.ProcessPortEvent(); });
    }

    void Open()
    {
        port.setCommPort(4);
        port.setPortOpen(true);
    }

    /// Bytes come over the line, `seconds` after the step before; their events are delivered before the step ends.
    void ArriveAfter(double seconds, const QByteArray& bytes)
    {
        pump.After(seconds, [this, bytes] {
            const auto wanted = bytesSeen + bytes.size();
            terminal.Write(bytes);
            EXPECT_TRUE(QTest::qWaitFor([&] { return bytesSeen >= wanted; }));
        });
        if (!counting) {
            counting = true;
            QObject::connect(&port, &SerialControl::OnComm, &port, [this] { ++bytesSeen; });
        }
    }

    void UnplugAfter(double seconds)
    {
        pump.After(seconds, [this] {
            terminal.Unplug();
            EXPECT_TRUE(QTest::qWaitFor([this] { return !port.PortOpen(); }));
        });
    }

    /// What was sent: 158 once for each round.
    int WakeBytes()
    {
        const QByteArray sent = terminal.Read(2, 50);
        EXPECT_EQ(sent.count(char(158)), sent.size());
        return int(sent.size());
    }

    Settings settings;
    RunState run;
    BoxRecorder boxes;
    VersionInfo version{1, 0, 1, QString()};
    WindowRecorder window;
    Transceiver transceiver{port, handler, pump, boxes, version, settings, run, window};
    qsizetype bytesSeen = 0;
    bool counting = false;
};

TEST_F(TransceiverTest, TheAcknowledgeEndsTheTestAtOnce)
{
    Open();
    ArriveAfter(0.3, QByteArray(1, char(138)));
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_EQ(WakeBytes(), 1);
    EXPECT_EQ(transceiver.TRMode(), Transceiver::Mode::Normal);
    EXPECT_THAT(window.statuses, ElementsAre("Initializing Transceiver...", "Transceiver ready"));
    EXPECT_THAT(window.messages, ElementsAre(""));
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(TransceiverTest, TheSecondRoundMayBeAnswered)
{
    Open();
    ArriveAfter(0.9, QByteArray(1, char(138)));
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_NEAR(Elapsed(), 0.9, 0.005);
    EXPECT_EQ(WakeBytes(), 2);
}

TEST_F(TransceiverTest, AStrayByteChangesNothing)
{
    Open();
    ArriveAfter(0.1, QByteArray(1, char(137)));
    pump.After(0.0, [this] { EXPECT_EQ(transceiver.TRMode(), Transceiver::Mode::Acknowledge); });
    ArriveAfter(0.2, QByteArray("\x01\x02") + char(138));
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_EQ(WakeBytes(), 1);
}

TEST_F(TransceiverTest, TrafficAfterTheTwoRoundsIsProofToo)
{
    Open();
    pump.After(1.5, [this] { EXPECT_EQ(transceiver.TRMode(), Transceiver::Mode::Listening); });
    ArriveAfter(0.5, QByteArray(1, '\0'));
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_NEAR(Elapsed(), 2.0, 0.01);
    EXPECT_EQ(WakeBytes(), 2);
    EXPECT_EQ(window.statuses.back(), "Transceiver ready");
}

TEST_F(TransceiverTest, ABusInUseIsReadyRightAfterTheTwoRounds)
{
    Open();
    for (int i = 0; i < 30; ++i)
        ArriveAfter(0.1, QByteArray(1, '\x55'));
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_GT(Elapsed(), 1.4);
    EXPECT_NEAR(Elapsed(), 1.5, 0.01);
}

TEST_F(TransceiverTest, ASilentLineTakesSevenPointFourSecondsInAll)
{
    Open();
    EXPECT_FALSE(transceiver.SetTRMode());
    EXPECT_GT(Elapsed(), 7.4);
    EXPECT_NEAR(Elapsed(), 7.4, 0.01);
    EXPECT_EQ(WakeBytes(), 2);
    EXPECT_EQ(transceiver.TRMode(), Transceiver::Mode::Normal);
    EXPECT_THAT(window.statuses, ElementsAre("Initializing Transceiver...", "Disconnected"));
    EXPECT_THAT(window.messages, ElementsAre("", "No Transceiver found"));
}

TEST_F(TransceiverTest, FramesDuringTheTestAreLost)
{
    Open();
    ArriveAfter(0.1, Wire(1));
    ArriveAfter(0.1, QByteArray(1, char(138)));
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_THAT(ReceivedCommands(), IsEmpty());
}

TEST_F(TransceiverTest, FramingErrorsProveNothing)
{
    Open();
    std::optional<std::uint32_t> count = 0;
    SerialControl noisy(ports, nullptr, [&count](int) { return count; });
    Transceiver tested(noisy, handler, pump, boxes, version, settings, run, window);
    int events = 0;
    QObject::connect(&noisy, &SerialControl::OnComm, &noisy, [&] {
        tested.ProcessPortEvent();
        ++events;
    });
    PseudoTerminal line;
    folder.Link(5, line.Path());
    noisy.setCommPort(5);
    noisy.setPortOpen(true);
    for (const auto mode : {Transceiver::Mode::Acknowledge, Transceiver::Mode::Listening}) {
        tested.setTRMode(mode);
        *count += 1;
        events = 0;
        ASSERT_TRUE(QTest::qWaitFor([&events] { return events > 0; }));
        EXPECT_EQ(tested.TRMode(), mode);
    }
    EXPECT_EQ(handler.BusCollisions(), 0);
}

TEST_F(TransceiverTest, AUsbTransceiverIsNotTested)
{
    Open();
    run.USBTransceiverSelected = true;
    version = VersionInfo(1, 0, 1, "debug");
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_EQ(Elapsed(), 0.0);
    EXPECT_EQ(WakeBytes(), 0);
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(window.statuses.back(), "Transceiver ready");
}

TEST_F(TransceiverTest, ADebugBuildAsksAndTakesYesForAnAnswer)
{
    Open();
    version = VersionInfo(1, 0, 1, "debug");
    boxes.answers.push_back(QMessageBox::Yes);
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_EQ(Elapsed(), 0.0);
    EXPECT_EQ(WakeBytes(), 0);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, QStringLiteral("Assume Fenrik transceiver is correctly connected?"));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Question);
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Yes | QMessageBox::No);
}

TEST_F(TransceiverTest, ADebugBuildTestsAfterNo)
{
    Open();
    version = VersionInfo(1, 0, 1, "debug");
    boxes.answers.push_back(QMessageBox::No);
    ArriveAfter(0.2, QByteArray(1, char(138)));
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_EQ(WakeBytes(), 1);
}

TEST_F(TransceiverTest, OnlyADebugBuildAsks)
{
    Open();
    version = VersionInfo(1, 0, 1, "beta test");
    ArriveAfter(0.2, QByteArray(1, char(138)));
    EXPECT_TRUE(transceiver.SetTRMode());
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(TransceiverTest, ADeviceThatIsPulledOutInARoundEndsTheTest)
{
    Open();
    UnplugAfter(0.3);
    EXPECT_FALSE(transceiver.SetTRMode());
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_EQ(window.statuses.back(), "Disconnected");
    EXPECT_EQ(transceiver.TRMode(), Transceiver::Mode::Normal);
}

TEST_F(TransceiverTest, ADeviceThatIsPulledOutWhileListeningEndsTheTest)
{
    Open();
    UnplugAfter(3.0);
    EXPECT_FALSE(transceiver.SetTRMode());
    EXPECT_NEAR(Elapsed(), 3.0, 0.01);
}

TEST_F(TransceiverTest, AStoppedPumpEndsTheTestInARound)
{
    Open();
    pump.After(0.3, [this] { pump.Stop(); });
    EXPECT_FALSE(transceiver.SetTRMode());
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_EQ(WakeBytes(), 1);
}

TEST_F(TransceiverTest, AStoppedPumpEndsTheTestWhileListening)
{
    Open();
    pump.After(3.0, [this] { pump.Stop(); });
    EXPECT_FALSE(transceiver.SetTRMode());
    EXPECT_NEAR(Elapsed(), 3.0, 0.01);
}

// --- Connecting ----------------------------------------------------------------------------------------------------

TEST_F(TransceiverTest, ConnectingOpensThePortOfTheSettingsAndResetsTheEngine)
{
    Receive(QByteArray(16, '\x55'));
    ArriveAfter(0.2, QByteArray(1, char(138)));
    transceiver.ConnectTransceiver();
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(port.CommPort(), 4);
    EXPECT_EQ(port.Settings(), QStringLiteral("9600,n,8,1"));
    EXPECT_EQ(handler.TargetPort(), Transport::kTransceiver);
    EXPECT_EQ(handler.PCCollisions(), 0);
    EXPECT_THAT(window.refreshes, ElementsAre(std::pair(true, true)));
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(TransceiverTest, AfterConnectingThePortsEventsGoToTheEngine)
{
    ArriveAfter(0.2, QByteArray(1, char(138)));
    transceiver.ConnectTransceiver();
    terminal.Write(Wire(901));
    ASSERT_TRUE(QTest::qWaitFor([this] { return handler.ReceivedMessagesPending() > 0; }));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(901));
}

TEST_F(TransceiverTest, ModeThreeIgnoresThePortsEvents)
{
    Open();
    transceiver.setTRMode(Transceiver::Mode::Ignore);
    terminal.Write(Wire(901));
    ASSERT_TRUE(QTest::qWaitFor([this] { return port.InBufferCount() == 6; }));
    QTest::qWait(0);
    EXPECT_EQ(handler.ReceivedMessagesPending(), 0);
    EXPECT_EQ(transceiver.TRMode(), Transceiver::Mode::Ignore);
}

TEST_F(TransceiverTest, AnOpenPortIsClosedFirst)
{
    PseudoTerminal modem;
    folder.Link(9, modem.Path());
    port.setCommPort(9);
    port.setSettings(QStringLiteral("57600,n,8,1"));
    port.setPortOpen(true);
    ArriveAfter(0.2, QByteArray(1, char(138)));
    transceiver.ConnectTransceiver();
    EXPECT_EQ(port.CommPort(), 4);
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(WakeBytes(), 1);
}

TEST_F(TransceiverTest, WithoutATransceiverThePortIsClosedAndTheUserIsTold)
{
    transceiver.ConnectTransceiver();
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THAT(window.refreshes, ElementsAre(std::pair(true, true)));
    EXPECT_EQ(handler.TargetPort(), Transport::kRemote);  // as it was: no Reset
    EXPECT_EQ(settings.ConnectionType, 1);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text,
              QStringLiteral("No transceiver was detected.\nPlease check all connections to the transceiver, and\n"
                             "make sure power has been recycled since the last download.") +
                  ConnectAdvice::NoTransceiver());
    for (const char* word : {"Cables", "Power", "dialout", "udev rule"})
        EXPECT_TRUE(boxes.boxes[0].text.contains(word)) << word;
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Information);
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Ok);
}

TEST_F(TransceiverTest, AClosingWindowIsNotToldOfAMissingTransceiver)
{
    pump.After(0.3, [this] { pump.Stop(); });
    transceiver.ConnectTransceiver();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(window.refreshes, IsEmpty());
}

TEST_F(TransceiverTest, ADeviceThatIsPulledOutWhileConnectingIsAMissingTransceiver)
{
    UnplugAfter(0.3);
    transceiver.ConnectTransceiver();
    EXPECT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransceiverTest, APortThatCannotBeOpenedIsTheCallersError)
{
    settings.CommPort = 12;
    try {
        transceiver.ConnectTransceiver();
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kPortNotFound);
    }
    EXPECT_EQ(transceiver.TRMode(), Transceiver::Mode::Normal);
    EXPECT_THAT(window.statuses, IsEmpty());
    EXPECT_THAT(window.refreshes, IsEmpty());
}

// --- Selection at start --------------------------------------------------------------------------------------------

TEST_F(TransceiverTest, AUsbTransceiverBecomesThePortAndTheMethod)
{
    settings.ConnectionType = 3;
    SelectUSBTransceiver(folder.Ports({{"/dev/ttyUSB0", "FT232", 0x0403, 0x6001}}), settings, run);
    EXPECT_EQ(run.USBTransceiverPort, 5);
    EXPECT_TRUE(run.USBTransceiverSelected);
    EXPECT_EQ(settings.CommPort, 5);
    EXPECT_EQ(settings.ConnectionType, 1);
}

TEST_F(TransceiverTest, WithoutAUsbTransceiverTheSettingsStay)
{
    settings.ConnectionType = 3;
    run.USBTransceiverPort = 7;
    run.USBTransceiverSelected = true;
    SelectUSBTransceiver(folder.Ports({{"/dev/ttyS0", "", 0, 0}}), settings, run);
    EXPECT_EQ(run.USBTransceiverPort, 0);
    EXPECT_FALSE(run.USBTransceiverSelected);
    EXPECT_EQ(settings.CommPort, 4);
    EXPECT_EQ(settings.ConnectionType, 3);
}

}  // namespace
}  // namespace fenrik
