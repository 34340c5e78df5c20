#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace fenrik {

/// Tells on the UI thread that the process was asked to end: by SIGTERM, by SIGINT (Ctrl+C in a terminal) or by SIGHUP
/// (the terminal or the session goes away). A second signal of the same kind ends the process at once, as it does by
/// default, so that a program that waits for an answer can still be stopped.
///
/// There is one object at a time. When it goes, the signals have their default effect again.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    /// From the event loop, never from inside a signal handler.
    void Requested();

private:
    void Take();

    QSocketNotifier mNotifier;
};

}  // namespace fenrik
