#pragma once

#include "platform/Error.h"
#include "platform/SerialControl.h"
#include "shared/EventPump.h"
#include "support/PortFolder.h"
#include "support/Printers.h"
#include "support/PseudoTerminal.h"

#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {

/// A serial control on a pseudo terminal that stands for COM3.
class SerialControlTest : public testing::Test {
protected:
    SerialControlTest() { folder.Link(kPort, terminal.Path()); }

    void Open()
    {
        port.setCommPort(kPort);
        port.setPortOpen(true);
    }

    /// Keeps the code of each event, and what `onEvent` does.
    void Watch(std::function<void()> onEvent = [] {})
    {
        QObject::connect(&port, &SerialControl::OnComm, &port, [this, onEvent] {
            events.push_back(port.CommEvent());
            onEvent();
        });
    }

    bool HasArrived(int count)
    {
        return QTest::qWaitFor([this, count] { return port.InBufferCount() >= count; });
    }

    int NumberOfError(const std::function<void()>& action)
    {
        try {
            action();
        } catch (const Error& error) {
            return error.Number();
        }
        return 0;
    }

    static constexpr int kPort = 3;

    PseudoTerminal terminal;
    PortFolder folder;
    ComPorts ports = folder.Ports();
    std::optional<std::uint32_t> framingErrors;  // what the driver's counter says
    SerialControl port{ports, nullptr, [this](int) { return framingErrors; }};
    std::vector<int> events;
};

}  // namespace fenrik
