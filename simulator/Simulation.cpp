#include "simulator/Simulation.h"

#include "simulator/BusCommands.h"
#include "simulator/NetworkFrames.h"
#include "simulator/TimeSource.h"
#include "simulator/TrafficLog.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr std::uint8_t kAwake = 138;

// More would only make answers wait behind the flood.
constexpr std::size_t kFloodWaiting = 8;

}  // namespace

Simulation::Simulation(const Scenario& scenario, const Settings& settings, const TimeSource& time, SimulatorLine& line,
                       TrafficLog& log, SimulationHost& host)
    : mTime(time), mLog(log), mHost(host), mQueue(line, log, settings.paced), mVehicle(scenario.nodes),
      mTraffic(mVehicle, settings.seed), mSchedule(scenario), mRandom(settings.seed)
{
}

void Simulation::Receive(std::span<const std::uint8_t> bytes)
{
    Handle(mScanner.Take(bytes, mTime.Seconds()));
}

void Simulation::Step()
{
    const double now = mTime.Seconds();
    Handle(mScanner.Expire(now));
    for (const auto& action : mSchedule.Due(now))
        Carry(action);
    if (!mQuiet)
        Send(mTraffic.Due(now));
    SendPushed();
    Flood(now);
    mQueue.Send(now);
}

double Simulation::NextDue() const
{
    double due = std::min({mScanner.Deadline(), mSchedule.NextDue(), mQueue.NextDue()});
    if (!mQuiet)
        due = std::min(due, mTraffic.NextDue());
    if (mFloodRate > 0)
        due = std::min(due, mNextFlood);
    return due;
}

void Simulation::Handle(const std::vector<Received>& found)
{
    for (const auto& item : found) {
        const char* meaning = item.kind == Received::Kind::Wake ? "wake" : "unparsed";
        mLog.Bytes("RX", item.bytes, TrafficLog::Describe(item.bytes, meaning));
        if (item.kind == Received::Kind::Wake)
            AnswerWake();
        if (item.kind != Received::Kind::Frame)
            continue;
        if (const auto order = ForceOrder::Read(item.frame))
            Force(*order);
        else
            Answer(item.frame);
    }
}

void Simulation::AnswerWake()
{
    static constexpr std::uint8_t kAnswer[] = {kAwake};
    if (mTransceiver)
        mQueue.Push(AnswerTime(), kAnswer, "awake");
}

void Simulation::Answer(const Frame& question)
{
    const auto answers = mVehicle.Answer(question);
    if (answers.empty())
        return;
    const double due = AnswerTime();
    bool arrives = true;
    for (const auto& answer : answers) {
        const auto bytes = answer.Encode();
        if (LosesNext(&answer == &answers.front())) {
            mLog.Bytes("LOST", bytes, TrafficLog::Describe(bytes, {}));
            arrives = false;
        } else {
            mQueue.Push(due, bytes);
        }
    }
    if (arrives)
        mVehicle.NoteArrived(question);
}

void Simulation::Force(const ForceOrder& order)
{
    const int node = mVehicle.Obey(order);
    const std::string output = " output " + std::to_string(order.output) + ' ';
    mLog.Note(node == 0 ? "no node obeys:" + output + order.Words()
                        : "node " + std::to_string(node) + output + order.Words());
}

bool Simulation::LosesNext(bool beginsReply)
{
    if (beginsReply)
        mLosesReply = mLoseReplyEvery > 0 && ++mReplies % mLoseReplyEvery == 0;
    const bool losesFrame = mLoseEvery > 0 && ++mAnswers % mLoseEvery == 0;
    return losesFrame || mLosesReply;
}

// Answers keep their order, whatever delays they happen to get.
double Simulation::AnswerTime()
{
    const double delay = std::uniform_real_distribution<double>(mShortestDelay, mLongestDelay)(mRandom);
    mLastAnswer = std::max(mLastAnswer, mTime.Seconds() + delay);
    return mLastAnswer;
}

void Simulation::Send(const Frame& frame)
{
    mQueue.Push(mTime.Seconds(), frame.Encode());
}

void Simulation::Send(const std::vector<Frame>& frames)
{
    for (const auto& frame : frames)
        Send(frame);
}

void Simulation::SendPushed()
{
    // Behind the acknowledge, which the tool takes for the beginning.
    for (const auto& frame : mVehicle.ChangedWords())
        mQueue.Push(std::max(mTime.Seconds(), mLastAnswer), frame.Encode());
}

void Simulation::Flood(double now)
{
    if (mFloodRate <= 0)
        return;
    for (; mNextFlood <= now; mNextFlood += 1.0 / mFloodRate) {
        if (mQueue.Pending() < kFloodWaiting)
            Send(NextFiller());
        mQueue.Send(now);
    }
}

// One plain command after the other, on and off in turn, data counting: a lost frame shows as a gap.
Frame Simulation::NextFiller()
{
    const auto commands = PlainCommands();
    const unsigned number = mFillers++;
    const auto command = std::uint16_t(commands[number % commands.size()].number);
    return {command, number / commands.size() % 2 == 0, false, std::uint16_t(number)};
}

void Simulation::Carry(const Action& action)
{
    struct Row {
        Verb verb;
        void (Simulation::*carry)(const Action&);
    };
    static constexpr Row kRows[] = {
        {Verb::Send, &Simulation::CarryFrame},    {Verb::Burst, &Simulation::CarryBurst},
        {Verb::Noise, &Simulation::CarryNoise},   {Verb::Fault, &Simulation::CarryFault},
        {Verb::Shed, &Simulation::CarryShed},     {Verb::Voltage, &Simulation::CarryVoltage},
        {Verb::Input, &Simulation::CarryInput},   {Verb::Restart, &Simulation::CarryRestart},
        {Verb::Silent, &Simulation::CarrySilent}, {Verb::AnswerDelay, &Simulation::CarryAnswerDelay},
        {Verb::Lose, &Simulation::CarryLose},     {Verb::NoTransceiver, &Simulation::CarryNoTransceiver},
        {Verb::Quiet, &Simulation::CarryQuiet},   {Verb::Flood, &Simulation::CarryFlood},
        {Verb::Unplug, &Simulation::CarryUnplug}, {Verb::Plug, &Simulation::CarryPlug},
        {Verb::Quit, &Simulation::CarryQuit},     {Verb::LoseReply, &Simulation::CarryLoseReply},
        {Verb::Cut, &Simulation::CarryCut},       {Verb::AnswerAs, &Simulation::CarryAnswerAs},
        {Verb::Odd, &Simulation::CarryOdd},       {Verb::Refuse, &Simulation::CarryRefuse},
        {Verb::Ignore, &Simulation::CarryIgnore}, {Verb::StateAs, &Simulation::CarryStateAs},
        {Verb::Deny, &Simulation::CarryDeny},     {Verb::Modem, &Simulation::CarryModem},
    };
    (this->*std::ranges::find(kRows, action.verb, &Row::verb)->carry)(action);
}

void Simulation::CarryFrame(const Action& action)
{
    mVehicle.ApplyCommand(action.frame.command, action.frame.state);
    Send(action.frame);
}

void Simulation::CarryBurst(const Action& action)
{
    for (int i = 0; i < action.count; ++i)
        Send(action.frame.command == 0 ? NextFiller() : action.frame);
}

void Simulation::CarryNoise(const Action& action)
{
    // No byte is 0, with which a frame begins, nor the transceiver's answer: noise stays noise.
    std::uniform_int_distribution<int> byte(1, 127);
    std::vector<std::uint8_t> noise(std::size_t(action.count));
    std::ranges::generate(noise, [&] { return std::uint8_t(byte(mRandom)); });
    mVehicle.CountCollisions();
    mQueue.Push(mTime.Seconds(), noise, "noise");
}

void Simulation::CarryFault(const Action& action)
{
    Send(FaultFrame(action.node, action.count));
}

void Simulation::CarryShed(const Action& action)
{
    Send(LoadShedFrame(action.node, action.count));
}

void Simulation::CarryVoltage(const Action& action)
{
    mTraffic.Supply().Force(action.on ? std::optional(action.value) : std::nullopt);
}

void Simulation::CarryInput(const Action& action)
{
    Send(mVehicle.MoveInput(action.node, action.count, action.on));
}

void Simulation::CarryRestart(const Action& action)
{
    Send(mVehicle.Restart(action.node));
}

void Simulation::CarrySilent(const Action& action)
{
    mVehicle.Node(action.node)->SetSilent(action.on);
}

void Simulation::CarryAnswerDelay(const Action& action)
{
    mShortestDelay = action.value;
    mLongestDelay = action.value2;
}

void Simulation::CarryLose(const Action& action)
{
    mLoseEvery = action.count;
    mAnswers = 0;
}

void Simulation::CarryLoseReply(const Action& action)
{
    mLoseReplyEvery = action.count;
    mReplies = 0;
}

void Simulation::CarryAnswerAs(const Action& action)
{
    mVehicle.Node(action.node)->Faults().answersAs = action.on ? std::optional(action.count) : std::nullopt;
}

void Simulation::CarryCut(const Action& action)
{
    mVehicle.Node(action.node)->Faults().cutAfter = action.on ? std::optional(action.count) : std::nullopt;
}

void Simulation::CarryRefuse(const Action& action)
{
    auto& refused = mVehicle.Node(action.node)->Faults().refused;
    if (action.on)
        refused.insert(action.queries.begin(), action.queries.end());
    else
        refused.clear();
}

void Simulation::CarryIgnore(const Action& action)
{
    auto& ignored = mVehicle.Node(action.node)->Faults().ignored;
    if (action.on)
        ignored.insert(action.steps.begin(), action.steps.end());
    else
        ignored.clear();
}

void Simulation::CarryStateAs(const Action& action)
{
    mVehicle.Node(action.node)->Faults().stateAs = action.on ? std::optional(action.count) : std::nullopt;
}

void Simulation::CarryDeny(const Action& action)
{
    mVehicle.Node(action.node)->Faults().denies = action.on;
}

void Simulation::CarryOdd(const Action& action)
{
    mVehicle.Node(action.node)->Faults().odd = action.on;
}

void Simulation::CarryNoTransceiver(const Action& action)
{
    mTransceiver = !action.on;
}

void Simulation::CarryQuiet(const Action& action)
{
    if (mQuiet && !action.on)
        mTraffic.Resume(mTime.Seconds());
    mQuiet = action.on;
}

void Simulation::CarryFlood(const Action& action)
{
    mFloodRate = action.value;
    mNextFlood = mTime.Seconds();
}

void Simulation::CarryModem(const Action& action)
{
    mHost.OrderModem(action.modem);
}

void Simulation::CarryUnplug(const Action&)
{
    mHost.Unplug();
}

void Simulation::CarryPlug(const Action&)
{
    mHost.Plug();
}

void Simulation::CarryQuit(const Action&)
{
    mHost.Quit();
}

}  // namespace fenrik
