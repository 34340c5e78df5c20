#pragma once

#include "remote/RemoteHost.h"

namespace fenrik {

class ErrorReporter;
class RemoteChat;
class RemoteSession;
class RemoteStateView;
class RemoteWindows;

/// The main window's part in a change of the connection's state: it stores the state, shows it, and opens and closes
/// the windows around it.
class RemoteStateSwitch : public IRemoteStateable {
public:
    RemoteStateSwitch(RemoteSession& session, RemoteStateView& view, RemoteChat& chat, RemoteWindows& windows,
                      ErrorReporter& errors);

    /// The status texts are written only if the state is another than before; all the rest is done anyhow.
    void setState(std::int32_t state) override;

private:
    void ShowTexts(std::int32_t state);
    void SetWindows(std::int32_t state, bool changed);
    void ShowButtons(std::int32_t state);

    RemoteSession& mSession;
    RemoteStateView& mView;
    RemoteChat& mChat;
    RemoteWindows& mWindows;
    ErrorReporter& mErrors;
};

}  // namespace fenrik
