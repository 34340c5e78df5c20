#pragma once

#include "app/messages/LineNames.h"
#include "app/messages/MessageRecord.h"
#include "platform/LargeMemory.h"

#include <array>
#include <cstdint>
#include <vector>

namespace fenrik {

/// The key of a line of the compact list: the command, and the data for 900 to 999, the name for others.
struct LineKey {
    std::uint32_t command = 0;
    std::uint32_t value = 0;  ///< the data, or LineNames' number of the name

    static constexpr std::uint32_t kFirstByData = 900;
    static constexpr std::uint32_t kLastByData = 999;

    [[nodiscard]] bool ByData() const { return command >= kFirstByData && command <= kLastByData; }

    [[nodiscard]] static LineKey Of(const MessageRecord& line, const LineNames& names)
    {
        const LineKey byData{line.command, std::uint32_t(line.data)};
        return byData.ByData() ? byData : LineKey{line.command, names[line.name].key};
    }

    /// The key as it is written: "902D5", "12VMDome lamp".
    [[nodiscard]] static QString Text(const MessageRecord& line, const LineNames& names);

    friend bool operator==(LineKey, LineKey) = default;
};

/// Where the line of a key stands. Finding a row takes the same few steps however many keys there are.
///
/// Keys by data, which are the many, have a place each in pages that appear as they are needed: no key is compared, and
/// growing moves nothing. The few by name, and data beyond 16 bits, which only the tool itself can make, stand in a
/// hash table with open addressing.
class LineKeys {
public:
    /// The row of `key`. A key that is not known gets `newRow`.
    [[nodiscard]] std::uint32_t FindOrAdd(LineKey key, std::uint32_t newRow)
    {
        std::uint32_t& row = key.ByData() && key.value < kPagedData ? Paged(key) : Hashed(key);
        if (row == kFree)
            row = newRow;
        return row;
    }

    void Clear();

private:
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    static constexpr std::uint32_t kPagedData = 0x10000;
    static constexpr std::uint32_t kPage = 256;
    using Page = std::array<std::uint32_t, kPage>;
    static constexpr std::size_t kBlock = kLargePage / sizeof(Page);

    [[nodiscard]] std::uint32_t& Paged(LineKey key)
    {
        const std::uint32_t place = (key.command - LineKey::kFirstByData) * kPagedData + key.value;
        if (place / kPage >= mPages.size() || !mPages[place / kPage])
            AddPage(place / kPage);
        return (*mPages[place / kPage])[place % kPage];
    }
    void AddPage(std::uint32_t page);

    struct Slot {
        LineKey key;
        std::uint32_t row = kFree;
    };

    // Keys differ in few bits; the product's upper bits depend on all of them.
    [[nodiscard]] std::size_t Home(LineKey key) const
    {
        return ((std::uint64_t(key.command) << 32 | key.value) * 0x9E3779B97F4A7C15ull) >> mShift;
    }
    [[nodiscard]] std::uint32_t& Hashed(LineKey key)
    {
        // Counted when a free slot is handed out: the caller takes it.
        if (mUsed >= mSlots.size() / 4 * 3)
            Grow();
        std::size_t at = Home(key);
        while (mSlots[at].row != kFree && mSlots[at].key != key)
            at = (at + 1) & (mSlots.size() - 1);
        if (mSlots[at].row == kFree) {
            mSlots[at].key = key;
            ++mUsed;
        }
        return mSlots[at].row;
    }
    void Grow();

    std::vector<Page*> mPages;
    std::vector<LargeArray<Page>> mBlocks;  // what mPages points into
    std::size_t mPagesLeft = 0;             // in the last block
    std::vector<Slot> mSlots;
    std::size_t mUsed = 0;
    int mShift = 64;
};

}  // namespace fenrik
