#pragma once

#include "relay/User.h"

#include <map>
#include <string>
#include <vector>

namespace fenrik {

/// The users that are logged on, by id, and who of them has to hear that the list has changed.
///
/// A change is not told at once to everybody: each tool that hears of it fetches the whole list, and with many users
/// coming and going that would be all that the relay does. Announcements are at least a short time apart, and the more
/// users there are the longer; who was told and has not fetched yet is not told again.
class UserTable {
public:
    /// Gives `user` an id that nobody else has. It is logged on until Remove, and outlives its stay.
    void Add(User& user);
    void Remove(User& user);

    [[nodiscard]] User* Find(std::int32_t id) const;
    [[nodiscard]] std::vector<User*> All() const;
    [[nodiscard]] std::size_t Size() const { return mUsers.size(); }

    /// The body of a frameUserList for `reader`. Where not all users fit into a frame, `reader` and its partner are in
    /// it, then those who are free, the newest first. Notes that `reader` has the present list.
    [[nodiscard]] std::string ListFor(User& reader) const;

    /// A user came, went, or changed its flags.
    void NoteChange() { ++mVersion; }

    /// Sends frameUserListChanged to all who have an older list, if there was a change and the time has come.
    void Announce(double now);

    /// When Announce has something to do (seconds); infinity if nothing has changed.
    [[nodiscard]] double NextDue() const;

private:
    std::map<std::int32_t, User*> mUsers;
    std::int32_t mLastId = 0;
    std::uint64_t mVersion = 0;
    std::uint64_t mAnnounced = 0;
    double mQuietUntil = 0;
};

}  // namespace fenrik
