#pragma once

#include "simulator/LegacyMessages.h"
#include "simulator/LegacyTraffic.h"
#include "simulator/Schedule.h"
#include "simulator/SendQueue.h"
#include "simulator/Simulated.h"
#include "simulator/Simulation.h"

#include <array>
#include <deque>

namespace fenrik {

/// The older network at its line: six nodes that pass a token round, 101 to 106. The node that holds it says what it
/// has to say, one byte for each message and one more for a measured value.
class LegacyBus final : public Simulated {
public:
    /// The references outlive it.
    LegacyBus(const Scenario& scenario, const Simulation::Settings& settings, const TimeSource& time,
              SimulatorLine& line, TrafficLog& log, SimulationHost& host);

    void Receive(std::span<const std::uint8_t> bytes) override;
    void Step() override;
    [[nodiscard]] double NextDue() const override;
    [[nodiscard]] bool Blocked() const override { return mQueue.Blocked(); }
    void Carry(const Action& action) override;

private:
    using Run = std::vector<std::uint8_t>;

    struct Node {
        std::deque<Run> runs;  // to be said
        int missed = 0;        // rounds in which it will not get the token
        bool silent = false;   // it never gets it
    };

    [[nodiscard]] Node& At(int number) { return mNodes[std::size_t(number - 1)]; }
    void PassToken(double time);
    void Speak(Node& node, double time);
    void Say(double time, const Run& run);
    void Fill(double time);
    [[nodiscard]] bool SkipsTurn(Node& node);

    void CarryMessage(const Action& action);
    void CarryShedLine(const Action& action);
    void CarryMiss(const Action& action);
    void CarrySilent(const Action& action);
    void CarryCollide(const Action& action);
    void CarryBytes(const Action& action);
    void CarryFlood(const Action& action);
    void CarryNoTransceiver(const Action& action);
    void CarryQuiet(const Action& action);
    void CarryUnplug(const Action&) { mHost.Unplug(); }
    void CarryPlug(const Action&) { mHost.Plug(); }
    void CarryQuit(const Action&) { mHost.Quit(); }

    const TimeSource& mTime;
    TrafficLog& mLog;
    SimulationHost& mHost;
    SendQueue mQueue;
    LegacyTraffic mTraffic;
    Schedule mSchedule;
    std::array<Node, kLegacyNodes> mNodes;
    int mHolder = 0;        // node that got the token last; 0 before the first
    double mNextToken = 0;  // seconds
    int mCollisions = 0;    // that are still to come
    bool mTransceiver = true;
    bool mQuiet = false;
    double mFloodRate = 0;  // bytes a second
    std::uint8_t mFiller = 0;
};

}  // namespace fenrik
