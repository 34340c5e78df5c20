#pragma once

#include <QString>

#include <vector>

namespace fenrik {

/// A user of the relay. A new object stands for nobody.
struct CUser {
    static constexpr int kNobody = -1;

    QString UserName;
    QString clientID = QStringLiteral("-1");  ///< the relay's number, as decimal text
    QString clientIP;
    QString userFlags;  ///< begins with "+" while the user is in a pipe

    [[nodiscard]] bool isPiped() const { return userFlags.startsWith(QLatin1Char('+')); }
    [[nodiscard]] QString key() const { return clientID + QStringLiteral("ID"); }
    [[nodiscard]] int Id() const { return clientID.toInt(); }
    [[nodiscard]] bool IsNobody() const { return Id() == kNobody; }
};

/// The users that are logged on to the relay, in the order of its list.
class UserList {
public:
    /// Throws Error 457 if there is one of that number already.
    void Add(const CUser& user);
    void Clear() { mUsers.clear(); }

    [[nodiscard]] int Count() const { return int(mUsers.size()); }

    /// The user of that number, or nothing.
    [[nodiscard]] const CUser* Find(int clientID) const;

    [[nodiscard]] auto begin() const { return mUsers.begin(); }
    [[nodiscard]] auto end() const { return mUsers.end(); }

private:
    std::vector<CUser> mUsers;
};

}  // namespace fenrik
