#pragma once

#include <QString>

namespace fenrik {

class Clock;
class ErrorReporter;
class MessageList98;
class MsgLogging;
struct MessageEntry98;
struct Settings;

/// What was heard, told twice: as a line of the list and, if the user wants a log, as an entry of it. All outlive it.
/// A log that can't be written is reported once.
class Traffic98 {
public:
    Traffic98(MessageList98& list, MsgLogging& log, const Settings& settings, const Clock& clock, ErrorReporter& errors)
        : mList(list), mLog(log), mSettings(settings), mClock(clock), mErrors(errors)
    {
    }

    /// A message or an analog value of `node`.
    void Message(int node, const MessageEntry98& entry, int data);

    /// Something wrong on the line. `node` stands in the log alone.
    void Fault(int node, const QString& name, int data);

    /// A line in the list alone.
    void Info(const QString& text);

private:
    void Log(int node, const QString& name, int data, const QString& description);

    MessageList98& mList;
    MsgLogging& mLog;
    const Settings& mSettings;
    const Clock& mClock;
    ErrorReporter& mErrors;
};

}  // namespace fenrik
