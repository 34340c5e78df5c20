#include "app/ScriptRunner.h"

#include "app/Composer.h"
#include "app/Services.h"
#include "app/UiState.h"
#include "platform/Boxes.h"
#include "shared/ErrorReporter.h"
#include "widgets/StatusLine.h"

#include <QScopedValueRollback>

namespace fenrik {

ScriptRunner::ScriptRunner(const Services& services, Composer& composer, UiState& ui, StatusLine& status)
    : mServices(services), mComposer(composer), mUi(ui), mStatus(status), mScript(services.pump, *this)
{
}

void ScriptRunner::Choose()
{
    // The menu is open to the user also inside an exchange and between two lines of a script.
    if (mChosen || !mUi.Ready()) {
        mStatus.setMsg(QStringLiteral("A script can't be run while something else is going on."));
        return;
    }
    const QScopedValueRollback chosen(mChosen, true);
    const QString path = mServices.boxes.OpenFileBox(QStringLiteral("Load Fenrik Diagnostic Script"),
                                                     QStringLiteral("Fenrik Diagnostic Script Files (*.fds)"));
    if (path.isEmpty())
        return;
    Guarded(mServices.errors, "frmmain:mnuRunScript:Click", [this, &path] { Run(path); });
    mUi.SetUIState(UiState::kReady);
}

void ScriptRunner::Run(const QString& path)
{
    try {
        const bool whole = mScript.Run(path);
        mStatus.setMsg(QStringLiteral("Script %1 after line %2")
                           .arg(whole ? QStringLiteral("ended") : QStringLiteral("stopped"))
                           .arg(mScript.Line()));
    } catch (...) {
        mStatus.setMsg(QStringLiteral("Script ended by an error in line %1").arg(mScript.Line()));
        throw;
    }
}

void ScriptRunner::ShowScriptLine(int number)
{
    // Each sending ends in the ready state; the script is not over with it.
    mUi.SetUIState(UiState::kBusy);
    mStatus.setMsg(QStringLiteral("Script line %1 (Escape stops)").arg(number));
}

void ScriptRunner::SendScriptCommand(const DiagScriptCommand& command)
{
    mComposer.SendAs(command.command, command.on, command.extended, command.data);
}

}  // namespace fenrik
