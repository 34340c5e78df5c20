#pragma once

#include "app/messages/LineKeys.h"
#include "app/messages/LineNames.h"
#include "app/messages/MessageRecord.h"
#include "platform/LargeMemory.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace fenrik {

/// The lines of the message list, and what of them the views have not been told yet. Lines stand in chunks that never
/// move, so that growing copies nothing.
///
/// Keyed (the compact list), a line with the key of an earlier one replaces it in its place.
class MessageStore {
public:
    using Row = std::uint32_t;

    /// Cells that have changed, of lines that the views know: the same columns in each row of a range.
    struct Change {
        Row first = 0;
        Row last = 0;
        std::uint8_t columns = 0;  ///< bit n: column n

        friend bool operator==(const Change&, const Change&) = default;
    };

    [[nodiscard]] LineNames& Names() { return mNames; }
    [[nodiscard]] const LineNames& Names() const { return mNames; }

    [[nodiscard]] Row Size() const { return mSize; }
    [[nodiscard]] const MessageRecord& operator[](Row row) const { return mChunks[row >> kShift][row & kMask]; }

    /// The line that was written last; meaningless while Size is 0.
    [[nodiscard]] Row Newest() const { return mNewest; }

    [[nodiscard]] bool Keyed() const { return mKeyed; }

    /// Turning keys on empties the store: keyed and keyless lines must not mix. Turning them off keeps the lines.
    void SetKeyed(bool keyed);

    /// The key of a line as text; empty for a line that was written without one.
    [[nodiscard]] QString KeyText(Row row) const;

    /// `name` is of Names, `count` the command's counter.
    void Put(const CMessage& message, LineNames::Id name, std::int16_t count)
    {
        if (!mKeyed) {
            Append(message, name, count);
            return;
        }
        const MessageRecord record(message, name, count);
        const Row row = mKeys.FindOrAdd(LineKey::Of(record, mNames), mSize);
        if (row == mSize)
            Append(message, name, count);
        else
            Replace(row, record);
    }

    /// No lines. Names stay.
    void Clear();

    /// How many lines the views know: the first ones.
    [[nodiscard]] Row Announced() const { return mAnnounced; }
    void AnnounceAll() { mAnnounced = mSize; }

    /// What has changed in announced lines since the last call, by row, neighbours with the same columns merged.
    [[nodiscard]] std::vector<Change> TakeChanges();

private:
    static constexpr int kShift = 18;  // a chunk fills three large pages to the last byte
    static constexpr Row kChunk = Row(1) << kShift;
    static constexpr Row kMask = kChunk - 1;
    static_assert(kChunk * sizeof(MessageRecord) % kLargePage == 0);

    void Append(const CMessage& message, LineNames::Id name, std::int16_t count)
    {
        if (mSize >> kShift == mChunks.size())
            mChunks.push_back(MakeLargeArray<MessageRecord>(kChunk));
        // Written where it stays: a record that is made elsewhere and copied costs more than all the rest.
        std::construct_at(&mChunks[mSize >> kShift][mSize & kMask], message, name, count);
        mNewest = mSize++;
    }

    void Replace(Row row, const MessageRecord& record)
    {
        MessageRecord& line = mChunks[row >> kShift][row & kMask];
        const std::uint8_t before = line.unseen;
        const std::uint8_t unseen = row < mAnnounced ? before | Difference(line, record) : 0;
        line = record;
        line.unseen = unseen;
        if (!before && unseen)
            mChanged.push_back(row);
        mNewest = row;
    }

    /// The columns in which two lines of one key differ; a bit for each, in the order of the list's columns.
    static std::uint8_t Difference(const MessageRecord& a, const MessageRecord& b)
    {
        const bool data = a.data != b.data;
        const bool raw = data || ((a.wire ^ b.wire) & ~(MessageRecord::kOn | MessageRecord::kThreeWay)) != 0;
        // A line without wire bytes shows no time.
        const bool time = a.time != b.time || a.Form() != b.Form();
        return std::uint8_t((a.name != b.name) | (a.On() != b.On()) << 1 | (a.ThreeWay() != b.ThreeWay()) << 2 |
                            data << 3 | (a.checkSum != b.checkSum) << 4 | raw << 5 | time << 6 |
                            (a.count != b.count) << 7);
    }

    std::vector<LargeArray<MessageRecord>> mChunks;
    Row mSize = 0;
    Row mAnnounced = 0;
    Row mNewest = 0;
    Row mWithKey = 0;  // the first lines, which were written with a key; all of them while mKeyed
    bool mKeyed = false;
    LineNames mNames;
    LineKeys mKeys;
    std::vector<Row> mChanged;  // announced rows with unseen cells, each once
};

}  // namespace fenrik
