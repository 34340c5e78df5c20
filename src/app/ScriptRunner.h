#pragma once

#include "commands/DiagScript.h"

namespace fenrik {

class Composer;
class StatusLine;
class UiState;
struct Services;

/// The menu's "Run Script...": lets the user choose a script and runs it through the composer. `txtMsg` tells the line;
/// Escape stops it between two lines.
class ScriptRunner : private DiagScriptHost {
public:
    ScriptRunner(const Services& services, Composer& composer, UiState& ui, StatusLine& status);

    /// Returns when the script is over. Its error goes to the error reporter and ends the script alone. Nothing is
    /// begun inside another exchange or script.
    void Choose();

    void RequestCancel() { mScript.RequestStop(); }

private:
    void ShowScriptLine(int number) override;
    void SendScriptCommand(const DiagScriptCommand& command) override;
    void Run(const QString& path);

    const Services& mServices;
    Composer& mComposer;
    UiState& mUi;
    StatusLine& mStatus;
    DiagScript mScript;
    bool mChosen = false;  // from the file dialog to the script's end
};

}  // namespace fenrik
