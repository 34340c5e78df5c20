#pragma once

#include <QByteArray>
#include <QString>

namespace fenrik {

/// The far end of a serial line: a pseudo-terminal whose near end (`Path`) a program opens as a serial port.
class PseudoTerminal {
public:
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    [[nodiscard]] QString Path() const { return mPath; }

    void Write(const QByteArray& bytes);

    /// What has arrived by now; waits up to `milliseconds` for at least `count` bytes, running the event loop.
    [[nodiscard]] QByteArray Read(int count, int milliseconds = 2000);

    /// The far end's descriptor, for tests that answer from the event loop. Reads don't block.
    [[nodiscard]] int Handle() const { return mMaster; }

    /// The cable is pulled: the device goes away.
    void Unplug();

private:
    int mMaster = -1;
    QString mPath;
};

}  // namespace fenrik
