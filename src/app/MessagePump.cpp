#include "app/MessagePump.h"

#include "link/CMsgHandler.h"

namespace fenrik {

namespace {

constexpr int kTickMs = 1;
constexpr int kBacklogThatHides = 10;
constexpr int kNodeAnnouncement = 988;

}  // namespace

MessagePump::MessagePump(CMsgHandler& handler, PumpHost& host, QObject* parent)
    : QObject(parent), mHandler(handler), mHost(host)
{
    mTimer.setObjectName(QStringLiteral("TMsg"));
    mTimer.setParent(this);
    mTimer.setInterval(kTickMs);
    mTimer.setTimerType(Qt::PreciseTimer);
    // A message shown inside a wait of an earlier tick must not wait for that tick: the next one comes from a fresh
    // start of the timer, which Qt delivers also while this handler runs.
    mTimer.setSingleShot(true);
    connect(&mTimer, &QTimer::timeout, this, &MessagePump::Tick);
}

void MessagePump::setEnabled(bool enabled)
{
    mEnabled = enabled;
    if (!enabled)
        mTimer.stop();
    else
        Wake();
}

void MessagePump::Wake()
{
    const bool hasWork = mHandler.ReceivedMessagesPending() > 0 || mHandler.CarrierLost();
    // At once after a pause: a tick that is slept for costs more than what it carries.
    if (mEnabled && hasWork && !mTimer.isActive())
        mTimer.start(mSinceTick.isValid() && !mSinceTick.hasExpired(kTickMs) ? kTickMs : 0);
}

void MessagePump::Tick()
{
    mSinceTick.start();
    if (mHandler.CarrierLost()) {
        mHandler.ResetCarrierLostStatus();
        mHost.CarrierWasLost();
        return;
    }
    const int pending = mHandler.ReceivedMessagesPending();
    mHost.ShowMessageList(pending < kBacklogThatHides);
    auto message = mHandler.GetMessageReceived();
    Wake();
    if (message)
        Carry(*message);
}

void MessagePump::Carry(CMessage& message)
{
    if (mHost.TakenByStates(message))
        return;
    if (message.Command == kNodeAnnouncement)
        mHost.NodeAnnounced(message.data & 0xFF);
    mHost.DisplayMessage(message);
}

}  // namespace fenrik
