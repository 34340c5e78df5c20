#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace fenrik {

/// One frame of the Fenrik 2000 network as it travels: six bytes at 9600 baud.
///
///   offset  value
///   0       0x00
///   1       high byte of the header word
///   2       low byte of the header word
///   3       high byte of data
///   4       low byte of data
///   5       sum of bytes 1 to 4, modulo 256
///
/// Header word: 0xA000 | command << 2 | state << 1 | extended.
///
/// There is no address, length or end mark. A frame is known by byte 0, by the upper half of byte 1 and by its
/// sum alone, so it may start at any byte of a stream. Byte 0 takes no part in the sum.
struct Frame {
    static constexpr std::size_t kSize = 6;
    using Bytes = std::array<std::uint8_t, kSize>;

    std::uint16_t command = 0;  ///< 0 to 1023
    bool state = false;
    bool extended = false;
    std::uint16_t data = 0;

    [[nodiscard]] constexpr Bytes Encode() const
    {
        const unsigned header = 0xA000u | (command & 0x3FFu) << 2 | (state ? 2u : 0u) | (extended ? 1u : 0u);
        const unsigned sum = (header >> 8) + (header & 0xFF) + (data >> 8) + (data & 0xFF);
        return {0x00,
                std::uint8_t(header >> 8),
                std::uint8_t(header),
                std::uint8_t(data >> 8),
                std::uint8_t(data),
                std::uint8_t(sum)};
    }

    /// The frame that stands in `bytes`, or nothing if its mark or its sum is wrong.
    [[nodiscard]] static constexpr std::optional<Frame> Decode(const Bytes& bytes)
    {
        if (bytes[0] != 0 || (bytes[1] & 0xF0) != 0xA0)
            return std::nullopt;
        if (std::uint8_t(bytes[1] + bytes[2] + bytes[3] + bytes[4]) != bytes[5])
            return std::nullopt;
        return Frame{std::uint16_t((bytes[1] & 0x0F) << 6 | bytes[2] >> 2), (bytes[2] & 2) != 0, (bytes[2] & 1) != 0,
                     std::uint16_t(bytes[3] << 8 | bytes[4])};
    }
};

}  // namespace fenrik
