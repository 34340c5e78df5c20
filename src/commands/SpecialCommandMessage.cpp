#include "commands/SpecialCommandMessage.h"

#include "catalogue/CSpecialCommand.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr QChar kHintMark = '#';
constexpr int kBitsOfMask = 32;

std::int64_t LargestNode(const CSpecialCommand& special)
{
    return special.NodeShift < kBitsOfMask ? std::uint32_t(special.NodeMask) >> special.NodeShift : 0;
}

}  // namespace

SpecialCommandMessage::SpecialCommandMessage(CSpecialCommand* special, const CMessage& message, int selectedNode)
    : mSpecial(special), mMessage(message)
{
    if (mSpecial) {
        mSpecial->SetscNode(0);
        mSpecial->SelectItem(message.data, message.State, message.extended, true);
        mCode = mSpecial->SelectedKey();
    }
    const int node = mSpecial ? mSpecial->scNode() : message.data;
    SetNode(node != 0 ? node : selectedNode);
}

CMessage SpecialCommandMessage::OfItem(CSpecialCommand* special, int command, std::int32_t code)
{
    CMessage message;
    message.Command = command;
    if (!special)
        return message;
    special->SelectCode(code, true);
    special->SetscNode(0);
    message.data = special->scData();
    message.State = special->scState();
    message.extended = special->scExtended();
    return message;
}

bool SpecialCommandMessage::TakesNode() const
{
    return !mSpecial || mSpecial->HasNodePart();
}

bool SpecialCommandMessage::RequiresMount() const
{
    return mSpecial && mSpecial->RequiresMount;
}

std::vector<SpecialCommandMessage::Entry> SpecialCommandMessage::Names() const
{
    std::vector<Entry> names;
    if (!mSpecial)
        return names;
    for (const auto& item : mSpecial->itemList()) {
        const auto isListed = [&item](const Entry& entry) { return entry.text == item->Name(); };
        if (std::none_of(names.begin(), names.end(), isListed))
            names.push_back({item->Name(), item->Code()});
    }
    return names;
}

std::vector<SpecialCommandMessage::Entry> SpecialCommandMessage::Specifics() const
{
    std::vector<Entry> specifics;
    if (!mSpecial)
        return specifics;
    const QString name = SelectedName();
    for (const auto& item : mSpecial->itemList()) {
        if (item->Name() == name && !item->Extra().startsWith(kHintMark))
            specifics.push_back({item->Extra().isEmpty() ? QStringLiteral("<default>") : item->Extra(), item->Code()});
    }
    return specifics;
}

QString SpecialCommandMessage::SelectedName() const
{
    const CSpecialCommandItem* item = mSpecial ? mSpecial->GetItem(mCode) : nullptr;
    return item ? item->Name() : QString();
}

QString SpecialCommandMessage::Hint() const
{
    const CSpecialCommandItem* item = mSpecial ? mSpecial->GetItem(mCode) : nullptr;
    return item && item->Extra().startsWith(kHintMark) ? item->Extra().mid(1) : QString();
}

void SpecialCommandMessage::Select(std::int32_t code)
{
    Restore();
    mSpecial->SelectCode(code, true);
    mCode = mSpecial->SelectedKey();
    Update();
}

void SpecialCommandMessage::SetNode(int node)
{
    mNode = node;
    if (mSpecial && mSpecial->HasNodePart()) {
        if (const std::int64_t largest = LargestNode(*mSpecial); node > largest)
            mNode = int(node & largest);
    }
    Update();
}

void SpecialCommandMessage::Restore() const
{
    mSpecial->SelectCode(mCode, true);
    mSpecial->SetscNode(std::int16_t(mNode));
}

void SpecialCommandMessage::Update()
{
    mMessage.EchoSend = true;
    if (!mSpecial) {
        mMessage.data = mNode;
        return;
    }
    Restore();
    mMessage.data = mSpecial->scData();
    mMessage.State = mSpecial->scState();
    mMessage.extended = mSpecial->scExtended();
}

}  // namespace fenrik
