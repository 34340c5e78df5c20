// What a logged line costs, with the file opened and closed for each as the log does; the reference writes a line as
// long by the system's plain calls.

#include "link/CMessage.h"
#include "logging/MsgLogging.h"
#include "platform/VersionInfo.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace fenrik {
namespace {

constexpr qint64 kLineBytes = 104;

void Check(benchmark::State& state, const QString& path)
{
    if (QFile(path).size() != qint64(state.iterations()) * kLineBytes)
        state.SkipWithError("the file has not all lines");
}

void Line(benchmark::State& state)
{
    const QTemporaryDir dir;
    const SystemClock clock;
    const VersionInfo version = VersionInfo::OfThisBuild();
    const Settings settings;
    CommandTable commands;
    RunState run;
    run.DiagLogPath = dir.path();
    MsgLogging log(run, settings, commands, clock, version);
    log.NewFileName();

    CMessage message;
    message.Command = 1012;
    message.rawBytes = Frame{1012, true, false, 258}.Encode();
    message.rawForm = CMessage::RawForm::Received;
    message.time = clock.Now();
    for ([[maybe_unused]] auto turn : state) {
        message.data = (message.data + 1) & 0xFFFF;
        log.LogToFile(message);
    }
    Check(state, log.Path());
}
BENCHMARK(Line)->Name("Log/Line");

void PlainLine(benchmark::State& state)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("plain.txt");
    const std::string name = path.toStdString();
    const std::string text(kLineBytes, 'x');
    for ([[maybe_unused]] auto turn : state) {
        const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
        if (write(file, text.data(), text.size()) != ssize_t(text.size()))
            state.SkipWithError("the file can't be written");
        close(file);
    }
    Check(state, path);
}
BENCHMARK(PlainLine)->Name("Reference/LogLine");

}  // namespace
}  // namespace fenrik

BENCHMARK_MAIN();
