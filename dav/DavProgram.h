#pragma once

#include "dav/CommandLine.h"

class QIODevice;

namespace fenrik {

class Database;

/// fenrik-dav: shows what a database holds, and converts genuine ones. Needs no display.
class DavProgram {
public:
    /// The exit codes; the help text tells them.
    static constexpr int kGood = 0;
    static constexpr int kMisused = 1;
    static constexpr int kUnreadable = 2;
    static constexpr int kUnwritable = 3;

    /// Both outlive the program. What was asked for goes to `output`, everything else to `errors`.
    DavProgram(QIODevice& output, QIODevice& errors) : mOutput(output), mErrors(errors) {}

    /// Gives the exit code. Never throws.
    int Run(const CommandLine& line);

private:
    int Read(const CommandLine& line);
    int Convert(const CommandLine& line);
    void ShowInfo(Database& database);
    void ShowTables(const Database& database);
    void ShowLeftOut(const Database& database, QIODevice& device);
    void ShowProperties(Database& database);
    int Fail(int code, const QString& what);

    QIODevice& mOutput;
    QIODevice& mErrors;
};

}  // namespace fenrik
