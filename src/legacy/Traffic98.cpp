#include "legacy/Traffic98.h"

#include "legacy/MessageList98.h"
#include "legacy/MessageTable98.h"
#include "logging/MsgLogging.h"
#include "shared/Clock.h"
#include "shared/Settings.h"

namespace fenrik {

using Kind = MessageRecord98::Kind;

void Traffic98::Message(int node, const MessageEntry98& entry, int data)
{
    mList.Add({float(mClock.Timer()), data, 0, std::int16_t(node), Kind::Command}, entry.Name, entry.Description);
    Log(node, entry.Name, data, entry.Description);
}

void Traffic98::Fault(int node, const QString& name, int data)
{
    Log(node, name, data, QString());
    mList.Add({float(mClock.Timer()), data, 0, 0, Kind::Error}, name, QString());
}

void Traffic98::Info(const QString& text)
{
    mList.Add({0, 0, 0, 0, Kind::Info}, text, QString());
}

void Traffic98::Log(int node, const QString& name, int data, const QString& description)
{
    if (mSettings.LoggingOn)
        mLog.TellOnce(mErrors, "frmmain:DisplayMessage", [&] { mLog.LogEntry98(node, name, data, description); });
}

}  // namespace fenrik
