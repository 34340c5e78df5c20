#pragma once

#include "remote/CPipeProfile.h"

namespace fenrik {

class PipeSettings;
class SettingsStore;

/// The user's choice for remote diagnostics: whether it is wanted, the profiles, and which of them is in use.
class RDMain {
public:
    /// Both outlive this object.
    RDMain(PipeSettings& profiles, SettingsStore& settings) : mStorage(profiles), mSettings(settings) {}

    bool RDEnable = false;
    QString RDRecentProfileKey;  ///< key of the profile in use; need not be in the list

    /// Loads the profiles, and then RDEnable and RDRecentProfileKey. These are False and empty while the profiles'
    /// storage is out of order.
    void LoadRDSettings();

    /// Puts RDEnable and RDRecentProfileKey into the settings' store (False and empty as above), without writing its
    /// file.
    void SaveRDSettings();

    [[nodiscard]] const CPipeProfiles& Profiles() const { return mProfiles; }

    /// Stores `profiles` and keeps them, each with an identity.
    void SaveProfiles(const CPipeProfiles& profiles);

    [[nodiscard]] bool ProfileExists(const QString& key) const { return FindProfile(mProfiles, key) != nullptr; }

    /// The profile of RDRecentProfileKey, or nothing.
    [[nodiscard]] const CPipeProfile* CurrentProfile() const { return FindProfile(mProfiles, RDRecentProfileKey); }

    /// Its position in the list, from 1; 0 if it isn't there.
    [[nodiscard]] int ProfileIndex() const;

    [[nodiscard]] bool StorageWorks() const;

private:
    PipeSettings& mStorage;
    SettingsStore& mSettings;
    CPipeProfiles mProfiles;
};

}  // namespace fenrik
