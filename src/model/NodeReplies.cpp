#include "model/NodeReplies.h"

#include "model/CDigitalInput.h"
#include "model/COutput.h"
#include "model/Fixed4.h"
#include "model/Relationship.h"

#include <algorithm>

namespace fenrik::NodeReplies {

namespace {

constexpr std::size_t kSmallestInputReply = 5;
constexpr std::size_t kConfigurationBytes = 8;
constexpr std::size_t kSmallestCommandSets = 7;
constexpr std::size_t kFlashPatternHeader = 8;
constexpr int kLastInCommand = 1273;

/// The on-state of each combination of bit 1 (first index) and bits 3-2 (second index); 0 changes nothing.
constexpr std::int16_t kOnStates[2][4] = {{17, 34, 33, 0}, {2, 1, 7, 7}};

void ApplyFlags(std::uint8_t flags, CDigitalInput& input)
{
    input.setSwitchType((flags & 1) != 0 ? 5 : 6);
    input.setThreeWay((flags & 0x80) != 0 ? 1 : 0);
    if (const std::int16_t onState = kOnStates[flags >> 1 & 1][flags >> 2 & 3]; onState != 0)
        input.setOnState(onState);
}

}  // namespace

std::optional<std::uint8_t> Byte(Bytes reply, std::size_t position)
{
    return position >= 1 && position <= reply.size() ? std::optional(reply[position - 1]) : std::nullopt;
}

std::optional<std::uint16_t> Word(Bytes reply, std::size_t position)
{
    const auto low = Byte(reply, position);
    const auto high = Byte(reply, position + 1);
    return low && high ? std::optional(std::uint16_t(*high << 8 | *low)) : std::nullopt;
}

std::optional<std::uint16_t> BigEndianWord(Bytes reply, std::size_t position)
{
    const auto high = Byte(reply, position);
    const auto low = Byte(reply, position + 1);
    return low && high ? std::optional(std::uint16_t(*high << 8 | *low)) : std::nullopt;
}

NodeInfoReply DecodeNodeInfo(Bytes reply)
{
    NodeInfoReply info;
    info.nameRef = Word(reply, 1);
    info.commentRef = Word(reply, 3);
    info.type = Byte(reply, 5);
    info.number = Byte(reply, 7);
    info.position = Byte(reply, 11);
    for (std::size_t i = 0; i < info.extra.size(); ++i)
        info.extra[i] = Byte(reply, 15 + i);
    return info;
}

QString DecodeString(Bytes reply)
{
    return QString::fromLatin1(reinterpret_cast<const char*>(reply.data()), qsizetype(reply.size()));
}

QByteArray DecodeRelationship(Bytes reply)
{
    QByteArray relationship(reinterpret_cast<const char*>(reply.data()), qsizetype(reply.size()));
    if (!reply.empty() && reply.back() != Relationship::kEndLevel)
        relationship.append(char(Relationship::kEndLevel));
    return relationship;
}

std::vector<std::uint16_t> DecodeWords(Bytes reply)
{
    std::vector<std::uint16_t> words;
    for (std::size_t position = 1; position + 1 <= reply.size(); position += 2)
        words.push_back(*Word(reply, position));
    return words;
}

std::vector<std::uint16_t> DecodeBigEndianWords(Bytes reply)
{
    std::vector<std::uint16_t> words;
    for (std::size_t position = 1; position + 1 <= reply.size(); position += 2)
        words.push_back(*BigEndianWord(reply, position));
    return words;
}

std::optional<bool> IsAnalogInput(Bytes reply)
{
    if (reply.size() < kSmallestInputReply)
        return std::nullopt;
    return (reply[4] & 1) != 0;
}

std::optional<std::uint16_t> AnalogThresholdList(Bytes reply)
{
    const auto reference = Word(reply, 13);
    return reference == kNoReference ? std::nullopt : reference;
}

bool IsUnconfiguredInput(Bytes reply)
{
    if (reply.size() < kConfigurationBytes)
        return false;
    const Bytes last = reply.last(kConfigurationBytes);
    return std::all_of(last.begin(), last.end(), [](std::uint8_t byte) { return byte == 0; });
}

void ApplyDigitalInput(Bytes reply, CDigitalInput& input)
{
    if (const auto reference = Word(reply, 1))
        input.setNameRef(*reference);
    if (const auto reference = Word(reply, 3))
        input.setCommentRef(*reference);
    if (const auto flags = Byte(reply, 6))
        ApplyFlags(*flags, input);
    if (const auto command = BigEndianWord(reply, 7))
        input.setInCommand(*command <= kLastInCommand ? std::int16_t(*command) : std::int16_t(0));
    if (const auto reference = Word(reply, 9))
        input.setOnExecuteRef(*reference);
    if (const auto reference = Word(reply, 11))
        input.setOffExecuteRef(*reference);
    if (const auto milliseconds = Word(reply, 13))
        input.setOffDelay(Fixed4::Quotient(*milliseconds, 1000));
}

void ApplyOutput(Bytes reply, COutput& output)
{
    if (const auto reference = Word(reply, 1))
        output.setNameRef(*reference);
    if (const auto reference = Word(reply, 3))
        output.setCommentRef(*reference);
    if (const auto type = Byte(reply, 8))
        output.setFaultDetectType(*type);
    if (const auto reference = Word(reply, 11))
        output.setRelationshipRef(*reference);
    if (const auto value = Byte(reply, 13))
        output.setPWMValue(*value);
    if (const auto tenths = Byte(reply, 14))
        output.setLoadshed(Fixed4::Quotient(*tenths, 10));
    if (const auto halves = Word(reply, 15))
        output.setDelayOn(Fixed4::Quotient(*halves, 2));
    if (const auto halves = Word(reply, 17))
        output.setDelayOff(Fixed4::Quotient(*halves, 2));
    if (const auto pattern = Word(reply, 19))
        output.setFlashing(*pattern != kNoReference);
}

std::vector<CommandSet> DecodeCommandSets(Bytes reply)
{
    std::vector<CommandSet> sets;
    if (reply.size() < kSmallestCommandSets)
        return sets;
    for (std::size_t position = 1; position + 3 <= reply.size(); position += 4)
        sets.push_back({*BigEndianWord(reply, position), *BigEndianWord(reply, position + 2)});
    return sets;
}

RelationshipLevel DecodeRelationshipLevel(Bytes reply)
{
    RelationshipLevel level;
    level.word1 = Word(reply, 1).value_or(0);
    level.word5 = BigEndianWord(reply, 5).value_or(0);
    level.word7 = BigEndianWord(reply, 7).value_or(0);
    level.word9 = Word(reply, 9).value_or(0);
    return level;
}

FlashPattern DecodeFlashPattern(Bytes reply)
{
    FlashPattern pattern;
    pattern.word1 = Word(reply, 1).value_or(0);
    pattern.word3 = Word(reply, 3).value_or(0);
    pattern.word5 = Word(reply, 5).value_or(0);
    pattern.byte7 = Byte(reply, 7).value_or(0);
    pattern.byte8 = Byte(reply, 8).value_or(0);
    if (reply.size() <= kFlashPatternHeader)
        return pattern;
    const auto entries = Fixed4::RoundedQuotient(std::int64_t(reply.size() - kFlashPatternHeader), 2);
    for (std::size_t i = 0; i < std::size_t(entries); ++i) {
        pattern.odd.push_back(Byte(reply, 9 + 2 * i).value_or(0));
        pattern.even.push_back(Byte(reply, 10 + 2 * i).value_or(0));
    }
    return pattern;
}

SleepSettings DecodeSleepSettings(Bytes reply)
{
    SleepSettings settings;
    settings.word1 = Word(reply, 1).value_or(0);
    settings.word3 = Word(reply, 3).value_or(0);
    settings.byte5 = Byte(reply, 5).value_or(0);
    settings.byte6 = Byte(reply, 6).value_or(0);
    for (std::size_t i = 0; i < settings.words7.size(); ++i)
        settings.words7[i] = Word(reply, 7 + 2 * i).value_or(0);
    return settings;
}

}  // namespace fenrik::NodeReplies
