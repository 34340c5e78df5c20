#include "app/messages/LineNames.h"

namespace fenrik {

LineNames::Id LineNames::Intern(const QString& text, const QString& icon, const QString& keyName)
{
    Entry entry{text, icon, keyName};
    const auto known = mIds.constFind(entry);
    if (known != mIds.constEnd())
        return *known;

    const auto key = mKeys.constFind(keyName);
    entry.key = key != mKeys.constEnd() ? *key : *mKeys.insert(keyName, Id(mKeys.size()));
    const auto id = Id(mEntries.size());
    mIds.insert(entry, id);
    mEntries.push_back(std::move(entry));
    return id;
}

}  // namespace fenrik
