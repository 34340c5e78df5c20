#pragma once

#include "simulator/SendQueue.h"
#include "simulator/Simulation.h"
#include "simulator/TimeSource.h"

#include <limits>
#include <string>
#include <vector>

namespace fenrik {

inline void PrintTo(const Frame& frame, std::ostream* out)
{
    *out << frame.command << (frame.state ? " on" : " off") << (frame.extended ? " true " : " false ") << frame.data;
}

inline bool operator==(const Frame& a, const Frame& b)
{
    return a.Encode() == b.Encode();
}

using ByteList = std::vector<std::uint8_t>;

inline ByteList ToBytes(const Frame& frame)
{
    const auto bytes = frame.Encode();
    return {bytes.begin(), bytes.end()};
}

/// Time that stands until a test moves it.
class FakeTime final : public TimeSource {
public:
    [[nodiscard]] double Seconds() const override { return now; }
    double now = 0;
};

/// The far end of the line: keeps what arrives, and can be full or unheard.
class LineRecorder final : public SimulatorLine {
public:
    std::size_t Write(std::span<const std::uint8_t> run) override
    {
        const auto taken = std::min(run.size(), room);
        bytes.insert(bytes.end(), run.begin(), run.begin() + std::ptrdiff_t(taken));
        room -= taken;
        return taken;
    }
    [[nodiscard]] bool Heard() const override { return heard; }

    /// The frames among the bytes, which are then forgotten.
    std::vector<Frame> TakeFrames()
    {
        std::vector<Frame> frames;
        FrameScanner scanner;
        for (const auto& item : scanner.Take(bytes, 0))
            if (item.kind == Received::Kind::Frame)
                frames.push_back(item.frame);
        bytes.clear();
        return frames;
    }

    ByteList bytes;
    std::size_t room = std::numeric_limits<std::size_t>::max();
    bool heard = true;
};

class HostRecorder final : public SimulationHost {
public:
    void Unplug() override { calls.emplace_back("unplug"); }
    void Plug() override { calls.emplace_back("plug"); }
    void Quit() override { calls.emplace_back("quit"); }
    void OrderModem(const ModemOrder& order) override { orders.push_back(order); }

    std::vector<std::string> calls;
    std::vector<ModemOrder> orders;
};

}  // namespace fenrik
