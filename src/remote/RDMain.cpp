#include "remote/RDMain.h"

#include "platform/SettingsStore.h"
#include "remote/PipeSettings.h"
#include "shared/TextFormat.h"

namespace fenrik {

namespace {

const char* const kSection = "Settings";
const char* const kEnable = "RDEnable";
const char* const kRecentProfileKey = "RDRecentProfileKey";

}  // namespace

void RDMain::LoadRDSettings()
{
    mProfiles = mStorage.LoadProfiles();
    const auto read = [this](const char* key) {
        return StorageWorks() ? mSettings.GetSetting(QLatin1String(kSection), QLatin1String(key), QString())
                              : QString();
    };
    RDEnable = read(kEnable).compare(BooleanText(true), Qt::CaseInsensitive) == 0;
    RDRecentProfileKey = read(kRecentProfileKey);
}

void RDMain::SaveRDSettings()
{
    const bool works = StorageWorks();
    mSettings.SaveSetting(QLatin1String(kSection), QLatin1String(kEnable), BooleanText(works && RDEnable));
    mSettings.SaveSetting(QLatin1String(kSection), QLatin1String(kRecentProfileKey),
                          works ? RDRecentProfileKey : QString());
}

void RDMain::SaveProfiles(const CPipeProfiles& profiles)
{
    mProfiles = mStorage.SaveProfiles(profiles);
}

int RDMain::ProfileIndex() const
{
    const CPipeProfile* current = CurrentProfile();
    return current ? int(current - mProfiles.data()) + 1 : 0;
}

bool RDMain::StorageWorks() const
{
    return mStorage.StorageWorks();
}

}  // namespace fenrik
