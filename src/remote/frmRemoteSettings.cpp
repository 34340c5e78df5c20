#include "remote/frmRemoteSettings.h"

#include "platform/Boxes.h"
#include "remote/FieldGuard.h"
#include "remote/PipeSettings.h"

#include "ui_frmRemoteSettings.h"

#include <QPushButton>
#include <QShowEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace fenrik {

namespace {

constexpr std::int32_t kFirstServerPort = 48051;

/// 0, which no server can have, for what is no whole number of 32 bits.
std::int32_t PortOf(const QString& text)
{
    return text.trimmed().toInt();
}

}  // namespace

frmRemoteSettings::frmRemoteSettings(const CPipeProfiles& profiles, int selected, const PipeSettings& storage,
                                     Boxes& boxes, QWidget* parent)
    : QDialog(parent), mProfiles(profiles), mStorage(storage), mBoxes(boxes),
      mUi(std::make_unique<Ui::frmRemoteSettings>())
{
    mUi->setupUi(this);
    mFields = {mUi->txtField_0, mUi->txtField_1, mUi->txtField_2, mUi->txtField_3};
    mCaptions = {mUi->lblField_0, mUi->lblField_1, mUi->lblField_2, mUi->lblField_3};
    SetUpBoxes();
    SetUpActions();
    RefreshList(selected - 1);
}

frmRemoteSettings::~frmRemoteSettings()
{
    // A row that is still being edited would be renamed when the list goes, after the profiles are gone.
    mUi->lstProfiles->disconnect(this);
}

void frmRemoteSettings::SetUpBoxes()
{
    // The boxes of both frames share a left edge.
    int widest = 0;
    for (const QLabel* caption : mCaptions)
        widest = std::max(widest, caption->sizeHint().width());
    for (QLabel* caption : mCaptions)
        caption->setMinimumWidth(widest);
    for (int field = 0; field < kFields; ++field) {
        connect(mFields[std::size_t(field)], &QLineEdit::textEdited, this,
                [this, field](const QString& text) { TakeField(field, text); });
    }
    new FieldGuard(*this, {mFields.begin(), mFields.end()}, *mUi->cmdCancel,
                   [this](const QWidget* box) { return IsFieldValid(box); });
}

void frmRemoteSettings::SetUpActions()
{
    connect(mUi->lstProfiles, &QListWidget::itemSelectionChanged, this, &frmRemoteSettings::ShowProfile);
    connect(mUi->lstProfiles, &QListWidget::itemChanged, this, &frmRemoteSettings::RenameFromRow);
    connect(mUi->cmdAddNew, &QPushButton::clicked, this, [this] {
        if (TakeFocusTo(*mUi->cmdAddNew))
            AddNewProfile();
    });
    connect(mUi->cmdDelete, &QPushButton::clicked, this, &frmRemoteSettings::DeleteSelectedProfile);
    connect(mUi->cmdSave, &QPushButton::clicked, this, &frmRemoteSettings::SaveChanges);
    connect(mUi->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmRemoteSettings::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (IsNewProfileDialog && !event->spontaneous())
        AddNewProfile();
}

std::optional<CPipeProfile> frmRemoteSettings::GetSelectedProfile() const
{
    const int row = SelectedRow();
    return row < 0 ? std::nullopt : std::optional(mProfiles[std::size_t(row)]);
}

int frmRemoteSettings::SelectedRow() const
{
    // Not the current row: the list makes its first row that when it gets the focus, which selects nothing.
    return mUi->lstProfiles->row(mUi->lstProfiles->selectedItems().value(0));
}

CPipeProfile* frmRemoteSettings::Selected()
{
    const int row = SelectedRow();
    return row < 0 ? nullptr : &mProfiles[std::size_t(row)];
}

void frmRemoteSettings::RefreshList(int row)
{
    {
        const QSignalBlocker quiet(mUi->lstProfiles);
        mUi->lstProfiles->clear();
        for (const CPipeProfile& profile : mProfiles) {
            auto* item = new QListWidgetItem(profile.UserName, mUi->lstProfiles);
            item->setFlags(item->flags() | Qt::ItemIsEditable);
        }
    }
    SelectRow(std::min(row, int(mProfiles.size()) - 1));
}

void frmRemoteSettings::SelectRow(int row)
{
    mUi->lstProfiles->setCurrentRow(row);
    // The row may be the one that was selected already, which the list doesn't tell.
    ShowProfile();
}

void frmRemoteSettings::ShowProfile()
{
    const CPipeProfile* profile = Selected();
    const CPipeProfile shown = profile ? *profile : CPipeProfile();
    const std::array<QString, kFields> texts{shown.UserName, shown.LogonID, shown.ServerName,
                                             profile ? QString::number(shown.ServerPort) : QString()};
    for (std::size_t field = 0; field < texts.size(); ++field) {
        mFields[field]->setText(texts[field]);
        // Of a text that is too long for its box, the beginning tells more.
        mFields[field]->setCursorPosition(0);
    }
    mUi->fraUser->setEnabled(profile != nullptr);
    mUi->fraServer->setEnabled(profile != nullptr);
    mUi->cmdDelete->setEnabled(profile != nullptr);
}

void frmRemoteSettings::TakeField(int field, const QString& text)
{
    CPipeProfile& profile = *Selected();
    switch (field) {
    case 0:
        profile.UserName = text;
        SetRowText(SelectedRow(), text);
        break;
    case 1:
        profile.LogonID = text;
        break;
    case 2:
        profile.ServerName = text;
        break;
    default:
        profile.ServerPort = PortOf(text);
        break;
    }
}

void frmRemoteSettings::SetRowText(int row, const QString& text)
{
    const QSignalBlocker quiet(mUi->lstProfiles);
    mUi->lstProfiles->item(row)->setText(text);
}

void frmRemoteSettings::RenameFromRow(QListWidgetItem* item)
{
    const int row = mUi->lstProfiles->row(item);
    CPipeProfile& profile = mProfiles[std::size_t(row)];
    if (const QString name = item->text().trimmed(); !name.isEmpty())
        profile.UserName = name;
    SetRowText(row, profile.UserName);
    if (row == SelectedRow())
        mFields[0]->setText(profile.UserName);
}

bool frmRemoteSettings::TakeFocusTo(QWidget& control)
{
    // An access key works a button without this.
    control.setFocus(Qt::ShortcutFocusReason);
    return focusWidget() == &control;
}

void frmRemoteSettings::AddNewProfile()
{
    CPipeProfile profile;
    profile.UserName = QStringLiteral("New User Profile %1").arg(mProfiles.size() + 1);
    profile.ServerPort = kFirstServerPort;
    const CPipeProfile* pattern = Selected() ? Selected() : mProfiles.empty() ? nullptr : &mProfiles.back();
    if (pattern) {
        profile.ServerName = pattern->ServerName;
        profile.ServerPort = pattern->ServerPort;
    }
    mStorage.EnsureUniqueID(profile);
    mProfiles.push_back(profile);
    RefreshList(int(mProfiles.size()) - 1);
    mUi->lstProfiles->setFocus();
    mUi->lstProfiles->editItem(mUi->lstProfiles->currentItem());
}

void frmRemoteSettings::DeleteSelectedProfile()
{
    const int row = SelectedRow();
    mProfiles.erase(mProfiles.begin() + row);
    RefreshList(row);
}

void frmRemoteSettings::SaveChanges()
{
    for (std::size_t row = 0; row < mProfiles.size(); ++row) {
        if (const int faults = FaultsOf(mProfiles[row])) {
            ShowFault(int(row), faults);
            return;
        }
    }
    mDidSaveChanges = true;
    accept();
}

void frmRemoteSettings::ShowFault(int row, int faults)
{
    std::size_t field = 0;
    while (!(faults & (1 << field)))
        ++field;
    SelectRow(row);
    const QString caption = mCaptions[field]->text().remove(QLatin1Char('&'));
    mBoxes.MsgBox(caption.isEmpty()
                      ? QStringLiteral("Cannot save changes because one of the profiles has an invalid setting.")
                      : QStringLiteral("One of the profiles has an invalid %1!").arg(caption),
                  QMessageBox::Warning);
    mFields[field]->setFocus();
}

bool frmRemoteSettings::IsFieldValid(const QWidget* box) const
{
    const int row = SelectedRow();
    const auto field = std::ranges::find(mFields, box) - mFields.begin();
    return row < 0 || !(FaultsOf(mProfiles[std::size_t(row)]) & (1 << field));
}

}  // namespace fenrik
