#pragma once

#include "remote/CPipeProfile.h"

#include <functional>

namespace fenrik {

class Boxes;
class Clock;
class MRegistry;

/// Keeps the profiles in the registry, where other tools of the family find them too:
///
///   Software\Harnwick Technologies\RemoteServer\Profiles\<UniqueID>:
///     (default)   text    "App: Fenrik Diagnostics 5.0.3": who wrote the key last
///     UserName    text
///     LogonID     text
///     ServerName  text
///     ServerPort  number
class PipeSettings {
public:
    static constexpr const char* kProfilesPath = "Software\\Harnwick Technologies\\RemoteServer\\Profiles\\";

    /// A new identity for a profile, or an empty text if the system has none to give.
    using MakeID = std::function<QString()>;

    /// All outlive this object.
    PipeSettings(MRegistry& registry, Boxes& boxes, const Clock& clock, MakeID makeID = NewGuid);

    /// Creates what is missing of `path`; true if all of it is there in the end. If not, and `report`, the profiles'
    /// storage is out of order from now on and the user is told.
    bool EnsureRegistryPath(const QString& path, bool report);

    /// False once the profiles' place could not be made. Then there are no profiles and no choice of one is kept.
    [[nodiscard]] bool StorageWorks() const { return mStorageWorks; }

    /// The stored profiles in the registry's order; fewer or none where the registry can't be read.
    [[nodiscard]] CPipeProfiles LoadProfiles();

    /// Makes the registry hold `profiles` and no others, and returns them, each with an identity of its own.
    [[nodiscard]] CPipeProfiles SaveProfiles(const CPipeProfiles& profiles);

    /// Gives `profile` an identity if it has none.
    void EnsureUniqueID(CPipeProfile& profile) const;

    /// A GUID in braces.
    [[nodiscard]] static QString NewGuid();

private:
    [[nodiscard]] CPipeProfile Load(const QString& uniqueID) const;
    void DeleteOthers(const CPipeProfiles& profiles);
    void Save(const CPipeProfile& profile);
    void TellOfBrokenStorage();

    MRegistry& mRegistry;
    Boxes& mBoxes;
    const Clock& mClock;
    MakeID mMakeID;
    bool mStorageWorks = true;
};

}  // namespace fenrik
