#include "remote/frmPipeUsersDialog.h"

#include "ui_frmPipeUsersDialog.h"

#include <QPushButton>

namespace fenrik {

frmPipeUsersDialog::frmPipeUsersDialog(QWidget* parent)
    : QDialog(parent), mUi(std::make_unique<Ui::frmPipeUsersDialog>())
{
    mUi->setupUi(this);
    connect(mUi->lstUsers, &QListWidget::itemSelectionChanged, this, &frmPipeUsersDialog::RefreshConnect);
    connect(mUi->cmdConnect, &QPushButton::clicked, this, &QDialog::accept);
    connect(mUi->cmdCancel, &QPushButton::clicked, this, &frmPipeUsersDialog::reject);
    ShowWaiting();
}

frmPipeUsersDialog::~frmPipeUsersDialog() = default;

void frmPipeUsersDialog::ShowWaiting()
{
    mUi->lstUsers->clear();
    mUi->lblInstructions->setText(QStringLiteral("Retrieving a list of active Users; Please wait..."));
    RefreshConnect();
}

void frmPipeUsersDialog::SetUserList(const UserList& ul, int ExcludeClientID)
{
    const int selectedID = SelectedClientID();
    const int selectedRow = mUi->lstUsers->row(SelectedItem());
    mUi->lstUsers->clear();
    for (const CUser& user : ul) {
        if (user.Id() == ExcludeClientID)
            continue;
        auto* item = new QListWidgetItem(user.UserName.trimmed(), mUi->lstUsers);
        item->setData(Qt::UserRole, user.Id());
    }
    SelectAgain(selectedRow, selectedID);
    mUi->lblInstructions->setText(
        mUi->lstUsers->count() == 0 ? QStringLiteral("No Users are currently logged on the Remote Diagnostics network.")
                                    : QStringLiteral("Please select the User to whom you would like to connect:"));
    RefreshConnect();
}

/// Only in the same place: a user who moved in the list has to be chosen anew.
void frmPipeUsersDialog::SelectAgain(int row, int clientID)
{
    QListWidgetItem* item = mUi->lstUsers->item(row);
    if (item && item->data(Qt::UserRole).toInt() == clientID)
        mUi->lstUsers->setCurrentItem(item);
}

const QListWidgetItem* frmPipeUsersDialog::SelectedItem() const
{
    return mUi->lstUsers->selectedItems().value(0);
}

int frmPipeUsersDialog::SelectedClientID() const
{
    const QListWidgetItem* item = SelectedItem();
    return item ? item->data(Qt::UserRole).toInt() : CUser::kNobody;
}

QString frmPipeUsersDialog::SelectedUserName() const
{
    const QListWidgetItem* item = SelectedItem();
    return item ? item->text() : QString();
}

void frmPipeUsersDialog::setState(std::int32_t state)
{
    if (state == RemoteStates::kDisconnected) {
        ShowWaiting();
        hide();
    } else if (state >= RemoteStates::kWaiting) {
        hide();
    }
}

void frmPipeUsersDialog::reject()
{
    mUi->lstUsers->setCurrentItem(nullptr);
    mUi->lstUsers->clearSelection();
    QDialog::reject();
}

void frmPipeUsersDialog::RefreshConnect()
{
    mUi->cmdConnect->setEnabled(SelectedItem() != nullptr);
}

}  // namespace fenrik
