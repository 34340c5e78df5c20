#include "app/messages/MessageStore.h"

#include <algorithm>

namespace fenrik {

namespace {

/// The columns in which two lines of one key differ; a bit for each, in the order of the list's columns.
std::uint8_t Difference(const MessageRecord& a, const MessageRecord& b)
{
    const bool data = a.data != b.data;
    const bool raw = data || ((a.wire ^ b.wire) & ~(MessageRecord::kOn | MessageRecord::kThreeWay)) != 0;
    // A line without wire bytes shows no time; its form is part of the wire word.
    const bool time = a.time != b.time || a.Form() != b.Form();
    return std::uint8_t((a.name != b.name) | (a.On() != b.On()) << 1 | (a.ThreeWay() != b.ThreeWay()) << 2 | data << 3 |
                        (a.checkSum != b.checkSum) << 4 | raw << 5 | time << 6 | (a.count != b.count) << 7);
}

}  // namespace

void MessageStore::SetKeyed(bool keyed)
{
    if (keyed == mKeyed)
        return;
    if (keyed)
        Clear();
    else
        mWithKey = mSize;
    mKeys.Clear();
    mKeyed = keyed;
}

QString MessageStore::KeyText(Row row) const
{
    return mKeyed || row < mWithKey ? LineKey::Text((*this)[row], mNames) : QString();
}

void MessageStore::Replace(Row row, const MessageRecord& record)
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

void MessageStore::Clear()
{
    mChunks.clear();
    mChanged.clear();
    mKeys.Clear();
    mSize = mAnnounced = mNewest = mWithKey = 0;
}

std::vector<MessageStore::Change> MessageStore::TakeChanges()
{
    std::sort(mChanged.begin(), mChanged.end());
    std::vector<Change> changes;
    for (const Row row : mChanged) {
        std::uint8_t& unseen = mChunks[row >> kShift][row & kMask].unseen;
        if (!changes.empty() && changes.back().last + 1 == row && changes.back().columns == unseen)
            changes.back().last = row;
        else
            changes.push_back({row, row, unseen});
        unseen = 0;
    }
    mChanged.clear();
    return changes;
}

}  // namespace fenrik
