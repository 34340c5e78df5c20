#pragma once

#include <cstdint>
#include <functional>
#include <span>

namespace fenrik {

/// The variable flash structure: a tree of entries, each of which begins with its own size.
///
///   bit        value
///   top        the entry has a sub-entry that is not counted, before the others
///   next       the entry has sub-entries
///   the rest   a count; times a multiplier it is the size of the entry in bytes, these bits included
///
/// What an entry holds follows these bits at once.
class VariableFlash {
public:
    static constexpr int kSize = 32768;
    static constexpr int kNotThere = -1;

    /// How the entries of a structure are written.
    struct Form {
        int width = 2;  ///< bytes of an entry's own bits: 1, 2 or 4
        int multiplier = 1;
        bool swapped = true;  ///< the low byte of a reply is the high byte of the word
    };

    struct Entry {
        bool uncountedFirst = false;
        bool hasSubEntries = false;
        std::int64_t size = 0;  ///< bytes
    };

    /// Gives the word of the node's reply for an address, 0 if there is none. Called for 0 to 65535.
    using Reader = std::function<std::uint16_t(int address)>;

    explicit VariableFlash(Reader reader) : mReader(std::move(reader)) {}

    [[nodiscard]] std::uint8_t Byte(int address) const { return std::uint8_t(mReader(address)); }
    [[nodiscard]] std::uint16_t Word(int address, bool swapped) const;
    /// Two words, the upper half first.
    [[nodiscard]] std::uint32_t Long(int address, bool swapped) const;

    [[nodiscard]] Entry ReadEntry(int address, const Form& form) const;

    /// The address of the entry that `path`, an index from 0 for each level, leads to; kNotThere if the structure
    /// has no such entry or makes no sense. Reads no more entries than the indices add up to, whatever they say.
    [[nodiscard]] int Walk(const Form& form, std::span<const int> path) const;

private:
    [[nodiscard]] static bool Fits(std::int64_t address, const Form& form)
    {
        return address >= 0 && address + form.width <= kSize;
    }

    Reader mReader;
};

}  // namespace fenrik
