#pragma once

#include "commands/CommandQuery.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmCmdQry;
}

namespace fenrik {

class CommandsHost;
class CommandTable;
class ErrorReporter;

/// "Command Query": asks a node what it believes of a command, on or off, and lists how that went.
class frmCmdQry : public QDialog, private CommandQueryHost {
    Q_OBJECT

public:
    /// All references outlive the window.
    frmCmdQry(CMsgHandler& handler, CSystem& system, const CommandTable& commands, const CommandsHost& host,
              ErrorReporter& errors, QWidget* parent = nullptr);
    ~frmCmdQry() override;

private:
    void SetUpActions();
    void ShowCategories();
    void ShowCommands(const QString& category);
    void ForgetResult();
    void Send();
    void EnableInput(bool enabled);

    [[nodiscard]] bool PortOpenForTx() const override;
    void AddStep(const QString& line) override;
    void AddLine(const QString& line) override;
    void ShowResult(const QString& text) override;

    const CommandTable& mCommands;
    const CommandsHost& mHost;
    ErrorReporter& mErrors;
    CommandQuery mQuery;
    std::unique_ptr<Ui::frmCmdQry> mUi;
};

}  // namespace fenrik
