#pragma once

#include "logging/CMessage98.h"

#include <QString>

#include <deque>
#include <functional>

namespace fenrik {

class Clock;
class CommandTable;
class ErrorReporter;
class VersionInfo;
struct CMessage;
struct RunState;
struct Settings;

/// Writes the shown traffic to a text file for reading; the program never reads one. LogLayout tells how it looks.
///
/// Each write opens the file, appends and closes it again, so a line is on disk as soon as it is written. Whoever calls
/// has looked whether logging is on. All that write throw Error 75.
class MsgLogging {
public:
    /// `run.DiagLogPath` is the folder.
    MsgLogging(const RunState& run, const Settings& settings, const CommandTable& commands, const Clock& clock,
               const VersionInfo& version);

    /// From now on a file named after the present time is written.
    void NewFileName();

    /// Full path of the file, which exists only once something was written.
    [[nodiscard]] QString Path() const;

    /// A connection is about to be made: a new name if the user wants one for each, and failures are told anew.
    void BeginConnection();

    /// Runs `write`. Its failure goes to `errors` under the name `where`, but of failures in a row only the first one:
    /// the traffic goes on, and so would the boxes.
    void TellOnce(ErrorReporter& errors, const char* where, const std::function<void()>& write);

    /// The head of a connection to the present network; `text` ("Connected - ") stands before date and time.
    void CreateLogHeader00(const QString& text);

    /// The same for the older network. What the buffer still holds of the last connection is dropped.
    void CreateLogFile(const QString& text);

    void LogToFile(const CMessage& message);
    void LogToFile(const CMessage98& entry);

    /// An entry of the older network, stamped with the present time: written, or kept for the event if the user chose
    /// the event trigger.
    void LogEntry98(int node, const QString& name, int data, const QString& description);

    /// Keeps the entry for the event. The oldest one goes first if more than "BufferMax" are there already, so that one
    /// more than that number can be.
    void LogMessage(const CMessage98& entry);

    /// Writes the kept entries, oldest first, and empties the buffer. Those that can't be written stay.
    void CommitBuffer();

private:
    [[nodiscard]] QString Stamped(const QString& text) const;

    const RunState& mRun;
    const Settings& mSettings;
    const CommandTable& mCommands;
    const Clock& mClock;
    const VersionInfo& mVersion;
    QString mFileName;
    std::deque<CMessage98> mBuffer;  // oldest first
    bool mFailureTold = false;
};

}  // namespace fenrik
