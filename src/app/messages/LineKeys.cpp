#include "app/messages/LineKeys.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace fenrik {

QString LineKey::Text(const MessageRecord& line, const LineNames& names)
{
    const QString command = QString::number(line.command);
    if (LineKey{line.command, 0}.ByData())
        return command + QLatin1Char('D') + QString::number(line.data);
    return command + QStringLiteral("VM") + names[line.name].keyName;
}

void LineKeys::Clear()
{
    mPages.clear();
    mBlocks.clear();
    mPagesLeft = 0;
    mSlots = std::vector<Slot>();
    mUsed = 0;
    mShift = 64;
}

void LineKeys::AddPage(std::uint32_t page)
{
    mPages.resize((LineKey::kLastByData - LineKey::kFirstByData + 1) * kPagedData / kPage);
    if (mPagesLeft == 0) {
        mBlocks.push_back(MakeLargeArray<Page>(kBlock));
        mPagesLeft = kBlock;
    }
    mPages[page] = &mBlocks.back()[--mPagesLeft];
    mPages[page]->fill(kFree);
}

void LineKeys::Grow()
{
    constexpr std::size_t kFirst = 1024;
    const std::vector<Slot> old = std::exchange(mSlots, std::vector<Slot>(std::max(kFirst, mSlots.size() * 2)));
    mShift = 64 - std::countr_zero(mSlots.size());
    for (const Slot& slot : old) {
        if (slot.row == kFree)
            continue;
        std::size_t at = Home(slot.key);
        while (mSlots[at].row != kFree)
            at = (at + 1) & (mSlots.size() - 1);
        mSlots[at] = slot;
    }
}

}  // namespace fenrik
