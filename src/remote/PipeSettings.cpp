#include "remote/PipeSettings.h"

#include "platform/Boxes.h"
#include "platform/RegistryStore.h"
#include "platform/VersionInfo.h"
#include "remote/MRegistry.h"
#include "shared/Clock.h"
#include "shared/TextFormat.h"

#include <QRandomGenerator>
#include <QUuid>

#include <algorithm>
#include <limits>

namespace fenrik {

namespace {

constexpr int kRandomIDs = 10000;

QString ProfilesPath()
{
    return QLatin1String(PipeSettings::kProfilesPath);
}

QString PathOf(const QString& uniqueID)
{
    return ProfilesPath() + RegistryStore::OnePart(uniqueID);
}

std::int32_t Number(const QVariant& value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const double number = Val(value.toString());
    return number >= Limits::min() && number <= Limits::max() ? std::int32_t(number) : 0;
}

QString WriterText()
{
    return QStringLiteral("App: %1 %2").arg(VersionInfo::Title(), VersionInfo::OfThisBuild().MajorMinorRevision());
}

/// For a system without GUIDs: year, day of the year (the fifth "y" of the old format is that), hour, minute and
/// second, and a random number.
QString TimeID(const QDateTime& now)
{
    return now.toString(QStringLiteral("yyyy")) + QString::number(now.date().dayOfYear()) +
           now.toString(QStringLiteral("HHmmss")) +
           QStringLiteral("%1").arg(QRandomGenerator::global()->bounded(kRandomIDs), 4, 10, QLatin1Char('0'));
}

}  // namespace

PipeSettings::PipeSettings(MRegistry& registry, Boxes& boxes, const Clock& clock, MakeID makeID)
    : mRegistry(registry), mBoxes(boxes), mClock(clock), mMakeID(std::move(makeID))
{
}

QString PipeSettings::NewGuid()
{
    return QUuid::createUuid().toString(QUuid::WithBraces).toUpper();
}

bool PipeSettings::EnsureRegistryPath(const QString& path, bool report)
{
    bool isThere = true;
    QString part;
    for (const QString& name : path.split(QLatin1Char('\\'), Qt::SkipEmptyParts)) {
        part += name + QLatin1Char('\\');
        isThere = isThere && (mRegistry.KeyExists(part) || mRegistry.CreateKey(part));
    }
    if (!isThere && report)
        TellOfBrokenStorage();
    return isThere;
}

void PipeSettings::TellOfBrokenStorage()
{
    mStorageWorks = false;
    mBoxes.MsgBox(QStringLiteral("There is a problem with your list of saved Profiles.  Because of this, you will be "
                                 "unable to use Remote Diagnostics.\n\nTo repair your Profiles list, uninstall %1, and "
                                 "then reinstall the latest version.  If this does not work, contact Harnwick "
                                 "Technologies.")
                      .arg(VersionInfo::Title()),
                  QMessageBox::Critical);
}

CPipeProfiles PipeSettings::LoadProfiles()
{
    CPipeProfiles profiles;
    if (!EnsureRegistryPath(ProfilesPath(), true))
        return profiles;
    for (const QString& uniqueID : mRegistry.GetRegSubKeys(ProfilesPath()).value_or(QStringList())) {
        const CPipeProfile profile = Load(uniqueID);
        if (!FindProfile(profiles, profile.key()))
            profiles.push_back(profile);
    }
    return profiles;
}

CPipeProfile PipeSettings::Load(const QString& uniqueID) const
{
    const auto read = [&](const char* name) {
        return mRegistry.ReadRegKeyValue(PathOf(uniqueID), QLatin1String(name));
    };
    return {read("UserName").toString(), read("LogonID").toString(), read("ServerName").toString(),
            Number(read("ServerPort")), uniqueID};
}

CPipeProfiles PipeSettings::SaveProfiles(const CPipeProfiles& profiles)
{
    CPipeProfiles saved = profiles;
    for (CPipeProfile& profile : saved)
        EnsureUniqueID(profile);
    if (!EnsureRegistryPath(ProfilesPath(), true))
        return saved;
    DeleteOthers(saved);
    for (const CPipeProfile& profile : saved)
        Save(profile);
    return saved;
}

void PipeSettings::DeleteOthers(const CPipeProfiles& profiles)
{
    for (const QString& name : mRegistry.GetRegSubKeys(ProfilesPath()).value_or(QStringList())) {
        const bool kept = std::ranges::any_of(profiles, [&name](const CPipeProfile& profile) {
            return RegistryStore::OnePart(profile.UniqueID) == name;
        });
        if (!kept)
            mRegistry.DeleteKey(ProfilesPath() + name);
    }
}

void PipeSettings::Save(const CPipeProfile& profile)
{
    const QString path = PathOf(profile.UniqueID);
    // The first write that fails has told the user; the others would say the same once more.
    static_cast<void>(mRegistry.WriteRegKeyValue(path, QString(), WriterText()) &&
                      mRegistry.WriteRegKeyValue(path, QStringLiteral("UserName"), profile.UserName) &&
                      mRegistry.WriteRegKeyValue(path, QStringLiteral("LogonID"), profile.LogonID) &&
                      mRegistry.WriteRegKeyValue(path, QStringLiteral("ServerName"), profile.ServerName) &&
                      mRegistry.WriteRegKeyValue(path, QStringLiteral("ServerPort"), profile.ServerPort));
}

void PipeSettings::EnsureUniqueID(CPipeProfile& profile) const
{
    if (profile.UniqueID.isEmpty())
        profile.UniqueID = mMakeID();
    if (profile.UniqueID.isEmpty())
        profile.UniqueID = TimeID(mClock.Now().DateTime());
}

}  // namespace fenrik
