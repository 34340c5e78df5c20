#include "remote/frmRDNetLatency.h"

#include "platform/SubscriptOutOfRange.h"
#include "shared/Clock.h"
#include "shared/ErrorReporter.h"

#include "ui_frmRDNetLatency.h"

#include <QPushButton>

#include <numeric>

namespace fenrik {

namespace {

const QString kEchoFrame = QStringLiteral("12345678901234567890123456789012");

}  // namespace

frmRDNetLatency::frmRDNetLatency(RemoteHost& host, const Clock& clock, ErrorReporter& errors, QWidget* parent)
    : QDialog(parent), mHost(host), mClock(clock), mErrors(errors), mUi(std::make_unique<Ui::frmRDNetLatency>())
{
    mUi->setupUi(this);
    mUi->pbMeasure->setRange(0, kRoundTrips);
    connect(mUi->cmdServer, &QPushButton::clicked, this, [this] { beginTest(Mode::Server); });
    connect(mUi->cmdClient, &QPushButton::clicked, this, [this] { beginTest(Mode::Client); });
    connect(mUi->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    Guarded(mErrors, "dlgNetLatency.Form.Load", [this] { Load(); });
}

frmRDNetLatency::~frmRDNetLatency() = default;

void frmRDNetLatency::Load()
{
    mUi->pbMeasure->setValue(0);
    ShowInfo(QStringLiteral("Average latency of (%1) %2 byte frames.").arg(kRoundTrips).arg(kEchoFrame.size()),
             QString());
    // It looks the wrong way round, and those who use it are used to it: in a pipe the button comes back with the next
    // state or after a test of the server.
    if (mHost.IsRemotePiped())
        mUi->cmdClient->setEnabled(false);
}

void frmRDNetLatency::beginTest(Mode wanted)
{
    Guarded(mErrors, "dlgNetLatency.beginTest", [this, wanted] {
        mode = wanted;
        count = 0;
        mUi->cmdServer->setEnabled(false);
        mUi->cmdClient->setEnabled(false);
        mUi->pbMeasure->setValue(0);
        ShowInfo(QStringLiteral("Measuring Network Latency ..."),
                 QStringLiteral("Sending %1 byte frames").arg(kEchoFrame.size()));
        sendEchoFrame();
    });
}

void frmRDNetLatency::sendEchoFrame()
{
    Guarded(mErrors, "dlgNetLatency.sendEchoFrame", [this] {
        mStart = mClock.Timer();
        if (mode == Mode::Client)
            mHost.sendEchoClient(kEchoFrame);
        else
            mHost.sendEchoServer(kEchoFrame);
    });
}

void frmRDNetLatency::replyReceived(const QString&)
{
    ++count;
    mUi->pbMeasure->setValue(count);
    if (count > kRoundTrips)
        throw SubscriptOutOfRange();
    mTrips[std::size_t(count - 1)] = float(mClock.Timer() - mStart);
    if (count < kRoundTrips)
        sendEchoFrame();
    else
        endTest();
}

void frmRDNetLatency::endTest()
{
    Guarded(mErrors, "dlgNetLatency.endTest", [this] {
        const double mean = std::accumulate(mTrips.begin(), mTrips.end(), 0.0) / kRoundTrips;
        mUi->cmdServer->setEnabled(true);
        if (mHost.IsRemotePiped())
            mUi->cmdClient->setEnabled(true);
        ShowInfo(QStringLiteral("Measurement Complete!"),
                 QStringLiteral("Average round trip latency is ") + QString::number(mean, 'f', 4));
    });
}

void frmRDNetLatency::ShowInfo(const QString& first, const QString& second)
{
    mUi->lblInfo->setText(first + QLatin1Char('\n') + second);
}

void frmRDNetLatency::setState(std::int32_t state)
{
    if (state < RemoteStates::kDisconnected)
        return;
    mUi->cmdServer->setEnabled(state >= RemoteStates::kConnected);
    mUi->cmdClient->setEnabled(state >= RemoteStates::kWaiting);
}

}  // namespace fenrik
