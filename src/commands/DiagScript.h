#pragma once

#include "commands/DiagScriptLine.h"

#include <QString>

namespace fenrik {

class EventPump;

/// What a script asks of the window with the composer.
class DiagScriptHost {
public:
    virtual ~DiagScriptHost() = default;

    /// Line `number` comes next, counted from 1.
    virtual void ShowScriptLine(int number) = 0;

    /// Sets the composer's fields and presses "Send". May wait. Throws if the composer can't take the command.
    virtual void SendScriptCommand(const DiagScriptCommand& command) = 0;
};

/// Runs a text file of commands and pauses, line by line. Knows no variables, no branches and no replies.
class DiagScript {
public:
    DiagScript(EventPump& pump, DiagScriptHost& host) : mPump(pump), mHost(host) {}

    /// Runs the file at `path` to its end; false if it was stopped before. Lines end in LF or CR LF; a byte-order mark
    /// is skipped. A pause blocks the whole program; what the user did meanwhile is seen between two lines.
    ///
    /// Throws Error 53 or 75 if the file can't be read. The error of a line ends the script, with the line's number
    /// and text in its description; what was sent before stays sent.
    bool Run(const QString& path);

    /// No further line is begun.
    void RequestStop() { mStopRequested = true; }

    /// The line that was begun last; 0 before the first.
    [[nodiscard]] int Line() const { return mLine; }

private:
    [[nodiscard]] bool MayGoOn();
    void RunLine(const QString& line);
    void Execute(const DiagScriptStatement& statement);

    EventPump& mPump;
    DiagScriptHost& mHost;
    int mLine = 0;
    bool mStopRequested = false;
};

}  // namespace fenrik
