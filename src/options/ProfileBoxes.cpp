#include "options/ProfileBoxes.h"

#include "remote/RDMain.h"
#include "remote/frmRemoteSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include <algorithm>

namespace fenrik {

ProfileBoxes::ProfileBoxes(const Controls& controls, RDMain& remote, const PipeSettings& storage, Boxes& boxes,
                           QWidget* window)
    : QObject(window), mControls(controls), mRemote(remote), mStorage(storage), mBoxes(boxes), mWindow(window)
{
    connect(&mControls.enable, &QCheckBox::toggled, this, &ProfileBoxes::EnableControls);
    connect(&mControls.profiles, &QComboBox::activated, this, &ProfileBoxes::ChooseRow);
    connect(&mControls.edit, &QPushButton::clicked, this, &ProfileBoxes::Edit);
}

void ProfileBoxes::Show()
{
    mControls.enable.setChecked(mRemote.RDEnable);
    FillList(mRemote.ProfileIndex() - 1);
}

int ProfileBoxes::Count() const
{
    return int(mRemote.Profiles().size());
}

void ProfileBoxes::FillList(int row)
{
    mControls.profiles.clear();
    for (const CPipeProfile& profile : mRemote.Profiles())
        mControls.profiles.addItem(profile.UserName);
    mControls.profiles.addItem(QStringLiteral("(Add new...)"));
    mControls.profiles.setCurrentIndex(row);
    EnableControls();
}

void ProfileBoxes::EnableControls()
{
    const bool wanted = mControls.enable.isChecked() && mRemote.StorageWorks();
    mControls.profiles.setEnabled(wanted);
    mControls.edit.setEnabled(wanted && Count() > 0);
}

void ProfileBoxes::ChooseRow(int row)
{
    if (row == Count())
        AddNew();
}

void ProfileBoxes::AddNew()
{
    frmRemoteSettings dialog(mRemote.Profiles(), 0, mStorage, mBoxes, mWindow);
    dialog.IsNewProfileDialog = true;
    dialog.exec();
    bool added = false;
    if (dialog.DidSaveChanges()) {
        const CPipeProfiles before = mRemote.Profiles();
        mRemote.SaveProfiles(dialog.GetLocalProfileCollection());
        added = std::ranges::any_of(mRemote.Profiles(), [&before](const CPipeProfile& profile) {
            return FindProfile(before, profile.key()) == nullptr;
        });
    }
    FillList(added ? Count() - 1 : std::min(0, Count() - 1));
}

void ProfileBoxes::Edit()
{
    frmRemoteSettings dialog(mRemote.Profiles(), mControls.profiles.currentIndex() + 1, mStorage, mBoxes, mWindow);
    dialog.exec();
    if (!dialog.DidSaveChanges())
        return;
    mRemote.SaveProfiles(dialog.GetLocalProfileCollection());
    const auto chosen = dialog.GetSelectedProfile();
    const CPipeProfile* kept = chosen ? FindProfile(mRemote.Profiles(), chosen->key()) : nullptr;
    FillList(kept ? int(kept - mRemote.Profiles().data()) : -1);
}

const CPipeProfile* ProfileBoxes::Selected() const
{
    const int row = mControls.profiles.currentIndex();
    return row >= 0 && row < Count() ? &mRemote.Profiles()[std::size_t(row)] : nullptr;
}

bool ProfileBoxes::LacksProfile() const
{
    return mControls.enable.isChecked() && !Selected();
}

void ProfileBoxes::Apply()
{
    const CPipeProfile* profile = Selected();
    mRemote.RDEnable = mRemote.StorageWorks() && mControls.enable.isChecked() && profile;
    mRemote.RDRecentProfileKey = mRemote.RDEnable ? profile->key() : QString();
}

}  // namespace fenrik
