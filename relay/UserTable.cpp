#include "relay/UserTable.h"

#include "pipe/PipeBodies.h"

#include <algorithm>
#include <limits>

namespace fenrik {

namespace {

constexpr double kQuietSeconds = 0.2;            // between announcements
constexpr double kQuietSecondsForAUser = 0.002;  // and this for each user

std::string RecordOf(const User& user)
{
    return PipeUserRecord{user.id, user.address, user.name, user.partner ? "+" : ""}.Encode();
}

/// Of `users`, those of greatest use to `reader`, as many as fit into a frame.
void KeepTheMostUseful(std::vector<User*>& users, const User& reader)
{
    const auto rank = [&](const User* user) {
        const bool own = user == &reader || user == reader.partner;
        return own ? 0 : user->partner ? 2 : 1;
    };
    std::ranges::sort(
        users, [&](const User* a, const User* b) { return rank(a) != rank(b) ? rank(a) < rank(b) : a->id > b->id; });
    users.resize(PipeUserRecord::kMostInAFrame);
    // A row that a user has selected should not move when the list is fetched again.
    std::ranges::sort(users, {}, &User::id);
}

}  // namespace

void UserTable::Add(User& user)
{
    do {
        mLastId = mLastId == std::numeric_limits<std::int32_t>::max() ? 1 : mLastId + 1;
    } while (mUsers.contains(mLastId));
    user.id = mLastId;
    mUsers.emplace(user.id, &user);
    NoteChange();
    user.listVersion = mVersion;
}

void UserTable::Remove(User& user)
{
    mUsers.erase(user.id);
    user.id = 0;
    NoteChange();
}

User* UserTable::Find(std::int32_t id) const
{
    const auto place = mUsers.find(id);
    return place == mUsers.end() ? nullptr : place->second;
}

std::vector<User*> UserTable::All() const
{
    std::vector<User*> users;
    for (const auto& [id, user] : mUsers)
        users.push_back(user);
    return users;
}

std::string UserTable::ListFor(User& reader) const
{
    reader.listVersion = mVersion;
    reader.listAnnounced = false;
    auto users = All();
    if (users.size() > PipeUserRecord::kMostInAFrame)
        KeepTheMostUseful(users, reader);
    std::string body;
    for (const auto* user : users)
        body += RecordOf(*user);
    return body;
}

void UserTable::Announce(double now)
{
    if (now < NextDue())
        return;
    for (const auto& [id, user] : mUsers) {
        if (user->listAnnounced || user->listVersion == mVersion)
            continue;
        user->listAnnounced = true;
        user->line.Send(PipeFrameType::frameUserListChanged, {});
    }
    mAnnounced = mVersion;
    mQuietUntil = now + kQuietSeconds + kQuietSecondsForAUser * double(mUsers.size());
}

double UserTable::NextDue() const
{
    return mAnnounced == mVersion ? std::numeric_limits<double>::infinity() : mQuietUntil;
}

}  // namespace fenrik
