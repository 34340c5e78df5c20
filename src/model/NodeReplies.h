#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace fenrik {

class CDigitalInput;
class COutput;

/// What a node says of itself. A field that the reply was too short for is absent.
///
///   bytes   value
///   1-2     reference of the name
///   3-4     reference of the comment
///   5       type
///   7       number
///   11      position
///   15-22   extra info, one byte each
///
/// Words have their low byte first, here and below, unless told. Bytes that are not listed carry nothing that the
/// tool uses.
struct NodeInfoReply {
    std::optional<std::uint16_t> nameRef;
    std::optional<std::uint16_t> commentRef;
    std::optional<std::uint8_t> type;
    std::optional<std::uint8_t> number;
    std::optional<std::uint8_t> position;
    std::array<std::optional<std::uint8_t>, 8> extra;
};

/// Two words, high byte first; 0xFFFF marks an empty entry.
struct CommandSet {
    static constexpr std::uint16_t kEmpty = 0xFFFF;
    std::uint16_t first = kEmpty;
    std::uint16_t second = kEmpty;
};

///   bytes  value
///   1-2    word
///   5-6    word, high byte first
///   7-8    word, high byte first
///   9-10   word
struct RelationshipLevel {
    std::uint16_t word1 = 0;
    std::uint16_t word5 = 0;
    std::uint16_t word7 = 0;
    std::uint16_t word9 = 0;
};

///   bytes  value
///   1-6    three words
///   7, 8   one byte each
///   9...   the pattern: bytes of odd and of even places, half as many each, a tie going to the even number
struct FlashPattern {
    std::uint16_t word1 = 0;
    std::uint16_t word3 = 0;
    std::uint16_t word5 = 0;
    std::uint8_t byte7 = 0;
    std::uint8_t byte8 = 0;
    std::vector<std::uint8_t> odd;
    std::vector<std::uint8_t> even;
};

///   bytes  value
///   1-4    two words
///   5, 6   one byte each
///   7-14   four words
struct SleepSettings {
    std::uint16_t word1 = 0;
    std::uint16_t word3 = 0;
    std::uint8_t byte5 = 0;
    std::uint8_t byte6 = 0;
    std::array<std::uint16_t, 4> words7{};
};

/// Decoders of the replies to queries. They keep no state and take any bytes: a field is set only if all of its
/// bytes are there, so that a short reply fills the first fields and leaves the others as they were.
namespace NodeReplies {
using Bytes = std::span<const std::uint8_t>;

inline constexpr int kNoReference = 0xFFFF;

/// Byte `position`, or the word that starts there; positions count from 1.
[[nodiscard]] std::optional<std::uint8_t> Byte(Bytes reply, std::size_t position);
[[nodiscard]] std::optional<std::uint16_t> Word(Bytes reply, std::size_t position);
[[nodiscard]] std::optional<std::uint16_t> BigEndianWord(Bytes reply, std::size_t position);

[[nodiscard]] NodeInfoReply DecodeNodeInfo(Bytes reply);

/// One character for each byte; a zero byte is a character too.
[[nodiscard]] QString DecodeString(Bytes reply);

/// Always ends in 255, unless there is no reply at all.
[[nodiscard]] QByteArray DecodeRelationship(Bytes reply);

/// A last single byte is dropped.
[[nodiscard]] std::vector<std::uint16_t> DecodeWords(Bytes reply);
[[nodiscard]] std::vector<std::uint16_t> DecodeBigEndianWords(Bytes reply);

/// A reply about an input says in bit 0 of byte 5 whether the input is analog. Fewer than 5 bytes say nothing.
///
/// Of an analog input nothing is kept; only this is looked at:
///
///   bytes  value
///   13-14  reference of its list of thresholds
[[nodiscard]] std::optional<bool> IsAnalogInput(Bytes reply);
[[nodiscard]] std::optional<std::uint16_t> AnalogThresholdList(Bytes reply);

/// A digital input whose last eight bytes are all zero has no configuration.
[[nodiscard]] bool IsUnconfiguredInput(Bytes reply);

/// The configuration of a digital input.
///
///   bytes  value
///   1-2    reference of the name
///   3-4    reference of the comment
///   6      flags: bit 0 switch type (1: 5, 0: 6), bits 1 and 2-3 on-state, bit 7 three-way
///   7-8    command, high byte first; kept from 1 to 1273, otherwise 0
///   9-10   reference of what runs when the input goes on
///   11-12  the same for off
///   13-14  off delay in milliseconds
///
///   bit 1  bits 3-2  on-state
///   1      0         2
///   1      1         1
///   1      2, 3      7
///   0      0         17
///   0      1         34
///   0      2         33
///   0      3         stays
void ApplyDigitalInput(Bytes reply, CDigitalInput& input);

/// The configuration of an output.
///
///   bytes  value
///   1-2    reference of the name
///   3-4    reference of the comment
///   8      kind of fault detection
///   11-12  reference of the relationship
///   13     pulse width
///   14     load-shed voltage in tenths of a volt
///   15-16  on delay in half seconds
///   17-18  off delay in half seconds
///   19-20  reference of the flash pattern; 0xFFFF: does not flash
void ApplyOutput(Bytes reply, COutput& output);

/// Empty for fewer than 7 bytes.
[[nodiscard]] std::vector<CommandSet> DecodeCommandSets(Bytes reply);
[[nodiscard]] RelationshipLevel DecodeRelationshipLevel(Bytes reply);
[[nodiscard]] FlashPattern DecodeFlashPattern(Bytes reply);
[[nodiscard]] SleepSettings DecodeSleepSettings(Bytes reply);
}  // namespace NodeReplies

}  // namespace fenrik
