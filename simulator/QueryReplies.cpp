#include "simulator/QueryReplies.h"

#include "simulator/ByteWriter.h"
#include "simulator/LoadShedTable.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace fenrik {

namespace {

using Reply = std::optional<QueryReply>;

constexpr int kPropertiesType = 16;
constexpr int kNoFlashing = 0xFFFF;
constexpr int kMomentary = 0x01;
constexpr int kThreeWay = 0x80;
constexpr int kAnalogInput = 0x01;

/// What an input's on-state looks like in the flag byte: bit 1 means "not" or floating, bits 2 and 3 say which level.
struct OnStateRow {
    int onState;
    int flags;
};
constexpr OnStateRow kOnStates[] = {
    {2, 0x02}, {1, 0x06}, {7, 0x0A}, {17, 0x00}, {34, 0x04}, {33, 0x08},
};

Reply Plain(ByteWriter& writer)
{
    return QueryReply{writer.Take(), false};
}

// 16 bytes, counted from 1:
//   1-2 3-4 5-6  words       7  byte          8  nodes of the design
//   9-12  version, last number first          13 day  14 month  15-16 year
Reply Header(const NodeConfig& node, int)
{
    const auto& header = node.header;
    const auto word = header.bigEndian ? &ByteWriter::BigWord : &ByteWriter::Word;
    ByteWriter writer;
    for (const auto value : header.words)
        (writer.*word)(value);
    writer.Byte(header.spare).Byte(header.nodeCount);
    for (int i = 3; i >= 0; --i)
        writer.Byte(header.version[std::size_t(i)]);
    writer.Byte(header.day).Byte(header.month);
    (writer.*word)(header.year);
    return QueryReply{writer.Take(), header.bigEndian};
}

// 22 bytes: 1-2 name  3-4 comment  5 type  7 number  11 position  13-14 a word  15-22 extra info
Reply Info(const NodeConfig& node, int)
{
    ByteWriter writer;
    writer.Word(node.nameRef).Word(node.commentRef).Byte(node.type).Zeros(1).Byte(node.number).Zeros(3);
    writer.Byte(node.position).Zeros(1).Word(0x0100 + node.number);
    for (const auto extra : node.extraInfo)
        writer.Byte(extra);
    return Plain(writer);
}

// The commands of what the node measures, high byte first.
Reply AnalogCommandList(const NodeConfig& node, int)
{
    ByteWriter writer;
    for (const auto& input : node.inputs)
        if (input.analog)
            writer.BigWord(input.command);
    return Plain(writer);
}

// 15 bytes: words, but for 5, 6 and the last.
Reply SleepSettings(const NodeConfig&, int)
{
    ByteWriter writer;
    writer.Word(600).Word(30).Byte(1).Byte(4).Word(179).Word(209).Word(0).Word(120).Byte(2);
    return Plain(writer);
}

// 22 bytes, then two groups of a word and a 32-bit number.
Reply Properties(const NodeConfig& node, int)
{
    if (node.type != kPropertiesType)
        return std::nullopt;
    ByteWriter writer;
    for (int i = 1; i <= 11; ++i)
        writer.Word(i * 0x0101);
    for (int group = 1; group <= 2; ++group)
        writer.Word(group).Word(group * 1000).Word(group);
    return Plain(writer);
}

Reply ListOfIndexes(const NodeConfig& node, int reference)
{
    const auto list = node.lists.find(std::uint16_t(reference));
    if (list == node.lists.end())
        return std::nullopt;
    ByteWriter writer;
    for (const auto entry : list->second)
        writer.Word(entry);
    return Plain(writer);
}

// 14 bytes: 1-2 name  3-4 comment  5 bit 0 set  7-8 word  9-10 command, high byte first  11 12  13-14 thresholds
void PutAnalogInput(const InputConfig& input, ByteWriter& writer)
{
    writer.Byte(kAnalogInput).Byte(0).Word(1023).BigWord(input.command).Byte(0x48).Byte(5);
    writer.Word(input.thresholdListRef);
}

int InputFlags(const InputConfig& input)
{
    const bool momentary = input.switchType == 1 || input.switchType == 2 || input.switchType == 5;
    const auto* row = std::ranges::find(kOnStates, input.onState, &OnStateRow::onState);
    return (momentary ? kMomentary : 0) | (input.threeWay ? kThreeWay : 0) |
           (row == std::end(kOnStates) ? 0 : row->flags);
}

// 14 bytes: 1-2 name  3-4 comment  5 bit 0 clear  6 flags  7-8 command, high byte first  9-10 list of what it runs
// going on  11-12 going off  13-14 off delay in milliseconds. An input out of use has eight zeros at the end.
void PutDigitalInput(const InputConfig& input, ByteWriter& writer)
{
    writer.Byte(0).Byte(InputFlags(input));
    if (input.command == 0)
        writer.Zeros(8);
    else
        writer.BigWord(input.command).Word(input.onListRef).Word(input.offListRef).Word(input.offDelay);
}

Reply Input(const NodeConfig& node, int index)
{
    if (index >= int(node.inputs.size()))
        return std::nullopt;
    const auto& input = node.inputs[std::size_t(index)];
    ByteWriter writer;
    writer.Word(input.nameRef).Word(input.commentRef);
    (input.analog ? PutAnalogInput : PutDigitalInput)(input, writer);
    return Plain(writer);
}

// 20 bytes: 1-2 name  3-4 comment  5-6 word  8 fault detection  11-12 relationship  13 brightness in percent
// 14 shed voltage in tenths  15-16 on delay  17-18 off delay, both in half seconds  19-20 flash pattern or 0xFFFF
Reply Output(const NodeConfig& node, int index)
{
    if (index >= int(node.outputs.size()))
        return std::nullopt;
    const auto& output = node.outputs[std::size_t(index)];
    ByteWriter writer;
    writer.Word(output.nameRef).Word(output.commentRef).Word(index + 1).Zeros(1).Byte(output.faultDetectType);
    writer.Zeros(2).Word(output.relationshipRef).Byte(output.pwmHalves / 2).Byte(ShedTenths(output.shedLevel));
    writer.Word(output.delayOn).Word(output.delayOff).Word(output.flashing ? index % 3 : kNoFlashing);
    return Plain(writer);
}

// Pairs of a command and what it does, high byte first; the last pair is an empty one.
Reply CommandSet(const NodeConfig& node, int reference)
{
    if (reference < 1 || reference > int(node.inputs.size()))
        return std::nullopt;
    ByteWriter writer;
    writer.BigWord(node.inputs[std::size_t(reference - 1)].command).BigWord(1).BigWord(0xFFFF).BigWord(0xFFFF);
    return Plain(writer);
}

Reply String(const NodeConfig& node, int reference)
{
    const auto text = node.texts.find(std::uint16_t(reference));
    if (text == node.texts.end())
        return std::nullopt;
    ByteWriter writer;
    return Plain(writer.Text(text->second));
}

Reply RelationshipBytes(const NodeConfig& node, int reference)
{
    const auto found = node.relationships.find(std::uint16_t(reference));
    if (found == node.relationships.end())
        return std::nullopt;
    return QueryReply{found->second, false};
}

// 11 bytes: 1-2 word  3 4  5-6 7-8 words, high byte first  9-10 word  11
Reply RelationshipLevel(const NodeConfig& node, int reference)
{
    if (!node.relationships.contains(std::uint16_t(reference)))
        return std::nullopt;
    ByteWriter writer;
    writer.Word(reference).Byte(50).Byte(0).BigWord(179).BigWord(183).Word(kNoReference).Byte(1);
    return Plain(writer);
}

struct Threshold {
    int command;
    int on;
    int off;
    int flags;
};
constexpr std::array<Threshold, 3> kThresholds{{{300, 200, 210, 1}, {303, 950, 900, 0}, {311, 300, 350, 3}}};

// 7 bytes: 1-2 command, high byte first  3-4 on from  5-6 off from  7 flags
Reply AnalogThreshold(const NodeConfig&, int index)
{
    if (index >= int(kThresholds.size()))
        return std::nullopt;
    const auto& threshold = kThresholds[std::size_t(index)];
    ByteWriter writer;
    writer.BigWord(threshold.command).Word(threshold.on).Word(threshold.off).Byte(threshold.flags);
    return Plain(writer);
}

// 8 bytes: three words, two bytes; then pairs of time on and time off.
Reply FlashPattern(const NodeConfig&, int index)
{
    constexpr int kPatterns = 3;
    if (index >= kPatterns)
        return std::nullopt;
    ByteWriter writer;
    writer.Word(index).Word(100).Word(0).Byte(index + 1).Byte(0);
    for (int pair = 0; pair <= index; ++pair)
        writer.Byte(20 + pair).Byte(30 + pair);
    return Plain(writer);
}

using MakeReply = Reply (*)(const NodeConfig&, int reference);

struct Row {
    QueryKind kind;
    MakeReply make;
};

constexpr std::array kRows = {
    Row{{"header", 0x0000, false}, Header},
    Row{{"info", 0x0001, false}, Info},
    Row{{"analog-commands", 0x0002, false}, AnalogCommandList},
    Row{{"sleep", 0x0004, false}, SleepSettings},
    Row{{"properties", 0x0005, false}, Properties},
    Row{{"list", 0x0100, true}, ListOfIndexes},
    Row{{"input", 0x0200, true}, Input},
    Row{{"output", 0x0300, true}, Output},
    Row{{"command-set", 0x0800, true}, CommandSet},
    Row{{"string", 0x0A00, true}, String},
    Row{{"relationship", 0x0B00, true}, RelationshipBytes},
    Row{{"level", 0x0C00, true}, RelationshipLevel},
    Row{{"threshold", 0x0D00, true}, AnalogThreshold},
    Row{{"flash-pattern", 0x0E00, true}, FlashPattern},
};

constexpr auto kKinds = [] {
    std::array<QueryKind, kRows.size()> kinds{};
    std::ranges::transform(kRows, kinds.begin(), &Row::kind);
    return kinds;
}();

}  // namespace

std::span<const QueryKind> QueryKinds()
{
    return kKinds;
}

const QueryKind* FindQueryKind(std::uint16_t data)
{
    const auto* kind = std::ranges::find_if(
        kKinds, [=](const QueryKind& k) { return k.code == (k.hasReference ? data & 0xFF00 : data); });
    return kind == std::end(kKinds) ? nullptr : kind;
}

std::optional<QueryReply> MakeQueryReply(const NodeConfig& node, std::uint16_t data, std::uint8_t page)
{
    const auto* kind = FindQueryKind(data);
    if (!kind)
        return std::nullopt;
    return kRows[std::size_t(kind - kKinds.data())].make(node, page << 8 | (data & 0xFF));
}

}  // namespace fenrik
