#include "shared/CommandTable.h"

#include "platform/SubscriptOutOfRange.h"

namespace fenrik {

namespace {

void CheckSubscript(int command)
{
    if (!CommandTable::Contains(command))
        throw SubscriptOutOfRange();
}

}  // namespace

void CommandTable::Clear()
{
    const QString undefined = QString::fromLatin1(kUndefinedCategory);
    for (int number = 0; number < kSize; ++number) {
        CommandEntry& entry = mEntries[number];
        entry.Name = QStringLiteral("<Undefined message %1>").arg(number, 4);
        entry.Category = undefined;
        entry.CategoryRank = 0;
    }
    mAnalog.fill(false);
    NamesChanged();
}

CommandEntry& CommandTable::operator[](int command)
{
    CheckSubscript(command);
    return mEntries[command];
}

const CommandEntry& CommandTable::operator[](int command) const
{
    CheckSubscript(command);
    return mEntries[command];
}

void CommandTable::SetAnalogCommand(int command, bool analog)
{
    CheckSubscript(command);
    mAnalog[command] = analog;
}

int CommandTable::GetCommandNumber(const QString& name) const
{
    int number = 1;
    while (number < kSize && mEntries[number].Name != name)
        ++number;
    return number;
}

QString CommandTable::FriendlyName(int number) const
{
    return number >= 1 && number < kSize ? mEntries[number].Name : QStringLiteral("Unknown");
}

}  // namespace fenrik
