#pragma once

#include "simulator/NodeConfig.h"

namespace fenrik {

/// The variable flash of a comfort module: a tree of elements, read word by word. Addresses count from 0.
///
/// An element begins with two bytes, high byte first: bit 15 says that its first part describes it, bit 14 that it has
/// parts, the rest is its size with everything in it. The element at address 0 has six parts:
///
///   part  content
///   0     commands of the inputs, 10 bytes behind other things
///   1     a description, then the relationship of each output
///   2     the node's name
///   3     the node's comment
///   4     versions
///   5     one part: shed levels. Its readers take eight bytes from the element's start, so the size stands
///         where outputs 1 and 2 are looked for
class VariableFlashImage {
public:
    explicit VariableFlashImage(const NodeConfig& node);

    [[nodiscard]] const ByteString& Bytes() const { return mBytes; }

    /// The byte at `address` below, the next one above it; 255 beyond the end.
    [[nodiscard]] std::uint16_t WordAt(std::uint16_t address) const;

private:
    ByteString mBytes;
};

}  // namespace fenrik
