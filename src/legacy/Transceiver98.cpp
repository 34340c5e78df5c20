#include "legacy/Transceiver98.h"

#include "legacy/Monitor98.h"
#include "platform/SerialControl.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"

namespace fenrik {

namespace {

constexpr char kWakeByte = char(158);
constexpr std::uint8_t kAcknowledgeByte = 138;
constexpr int kTries = 3;
constexpr double kTrySeconds = 0.7;

}  // namespace

void Transceiver98::SetTRMode()
{
    const auto over = [this] { return !mWaiting || !mPort.PortOpen(); };
    mWaiting = true;
    Guarded(mErrors, "frmmain98:SetTRMode", [this, &over] {
        for (int tries = 0; tries < kTries && !over() && !mPump.Stopped(); ++tries) {
            mPort.Output(QByteArray(1, kWakeByte));
            mPump.WaitFor(over, kTrySeconds);
        }
    });
    mWaiting = false;
}

void Transceiver98::ProcessPortEvent()
{
    Guarded(mErrors, "frmmain98:MSComm:OnComm", [this] {
        if (!mWaiting)
            mMonitor.ProcessCommEvent98(mPort.CommEvent());
        else if (mPort.CommEvent() == SerialControl::kEvReceive)
            TakeAcknowledge();
    });
}

void Transceiver98::TakeAcknowledge()
{
    const QByteArray text = mPort.Input();
    if (!text.isEmpty() && std::uint8_t(text.front()) == kAcknowledgeByte)
        mWaiting = false;
}

}  // namespace fenrik
