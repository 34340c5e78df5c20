#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <span>
#include <vector>

namespace fenrik {

class TrafficLog;

/// Where the simulator's bytes go: the terminal, or a test's recorder.
class SimulatorLine {
public:
    virtual ~SimulatorLine() = default;

    /// Takes as many of `bytes` as there is room for now and returns their number; 0 if there is none. Never waits.
    virtual std::size_t Write(std::span<const std::uint8_t> bytes) = 0;

    /// True while a program has the other end open.
    [[nodiscard]] virtual bool Heard() const = 0;
};

/// Frames and other runs of bytes on their way to the line, ordered by the time at which each may leave.
///
/// A run that has begun is finished before another one starts. With a pace, bytes leave no faster than 9600 baud
/// carries them; without, a run leaves at once. What the line has no room for stays; beyond kLimit runs new ones are
/// dropped and logged. While nobody has the other end open, runs that are due get lost, as on a real line.
class SendQueue {
public:
    static constexpr std::size_t kLimit = 8192;       ///< runs that wait at most
    static constexpr double kBytesPerSecond = 960.0;  ///< 9600 baud, 10 bits each
    static constexpr double kNever = std::numeric_limits<double>::infinity();

    SendQueue(SimulatorLine& line, TrafficLog& log, bool paced) : mLine(line), mLog(log), mPaced(paced) {}

    /// Queues `bytes` to leave at `due` (seconds) or later. `meaning` is what the log says if they are no frame.
    void Push(double due, std::span<const std::uint8_t> bytes, const char* meaning = "");

    /// Hands the line what is due by `now`.
    void Send(double now);

    /// When Send has something to do; kNever if nothing waits, or if the line has to make room first.
    [[nodiscard]] double NextDue() const;

    /// True if the line had no room at the last Send.
    [[nodiscard]] bool Blocked() const { return mBlocked; }

    [[nodiscard]] std::size_t Pending() const { return mRuns.size(); }

private:
    struct Run {
        double due = 0;
        std::vector<std::uint8_t> bytes;
        const char* meaning = "";
    };

    [[nodiscard]] double FrontDue() const;
    [[nodiscard]] std::size_t Allowance(double now) const;
    void Discard(double now);
    void Finish();

    SimulatorLine& mLine;
    TrafficLog& mLog;
    bool mPaced;
    bool mBlocked = false;
    std::deque<Run> mRuns;
    std::size_t mSent = 0;  // bytes of the front run that have left
    double mLineFree = 0;   // when the line can take the next byte at its pace
};

}  // namespace fenrik
