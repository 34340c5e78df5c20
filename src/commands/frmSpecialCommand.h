#pragma once

#include "commands/SpecialCommandMessage.h"
#include "commands/TemporaryMount.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmSpecialCommand;
}

namespace fenrik {

class Boxes;
class CMsgHandler;
class CommandsHost;
class CSystem;
class ErrorReporter;

/// What the windows of the operator commands work with. All outlive the windows.
struct CommandsServices {
    CMsgHandler& handler;
    CSystem& system;
    Boxes& boxes;
    ErrorReporter& errors;
    CommandsHost& host;
};

/// "Special Commands": the operator picks a sub-function by name, and a node, and sends the message that says so.
/// A command that only a mounted node obeys mounts it, and closing the window puts the mount back.
class frmSpecialCommand : public QDialog {
    Q_OBJECT

public:
    /// Begins with what `message` says. `special` is the message's special command; without one there is only a node
    /// to choose. Throws Error 9 if the special command has no items.
    frmSpecialCommand(const CommandsServices& services, CSpecialCommand* special, const CMessage& message,
                      QWidget* parent = nullptr);
    ~frmSpecialCommand() override;

    void done(int result) override;

private:
    void SetUpNode();
    void SetUpActions();
    void ShowNames();
    void ShowSpecifics();
    void ShowNode();
    void EnableInput();
    void ChooseItem(std::int32_t code);
    void TakeNode();
    void Send();
    void SendToNode(int node);
    [[nodiscard]] int TargetNode() const;
    [[nodiscard]] bool IsSure(int node);
    [[nodiscard]] bool MayMount(int node);
    [[nodiscard]] bool NeedsMount(int node) const;
    [[nodiscard]] bool Ask(const QString& question);
    void PutMountBack();

    const CommandsServices mServices;
    SpecialCommandMessage mMessage;
    TemporaryMount mMount;
    bool mSendsToUnknownNode = false;  // the user has said so
    bool mSending = false;
    bool mClosed = false;
    std::unique_ptr<Ui::frmSpecialCommand> mUi;
};

}  // namespace fenrik
