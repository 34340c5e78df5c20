#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace fenrik {

/// What goes between a client and a relay, as the simulator understands it: an independent reading, so that a mistake
/// of the tool shows.
///
///   'P' 'S'        two bytes
///   type           two bytes, low byte first
///   length         two bytes, low byte first, at most 32767
///   body           `length` bytes
struct RelayFrame {
    static constexpr std::size_t kHeader = 6;

    int type = 0;
    std::string body;

    [[nodiscard]] std::string Encode() const;

    /// Takes a whole frame off the front of `bytes`, if there is one. Throws std::runtime_error if no frame can begin
    /// there.
    [[nodiscard]] static std::optional<RelayFrame> TakeFrom(std::string& bytes);
};

/// Four bytes, low byte first.
[[nodiscard]] std::string RelayNumber(int value);
[[nodiscard]] int ReadRelayNumber(std::string_view body);

/// `text` cut to, or filled with blanks up to, `width`.
[[nodiscard]] std::string RelayField(std::string text, std::size_t width);

}  // namespace fenrik
