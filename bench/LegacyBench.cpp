// What the window of the older network does with each byte, with its panels and its list: the list is not shown, so
// that only what each byte costs by itself is measured.

#include "AllocationCount.h"
#include "diagnostics/AsciiMap.h"
#include "diagnostics/CharacterFace.h"
#include "diagnostics/GlyphSheets.h"
#include "diagnostics/Graphics.h"
#include "legacy/MAF98.h"
#include "legacy/Marks98.h"
#include "legacy/MessageList98.h"
#include "legacy/Monitor98.h"
#include "legacy/Traffic98.h"
#include "logging/EventTrigger.h"
#include "logging/MsgLogging.h"
#include "platform/SerialControl.h"
#include "platform/VersionInfo.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

namespace fenrik {
namespace {

constexpr int kBytes = 6000;
constexpr std::uint8_t kPlain = 10;
constexpr std::uint8_t kIgnored = 11;
constexpr std::uint8_t kAnalog = 50;

class Silence : public ErrorReporter, public EventTriggerHost {
public:
    void ShowError(int, const QString&, const QString&, const QString&) override { std::abort(); }
    void AddInfoRow(const QString&) override {}
    void ShowDisconnected() override {}
    void ClosePort() override {}
};

/// Everything behind the port.
struct Window {
    Window()
    {
        messages[kPlain] = {QStringLiteral("Horn"), QStringLiteral("Body"), false, 1};
        messages[kIgnored] = {QStringLiteral("Alive"), QStringLiteral("Network"), true, 1};
        messages[kAnalog] = {QStringLiteral("Voltage"), QStringLiteral("Analog"), false, 10};
        monitor.Start();
    }

    AsciiMap map;
    GlyphSheets sheets{map};
    CharacterFace misc{sheets, QSize(148, 702), 8};
    CharacterFace analog{sheets, QSize(672, 740), Graphics::kColumns};
    Graphics graphics{analog};
    MessageTable98 messages;
    MAF98 panels{misc, graphics, messages};
    Marks98 marks{panels};
    Settings settings;
    RunState run;
    CommandTable commands;
    SystemClock clock;
    VersionInfo version{1, 0, 1, QString()};
    MsgLogging log{run, settings, commands, clock, version};
    Silence silence;
    MessageList98 list;
    Traffic98 traffic{list, log, settings, clock, silence};
    EventTrigger trigger{settings, log, silence, silence};
    ComPorts ports{QString(), [] { return QList<SerialDevice>(); }};
    SerialControl port{ports};
    Monitor98 monitor{{port, messages, settings, panels, marks, traffic, trigger, silence}};
};

void TellByteTime(benchmark::State& state, std::size_t bytes)
{
    using benchmark::Counter;
    state.counters["seconds_per_byte"] = Counter(double(bytes), Counter::kIsIterationInvariantRate | Counter::kInvert);
}

/// One call for each byte, as at a slow line.
void Feed(benchmark::State& state, Window& window, const std::vector<QByteArray>& calls, bool mayAllocate)
{
    for (const QByteArray& call : calls)
        window.monitor.ProcessCommData(call);  // timers that are started once are
    const std::size_t before = Allocations();
    for (auto _ : state) {
        for (const QByteArray& call : calls)
            window.monitor.ProcessCommData(call);
    }
    if (!mayAllocate && Allocations() != before)
        state.SkipWithError("something was allocated");
    TellByteTime(state, calls.size());
}

/// The token goes round; nobody says anything.
void Token(benchmark::State& state)
{
    Window window;
    std::vector<QByteArray> calls;
    for (int i = 0; i < kBytes; ++i)
        calls.push_back(QByteArray(1, char(TokenTracker::kFirst + i % 6)));
    Feed(state, window, calls, false);
}
BENCHMARK(Token)->Name("Legacy/Token");

void Ignored(benchmark::State& state)
{
    Window window;
    Feed(state, window, std::vector<QByteArray>(kBytes, QByteArray(1, char(kIgnored))), false);
}
BENCHMARK(Ignored)->Name("Legacy/Ignored");

/// A value that is drawn and not listed; of two calls one is the message's number.
void AnalogValue(benchmark::State& state)
{
    Window window;
    std::vector<QByteArray> calls;
    for (int i = 0; i < kBytes; i += 2) {
        calls.push_back(QByteArray(1, char(kAnalog)));
        calls.push_back(QByteArray(1, char(107 + i % 100)));
    }
    Feed(state, window, calls, true);
}
BENCHMARK(AnalogValue)->Name("Legacy/Analog");

void Listed(benchmark::State& state)
{
    Window window;
    const QByteArray call(1, char(kPlain));
    for (auto _ : state) {
        for (int i = 0; i < kBytes; ++i)
            window.monitor.ProcessCommData(call);
        state.PauseTiming();
        window.list.Clear();
        state.ResumeTiming();
    }
    TellByteTime(state, kBytes);
}
BENCHMARK(Listed)->Name("Legacy/Listed");

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
