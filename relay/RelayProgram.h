#pragma once

#include "relay/RelayOptions.h"
#include "relay/RelayServer.h"

#include <fstream>
#include <optional>

namespace fenrik {

/// The running program: the server, its log, and the signals that end it.
class RelayProgram {
public:
    /// Throws std::invalid_argument if an address is none; std::system_error if one can't be listened to or the log
    /// can't be opened.
    explicit RelayProgram(const RelayOptions& options);

    /// Runs until it is told to end.
    void Run();

private:
    void CatchSignals();
    void TakeSignal();
    void OpenLog();
    void RenewLog();
    void RaiseHandleLimit();

    RelayOptions mOptions;
    std::ofstream mLogFile;
    RelayLog mLog;
    Handle mSignals;
    std::optional<RelayServer> mServer;
    int mStops = 0;  // signals to end that have come
};

}  // namespace fenrik
