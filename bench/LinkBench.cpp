// The link engine from bytes to messages: noise against a plain loop over the same bytes, and clean frames in pieces
// of several sizes.

#include "AllocationCount.h"
#include "link/CMsgHandler.h"
#include "platform/SerialControl.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"

#include <benchmark/benchmark.h>

#include <random>

namespace fenrik {
namespace {

constexpr std::size_t kNoiseBytes = 1 << 20;
constexpr int kFramesPerRound = 10'000;

class CountingHost : public LinkHost {
public:
    bool PortOpenForTx() const override { return false; }
    bool ModemActive() const override { return false; }
    void DisplayMessage(CMessage&) override {}
    void sendFrame(int, const QByteArray&) override {}
    void CloseModemLink() override {}
    void ShowPC(int) override { ++calls; }
    void ShowBC(int) override { ++calls; }
    void ShowCollisionMark(bool, const char*) override { ++calls; }
    void TrafficWaiting() override { ++calls; }

    std::size_t calls = 0;
};

class SilentReporter : public ErrorReporter {
public:
    void ShowError(int, const QString&, const QString&, const QString&) override {}
};

/// The engine and what it needs.
struct Engine {
    Engine() { handler.setHost(&host); }

    int Drain()
    {
        int count = 0;
        while (handler.GetMessageReceived())
            ++count;
        return count;
    }

    SystemClock clock;
    QtEventPump pump{clock};
    ComPorts ports{QString()};
    SerialControl port{ports};
    CommandTable commands;
    SilentReporter errors;
    CountingHost host;
    CMsgHandler handler{port, clock, pump, commands, errors};
};

/// True if the six bytes in `window`, the oldest on top, are a good frame.
bool IsFrame(std::uint64_t window)
{
    return window >> 36 == 0x00A &&
           std::uint8_t((window >> 32) + (window >> 24) + (window >> 16) + (window >> 8)) == std::uint8_t(window);
}

std::uint64_t Slide(std::uint64_t window, std::uint8_t byte)
{
    return (window << 8 | byte) & 0xFFFF'FFFF'FFFF;
}

/// Random bytes, the same in every run. They hold no good frame, also not where a second round follows the first, so
/// that receiving them has nothing to allocate for.
const std::vector<std::uint8_t>& Noise()
{
    static const std::vector<std::uint8_t> kNoise = [] {
        std::vector<std::uint8_t> bytes(kNoiseBytes);
        std::mt19937 random(1);  // NOLINT: repeatable on purpose
        for (std::uint8_t& byte : bytes)
            byte = std::uint8_t(random());
        std::uint64_t window = 0;
        for (std::size_t i = 0; i < 2 * kNoiseBytes; ++i) {
            std::uint8_t& byte = bytes[i % kNoiseBytes];
            if (IsFrame(Slide(window, byte)))
                ++byte;
            window = Slide(window, byte);
        }
        return bytes;
    }();
    return kNoise;
}

void NoiseThroughEngine(benchmark::State& state)
{
    Engine engine;
    const auto& noise = Noise();
    const std::size_t before = Allocations();
    for (auto _ : state) {
        for (const std::uint8_t byte : noise)
            engine.handler.ReceiveMsgByte(byte);
    }
    if (Allocations() != before)
        state.SkipWithError("noise was allocated for");
    state.counters["collisions"] = double(engine.handler.PCCollisions()) / double(state.iterations());
    state.SetBytesProcessed(std::int64_t(state.iterations() * noise.size()));
}
BENCHMARK(NoiseThroughEngine);

/// What the engine is measured by: the window slides and is tested, and nothing else happens.
void NoiseThroughPlainLoop(benchmark::State& state)
{
    const auto& noise = Noise();
    for (auto _ : state) {
        std::uint64_t window = 0;
        int frames = 0;
        for (const std::uint8_t byte : noise) {
            window = Slide(window, byte);
            if (IsFrame(window))
                ++frames;
        }
        benchmark::DoNotOptimize(frames);
    }
    state.SetBytesProcessed(std::int64_t(state.iterations() * noise.size()));
}
BENCHMARK(NoiseThroughPlainLoop);

/// Frames without a gap, in pieces as a port or a pipe hands them over.
void CleanFrames(benchmark::State& state)
{
    QByteArray stream;
    for (int i = 0; i < kFramesPerRound; ++i) {
        const Frame::Bytes bytes = Frame{std::uint16_t(1 + i % 1000), i % 2 == 0, false, std::uint16_t(i)}.Encode();
        stream.append(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
    }
    std::vector<QByteArray> pieces;
    for (qsizetype start = 0; start < stream.size(); start += state.range(0))
        pieces.push_back(stream.mid(start, state.range(0)));

    Engine engine;
    for (auto _ : state) {
        for (const QByteArray& piece : pieces)
            engine.handler.ProcessSockEvent(piece);
        if (engine.Drain() != kFramesPerRound)
            state.SkipWithError("frames were lost");
    }
    state.SetItemsProcessed(state.iterations() * kFramesPerRound);
}
BENCHMARK(CleanFrames)->Arg(1)->Arg(5)->Arg(6)->Arg(64)->Arg(1000)->Arg(60'000);

}  // namespace
}  // namespace fenrik

BENCHMARK_MAIN();
