#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace fenrik {

/// Who the user is on a relay, and which relay it is.
struct CPipeProfile {
    QString UserName;  ///< shown to other users
    QString LogonID;
    QString ServerName;  ///< host name or address
    std::int32_t ServerPort = 0;
    QString UniqueID;  ///< the profile's lasting identity; empty until it is given one

    /// UniqueID, with "ID" behind one that reads as a number.
    [[nodiscard]] QString key() const;

    friend bool operator==(const CPipeProfile&, const CPipeProfile&) = default;
};

/// Profiles in the user's order.
using CPipeProfiles = std::vector<CPipeProfile>;

/// The profile of that key, or nothing.
[[nodiscard]] const CPipeProfile* FindProfile(const CPipeProfiles& profiles, const QString& key);

/// What is wrong with a profile: a sum of bits, 0 for a profile that can be used.
namespace ProfileFault {
inline constexpr int kUserName = 1;    ///< nothing but blanks
inline constexpr int kLogonID = 2;     ///< nothing but blanks
inline constexpr int kServerName = 4;  ///< nothing but blanks
inline constexpr int kServerPort = 8;  ///< not from 1 to 65535
}  // namespace ProfileFault

[[nodiscard]] int FaultsOf(const CPipeProfile& profile);

}  // namespace fenrik
