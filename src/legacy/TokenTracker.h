#pragma once

#include <cstdint>
#include <optional>

namespace fenrik {

/// Follows the token of the older network on its round: 101, 102, ... 106, 101.
class TokenTracker {
public:
    static constexpr std::uint8_t kFirst = 101;
    static constexpr std::uint8_t kLast = 106;
    static constexpr int kBase = 100;  ///< a token less this is its node's number

    [[nodiscard]] static constexpr bool IsToken(std::uint8_t byte) { return byte >= kFirst && byte <= kLast; }

    /// The last token; 0 before the first one.
    [[nodiscard]] int Current() const { return mCurrent; }

    /// Takes the next token. Gives the one that was expected in its place, if it was another; never for the first.
    std::optional<int> Take(std::uint8_t token)
    {
        const int expected = mNext;
        mCurrent = token;
        mNext = token == kLast ? kFirst : token + 1;
        return expected != 0 && expected != token ? std::optional(expected) : std::nullopt;
    }

private:
    int mCurrent = 0;
    int mNext = 0;
};

}  // namespace fenrik
