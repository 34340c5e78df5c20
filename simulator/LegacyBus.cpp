#include "simulator/LegacyBus.h"

#include "simulator/TimeSource.h"
#include "simulator/TrafficLog.h"

#include <algorithm>
#include <string>

namespace fenrik {

namespace {

constexpr double kHoldSeconds = 0.02;
constexpr double kAnswerSeconds = 0.002;
constexpr std::uint8_t kWake = 158;
constexpr std::uint8_t kAwake = 138;
constexpr int kFilled = 3;  // messages of each node while the line is full
constexpr std::size_t kFloodWaiting = 64;

}  // namespace

LegacyBus::LegacyBus(const Scenario& scenario, const Simulation::Settings& settings, const TimeSource& time,
                     SimulatorLine& line, TrafficLog& log, SimulationHost& host)
    : mTime(time), mLog(log), mHost(host), mQueue(line, log, settings.paced), mTraffic(settings.seed),
      mSchedule(scenario)
{
}

void LegacyBus::Receive(std::span<const std::uint8_t> bytes)
{
    static constexpr std::uint8_t kAnswer[] = {kAwake};
    for (const std::uint8_t& byte : bytes) {
        mLog.Bytes("RX", std::span(&byte, 1), byte == kWake ? "wake" : "unparsed");
        if (byte == kWake && mTransceiver)
            mQueue.Push(mTime.Seconds() + kAnswerSeconds, kAnswer, "awake");
    }
}

void LegacyBus::Step()
{
    const double now = mTime.Seconds();
    for (const Action& action : mSchedule.Due(now))
        Carry(action);
    for (const auto& [node, bytes] : mTraffic.Due(now))
        if (!mQuiet)
            At(node).runs.push_back(bytes);
    for (; mNextToken <= now; mNextToken += mFloodRate > 0 ? (1 + kFilled) / mFloodRate : kHoldSeconds)
        PassToken(mNextToken);
    mQueue.Send(now);
}

double LegacyBus::NextDue() const
{
    return std::min({mSchedule.NextDue(), mQueue.NextDue(), mNextToken});
}

void LegacyBus::PassToken(double time)
{
    mHolder = mHolder % kLegacyNodes + 1;
    Node& node = At(mHolder);
    if (SkipsTurn(node)) {
        mLog.Note("node " + std::to_string(mHolder) + " misses the token");
        return;
    }
    // More would only make everything wait behind the flood.
    if (mQueue.Pending() > kFloodWaiting && mFloodRate > 0)
        return;
    const std::uint8_t token[] = {std::uint8_t(kLegacyTokenBase + mHolder)};
    mQueue.Push(time, token, "token");
    Speak(node, time);
}

bool LegacyBus::SkipsTurn(Node& node)
{
    const bool misses = node.missed > 0;
    node.missed -= misses ? 1 : 0;
    return misses || node.silent;
}

void LegacyBus::Speak(Node& node, double time)
{
    if (mFloodRate > 0)
        Fill(time);
    while (!node.runs.empty()) {
        if (mCollisions > 0) {
            // What two say at once nobody hears; the node says it again in the next round.
            --mCollisions;
            mLog.Bytes("LOST", node.runs.front(), "collision");
            return;
        }
        Say(time, node.runs.front());
        node.runs.pop_front();
    }
}

void LegacyBus::Say(double time, const Run& run)
{
    mQueue.Push(time, std::span(run).first(1), "message");
    if (run.size() > 1)
        mQueue.Push(time, std::span(run).subspan(1), "value");
}

void LegacyBus::Fill(double time)
{
    for (int i = 0; i < kFilled; ++i) {
        mFiller = std::uint8_t((mFiller + 1) % std::size(kLegacySwitches));
        Say(time, {kLegacySwitches[mFiller].on.number});
    }
}

void LegacyBus::Carry(const Action& action)
{
    using Verb = Action::Verb;
    struct Row {
        Verb verb;
        void (LegacyBus::*carry)(const Action&);
    };
    static constexpr Row kRows[] = {
        {Verb::Message, &LegacyBus::CarryMessage}, {Verb::ShedLine, &LegacyBus::CarryShedLine},
        {Verb::Miss, &LegacyBus::CarryMiss},       {Verb::Silent, &LegacyBus::CarrySilent},
        {Verb::Collide, &LegacyBus::CarryCollide}, {Verb::Bytes, &LegacyBus::CarryBytes},
        {Verb::Flood, &LegacyBus::CarryFlood},     {Verb::NoTransceiver, &LegacyBus::CarryNoTransceiver},
        {Verb::Quiet, &LegacyBus::CarryQuiet},     {Verb::Unplug, &LegacyBus::CarryUnplug},
        {Verb::Plug, &LegacyBus::CarryPlug},       {Verb::Quit, &LegacyBus::CarryQuit},
    };
    const auto* row = std::ranges::find(kRows, action.verb, &Row::verb);
    if (row != std::end(kRows))
        (this->*row->carry)(action);
}

void LegacyBus::CarryMessage(const Action& action)
{
    At(action.node).runs.push_back(action.bytes);
}

void LegacyBus::CarryShedLine(const Action& action)
{
    const int number = kFirstShedMessage + (action.count - 1) * 2 + (action.on ? 0 : 1);
    At(1).runs.push_back({std::uint8_t(number)});
}

void LegacyBus::CarryMiss(const Action& action)
{
    At(action.node).missed += action.count;
}

void LegacyBus::CarrySilent(const Action& action)
{
    At(action.node).silent = action.on;
}

void LegacyBus::CarryCollide(const Action& action)
{
    mCollisions += action.count;
}

void LegacyBus::CarryBytes(const Action& action)
{
    mQueue.Push(mTime.Seconds(), action.bytes, "bytes");
}

void LegacyBus::CarryFlood(const Action& action)
{
    mFloodRate = action.value;
    mNextToken = mTime.Seconds();
}

void LegacyBus::CarryNoTransceiver(const Action& action)
{
    mTransceiver = !action.on;
}

void LegacyBus::CarryQuiet(const Action& action)
{
    mQuiet = action.on;
}

}  // namespace fenrik
