#pragma once

#include <QString>
#include <QStringList>

namespace fenrik {

class Clock;
class CommandTable;
class VersionInfo;
struct CMessage;
struct RunState;

/// Writes the shown traffic to a text file for reading; the program never reads one.
///
/// Each write opens the file, appends and closes it again, so a line is on disk as soon as it is written. Lines end
/// in CR LF. Columns, counted from 1; what lies between two fields is blank:
///
///   1   name of the command, 27 wide      52  checksum, 5 wide
///   28  data, 5 wide                      62  raw bytes
///   35  state, as " 1 "                   80  time, "h:mm:ss.00"
///   42  extended, as " 0 "                93  date
class MsgLogging {
public:
    /// `run.DiagLogPath` is the folder.
    MsgLogging(const RunState& run, const CommandTable& commands, const Clock& clock, const VersionInfo& version);

    /// From now on a file named after the present time is written.
    void NewFileName();

    /// Full path of the file, which exists only once something was written.
    [[nodiscard]] QString Path() const;

    /// The head of a connection; `text` ("Connected - ") stands before date and time. Throws Error 75.
    void CreateLogHeader00(const QString& text);

    /// One line. Throws Error 75.
    void LogToFile(const CMessage& message);

private:
    void Append(const QStringList& lines) const;

    const RunState& mRun;
    const CommandTable& mCommands;
    const Clock& mClock;
    const VersionInfo& mVersion;
    QString mFileName;
};

}  // namespace fenrik
