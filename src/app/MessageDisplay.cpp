#include "app/MessageDisplay.h"

#include "app/Services.h"
#include "app/messages/MessageListModel.h"
#include "catalogue/SpecialCommands.h"
#include "link/CMessage.h"
#include "logging/MsgLogging.h"
#include "model/CSystem.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/Settings.h"

namespace fenrik {

namespace {

enum Number {
    kPingReply = 902,
    kNodeType = 979,
    kSync = 980,
    kLoadShed = 981,
    kFault = 983,
    kFirstInternal = 1015,
    kLastInternal = 1023,
};

}  // namespace

MessageDisplay::MessageDisplay(const Services& services, const CSystem& system, MessageListModel& list,
                               LiveViews& views)
    : mServices(services), mSystem(system), mList(list), mViews(views)
{
}

void MessageDisplay::DisplayMessage(CMessage& message)
{
    Guarded(mServices.errors, "frmmain:DisplayMessage", [this, &message] {
        const bool hide = RouteToViews(message);
        if (hide && !mServices.settings.ListAllMsgs)
            return;
        if (message.Command == kSync) {
            mViews.LightSync();
            return;  // a sync comes every few seconds: it has its lamp, and neither a line nor a log entry
        }
        if (message.Command == CommandTable::kSubCommandCarrier)
            message.Command = CommandTable::kFirstSubCommand + (message.data >> 8 & 0xFF);

        const Caption caption = CaptionOf(message);
        const LineNames::Id name = mList.Intern(caption.text, caption.icon, mServices.commands[message.Command].Name);
        mList.Add(message, name, mServices.commands.Count(message.Command));
        if (mServices.settings.LoggingOn)
            Log(message);
    });
}

bool MessageDisplay::RouteToViews(const CMessage& message)
{
    const int command = message.Command;
    const bool analog = mServices.commands.AnalogCommand(command);
    if (analog) {
        mServices.commands[command].LastValue = message.data;
        mViews.UpdateAnalog(command);
    }
    // A catalogue may call any command analog; those below keep their meaning all the same.
    switch (command) {
    case kPingReply:
        mViews.HandlePingResponse(0, message.data);
        mViews.RefreshCurrentFrame(false);
        return analog;
    case kLoadShed:
        mViews.UpdateLoadShed(message.data);
        return true;
    case kFault:
        if (message.data != 0) {
            mViews.UpdateDiagnostics(message);
            mViews.RefreshCurrentFrame(false);
        }
        return analog;
    case kNodeType:
        return analog || message.data != 0;
    default:
        return analog || (command >= kFirstInternal && command <= kLastInternal);
    }
}

MessageDisplay::Caption MessageDisplay::CaptionOf(const CMessage& message) const
{
    if (mServices.specials.IsSpecialCommand(message.Command))
        return SpecialCaption(message);
    return {mServices.commands[message.Command].Name, IconOf(message)};
}

MessageDisplay::Caption MessageDisplay::SpecialCaption(const CMessage& message) const
{
    CSpecialCommand& special = *mServices.specials.Find(message.Command);
    special.SelectItem(message.data, message.State, message.extended, false);
    QString text = special.scFullName();
    if (special.HasNodePart()) {
        const int node = special.scNode();
        const bool known = node >= 1 && node <= mSystem.NodesInSystem();
        text += QStringLiteral(" (Node %1%2)").arg(node).arg(known ? QString() : QStringLiteral(" - Unknown"));
    }
    return {text, special.scIcon()};
}

QString MessageDisplay::IconOf(const CMessage& message) const
{
    const int command = message.Command;
    if (mServices.commands.AnalogCommand(command))
        return QStringLiteral("Analog");
    if ((command >= 900 && command <= 999) || (command >= 1016 && command < CommandTable::kSize))
        return QStringLiteral("Command");
    return message.State ? QStringLiteral("On") : QStringLiteral("Off");
}

void MessageDisplay::Log(const CMessage& message)
{
    mServices.log.TellOnce(mServices.errors, "MsgLogging:LogToFile",
                           [this, &message] { mServices.log.LogToFile(message); });
}

}  // namespace fenrik
