// How fast the message list takes, keeps and shows its lines. Each figure of the list stands beside a reference that
// the same run times on the same machine ("Reference/..."): the plain way to do the same thing.
//
// Counters, in --benchmark_format=json fields of each result:
//   items_per_second    lines or updates a second
//   bytes_kept          size of one record
//   bytes_per_line      growth of the resident set by filling the list, over its lines: records, slack and allocator
//   median_ms, p99_ms   of the single steps, each timed by itself
//   total_ms            all steps together
//   checked             1 if what was built is what was asked for; a run where it is not ends with an error

#include "app/messages/MessageListModel.h"
#include "widgets/MessageListView.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <QtTest>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <numeric>
#include <string>
#include <unistd.h>
#include <unordered_map>
#include <vector>

namespace fenrik {
namespace {

constexpr int kBatch = 1000;

/// Messages of many commands, made before the clock runs.
const std::vector<CMessage>& Traffic()
{
    static const std::vector<CMessage> kTraffic = [] {
        std::vector<CMessage> messages(4096);
        for (int i = 0; i < int(messages.size()); ++i) {
            CMessage& message = messages[std::size_t(i)];
            message.Command = 1 + i * 37 % 1014;
            message.State = std::uint8_t(i & 1);
            message.data = i * 7919 & 0xFFFF;
            message.rawBytes =
                Frame{std::uint16_t(message.Command), (i & 1) != 0, false, std::uint16_t(message.data)}.Encode();
            message.CheckSum = message.rawBytes[5];
            message.rawForm = CMessage::RawForm::Received;
        }
        return messages;
    }();
    return kTraffic;
}

std::vector<LineNames::Id> Names(MessageListModel& model)
{
    std::vector<LineNames::Id> names;
    for (int command = 0; command < CommandTable::kSize; ++command)
        names.push_back(model.Intern(QStringLiteral("Command number %1").arg(command), QStringLiteral("On")));
    return names;
}

/// A model and the next lines for it.
class Feed {
public:
    void Add(std::int64_t lines)
    {
        const std::vector<CMessage>& traffic = Traffic();
        for (std::int64_t i = 0; i < lines; ++i) {
            CMessage message = traffic[mNext++ % traffic.size()];
            message.time.milliseconds = std::int64_t(mNext);
            model.Add(message, mNames[std::size_t(message.Command)], std::int16_t(mNext));
        }
    }

    MessageListModel model;

private:
    std::vector<LineNames::Id> mNames = Names(model);
    std::size_t mNext = 0;
};

std::int64_t ResidentBytes()
{
    malloc_trim(0);
    std::int64_t total = 0;
    std::int64_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

void Check(benchmark::State& state, bool holds)
{
    state.counters["checked"] = holds ? 1 : 0;
    if (!holds)
        state.SkipWithError("the list is not what was asked for");
}

/// Times single steps, for figures where the slow ones matter.
class Steps {
public:
    template <typename Step>
    void Time(benchmark::State& state, Step step)
    {
        const auto start = std::chrono::steady_clock::now();
        step();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(taken.count());
        mSeconds.push_back(taken.count());
    }

    void Report(benchmark::State& state)
    {
        std::sort(mSeconds.begin(), mSeconds.end());
        state.counters["total_ms"] = std::accumulate(mSeconds.begin(), mSeconds.end(), 0.0) * 1e3;
        state.counters["median_ms"] = mSeconds[mSeconds.size() / 2] * 1e3;
        state.counters["p99_ms"] = mSeconds[mSeconds.size() * 99 / 100] * 1e3;
    }

private:
    std::vector<double> mSeconds;
};

void Memory(benchmark::State& state)
{
    const std::int64_t lines = state.range(0);
    for ([[maybe_unused]] auto turn : state) {
        Feed feed;
        const std::int64_t before = ResidentBytes();
        feed.Add(lines);
        feed.model.Flush();
        state.counters["bytes_kept"] = double(sizeof(MessageRecord));
        state.counters["bytes_per_line"] = double(ResidentBytes() - before) / double(lines);
        Check(state, feed.model.rowCount() == lines);
    }
}

void Append(benchmark::State& state)
{
    const std::int64_t lines = state.range(0);
    bool whole = true;
    for ([[maybe_unused]] auto turn : state) {
        state.PauseTiming();
        auto feed = std::make_unique<Feed>();
        state.ResumeTiming();
        feed->Add(lines);
        state.PauseTiming();
        feed->model.Flush();
        whole = whole && feed->model.rowCount() == lines;
        feed.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * lines);
    Check(state, whole);
}

void ReferenceAppend(benchmark::State& state)
{
    const std::int64_t lines = state.range(0);
    for ([[maybe_unused]] auto turn : state) {
        std::vector<CMessage> plain;
        for (std::int64_t i = 0; i < lines; ++i) {
            plain.push_back(Traffic()[std::size_t(i) % Traffic().size()]);
            plain.back().time.milliseconds = i;
        }
        benchmark::DoNotOptimize(plain.data());
    }
    state.SetItemsProcessed(state.iterations() * lines);
}

/// A stride that is prime to all numbers of keys here, and far enough that no two steps meet in a cache line.
constexpr std::int64_t kStride = 7919;

std::int64_t Next(std::int64_t at, std::int64_t stride, std::int64_t keys)
{
    at += stride;
    return at < keys ? at : at - keys;
}

/// Commands 900 to 999 with as many data as make `keys` keys, each met in turn by a stride that visits them all.
void Compact(benchmark::State& state)
{
    const std::int64_t keys = state.range(0);
    MessageListModel model;
    model.SetCompactList(true);
    const auto name = model.Intern(QStringLiteral("Ping reply"), QStringLiteral("Command"));
    CMessage message = Traffic()[0];
    const auto put = [&](std::int64_t at) {
        message.Command = 900 + int(at % 100);
        message.data = std::int32_t(at / 100);
        message.time.milliseconds += 10;
        model.Add(message, name, 0);
    };
    for (std::int64_t at = 0; at < keys; ++at)
        put(at);
    model.Flush();

    constexpr std::int64_t kUpdates = 100'000;
    const std::int64_t stride = kStride % keys;
    std::int64_t at = 0;
    for ([[maybe_unused]] auto turn : state) {
        for (std::int64_t i = 0; i < kUpdates; ++i)
            put(at = Next(at, stride, keys));
    }
    state.SetItemsProcessed(state.iterations() * kUpdates);
    model.Flush();
    Check(state, model.rowCount() == keys);
}

void ReferenceCompact(benchmark::State& state)
{
    const std::int64_t keys = state.range(0);
    std::unordered_map<std::uint64_t, CMessage> lines;
    CMessage message = Traffic()[0];
    const auto put = [&](std::int64_t at) {
        message.time.milliseconds += 10;
        lines[std::uint64_t(900 + at % 100) << 32 | std::uint64_t(at / 100)] = message;
    };
    for (std::int64_t at = 0; at < keys; ++at)
        put(at);

    constexpr std::int64_t kUpdates = 100'000;
    const std::int64_t stride = kStride % keys;
    std::int64_t at = 0;
    for ([[maybe_unused]] auto turn : state) {
        for (std::int64_t i = 0; i < kUpdates; ++i)
            put(at = Next(at, stride, keys));
    }
    state.SetItemsProcessed(state.iterations() * kUpdates);
}

/// Counts the paintings of a widget, so that a figure of painting can't come from a window that is not on a screen.
class PaintCounter : public QObject {
public:
    int paintings = 0;

    bool eventFilter(QObject*, QEvent* event) override
    {
        paintings += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

/// Puts `view` on the screen.
void Show(QAbstractItemView& view, PaintCounter& counter)
{
    view.resize(1000, 700);
    view.show();
    (void)QTest::qWaitForWindowExposed(&view);
    view.viewport()->installEventFilter(&counter);
}

/// A shown view over `lines` lines.
struct Shown : Feed {
    explicit Shown(std::int64_t lines)
    {
        view.setModel(&model);
        Show(view, counter);
        Add(lines);
        view.Flush();
        view.viewport()->repaint();
        counter.paintings = 0;
    }

    PaintCounter counter;
    MessageListView view;
};

/// A batch of lines arrives: add, announce, select and show the newest, paint.
void BatchPaint(benchmark::State& state)
{
    Shown shown(state.range(0));
    Steps steps;
    for ([[maybe_unused]] auto turn : state) {
        steps.Time(state, [&] {
            shown.Add(kBatch);
            shown.view.Flush();
            shown.view.ShowNews();  // without the pause that it makes between two batches
            shown.view.viewport()->repaint();
        });
    }
    steps.Report(state);
    const bool follows = shown.view.SelectedRow() == shown.model.rowCount() - 1 && shown.view.FirstVisibleRow() > 0;
    Check(state, follows && shown.counter.paintings >= state.iterations());
}

void ReferenceBatchPaint(benchmark::State& state)
{
    Feed feed;
    PaintCounter counter;
    QTableView view;
    view.setModel(&feed.model);
    Show(view, counter);
    feed.Add(state.range(0));
    feed.model.Flush();
    view.viewport()->repaint();
    counter.paintings = 0;
    Steps steps;
    for ([[maybe_unused]] auto turn : state) {
        steps.Time(state, [&] {
            feed.Add(kBatch);
            feed.model.Flush();
            view.selectRow(feed.model.rowCount() - 1);
            view.scrollToBottom();
            view.viewport()->repaint();
        });
    }
    steps.Report(state);
    Check(state, counter.paintings >= state.iterations());
}

/// The scroll bar is dragged from one end to the other in 200 steps; the time is that of one step.
void Scroll(benchmark::State& state)
{
    Shown shown(state.range(0));
    QScrollBar& bar = *shown.view.verticalScrollBar();
    Steps steps;
    std::int64_t step = 0;
    for ([[maybe_unused]] auto turn : state) {
        steps.Time(state, [&] {
            bar.setValue(int(std::int64_t(bar.maximum()) * (step++ % 201) / 200));
            shown.view.viewport()->repaint();
        });
    }
    steps.Report(state);
    Check(state, bar.value() == bar.maximum() && shown.counter.paintings >= state.iterations());
}

void ToggleHex(benchmark::State& state)
{
    Shown shown(state.range(0));
    Steps steps;
    for ([[maybe_unused]] auto turn : state) {
        steps.Time(state, [&] {
            shown.model.SetHexData(!shown.model.HexData());
            shown.view.viewport()->repaint();
        });
    }
    steps.Report(state);
    Check(state, shown.counter.paintings >= state.iterations());
}

void Clear(benchmark::State& state)
{
    Shown shown(state.range(0));
    Steps steps;
    for ([[maybe_unused]] auto turn : state) {
        if (shown.model.rowCount() == 0) {
            shown.Add(state.range(0));
            shown.view.Flush();
        }
        steps.Time(state, [&] {
            shown.model.Clear();
            shown.view.viewport()->repaint();
        });
    }
    steps.Report(state);
    Check(state, shown.model.rowCount() == 0 && shown.counter.paintings >= state.iterations());
}

void Register()
{
    using benchmark::RegisterBenchmark;
    for (const int lines : {1'000'000, 5'000'000}) {
        RegisterBenchmark("List/Memory", Memory)->Arg(lines)->Iterations(1);
        RegisterBenchmark("List/Append", Append)->Arg(lines)->Unit(benchmark::kMillisecond);
    }
    RegisterBenchmark("Reference/Append", ReferenceAppend)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
    for (const int keys : {1000, 100'000, 1'000'000})
        RegisterBenchmark("List/Compact", Compact)->Arg(keys)->Unit(benchmark::kMillisecond);
    for (const int keys : {1000, 1'000'000})
        RegisterBenchmark("Reference/Compact", ReferenceCompact)->Arg(keys)->Unit(benchmark::kMillisecond);

    const auto shown = [](const char* name, void (*run)(benchmark::State&), int lines, int steps) {
        RegisterBenchmark(name, run)->Arg(lines)->Iterations(steps)->UseManualTime()->Unit(benchmark::kMillisecond);
    };
    for (const int lines : {100'000, 1'000'000, 5'000'000}) {
        shown("List/BatchPaint", BatchPaint, lines, 100);
        shown("List/Scroll", Scroll, lines, 201);
        shown("List/ToggleHex", ToggleHex, lines, 100);
        shown("List/Clear", Clear, lines, 5);
    }
    shown("Reference/BatchPaint", ReferenceBatchPaint, 100'000, 20);
    shown("Reference/BatchPaint", ReferenceBatchPaint, 1'000'000, 20);
}

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    fenrik::Register();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
