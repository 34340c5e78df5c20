// The modem link beside the plain one: what the carrier watch and the escape filter cost, and how long a frame takes to
// the line.

#include "link/CMsgHandler.h"
#include "platform/SerialControl.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "support/PortFolder.h"
#include "support/PseudoTerminal.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <unistd.h>
#include <vector>

namespace fenrik {
namespace {

using Time = std::chrono::steady_clock;

constexpr int kPiece = 2048;  // a pseudo-terminal takes no more than 4096 at once

double SecondsSince(Time::time_point start)
{
    return std::chrono::duration<double>(Time::now() - start).count();
}

class ModemHost : public LinkHost {
public:
    bool PortOpenForTx() const override { return true; }
    bool ModemActive() const override { return true; }
    void DisplayMessage(CMessage&) override {}
    void sendFrame(int, const QByteArray&) override {}
    void CloseModemLink() override { std::abort(); }
    void ShowPC(int) override {}
    void ShowBC(int) override {}
    void ShowCollisionMark(bool, const char*) override {}
    void TrafficWaiting() override {}
};

class SilentReporter : public ErrorReporter {
public:
    void ShowError(int, const QString&, const QString&, const QString&) override { std::abort(); }
};

/// A link engine on a pseudo-terminal, as after a call.
struct ModemEngine {
    ModemEngine()
    {
        folder.Link(6, terminal.Path());
        handler.setHost(&host);
        port.setCommPort(6);
        port.setPortOpen(true);
        handler.Reset(Transport::kModem);
    }
    ~ModemEngine() { handler.setHost(nullptr); }

    PseudoTerminal terminal;
    PortFolder folder;
    SystemClock clock;
    QtEventPump pump{clock};
    ComPorts ports = folder.Ports();
    SerialControl port{ports};
    CommandTable commands;
    SilentReporter errors;
    ModemHost host;
    CMsgHandler handler{port, clock, pump, commands, errors};
};

/// Random bytes without the first byte of a frame, so that the engine only slides; one in 256 is a backslash.
QByteArray Noise()
{
    QByteArray bytes(kPiece, '\0');
    std::mt19937 random(1);  // NOLINT: repeatable on purpose
    std::ranges::generate(bytes, [&random] { return char(1 + random() % 255); });
    return bytes;
}

/// Nanoseconds a byte that the two filters and the taking of the byte off the port cost beside the engine itself.
void ModemFilters(benchmark::State& state)
{
    ModemEngine engine;
    const QByteArray noise = Noise();
    double filtered = 0;
    double bare = 0;
    for (auto _ : state) {
        engine.terminal.Write(noise);
        while (engine.port.InBufferCount() < noise.size())
            engine.pump.Once();
        auto start = Time::now();
        engine.handler.ProcessCommEvent(SerialControl::kEvReceive);
        const double seconds = SecondsSince(start);
        filtered += seconds;
        start = Time::now();
        for (const char byte : noise)
            engine.handler.ReceiveMsgByte(std::uint8_t(byte));
        bare += SecondsSince(start);
        state.SetIterationTime(seconds);
    }
    const double bytes = double(state.iterations()) * kPiece;
    state.counters["ns_a_byte"] = (filtered - bare) / bytes * 1e9;
    state.counters["engine_ns_a_byte"] = bare / bytes * 1e9;
}
BENCHMARK(ModemFilters)->UseManualTime();

/// From the call of SendMessage on a quiet bus until all bytes of the frame can be read at the far end of the line.
void ModemSend(benchmark::State& state)
{
    ModemEngine engine;
    std::vector<double> milliseconds;
    for (auto _ : state) {
        CMessage message;
        message.Command = 59;
        message.data = 0x5C5C;
        const auto start = Time::now();
        engine.handler.SendMessage(message);
        char buffer[64];
        for (ssize_t got = 0; got < ssize_t(Frame::kSize) + 2;)
            got += std::max<ssize_t>(::read(engine.terminal.Handle(), buffer, sizeof buffer), 0);
        const double seconds = SecondsSince(start);
        milliseconds.push_back(seconds * 1000);
        state.SetIterationTime(seconds);
    }
    std::ranges::sort(milliseconds);
    state.counters["median_ms"] = milliseconds[milliseconds.size() / 2];
    state.counters["p99_ms"] = milliseconds[milliseconds.size() * 99 / 100];
}
BENCHMARK(ModemSend)->UseManualTime();

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
