#pragma once

#include "e2e/PortableCopy.h"

#include <QProcess>

namespace fenrik {

/// The relay as a program of its own, on a free port of this machine.
class RelayProcess {
public:
    explicit RelayProcess(const PortableCopy& copy) : mCopy(copy) {}
    ~RelayProcess();
    RelayProcess(const RelayProcess&) = delete;
    RelayProcess& operator=(const RelayProcess&) = delete;

    /// Fails the test if the relay does not get ready. `consent` is one of "grant", "ask", "deny".
    void Start(const char* consent = "ask");

    [[nodiscard]] QString Address() const { return mAddress; }  ///< "127.0.0.1:40123"
    [[nodiscard]] int Port() const { return mAddress.section(QLatin1Char(':'), 1).toInt(); }

    [[nodiscard]] bool Logged(const char* text) const;

    /// At once, without a word to the users.
    void Kill();

    /// Stops or goes on: a relay that is stopped accepts connections, as the system does that for it, and is silent.
    void Pause(bool pause);

private:
    const PortableCopy& mCopy;
    QProcess mProcess;
    QString mAddress;
};

}  // namespace fenrik
