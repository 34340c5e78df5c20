#include "remote/CUser.h"

#include "platform/Error.h"

#include <algorithm>

namespace fenrik {

void UserList::Add(const CUser& user)
{
    if (std::ranges::find(mUsers, user.clientID, &CUser::clientID) != mUsers.end())
        throw Error(ErrorNumber::kDuplicateKey,
                    QStringLiteral("This key is already associated with an element of this collection"));
    mUsers.push_back(user);
}

const CUser* UserList::Find(int clientID) const
{
    const auto found = std::ranges::find(mUsers, clientID, &CUser::Id);
    return found == mUsers.end() ? nullptr : &*found;
}

}  // namespace fenrik
