#pragma once

#include "ModemFixture.h"
#include "modem/DialSequence.h"
#include "shared/Settings.h"

namespace fenrik {

/// A modem that can be dialled, step by step.
class DialTest : public ModemTest {
protected:
    DialTest()
    {
        settings.ModemCommPort = 6;
        settings.ModemBaudRate = 57600;
    }

    void Detected()
    {
        Talk(0.1, "AT\r", "AT\r\r\nOK\r\n");
        Talk(0.1, "ATI3\r", "ATI3\r\r\nTel 56k\r\n\r\nOK\r\n");
    }

    /// The modem, once it has fallen silent, dials 5551234 and says `reply`.
    void Dialled(const QByteArray& reply = "CONNECT 57600")
    {
        Talk(0.7, "ATDT5551234\r", "ATDT5551234\r\r\n" + reply + "\r\n");
    }

    void Connected()
    {
        Detected();
        Dialled();
    }

    /// The module tells its version, and after two more seconds what it says to pass-through mode.
    void Module(const QByteArray& version = "1.4\r\n", const QByteArray& answer = "ACK\r\n")
    {
        Talk(2.1, "\\v", version);
        Talk(2.1, "\\p", answer);
    }

    Settings settings;
};

}  // namespace fenrik
