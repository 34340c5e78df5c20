#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace fenrik {

/// The language of relationships: when an output is on, in reverse Polish order.
///
///   byte   meaning
///   254    a command follows: two bytes, the high one first; the byte after them, if below 254, is the operator of
///          the term and is used up unless it is 0
///   253    opens the next level; three bytes follow that nobody interprets
///   255    ends a level; the last byte of a well-formed relationship
///   240    "NOT"
///   241    "AND"
///   242    "OR"
///   243    "XOR"
///   0      "ON"
///   other  "(ERR)" where an operator stands
namespace Relationship {
inline constexpr std::uint8_t kCommand = 254;
inline constexpr std::uint8_t kOpenLevel = 253;
inline constexpr std::uint8_t kEndLevel = 255;
inline constexpr std::uint8_t kNot = 240;
inline constexpr std::uint8_t kAnd = 241;
inline constexpr std::uint8_t kOr = 242;
inline constexpr std::uint8_t kXor = 243;
inline constexpr std::uint8_t kOn = 0;

/// Text of a byte that stands where an operator is expected.
[[nodiscard]] QString OperatorText(std::uint8_t byte);

/// Number of levels behind the first one.
[[nodiscard]] int LevelCount(const QByteArray& relationship);

/// True if the output needs no command to be on.
[[nodiscard]] bool IsPermanentlyOn(const QByteArray& relationship);
}  // namespace Relationship

/// Gathers a relationship that comes byte by byte, and tells where it ends.
class RelationshipReader {
public:
    /// True if `byte` was the last one: it ended the outermost level.
    bool Take(std::uint8_t byte)
    {
        mBytes.append(char(byte));
        if (byte == Relationship::kOpenLevel)
            ++mDepth;
        else if (byte == Relationship::kEndLevel)
            --mDepth;
        return mDepth < 0;
    }

    [[nodiscard]] const QByteArray& Bytes() const { return mBytes; }

private:
    QByteArray mBytes;
    int mDepth = 0;
};

}  // namespace fenrik
