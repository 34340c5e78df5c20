#include "catalogue/CSpecialCommand.h"

#include "catalogue/CatalogueHost.h"
#include "platform/Error.h"
#include "shared/CommandTable.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kWordBits = 32;

std::int32_t Shifted(std::int32_t value, std::uint8_t shift, std::int32_t mask)
{
    const std::uint32_t moved = shift < kWordBits ? std::uint32_t(value) << shift : 0;
    return std::int32_t(moved & std::uint32_t(mask));
}

std::int32_t Unshifted(std::int32_t data, std::uint8_t shift, std::int32_t mask)
{
    const std::uint32_t part = std::uint32_t(data) & std::uint32_t(mask);
    return shift < kWordBits ? std::int32_t(part >> shift) : 0;
}

}  // namespace

void CSpecialCommandItem::Initialize(std::int32_t code, const QString& name, const QString& extra, const QString& icon)
{
    m_code = code;
    m_name = name;
    m_extra = extra;
    m_icon = icon;
}

std::int32_t CSpecialCommand::PackedKey(std::int32_t code, bool state, bool extended)
{
    return Shifted(code, 2, kCodeBits) | (state ? kStateBit : 0) | (extended ? kExtendedBit : 0);
}

void CSpecialCommand::AddItem(const QString& sName, std::int32_t lCode, bool bState, bool bExtended,
                              const QString& sExtra, const QString& sIcon)
{
    const std::int32_t key = PackedKey(lCode, bState, bExtended);
    if (mByKey.contains(key))
        throw Error(ErrorNumber::kDuplicateKey,
                    QStringLiteral("Command %1 has two items of the key %2.").arg(MyCommand).arg(key));
    auto item = std::make_unique<CSpecialCommandItem>();
    item->Initialize(key, sName, sExtra, sIcon);
    mByKey.insert(key, item.get());
    mItems.push_back(std::move(item));
}

void CSpecialCommand::RemoveItem(std::int32_t key)
{
    mByKey.remove(key);
    std::erase_if(mItems, [key](const auto& item) { return item->Code() == key; });
}

const CSpecialCommandItem* CSpecialCommand::GetItem(std::int32_t key) const
{
    return mByKey.value(key, nullptr);
}

QString CSpecialCommand::scName() const
{
    const auto* item = GetItem(mSelectedKey);
    return item ? item->Name() : QString();
}

QString CSpecialCommand::scExtra() const
{
    const auto* item = GetItem(mSelectedKey);
    return item ? item->Extra() : QString();
}

QString CSpecialCommand::scIcon() const
{
    const auto* item = GetItem(mSelectedKey);
    return item ? item->Icon() : QString();
}

QString CSpecialCommand::scFullName() const
{
    const QString extra = scExtra();
    if (extra.isEmpty() || extra.startsWith('#'))
        return scName();
    return (extra + TextSeperator + scName()).trimmed();
}

std::int32_t CSpecialCommand::scData() const
{
    const std::int32_t nodePart = HasNodePart() ? Shifted(mNode, NodeShift, NodeMask) : 0;
    return Shifted(scCode(), CodeShift, CodeMask) | nodePart;
}

void CSpecialCommand::SelectItem(std::int32_t data, std::uint8_t State, std::uint8_t extended, bool MustExist)
{
    SelectCode(PackedKey(Unshifted(data, CodeShift, CodeMask), State != 0, extended != 0), MustExist);
    if (HasNodePart())
        mNode = std::int16_t(Unshifted(data, NodeShift, NodeMask));
}

void CSpecialCommand::SelectCode(std::int32_t ActualCode, bool MustExist)
{
    mSelectedKey = ActualCode & kKeyBits;
    if (mByKey.contains(mSelectedKey))
        return;
    if (!MustExist) {
        AddItem(mCommands.FriendlyName(MyCommand), scCode(), scState() != 0, scExtended() != 0, QString(),
                QStringLiteral("Info"));
        return;
    }
    if (mItems.empty())
        throw Error(ErrorNumber::kSubscriptOutOfRange, QStringLiteral("Command %1 has no items.").arg(MyCommand));
    mSelectedKey = mItems.front()->Code();
    if (mHost.SelectedNodeNumber() > 0)
        mNode = std::int16_t(mHost.SelectedNodeNumber());
}

}  // namespace fenrik
