#pragma once

#include "link/CMsgHandler.h"
#include "platform/SerialControl.h"
#include "shared/CommandTable.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"
#include "support/PortFolder.h"
#include "support/Printers.h"
#include "support/PseudoTerminal.h"
#include "support/ScriptedPump.h"

#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fenrik {

/// The window, as far as the link engine knows it.
class HostRecorder : public LinkHost {
public:
    bool PortOpenForTx() const override { return open; }
    bool ModemActive() const override { return modemActive; }
    void DisplayMessage(CMessage& message) override
    {
        shown.push_back(message);
        onDisplay();
    }
    void sendFrame(int type, const QByteArray& payload) override
    {
        types.push_back(type);
        payloads.push_back(payload);
        onSendFrame();
    }
    void CloseModemLink() override
    {
        ++hangUps;
        onHangUp();
    }
    void ShowPC(int count) override { pc.push_back(count); }
    void ShowBC(int count) override { bc.push_back(count); }
    void ShowCollisionMark(bool active, const char* kind) override
    {
        marks.push_back({active, kind});
        onMark();
    }
    void TrafficWaiting() override
    {
        ++traffic;
        onTraffic();
    }

    bool open = true;
    bool modemActive = false;
    std::vector<CMessage> shown;
    std::vector<int> types;
    std::vector<QByteArray> payloads;
    std::vector<int> pc;
    std::vector<int> bc;
    std::vector<std::pair<bool, std::string>> marks;
    int hangUps = 0;
    int traffic = 0;
    std::function<void()> onDisplay = [] {};
    std::function<void()> onSendFrame = [] {};
    std::function<void()> onHangUp = [] {};
    std::function<void()> onMark = [] {};
    std::function<void()> onTraffic = [] {};
};

inline CMessage Request(int command, int data = 0, int state = 0, int extended = 0)
{
    CMessage message;
    message.Command = command;
    message.data = data;
    message.State = std::uint8_t(state);
    message.extended = std::uint8_t(extended);
    return message;
}

/// The bytes of a frame as it comes in.
inline QByteArray Wire(int command, int data = 0, bool state = false, bool extended = false)
{
    const Frame::Bytes bytes = Frame{std::uint16_t(command), state, extended, std::uint16_t(data)}.Encode();
    return {reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())};
}

/// A link engine with everything around it under the test's control. It begins on the relay's transport, which
/// needs no port.
class LinkTest : public testing::Test {
protected:
    LinkTest()
    {
        handler.setHost(&host);
        handler.Reset(Transport::kRemote);
        host.pc.clear();
        host.bc.clear();
    }

    /// Bytes reach the engine.
    void Receive(const QByteArray& bytes)
    {
        for (const char byte : bytes)
            handler.ReceiveMsgByte(std::uint8_t(byte));
    }

    /// Bytes reach the engine during a wait, `seconds` after the step before.
    void ReceiveAfter(double seconds, const QByteArray& bytes)
    {
        pump.After(seconds, [this, bytes] { Receive(bytes); });
    }

    /// Opens a real port on a pseudo-terminal and makes `transport` the engine's.
    void OpenPort(int transport)
    {
        folder.Link(1, terminal.Path());
        port.setCommPort(1);
        port.setPortOpen(true);
        handler.Reset(transport);
        host.pc.clear();
        host.bc.clear();
    }

    std::vector<int> ReceivedCommands()
    {
        std::vector<int> numbers;
        while (const auto message = handler.GetMessageReceived())
            numbers.push_back(message->Command);
        return numbers;
    }

    /// Seconds since the test began.
    double Elapsed() const { return double(clock.Now().milliseconds - start.milliseconds) / 1000.0; }

    FakeClock clock;
    ScriptedPump pump{clock};
    Moment start = clock.Now();
    ErrorRecorder errors;
    CommandTable commands;
    HostRecorder host;
    PseudoTerminal terminal;
    PortFolder folder;
    ComPorts ports = folder.Ports();
    SerialControl port{ports};
    CMsgHandler handler{port, clock, pump, commands, errors};
};

}  // namespace fenrik
