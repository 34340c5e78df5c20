#include "simulator/RoadReader.h"

#include <array>
#include <cmath>
#include <sstream>
#include <utility>

namespace fenrik {

// Positions from 1, as the list of the models' memories counts them.
struct RoadReader::Map {
    int nodeName, inputNames, outputNames, record, relation, command, commandStep, kind, level, threeWay, step, delay;
    int shed;           // from the record on
    double pwmPerUnit;  // per cent

    static Map Of(int type)
    {
        if (type == 2)
            return {0xC60, 0xC80, 0xD00, 0x81, 0x89, 0x980, 7, 0x982, 0x983, 0x984, 7, 0x2500, 2, 0.5};
        if (type == 5)
            return {0xC60, 0xC80, 0, 0, 0, 0x980, 7, 0x982, 0x983, 0x984, 7, 0, 0, 0};
        return {0x1760, 0x1781, 0x1A01, 0x81, 0x88, 0xD80, 2, 0xE01, 0xE00, 0xE02, 3, 0x3400, 3, 1};
    }
};

namespace {

int Little(const RoadReader::Bytes& bytes, std::size_t first)
{
    return bytes.at(first - 1) | bytes.at(first) << 8;
}

int Big(const RoadReader::Bytes& bytes, std::size_t first)
{
    return bytes.at(first - 1) << 8 | bytes.at(first);
}

std::string Trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string Version(int word)
{
    return (word >= 256 ? std::to_string(word >> 8) + "." : "") + std::to_string(word & 255);
}

double Shed(int level)
{
    static constexpr std::array kVolts{0.0, 12.5, 12.1, 11.7, 11.3, 10.9, 10.5, 10.1, 9.7};
    return level >= 1 && level <= 8 ? kVolts[std::size_t(level)] : 0.0;
}

// Reads bytes until the outermost level has ended; stops before `limit` bytes are exceeded.
template <typename Read>
std::string TakeRelationship(int limit, Read read)
{
    std::string text;
    for (int depth = 0, i = 0; depth >= 0 && i < limit; ++i) {
        const int byte = read(i);
        text.push_back(char(byte));
        depth += byte == 253 ? 1 : byte == 255 ? -1 : 0;
    }
    return text;
}

}  // namespace

RoadReader::RoadReader(Vehicle& vehicle, int node)
    : mVehicle(vehicle), mMemory([this](int position) {
          const auto reply = Ask({923, true, false, std::uint16_t(position - 1)});
          return reply && reply->command == 950 ? reply->data & 0xFF : -1;
      })
{
    (void)Ask({905, true, false, std::uint16_t(node)});
}

std::optional<Frame> RoadReader::Ask(const Frame& question)
{
    const auto answers = mVehicle.Answer(question);
    mVehicle.NoteArrived(question);
    return answers.size() == 1 ? std::optional(answers[0]) : std::nullopt;
}

std::optional<RoadReader::Bytes> RoadReader::Query(int data, int page)
{
    if (page > 0)
        (void)Ask({940, false, true, std::uint16_t(page)});
    const Frame question{940, false, false, std::uint16_t(data)};
    const auto frames = mVehicle.Answer(question);
    mVehicle.NoteArrived(question);
    if (frames.empty() || frames[0].command != 903 || !frames[0].state)
        return std::nullopt;
    Bytes bytes;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        bytes.push_back(frames[i].data & 0xFF);
        if (bytes.size() < frames[0].data)
            bytes.push_back(frames[i].data >> 8);
    }
    return bytes;
}

void RoadReader::UseImage(const std::vector<std::uint8_t>& bytes)
{
    mMemory = [bytes](int position) { return int(bytes.at(std::size_t(position - 1))); };
}

int RoadReader::Memory(int position)
{
    return mMemory(position);
}

void RoadReader::PutNumber(const std::string& field, double value)
{
    std::ostringstream text;
    text << value;
    Put(field, text.str());
}

void RoadReader::PutName(const std::string& name, const std::string& otherwise)
{
    Put("name", '"' + (Trimmed(name).empty() ? otherwise : Trimmed(name)) + '"');
}

void RoadReader::PutRelationship(const std::string& bytes)
{
    std::ostringstream text;
    int levels = 0;
    text << std::hex << std::uppercase;
    for (const char c : bytes) {
        const int byte = std::uint8_t(c);
        text << byte / 16 << byte % 16;
        levels += byte == 253 ? 1 : 0;
    }
    Put("relationship", '"' + text.str() + '"');
    PutNumber("levels", levels);
}

std::string RoadReader::Text(int reference)
{
    if (reference == 0xFFFF)
        return {};
    const auto bytes = Query(0x0A00 | (reference & 0xFF), reference >> 8).value_or(Bytes{});
    return {bytes.begin(), bytes.end()};
}

RoadReader::Lines RoadReader::ReadQueries(int inputs, int outputs)
{
    mLines.clear();
    mBeginning.clear();
    const auto info = Query(1).value();
    PutName(Text(Little(info, 1)), "Node " + std::to_string(info.at(6)));
    PutNumber("type", info.at(4));
    for (int i = 1; i <= inputs; ++i)
        QueryInput(i);
    for (int i = 1; i <= outputs; ++i)
        QueryOutput(i);
    return std::exchange(mLines, {});
}

void RoadReader::QueryInput(int number)
{
    mBeginning = "input " + std::to_string(number) + " ";
    const auto otherwise = "Input " + std::to_string(number);
    const auto bytes = Query(0x0200 + number - 1).value();
    const bool empty = std::all_of(bytes.end() - 8, bytes.end(), [](int byte) { return byte == 0; });
    if ((bytes.at(4) & 1) != 0 || empty) {
        PutName("", otherwise);
        PutNumber("command", 0);
        PutNumber("switch-type", 0);
        PutNumber("on-state", 255);
        PutNumber("three-way", 99);
        return;
    }
    const int flags = bytes.at(5);
    static constexpr int kWithout[] = {17, 34, 33, 255};
    static constexpr int kWith[] = {2, 1, 7, 7};
    PutName(Text(Little(bytes, 1)), otherwise);
    PutNumber("name-ref", Little(bytes, 1));
    PutNumber("comment-ref", Little(bytes, 3));
    PutNumber("command", Big(bytes, 7));
    PutNumber("switch-type", (flags & 1) != 0 ? 5 : 6);
    PutNumber("on-state", ((flags & 2) != 0 ? kWith : kWithout)[flags >> 2 & 3]);
    PutNumber("three-way", flags >> 7);
    PutNumber("on-list-ref", Little(bytes, 9));
    PutNumber("off-list-ref", Little(bytes, 11));
    PutNumber("off-delay", Little(bytes, 13) / 1000.0);
}

void RoadReader::QueryOutput(int number)
{
    mBeginning = "output " + std::to_string(number) + " ";
    const auto bytes = Query(0x0300 + number - 1).value();
    const int reference = Little(bytes, 11);
    std::string relationship;
    if (reference != 0xFFFF) {
        const auto found = Query(0x0B00 | (reference & 0xFF), reference >> 8).value();
        relationship.assign(found.begin(), found.end());
    }
    PutName(Text(Little(bytes, 1)), "Output " + std::to_string(number));
    PutNumber("name-ref", Little(bytes, 1));
    PutNumber("comment-ref", Little(bytes, 3));
    PutNumber("usage", reference == 0xFFFF ? 0 : 1);
    PutRelationship(relationship);
    Put("permanently-on", relationship.starts_with("\xFF\xFF\xF0") ? "true" : "false");
    Put("flashing", Little(bytes, 19) == 0xFFFF ? "false" : "true");
    PutNumber("load-shed", bytes.at(13) / 10.0);
    PutNumber("pwm", bytes.at(12));
    PutNumber("delay-on", Little(bytes, 15) / 2.0);
    PutNumber("delay-off", Little(bytes, 17) / 2.0);
    PutNumber("fault-detect", bytes.at(7));
}

std::string RoadReader::Stored(int position)
{
    std::string text;
    for (int i = 0; i < 32; ++i)
        text.push_back(char(Memory(position + i)));
    return text;
}

RoadReader::Lines RoadReader::ReadMemory(int type, int inputs, int outputs)
{
    const auto map = Map::Of(type);
    mLines.clear();
    mBeginning.clear();
    PutName(Stored(map.nodeName), "Node " + std::to_string(Memory(3)));
    PutNumber("type", Memory(15));
    for (int i = 0; i < inputs; ++i)
        StoredInput(map, i);
    for (int i = 0; i < outputs; ++i)
        StoredOutput(map, i);
    return std::exchange(mLines, {});
}

void RoadReader::StoredInput(const Map& map, int i)
{
    const std::string title = std::to_string(i + 1);
    mBeginning = "input " + title + " ";
    const int command = map.command + map.commandStep * i;
    const int high = Memory(command + 1);
    PutName(Stored(map.inputNames + 32 * i), "Input " + title);
    PutNumber("command", high < 4 ? high * 256 + Memory(command + 2) : 0);
    PutNumber("switch-type", Memory(map.kind + map.step * i + 1));
    PutNumber("on-state", Memory(map.level + map.step * i + 1));
    PutNumber("three-way", Memory(map.threeWay + map.step * i + 1));
}

void RoadReader::StoredOutput(const Map& map, int i)
{
    const std::string title = std::to_string(i + 1);
    mBeginning = "output " + title + " ";
    const int record = map.record + 128 * i;
    const int shed = record + map.shed;
    const int relation = map.relation + 128 * i;
    const int usage = Memory(record);
    const bool named = usage != 0 && usage != 255;
    PutName(named ? Stored(map.outputNames + 32 * i) : "", "Output " + title);
    PutNumber("usage", usage);
    PutRelationship(usage != 1 ? std::string() : TakeRelationship(127 - (relation - 1) % 128, [&](int at) {
        return Memory(relation + at);
    }));
    Put("permanently-on", usage == 2 ? "true" : "false");
    Put("flashing", Memory(record + 1) != 0 ? "true" : "false");
    PutNumber("load-shed", Shed(Memory(shed)));
    PutNumber("pwm", std::nearbyint(Memory(shed + 1) * map.pwmPerUnit));
    PutNumber("sequence", Memory(shed + 2));
    PutNumber("delay-off", StoredDelay(map.delay + 4 * i + 1));
    PutNumber("delay-on", StoredDelay(map.delay + 4 * i + 3));
}

double RoadReader::StoredDelay(int position)
{
    const int word = Memory(position) * 256 + Memory(position + 1);
    return word >= 0xFF00 || word == 0 ? 0.0 : std::nearbyint((word + 1) / 2.0);
}

int RoadReader::FlashByte(int address)
{
    const auto reply = Ask({940, false, false, std::uint16_t(address)});
    return reply && reply->command == 950 && !reply->state && !reply->extended ? reply->data & 0xFF : -1;
}

int RoadReader::FlashWord(int address)
{
    const auto reply = Ask({940, false, false, std::uint16_t(address)});
    return reply && reply->command == 950 ? (reply->data & 0xFF) << 8 | reply->data >> 8 : 0;
}

int RoadReader::Walk(const std::vector<int>& path)
{
    int at = 0;
    for (std::size_t used = 0;; ++used) {
        const int entry = FlashWord(at);
        if ((entry & 0x3FFF) < 2)
            return -1;
        if (used == path.size())
            return at;
        if ((entry & 0x4000) == 0)
            return -1;
        at += 2;
        for (int skip = path[used] + (entry >> 15); skip > 0; --skip)
            at += FlashWord(at) & 0x3FFF;
    }
}

RoadReader::Lines RoadReader::ReadFlash()
{
    mLines.clear();
    const int inputs = Walk({0});
    for (int i = 0; i < 3; ++i) {
        mBeginning = "input " + std::to_string(i + 1) + " ";
        PutNumber("command", FlashWord(inputs + 12 + 2 * i));
    }
    const int shed = Walk({5, 0});
    for (int i = 0; i < 8; ++i) {
        mBeginning = "output " + std::to_string(i + 1) + " ";
        PutNumber("load-shed", FlashByte(shed + i));
        const int found = Walk({1, i});
        auto relationship =
            TakeRelationship((FlashWord(found) & 0x3FFF) - 2, [&](int at) { return FlashByte(found + 2 + at); });
        if (!relationship.ends_with('\xFF'))
            relationship.push_back('\xFF');
        PutRelationship(relationship);
    }
    return std::exchange(mLines, {});
}

RoadReader::Lines RoadReader::ReadHeaderArray()
{
    mLines.clear();
    mBeginning = "header ";
    const auto frames = mVehicle.Answer({940, false, false, 0});
    const auto bytes = Query(0).value();
    const int year = frames.at(0).extended ? Big(bytes, 15) : Little(bytes, 15);
    PutNumber("nodes", bytes.at(7));
    Put("version",
        std::to_string(bytes.at(11)) + "." + std::to_string(bytes.at(10)) + "." + std::to_string(bytes.at(9)));
    Put("date", std::to_string(bytes.at(13)) + "/" + std::to_string(bytes.at(12)) + "/" + std::to_string(year));
    return std::exchange(mLines, {});
}

RoadReader::Lines RoadReader::ReadHeaderBytes()
{
    mLines.clear();
    mBeginning = "header ";
    const auto text = [this](int position) { return std::to_string(Memory(position)); };
    Put("nodes", text(4));
    Put("version", text(8) + "." + text(9) + "." + text(10));
    Put("date", text(11) + "/" + text(12) + "/" + std::to_string(Memory(13) * 256 + Memory(14)));
    return std::exchange(mLines, {});
}

RoadReader::Lines RoadReader::ReadVersions()
{
    mLines.clear();
    mBeginning = "version ";
    Put("os", Version(Ask({937, false, false, 0})->data));
    if (const auto beta = Ask({937, false, true, 0}); beta->extended && beta->data != 0)
        Put("beta", Version(beta->data));
    const char* chips[] = {"pic", "fpga"};
    for (int chip = 0; chip < 2; ++chip)
        if (const auto reply = Ask({937, true, false, std::uint16_t(chip)}); reply->state)
            Put(chips[chip], Version(reply->data));
    return std::exchange(mLines, {});
}

}  // namespace fenrik
