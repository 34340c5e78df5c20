#include "remote/CPipeProfile.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr std::int32_t kHighestPort = 65535;

bool IsBlank(const QString& text)
{
    return text.trimmed().isEmpty();
}

}  // namespace

QString CPipeProfile::key() const
{
    bool isNumeric = false;
    static_cast<void>(UniqueID.toDouble(&isNumeric));
    return isNumeric ? UniqueID + QStringLiteral("ID") : UniqueID;
}

const CPipeProfile* FindProfile(const CPipeProfiles& profiles, const QString& key)
{
    const auto found = std::ranges::find(profiles, key, &CPipeProfile::key);
    return found == profiles.end() ? nullptr : &*found;
}

int FaultsOf(const CPipeProfile& profile)
{
    int faults = 0;
    if (IsBlank(profile.UserName))
        faults |= ProfileFault::kUserName;
    if (IsBlank(profile.LogonID))
        faults |= ProfileFault::kLogonID;
    if (IsBlank(profile.ServerName))
        faults |= ProfileFault::kServerName;
    if (profile.ServerPort < 1 || profile.ServerPort > kHighestPort)
        faults |= ProfileFault::kServerPort;
    return faults;
}

}  // namespace fenrik
