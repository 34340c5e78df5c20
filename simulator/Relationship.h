#pragma once

#include "simulator/NodeConfig.h"

#include <functional>
#include <string_view>

namespace fenrik {

/// When an output is on, in reverse Polish order. Level 0 comes first; each further level opens with 253.
///
///   byte     meaning
///   254      a command's number follows, high byte, low byte
///   240..243 not, and, or, xor of what stands before
///   253      opens a level; three bytes follow: the level's number, 0, its brightness in percent
///   255      ends a level; the last one ends the relationship
///
/// A reader that counts only 253 and 255 must find the end, so no number between them may hold these bytes.

/// The relationship that `text` tells in words: command numbers, "NOT", "AND", "OR", "XOR", and "|" between levels.
[[nodiscard]] ByteString EncodeRelationship(std::string_view text);

/// The relationship of an output that is on whatever happens.
[[nodiscard]] ByteString PermanentlyOnRelationship();

/// True if one of the levels holds, given which commands are on.
[[nodiscard]] bool Holds(const ByteString& relationship, const std::function<bool(int)>& isOn);

/// The number of levels behind level 0.
[[nodiscard]] int LevelCount(const ByteString& relationship);

}  // namespace fenrik
