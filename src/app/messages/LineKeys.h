#pragma once

#include "app/messages/LineNames.h"
#include "app/messages/MessageRecord.h"

#include <cstdint>
#include <vector>

namespace fenrik {

/// The key of a line of the compact list as a number: the command, and the data for 900 to 999, the name for others.
struct LineKey {
    std::uint64_t value = 0;

    static bool ByData(int command) { return command >= 900 && command <= 999; }

    [[nodiscard]] static LineKey Of(const MessageRecord& line, const LineNames& names)
    {
        const std::uint32_t low = ByData(line.command) ? std::uint32_t(line.data) : names[line.name].key;
        return {std::uint64_t(line.command) << 32 | low};
    }

    /// The key as it is written: "902D5", "12VMDome lamp".
    [[nodiscard]] static QString Text(const MessageRecord& line, const LineNames& names);

    friend bool operator==(LineKey, LineKey) = default;
};

/// Where the line of a key stands. A hash table with open addressing: a look-up touches one or two places next to each
/// other, however many keys there are.
class LineKeys {
public:
    /// The row of `key`. A key that is not known gets `newRow`.
    [[nodiscard]] std::uint32_t FindOrAdd(LineKey key, std::uint32_t newRow)
    {
        if (mUsed >= mSlots.size() / 4 * 3)
            Grow();
        for (std::size_t at = Home(key);; at = (at + 1) & (mSlots.size() - 1)) {
            Slot& slot = mSlots[at];
            if (slot.row == kFree) {
                slot = {key.value, newRow};
                ++mUsed;
                return newRow;
            }
            if (slot.Key() == key.value)
                return slot.row;
        }
    }

    void Clear();

private:
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    // 44 bits of a key are in use; as two words beside the row a slot has 12 bytes instead of 16.
    struct Slot {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        std::uint32_t row = kFree;

        Slot() = default;
        Slot(std::uint64_t key, std::uint32_t itsRow)
            : low(std::uint32_t(key)), high(std::uint32_t(key >> 32)), row(itsRow)
        {
        }
        [[nodiscard]] std::uint64_t Key() const { return std::uint64_t(high) << 32 | low; }
    };

    // Keys differ in few bits; the product's upper bits depend on all of them.
    [[nodiscard]] std::size_t Home(LineKey key) const { return (key.value * 0x9E3779B97F4A7C15ull) >> mShift; }
    void Grow();

    std::vector<Slot> mSlots;
    std::size_t mUsed = 0;
    int mShift = 64;
};

}  // namespace fenrik
