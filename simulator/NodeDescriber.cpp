#include "simulator/NodeDescriber.h"

#include "simulator/BusCommands.h"
#include "simulator/LoadShedTable.h"
#include "simulator/MemoryImage.h"
#include "simulator/Relationship.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <sstream>

namespace fenrik {

namespace {

constexpr int kHalfPercentType = 2;
constexpr int kUnknownOnState = 255;
constexpr int kUnknownThreeWay = 99;

struct RoadRow {
    std::string_view name;
    Road road;
};
constexpr RoadRow kRoads[] = {{"query", Road::Query}, {"memory", Road::Memory}, {"flash", Road::Flash}};

constexpr std::string_view kFlashOutputNames[] = {
    "Front Fan", "Rear Fan",  "ATM Power",         "Liquid Solenoid Valve",
    "Condenser", "Air Relay", "Compressor Clutch", "Water Pump"};

/// Writes lines that begin alike.
class Lines {
public:
    Lines(std::ostream& out, std::string beginning) : mOut(out), mBeginning(std::move(beginning)) {}

    template <typename Value>
    void Put(std::string_view field, const Value& value) const
    {
        mOut << mBeginning << field << ' ' << value << '\n';
    }
    void Put(std::string_view field, bool value) const { Put(field, value ? "true" : "false"); }
    void PutText(std::string_view field, std::string_view text) const
    {
        mOut << mBeginning << field << " \"" << text << "\"\n";
    }
    void PutBytes(const ByteString& bytes) const
    {
        static constexpr char kDigits[] = "0123456789ABCDEF";
        std::string text;
        for (const auto byte : bytes)
            text.append({kDigits[byte >> 4], kDigits[byte & 0x0F]});
        PutText("relationship", text);
        Put("levels", LevelCount(bytes));
    }

private:
    std::ostream& mOut;
    std::string mBeginning;
};

std::string Numbered(const char* what, int number)
{
    return std::string(what) + " " + std::to_string(number);
}

bool IsBlank(const std::string& text)
{
    return text.find_first_not_of(' ') == std::string::npos;
}

int RoundHalf(int halves)
{
    return int(std::nearbyint(halves / 2.0));
}

std::string Version(int version)
{
    const auto low = std::to_string(version & 0xFF);
    return version < 256 ? low : std::to_string(version >> 8) + "." + low;
}

void DescribeHead(const NodeConfig& node, Road road, const Lines& lines)
{
    const auto& header = node.header;
    const auto* named = std::ranges::find(kRoads, road, &RoadRow::road);
    lines.Put("road", named->name);
    lines.Put("type", node.type);
    // The flash of a comfort module is read without its name.
    if (road != Road::Flash)
        lines.PutText("name", IsBlank(node.name) ? Numbered("Node", node.number) : node.name);
    lines.Put("inputs", node.inputs.size());
    lines.Put("outputs", node.outputs.size());
    lines.Put("header nodes", int(header.nodeCount));
    std::ostringstream version;
    version << int(header.version[0]) << '.' << int(header.version[1]) << '.' << int(header.version[2]);
    lines.Put("header version", version.str());
    std::ostringstream date;
    date << int(header.month) << '/' << int(header.day) << '/' << header.year;
    lines.Put("header date", date.str());
}

void DescribeVersions(const VersionConfig& versions, const Lines& lines)
{
    struct Row {
        const char* field;
        int version;
    };
    for (const auto& row : {Row{"version os", versions.os}, Row{"version beta", versions.beta},
                            Row{"version pic", versions.pic}, Row{"version fpga", versions.fpga}})
        if (row.version != 0)
            lines.Put(row.field, Version(row.version));
}

/// What a tool holds of an input that it learned nothing about.
void DescribeUnknownInput(int number, const Lines& lines)
{
    lines.PutText("name", Numbered("Input", number));
    lines.Put("command", 0);
    lines.Put("switch-type", 0);
    lines.Put("on-state", kUnknownOnState);
    lines.Put("three-way", kUnknownThreeWay);
}

void DescribeQueriedInput(const NodeConfig& node, int number, const Lines& lines)
{
    const auto& input = node.inputs[std::size_t(number - 1)];
    if (input.command == 0 || input.analog)
        return DescribeUnknownInput(number, lines);
    const bool momentary = input.switchType == 1 || input.switchType == 2 || input.switchType == 5;
    lines.PutText("name", input.name);
    lines.Put("name-ref", input.nameRef);
    lines.Put("comment-ref", input.commentRef);
    lines.Put("command", input.command);
    lines.Put("switch-type", momentary ? 5 : 6);
    lines.Put("on-state", input.onState);
    lines.Put("three-way", int(input.threeWay));
    lines.Put("on-list-ref", input.onListRef);
    lines.Put("off-list-ref", input.offListRef);
    lines.Put("off-delay", input.offDelay / 1000.0);
}

// A body node that stored no finer on-states than 0 and 1 has them by its wiring.
int StoredOnState(const NodeConfig& node, int number)
{
    if (!node.earlyOnStates)
        return node.inputs[std::size_t(number - 1)].onState;
    if (node.type != 0 && node.type != 255)
        return (number - 1) % 2;
    return number <= 8 ? 18 : number <= 12 ? 242 : 241;
}

void DescribeStoredInput(const NodeConfig& node, int number, const Lines& lines)
{
    const auto& input = node.inputs[std::size_t(number - 1)];
    lines.PutText("name", IsBlank(input.name) ? Numbered("Input", number) : input.name);
    lines.Put("command", input.command);
    lines.Put("switch-type", input.switchType);
    lines.Put("on-state", StoredOnState(node, number));
    lines.Put("three-way", int(input.threeWay));
}

void DescribeFlashInput(const NodeConfig& node, int number, const Lines& lines)
{
    const auto& input = node.inputs[std::size_t(number - 1)];
    const auto commands = PlainCommands();
    lines.PutText("name", std::ranges::find(commands, input.command, &BusCommand::number)->name);
    lines.Put("command", input.command);
    lines.Put("switch-type", 3);
    lines.Put("on-state", 17);
    lines.Put("three-way", 0);
}

void DescribeQueriedOutput(const NodeConfig& node, int number, const Lines& lines)
{
    const auto& output = node.outputs[std::size_t(number - 1)];
    lines.PutText("name", IsBlank(output.name) ? Numbered("Output", number) : output.name);
    lines.Put("name-ref", output.nameRef);
    lines.Put("comment-ref", output.commentRef);
    lines.Put("usage", output.relationshipRef == kNoReference ? 0 : 1);
    lines.PutBytes(output.relationship);
    lines.Put("permanently-on", output.usage == OutputUsage::PermanentlyOn);
    lines.Put("flashing", output.flashing);
    lines.Put("load-shed", ShedTenths(output.shedLevel) / 10.0);
    lines.Put("pwm", output.pwmHalves / 2);
    lines.Put("delay-on", output.delayOn / 2.0);
    lines.Put("delay-off", output.delayOff / 2.0);
    lines.Put("fault-detect", output.faultDetectType);
}

int StoredDelay(int halfSeconds)
{
    return halfSeconds == 0 ? 0 : RoundHalf(halfSeconds + 1);
}

void DescribeStoredOutput(const NodeConfig& node, int number, const Lines& lines)
{
    const auto& output = node.outputs[std::size_t(number - 1)];
    lines.PutText("name", IsBlank(output.name) ? Numbered("Output", number) : output.name);
    lines.Put("usage", int(output.usage));
    lines.PutBytes(output.usage == OutputUsage::Driven ? output.relationship : ByteString());
    lines.Put("permanently-on", output.usage == OutputUsage::PermanentlyOn);
    lines.Put("flashing", output.flashing);
    lines.Put("load-shed", ShedTenths(output.shedLevel) / 10.0);
    lines.Put("pwm", node.type == kHalfPercentType ? RoundHalf(output.pwmHalves) : output.pwmHalves / 2);
    lines.Put("sequence", output.sequence);
    lines.Put("delay-on", StoredDelay(output.delayOn));
    lines.Put("delay-off", StoredDelay(output.delayOff));
}

// The first two are looked for where the size of the levels' element stands.
int FlashShedLevel(const NodeConfig& node, int number)
{
    if (number == 1)
        return 0;
    return number == 2 ? int(node.outputs.size()) : node.outputs[std::size_t(number - 1)].shedLevel;
}

void DescribeFlashOutput(const NodeConfig& node, int number, const Lines& lines)
{
    lines.PutText("name", kFlashOutputNames[std::size_t(number - 1) % std::size(kFlashOutputNames)]);
    lines.Put("usage", 1);
    lines.PutBytes(node.outputs[std::size_t(number - 1)].relationship);
    lines.Put("permanently-on", false);
    lines.Put("flashing", false);
    lines.Put("load-shed", FlashShedLevel(node, number));
    lines.Put("sequence", 0);
}

using DescribePoint = void (*)(const NodeConfig&, int number, const Lines&);

struct PointRow {
    Road road;
    DescribePoint input;
    DescribePoint output;
};
constexpr PointRow kPoints[] = {{Road::Query, DescribeQueriedInput, DescribeQueriedOutput},
                                {Road::Memory, DescribeStoredInput, DescribeStoredOutput},
                                {Road::Flash, DescribeFlashInput, DescribeFlashOutput}};

}  // namespace

std::optional<Road> FindRoad(std::string_view name)
{
    const auto* row = std::ranges::find(kRoads, name, &RoadRow::name);
    return row == std::end(kRoads) ? std::nullopt : std::optional(row->road);
}

std::optional<Road> UsualRoad(const NodeConfig& node)
{
    for (const auto road : {Road::Flash, Road::Query, Road::Memory})
        if (HasRoad(node, road))
            return road;
    return std::nullopt;
}

bool HasRoad(const NodeConfig& node, Road road)
{
    if (road == Road::Memory)
        return MemoryImage::HoldsConfiguration(node.type);
    return road == Road::Flash ? node.variableFlash : node.answersQueries;
}

void DescribeNode(const NodeConfig& node, Road road, std::ostream& out)
{
    const auto& points = *std::ranges::find(kPoints, road, &PointRow::road);
    const auto beginning = "node " + std::to_string(node.number) + " ";
    DescribeHead(node, road, Lines(out, beginning));
    DescribeVersions(node.versions, Lines(out, beginning));
    for (int i = 1; i <= int(node.inputs.size()); ++i)
        points.input(node, i, Lines(out, beginning + "input " + std::to_string(i) + " "));
    for (int i = 1; i <= int(node.outputs.size()); ++i)
        points.output(node, i, Lines(out, beginning + "output " + std::to_string(i) + " "));
}

}  // namespace fenrik
