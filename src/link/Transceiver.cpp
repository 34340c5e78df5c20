#include "link/Transceiver.h"

#include "link/CMsgHandler.h"
#include "link/ConnectAdvice.h"
#include "platform/Boxes.h"
#include "platform/ComPorts.h"
#include "platform/SerialControl.h"
#include "platform/VersionInfo.h"
#include "shared/EventPump.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

namespace fenrik {

namespace {

constexpr char kWakeByte = char(158);
constexpr std::uint8_t kAcknowledgeByte = 138;
constexpr int kRounds = 2;
constexpr double kRoundSeconds = 0.7;
constexpr double kListenSeconds = 6.0;

}  // namespace

Transceiver::Transceiver(SerialControl& port, CMsgHandler& handler, EventPump& pump, Boxes& boxes,
                         const VersionInfo& version, const Settings& settings, const RunState& run,
                         TransceiverHost& host)
    : mPort(port), mHandler(handler), mPump(pump), mBoxes(boxes), mVersion(version), mSettings(settings), mRun(run),
      mHost(host)
{
}

void Transceiver::ProcessPortEvent()
{
    const int event = mPort.CommEvent();
    switch (mMode) {
    case Mode::Normal:
        mHandler.ProcessCommEvent(event);
        break;
    case Mode::Acknowledge:
        if (event == SerialControl::kEvReceive)
            TakeAcknowledge();
        break;
    case Mode::Listening:
        if (event == SerialControl::kEvReceive)
            mMode = Mode::Normal;
        break;
    case Mode::Ignore:
        break;
    }
}

void Transceiver::TakeAcknowledge()
{
    if (mPort.InBufferCount() >= 1 && mPort.InputByte() == kAcknowledgeByte)
        mMode = Mode::Normal;
}

void Transceiver::ConnectTransceiver()
{
    if (mPort.PortOpen())
        mPort.setPortOpen(false);
    mPort.setCommPort(mSettings.CommPort);
    mPort.setSettings(QStringLiteral("9600,n,8,1"));
    mPort.setPortOpen(true);
    if (SetTRMode()) {
        mHandler.Reset(Transport::kTransceiver);
        mHost.RefreshConnection(true, true);
        return;
    }
    if (mPump.Stopped())
        return;  // the window is closing
    mPort.setPortOpen(false);
    mHost.RefreshConnection(true, true);
    mBoxes.MsgBox(QStringLiteral("No transceiver was detected.\n"
                                 "Please check all connections to the transceiver, and\n"
                                 "make sure power has been recycled since the last download.") +
                      ConnectAdvice::NoTransceiver(),
                  QMessageBox::Information);
}

bool Transceiver::SetTRMode()
{
    mMode = Mode::Acknowledge;
    mHost.ShowStatus(QStringLiteral("Initializing Transceiver..."));
    mHost.ShowMessage(QString());
    // A transceiver on USB is known by its vendor and product; it is not tested.
    if (mRun.USBTransceiverSelected)
        mMode = Mode::Normal;
    if (!Woken() && mVersion.IsDebug())
        AskDeveloper();
    if (!Woken())
        AskTransceiver();

    const bool ready = Woken() && mPort.PortOpen();
    mMode = Mode::Normal;
    mHost.ShowStatus(ready ? QStringLiteral("Transceiver ready") : QStringLiteral("Disconnected"));
    if (!ready)
        mHost.ShowMessage(QStringLiteral("No Transceiver found"));
    return ready;
}

void Transceiver::AskDeveloper()
{
    const auto answer = mBoxes.MsgBox(QStringLiteral("Assume Fenrik transceiver is correctly connected?"),
                                      QMessageBox::Question, QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes)
        mMode = Mode::Normal;
}

void Transceiver::AskTransceiver()
{
    const auto over = [this] { return Woken() || !mPort.PortOpen(); };
    for (int round = 0; round < kRounds && !over() && !mPump.Stopped(); ++round) {
        mPort.Output(QByteArray(1, kWakeByte));
        mPump.WaitFor(over, kRoundSeconds);
    }
    if (over() || mPump.Stopped())
        return;
    mMode = Mode::Listening;
    mPump.WaitFor(over, kListenSeconds);
}

void SelectUSBTransceiver(const ComPorts& ports, Settings& settings, RunState& run)
{
    run.USBTransceiverPort = 0;
    run.USBTransceiverSelected = false;
    const int number = ports.FindUsbTransceiver();
    if (number == 0)
        return;
    run.USBTransceiverPort = number;
    run.USBTransceiverSelected = true;
    settings.CommPort = std::int16_t(number);
    settings.ConnectionType = 1;
}

}  // namespace fenrik
