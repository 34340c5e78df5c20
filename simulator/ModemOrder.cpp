#include "simulator/ModemOrder.h"

#include "simulator/Words.h"

#include <algorithm>
#include <stdexcept>

namespace fenrik {

namespace {

using Kind = ModemOrder::Kind;
using Step = ModemOrder::Step;

constexpr double kLongestTime = 600;

void ParseNothing(Words&, ModemOrder&) {}

void ParseSwitch(Words& words, ModemOrder& order)
{
    order.on = words.TakeOptionalOnOff();
}

void ParseSeconds(Words& words, ModemOrder& order)
{
    order.seconds = words.TakeDecimal("seconds", 0, kLongestTime);
}

// note, note x
void ParseNote(Words& words, ModemOrder& order)
{
    if (words.Empty())
        return;
    const auto note = words.Take("note");
    if (note.size() != 1 || note[0] == '\\')
        throw std::invalid_argument("a note is one character, and no backslash");
    order.note = note[0];
}

// notes every 5, notes off
void ParseNotes(Words& words, ModemOrder& order)
{
    if (words.TakeIf("off"))
        return;
    if (!words.TakeIf("every"))
        throw std::invalid_argument("\"every\" and a number of bytes, or \"off\", is expected");
    order.count = words.TakeNumber("number of bytes", 1, 1000000);
}

struct StepRow {
    std::string_view word;
    Step step;
};

constexpr StepRow kSteps[] = {
    {"connect", Step::Connect}, {"version", Step::Version}, {"pass-through", Step::PassThrough}};

// hang-up version, hang-up off
void ParseStep(Words& words, ModemOrder& order)
{
    if (words.TakeIf("off"))
        return;
    const auto word = words.Take("step");
    const auto* row = std::ranges::find(kSteps, word, &StepRow::word);
    if (row == std::end(kSteps))
        throw std::invalid_argument("a modem can't hang up at \"" + word + "\"");
    order.step = row->step;
}

struct KindRow {
    std::string_view word;
    Kind kind;
    void (*parse)(Words&, ModemOrder&);
};

constexpr KindRow kKinds[] = {
    {"drop", Kind::Drop, ParseNothing},
    {"silent", Kind::Silent, ParseSwitch},
    {"garble", Kind::Garble, ParseSwitch},
    {"late", Kind::Late, ParseSeconds},
    {"long", Kind::Long, ParseSwitch},
    {"echo", Kind::Echo, ParseSwitch},
    {"no-dialtone", Kind::DialTone, ParseSwitch},
    {"dial-time", Kind::DialTime, ParseSeconds},
    {"note", Kind::Note, ParseNote},
    {"notes", Kind::Notes, ParseNotes},
    {"hang-up", Kind::HangUpAt, ParseStep},
    {"deaf-module", Kind::ModuleDeaf, ParseSwitch},
};

}  // namespace

ModemOrder ModemOrder::Parse(Words& words)
{
    const auto word = words.Take("what the modem does");
    const auto* row = std::ranges::find(kKinds, word, &KindRow::word);
    if (row == std::end(kKinds))
        throw std::invalid_argument("the modem doesn't know \"" + word + "\"");
    ModemOrder order;
    order.kind = row->kind;
    row->parse(words, order);
    return order;
}

}  // namespace fenrik
