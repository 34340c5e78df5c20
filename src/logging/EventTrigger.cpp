#include "logging/EventTrigger.h"

#include "logging/MsgLogging.h"
#include "shared/Settings.h"

namespace fenrik {

void EventTrigger::AfterMessage(int message, bool pending)
{
    if (!mSettings.LoggingOn || !mSettings.LoggingBuffered || message != mSettings.LoggingEventTrigger || pending)
        return;
    mLog.LogEntry98(0, QStringLiteral("Event Trigger"), message, QString());
    mHost.AddInfoRow(QStringLiteral("Event %1 occured.").arg(message));
    if (mSettings.LoggingDisconnect)
        Disconnect();
    mLog.TellOnce(mErrors, "MsgLogging:CommitBuffer", [this] { mLog.CommitBuffer(); });
}

void EventTrigger::Disconnect()
{
    mLog.LogEntry98(0, QStringLiteral("Disconnected"), 0, QString());
    mHost.ShowDisconnected();
    mHost.ClosePort();
}

}  // namespace fenrik
