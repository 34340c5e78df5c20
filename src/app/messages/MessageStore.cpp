#include "app/messages/MessageStore.h"

#include <algorithm>

namespace fenrik {

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
