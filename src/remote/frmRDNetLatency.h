#pragma once

#include "remote/RemoteHost.h"

#include <QDialog>

#include <array>
#include <memory>

namespace Ui {
class frmRDNetLatency;
}

namespace fenrik {

class Clock;
class ErrorReporter;

/// "Fenrik RD Ping": the mean of 20 round trips to the relay, or through it to the other end of the pipe. There is no
/// time-out: a lost frame ends the test. Whoever owns the window makes a new one each time it is opened.
class frmRDNetLatency : public QDialog, public IRemoteStateable {
    Q_OBJECT

public:
    /// All references outlive the window.
    frmRDNetLatency(RemoteHost& host, const Clock& clock, ErrorReporter& errors, QWidget* parent = nullptr);
    ~frmRDNetLatency() override;

    /// An echo has come back. What it says isn't looked at, nor whether a test runs. Throws Error 9 for one too many,
    /// which is the receiver's to report.
    void replyReceived(const QString& text);

    void setState(std::int32_t state) override;

private:
    enum class Mode { Server = 0, Client = 1 };
    static constexpr int kRoundTrips = 20;

    void Load();
    void beginTest(Mode wanted);
    void sendEchoFrame();
    void endTest();
    void ShowInfo(const QString& first, const QString& second);

    RemoteHost& mHost;
    const Clock& mClock;
    ErrorReporter& mErrors;
    Mode mode = Mode::Server;
    int count = 0;
    double mStart = 0.0;                      // the clock's timer
    std::array<float, kRoundTrips> mTrips{};  // seconds
    std::unique_ptr<Ui::frmRDNetLatency> mUi;
};

}  // namespace fenrik
