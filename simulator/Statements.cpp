#include "simulator/Statements.h"

#include "simulator/LegacyMessages.h"
#include "simulator/QueryReplies.h"
#include "simulator/SendQueue.h"
#include "simulator/SimNode.h"
#include "simulator/Words.h"

#include <algorithm>
#include <span>
#include <stdexcept>

namespace fenrik {

namespace {

using Verb = Action::Verb;

constexpr int kMaxCount = 1000000;
constexpr double kLineRate = SendQueue::kBytesPerSecond / double(Frame::kSize);

int TakeNode(Words& words)
{
    (void)words.TakeIf("node");
    return words.TakeNumber("node number", 1, NodeSetup::kMaxNumber);
}

// send 12 on [true|false] [100]
void ParseFrame(Words& words, Action& action)
{
    action.frame.command = std::uint16_t(words.TakeNumber("command number", 1, 1023));
    action.frame.state = words.TakeOnOff();
    action.frame.extended = words.TakeIf("true");
    if (!action.frame.extended)
        (void)words.TakeIf("false");
    if (!words.Empty())
        action.frame.data = std::uint16_t(words.TakeNumber("data", 0, 65535));
}

// burst 1000 [of frames | of 12 on false 100]
void ParseBurst(Words& words, Action& action)
{
    action.count = words.TakeNumber("number of frames", 1, kMaxCount);
    if (!words.TakeIf("of") || words.TakeIf("frames"))
        return;
    ParseFrame(words, action);
}

void ParseNoise(Words& words, Action& action)
{
    action.count = words.TakeNumber("number of bytes", 1, kMaxCount);
}

void ParseNode(Words& words, Action& action)
{
    action.node = TakeNode(words);
}

void ParseFault(Words& words, Action& action)
{
    action.node = TakeNode(words);
    action.count = words.TakeNumber("output number", 1, 32);
}

void ParseShed(Words& words, Action& action)
{
    action.node = TakeNode(words);
    action.count = words.TakeNumber("level", 0, 255);
}

// voltage 10.5, voltage auto
void ParseVoltage(Words& words, Action& action)
{
    action.on = !words.TakeIf("auto");
    if (action.on)
        action.value = words.TakeDecimal("voltage", 0, 60);
}

void ParseInput(Words& words, Action& action)
{
    action.node = TakeNode(words);
    action.count = words.TakeNumber("input number", 1, 16);
    action.on = words.TakeOnOff();
}

void ParseNodeSwitch(Words& words, Action& action)
{
    action.node = TakeNode(words);
    action.on = words.TakeOptionalOnOff();
}

// answer-delay 20, answer-delay 5 25: milliseconds
void ParseAnswerDelay(Words& words, Action& action)
{
    action.value = words.TakeDecimal("milliseconds", 0, 60000) / 1000;
    action.value2 = action.value;
    if (words.Empty())
        return;
    action.value2 = words.TakeDecimal("milliseconds", 0, 60000) / 1000;
    if (action.value2 < action.value)
        throw std::invalid_argument("the longest delay is shorter than the shortest");
}

// lose every 3, lose off
void ParseLose(Words& words, Action& action)
{
    if (words.TakeIf("off"))
        return;
    if (!words.TakeIf("every"))
        throw std::invalid_argument("\"every\" and a number, or \"off\", is expected");
    action.count = words.TakeNumber("number", 1, kMaxCount);
}

/// A node, and a number or "off".
void TakeNodeAndNumber(Words& words, Action& action, const char* what, int most)
{
    action.node = TakeNode(words);
    action.on = !words.TakeIf("off");
    if (action.on)
        action.count = words.TakeNumber(what, 0, most);
}

// answer-as 3 5, answer-as 3 12345, answer-as 3 off
void ParseAnswerAs(Words& words, Action& action)
{
    TakeNodeAndNumber(words, action, "number to give", 65535);
}

// cut 3 2, cut 3 off
void ParseCut(Words& words, Action& action)
{
    TakeNodeAndNumber(words, action, "number of data frames", kMaxCount);
}

// refuse 3 string, refuse 3 all, refuse 3 off
void ParseRefuse(Words& words, Action& action)
{
    action.node = TakeNode(words);
    action.on = !words.TakeIf("off");
    if (!action.on)
        return;
    const auto word = words.Take("kind of query");
    for (const auto& kind : QueryKinds())
        if (word == "all" || word == kind.word)
            action.queries.push_back(kind.code);
    if (action.queries.empty())
        throw std::invalid_argument("there is no query \"" + word + "\"");
}

struct StepRow {
    std::string_view word;
    NodeStep step;
};

constexpr StepRow kSteps[] = {
    {"ping", NodeStep::Ping},   {"mount", NodeStep::Mount},     {"unmount", NodeStep::Unmount},
    {"state", NodeStep::State}, {"special", NodeStep::Special},
};

// ignore 3 mount, ignore 3 all, ignore 3 off
void ParseIgnore(Words& words, Action& action)
{
    action.node = TakeNode(words);
    action.on = !words.TakeIf("off");
    if (!action.on)
        return;
    const auto word = words.Take("what to ignore");
    for (const auto& row : kSteps)
        if (word == "all" || word == row.word)
            action.steps.push_back(row.step);
    if (action.steps.empty())
        throw std::invalid_argument("a node can't ignore \"" + word + "\"");
}

// state-as 3 2, state-as 3 off
void ParseStateAs(Words& words, Action& action)
{
    TakeNodeAndNumber(words, action, "state to tell", 65535);
}

void ParseSwitch(Words& words, Action& action)
{
    action.on = words.TakeOptionalOnOff();
}

// flood, flood 400, flood off
void ParseFlood(Words& words, Action& action)
{
    if (words.TakeIf("off"))
        return;
    action.value = words.Empty() ? kLineRate : words.TakeDecimal("frames a second", 1, 100000);
}

void ParseModem(Words& words, Action& action)
{
    action.modem = ModemOrder::Parse(words);
}

void ParseNothing(Words&, Action&) {}

struct VerbRow {
    std::string_view word;
    Verb verb;
    void (*parse)(Words&, Action&);
};

constexpr VerbRow kVerbs[] = {
    {"send", Verb::Send, ParseFrame},
    {"burst", Verb::Burst, ParseBurst},
    {"noise", Verb::Noise, ParseNoise},
    {"fault", Verb::Fault, ParseFault},
    {"shed", Verb::Shed, ParseShed},
    {"voltage", Verb::Voltage, ParseVoltage},
    {"input", Verb::Input, ParseInput},
    {"restart", Verb::Restart, ParseNode},
    {"silent", Verb::Silent, ParseNodeSwitch},
    {"answer-delay", Verb::AnswerDelay, ParseAnswerDelay},
    {"lose", Verb::Lose, ParseLose},
    {"no-transceiver", Verb::NoTransceiver, ParseSwitch},
    {"quiet", Verb::Quiet, ParseSwitch},
    {"flood", Verb::Flood, ParseFlood},
    {"modem", Verb::Modem, ParseModem},
    {"unplug", Verb::Unplug, ParseNothing},
    {"plug", Verb::Plug, ParseNothing},
    {"quit", Verb::Quit, ParseNothing},
    {"lose-reply", Verb::LoseReply, ParseLose},
    {"cut", Verb::Cut, ParseCut},
    {"answer-as", Verb::AnswerAs, ParseAnswerAs},
    {"odd", Verb::Odd, ParseNodeSwitch},
    {"refuse", Verb::Refuse, ParseRefuse},
    {"ignore", Verb::Ignore, ParseIgnore},
    {"state-as", Verb::StateAs, ParseStateAs},
    {"deny", Verb::Deny, ParseNodeSwitch},
};

std::uint8_t TakeByte(Words& words, const char* what)
{
    return std::uint8_t(words.TakeNumber(what, 0, 255));
}

// message 3 17, message 3 50 128
void ParseMessage(Words& words, Action& action)
{
    action.node = TakeNode(words);
    action.bytes.push_back(TakeByte(words, "message number"));
    if (!words.Empty())
        action.bytes.push_back(TakeByte(words, "value"));
}

// shed 3 on
void ParseShedLine(Words& words, Action& action)
{
    action.count = words.TakeNumber("level", 1, kShedLevels);
    action.on = words.TakeOptionalOnOff();
}

// miss 3, miss 3 5
void ParseMiss(Words& words, Action& action)
{
    action.node = TakeNode(words);
    action.count = words.Empty() ? 1 : words.TakeNumber("number of rounds", 1, kMaxCount);
}

void ParseCollide(Words& words, Action& action)
{
    action.count = words.Empty() ? 1 : words.TakeNumber("number of collisions", 1, kMaxCount);
}

// bytes 101 17 50 128
void ParseBytes(Words& words, Action& action)
{
    do
        action.bytes.push_back(TakeByte(words, "byte"));
    while (!words.Empty());
}

// flood, flood 400, flood off
void ParseByteFlood(Words& words, Action& action)
{
    if (words.TakeIf("off"))
        return;
    action.value = words.Empty() ? SendQueue::kBytesPerSecond : words.TakeDecimal("bytes a second", 1, 100000);
}

constexpr VerbRow kLegacyVerbs[] = {
    {"message", Verb::Message, ParseMessage}, {"shed", Verb::ShedLine, ParseShedLine},
    {"miss", Verb::Miss, ParseMiss},          {"silent", Verb::Silent, ParseNodeSwitch},
    {"collide", Verb::Collide, ParseCollide}, {"bytes", Verb::Bytes, ParseBytes},
    {"flood", Verb::Flood, ParseByteFlood},   {"no-transceiver", Verb::NoTransceiver, ParseSwitch},
    {"quiet", Verb::Quiet, ParseSwitch},      {"unplug", Verb::Unplug, ParseNothing},
    {"plug", Verb::Plug, ParseNothing},       {"quit", Verb::Quit, ParseNothing},
};

std::span<const VerbRow> VerbsOf(Network network)
{
    return network == Network::Fenrik98 ? std::span<const VerbRow>(kLegacyVerbs) : std::span<const VerbRow>(kVerbs);
}

}  // namespace

Action TakeAction(Words& words, Network network)
{
    const auto word = words.Take("a statement");
    const auto verbs = VerbsOf(network);
    const auto row = std::ranges::find(verbs, word, &VerbRow::word);
    if (row == verbs.end())
        throw std::invalid_argument("unknown statement \"" + word + "\"");
    Action action;
    action.verb = row->verb;
    row->parse(words, action);
    words.ExpectEnd();
    return action;
}

}  // namespace fenrik
