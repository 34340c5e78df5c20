#include "legacy/Monitor98.h"

#include "legacy/MAF98.h"
#include "legacy/Marks98.h"
#include "legacy/Traffic98.h"
#include "logging/EventTrigger.h"
#include "platform/SerialControl.h"
#include "shared/ErrorReporter.h"
#include "shared/Settings.h"

#include <utility>

namespace fenrik {

void Monitor98::Start()
{
    mToken = {};
    mPending.reset();
    mPanel = Panel98::Analog;
    mWaiting.clear();
    mListening = true;
}

void Monitor98::ProcessCommEvent98(int event)
{
    Guarded(mParts.errors, "frmmain98:ProcessCommEvent98", [this, event] {
        if (event == SerialControl::kEvReceive)
            ProcessCommData(mParts.port.Input());
        else if (event == SerialControl::kFramingError)
            TellCollision();
    });
}

/// Two nodes that talk at once are a byte of a wrong shape to the transceiver.
void Monitor98::TellCollision()
{
    const int count = mParts.marks.CountCollision();
    if (mParts.settings.ListAllMsgs)
        mParts.traffic.Fault(0, QStringLiteral("Bus Collision"), count);
}

void Monitor98::ProcessCommData(const QByteArray& text)
{
    if (mBusy) {
        mWaiting += text;
        return;
    }
    mBusy = true;
    TakeBytes(text);
    while (!mWaiting.isEmpty())
        TakeBytes(std::exchange(mWaiting, {}));
    mBusy = false;
}

void Monitor98::TakeBytes(const QByteArray& text)
{
    for (const char byte : text) {
        if (!mListening)
            return;
        const auto value = std::uint8_t(byte);
        if (TokenTracker::IsToken(value))
            TakeToken(value);
        else
            DisplayMessage98(mToken.Current(), value);
    }
}

void Monitor98::TakeToken(std::uint8_t token)
{
    mParts.panels.TokenBar(token);
    if (const auto expected = mToken.Take(token))
        TellMissed(token, *expected);
}

void Monitor98::TellMissed(std::uint8_t token, int expected)
{
    mParts.marks.CountMissedToken();
    if (mParts.settings.ListAllMsgs)
        mParts.traffic.Fault(token, QStringLiteral("Missed Token"), expected);
}

void Monitor98::DisplayMessage98(int token, std::uint8_t message)
{
    try {
        const int told = mPending ? TakeValue(message) : TakeMessage(token - TokenTracker::kBase, message);
        mParts.trigger.AfterMessage(told, mPending.has_value());
    } catch (const std::exception&) {
        ReportCurrentException(mParts.errors, "frmmain:DisplayMessage");
    }
}

/// Gives the number under which the message counts for the event trigger.
int Monitor98::TakeValue(std::uint8_t value)
{
    const Pending pending = *std::exchange(mPending, {});
    const MessageEntry98& entry = mParts.messages[pending.message];
    if (mPanel == Panel98::Analog)
        mParts.panels.AnalogValue(pending.message, entry.Name, value);
    if (mParts.settings.ListAllMsgs)
        mParts.traffic.Message(pending.node, entry, value);
    return pending.message;
}

/// The same. Before the first token a message comes from node -100, as there is no better number.
int Monitor98::TakeMessage(int node, std::uint8_t message)
{
    const MessageEntry98& entry = mParts.messages[message];
    // Comes before the kind, so that the value of an ignored analog message is taken for a message.
    if (entry.Ignore)
        return message;
    if (entry.kind == MessageEntry98::Kind::Analog) {
        mPending = {node, message};
        return 0;
    }
    if (entry.kind == MessageEntry98::Kind::LoadShed)
        mParts.panels.LoadShed(entry.Name);
    mParts.traffic.Message(node, entry, message);
    return message;
}

}  // namespace fenrik
