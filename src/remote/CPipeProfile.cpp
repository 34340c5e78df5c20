#include "remote/CPipeProfile.h"

#include <algorithm>
#include <cmath>

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
    const double value = UniqueID.toDouble(&isNumeric);
    // "inf" and "nan" are words.
    return isNumeric && std::isfinite(value) ? UniqueID + QStringLiteral("ID") : UniqueID;
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
