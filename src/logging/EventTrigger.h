#pragma once

#include <QString>

namespace fenrik {

class ErrorReporter;
class MsgLogging;
struct Settings;

/// What the event asks of the window of the older network.
class EventTriggerHost {
public:
    virtual ~EventTriggerHost() = default;
    virtual void AddInfoRow(const QString& text) = 0;  ///< a row of the kind "Info" in the message list
    virtual void ShowDisconnected() = 0;               ///< the toolbar as for not connected
    virtual void ClosePort() = 0;
};

/// The flight recorder of the older network: a chosen message writes the log of what led up to it.
class EventTrigger {
public:
    EventTrigger(const Settings& settings, MsgLogging& log, ErrorReporter& errors, EventTriggerHost& host)
        : mSettings(settings), mLog(log), mErrors(errors), mHost(host)
    {
    }

    /// To be called after each message has been shown. `pending`: only the first half of a message of two bytes has
    /// come, and its number counts when the second one is there. A log that can't be written is reported once.
    void AfterMessage(int message, bool pending);

private:
    void Disconnect();

    const Settings& mSettings;
    MsgLogging& mLog;
    ErrorReporter& mErrors;
    EventTriggerHost& mHost;
};

}  // namespace fenrik
