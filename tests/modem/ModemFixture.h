#pragma once

#include "modem/MModem.h"
#include "platform/SerialControl.h"
#include "shared/RunState.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"
#include "support/PortFolder.h"
#include "support/Printers.h"
#include "support/PseudoTerminal.h"
#include "support/ScriptedPump.h"

#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {

/// A modem on COM6 whose half of the conversation the test writes: what it hears, and what it says then.
class ModemTest : public testing::Test {
protected:
    ModemTest() { folder.Link(6, terminal.Path()); }

    /// `seconds` after the step before, the modem has heard exactly `command` and says `answer`.
    void Talk(double seconds, const QByteArray& command, const QByteArray& answer)
    {
        pump.After(seconds, [this, command, answer] {
            EXPECT_EQ(terminal.Read(int(command.size())), command);
            Say(answer);
        });
    }

    /// The modem says something that nobody asked for.
    void SayAfter(double seconds, const QByteArray& bytes)
    {
        pump.After(seconds, [this, bytes] { Say(bytes); });
    }

    void Say(const QByteArray& bytes)
    {
        constexpr qsizetype kPiece = 2048;  // a pseudo-terminal takes no more than 4096 at once
        for (qsizetype at = 0; at < bytes.size(); at += kPiece) {
            const int before = port.InBufferCount();
            const QByteArray piece = bytes.mid(at, kPiece);
            terminal.Write(piece);
            EXPECT_TRUE(QTest::qWaitFor([&] { return port.InBufferCount() >= before + piece.size(); }));
        }
    }

    void UnplugAfter(double seconds)
    {
        pump.After(seconds, [this] {
            terminal.Unplug();
            EXPECT_TRUE(QTest::qWaitFor([this] { return !port.PortOpen(); }));
        });
    }

    /// What the modem has heard that no step took.
    [[nodiscard]] QByteArray Heard(qsizetype count) { return terminal.Read(int(count), count > 0 ? 2000 : 50); }
    [[nodiscard]] bool HeardNothing() { return Heard(0).isEmpty(); }

    /// Seconds since the test began.
    [[nodiscard]] double Elapsed() const { return double(clock.Now().milliseconds - start.milliseconds) / 1000.0; }

    FakeClock clock;
    ScriptedPump pump{clock};
    Moment start = clock.Now();
    ErrorRecorder errors;
    RunState run;
    PseudoTerminal terminal;
    PortFolder folder;
    ComPorts ports = folder.Ports();
    SerialControl port{ports};
    MModem modem{port, pump, run};
};

}  // namespace fenrik
