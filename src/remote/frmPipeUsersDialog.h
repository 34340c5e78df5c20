#pragma once

#include "remote/CUser.h"
#include "remote/RemoteHost.h"

#include <QDialog>

#include <memory>

class QListWidgetItem;

namespace Ui {
class frmPipeUsersDialog;
}

namespace fenrik {

/// "Remote Diagnostics - Active Users": whom to connect to. Shown modal by connecting, and otherwise as a plain list.
class frmPipeUsersDialog : public QDialog, public IRemoteStateable {
    Q_OBJECT

public:
    explicit frmPipeUsersDialog(QWidget* parent = nullptr);
    ~frmPipeUsersDialog() override;

    /// Lists `ul` without the user of the number `ExcludeClientID`, which is this tool itself.
    void SetUserList(const UserList& ul, int ExcludeClientID);

    /// Number of the selected user; CUser::kNobody if none is, as after "Cancel".
    [[nodiscard]] int SelectedClientID() const;
    [[nodiscard]] QString SelectedUserName() const;

    /// Hides the window in a pipe. Without a connection it is as it was before its first list, and hidden.
    void setState(std::int32_t state) override;

    /// Escape and the closing of the window are "Cancel".
    void reject() override;

private:
    [[nodiscard]] const QListWidgetItem* SelectedItem() const;
    void ShowWaiting();
    void SelectAgain(int row, int clientID);
    void RefreshConnect();

    std::unique_ptr<Ui::frmPipeUsersDialog> mUi;
};

}  // namespace fenrik
