#pragma once

#include "simulator/FrameScanner.h"
#include "simulator/Scenario.h"
#include "simulator/Schedule.h"
#include "simulator/SendQueue.h"
#include "simulator/Simulated.h"
#include "simulator/Traffic.h"
#include "simulator/Vehicle.h"

#include <random>

namespace fenrik {

class TimeSource;

/// What a scenario asks of the program around the simulation. Called inside Start, Step and Carry.
class SimulationHost {
public:
    virtual ~SimulationHost() = default;
    virtual void Unplug() = 0;
    virtual void Plug() = 0;
    virtual void Quit() = 0;
    virtual void OrderModem(const ModemOrder& order) = 0;
};

/// The vehicle at its line: brings together what nodes answer, what they send by themselves and what the scenario
/// has them do wrong.
class Simulation final : public Simulated {
public:
    struct Settings {
        bool paced = false;
        unsigned seed = 1;
    };

    /// The references outlive the simulation.
    Simulation(const Scenario& scenario, const Settings& settings, const TimeSource& time, SimulatorLine& line,
               TrafficLog& log, SimulationHost& host);

    void Receive(std::span<const std::uint8_t> bytes) override;
    void Step() override;
    [[nodiscard]] double NextDue() const override;
    [[nodiscard]] bool Blocked() const override { return mQueue.Blocked(); }
    void Carry(const Action& action) override;

private:
    using Verb = Action::Verb;

    void Handle(const std::vector<Received>& found);
    void AnswerWake();
    void Answer(const Frame& question);
    void Force(const ForceOrder& order);
    [[nodiscard]] bool LosesNext(bool beginsReply);
    [[nodiscard]] double AnswerTime();
    void Send(const Frame& frame);
    void Send(const std::vector<Frame>& frames);
    void SendPushed();
    void Flood(double now);
    [[nodiscard]] Frame NextFiller();

    void CarryFrame(const Action& action);
    void CarryBurst(const Action& action);
    void CarryNoise(const Action& action);
    void CarryFault(const Action& action);
    void CarryShed(const Action& action);
    void CarryVoltage(const Action& action);
    void CarryInput(const Action& action);
    void CarryRestart(const Action& action);
    void CarrySilent(const Action& action);
    void CarryAnswerDelay(const Action& action);
    void CarryLose(const Action& action);
    void CarryLoseReply(const Action& action);
    void CarryAnswerAs(const Action& action);
    void CarryCut(const Action& action);
    void CarryRefuse(const Action& action);
    void CarryOdd(const Action& action);
    void CarryIgnore(const Action& action);
    void CarryStateAs(const Action& action);
    void CarryDeny(const Action& action);
    void CarryNoTransceiver(const Action& action);
    void CarryQuiet(const Action& action);
    void CarryFlood(const Action& action);
    void CarryModem(const Action& action);
    void CarryUnplug(const Action& action);
    void CarryPlug(const Action& action);
    void CarryQuit(const Action& action);

    const TimeSource& mTime;
    TrafficLog& mLog;
    SimulationHost& mHost;
    SendQueue mQueue;
    FrameScanner mScanner;
    Vehicle mVehicle;
    Traffic mTraffic;
    Schedule mSchedule;
    std::mt19937 mRandom;

    double mShortestDelay = 0.002;  // seconds
    double mLongestDelay = 0.002;
    double mLastAnswer = 0;  // when the answer last queued leaves
    int mLoseEvery = 0;
    int mAnswers = 0;  // since mLoseEvery was set
    int mLoseReplyEvery = 0;
    int mReplies = 0;  // since mLoseReplyEvery was set
    bool mLosesReply = false;
    bool mTransceiver = true;
    bool mQuiet = false;
    double mFloodRate = 0;  // frames a second
    double mNextFlood = 0;
    unsigned mFillers = 0;
};

}  // namespace fenrik
