#pragma once

#include "remote/CUser.h"
#include "remote/RemoteHost.h"

#include <QDialog>

#include <memory>
#include <optional>

class QTimer;

namespace Ui {
class frmPipeChatDialog;
}

namespace fenrik {

class Boxes;
class Clock;
class ErrorReporter;

/// "Connected to User": what the two users of a pipe write to each other, and whether the other one has let this tool
/// on the network. Closing only hides it; the history stays.
class frmPipeChatDialog : public QDialog, public IRemoteStateable {
    Q_OBJECT

public:
    /// All references outlive the window. It begins in the host's state.
    frmPipeChatDialog(RemoteHost& host, const Clock& clock, Boxes& boxes, ErrorReporter& errors,
                      QWidget* parent = nullptr);
    ~frmPipeChatDialog() override;

    [[nodiscard]] const std::optional<CUser>& LocalClient() const { return mLocalClient; }
    void SetLocalClient(const std::optional<CUser>& user) { mLocalClient = user; }

    [[nodiscard]] const std::optional<CUser>& RemoteClient() const { return mRemoteClient; }
    void SetRemoteClient(const std::optional<CUser>& user);

    /// Adds a message of `UserName` to the history, up to its first zero byte, and shows the window.
    void SubmitChatMessage(const QString& sMessage, const QString& UserName);

    void ClearHistory();

    void setState(std::int32_t state) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void SetUpActions();
    void ShowState(std::int32_t state);
    void ShowStatus(const QString& text);
    void LayOutStatus();
    void ShowProgress();
    void Send();

    RemoteHost& mHost;
    const Clock& mClock;
    Boxes& mBoxes;
    ErrorReporter& mErrors;
    std::optional<CUser> mLocalClient;
    std::optional<CUser> mRemoteClient;
    std::unique_ptr<Ui::frmPipeChatDialog> mUi;
    QTimer* tmrWaitProgress;
};

}  // namespace fenrik
