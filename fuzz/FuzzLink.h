#pragma once

#include "link/CMsgHandler.h"
#include "model/CSystem.h"
#include "model/NodeLink.h"
#include "platform/Boxes.h"
#include "platform/ComPorts.h"
#include "platform/SerialControl.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"

#include <cstdint>
#include <cstdlib>
#include <span>

namespace fenrik {

/// A clock that its pump moves.
class FuzzClock : public Clock {
public:
    [[nodiscard]] Moment Now() const override { return mNow; }
    void Advance(double seconds) { mNow = mNow.Plus(seconds); }

private:
    Moment mNow{1'000'000'000};
};

/// A link whose far end is the fuzzer's input: each turn of a wait brings a few bytes of it, and then time passes.
class FuzzLink : private LinkHost, private EventPump, private ErrorReporter, private Boxes {
public:
    explicit FuzzLink(std::span<const std::uint8_t> input) : EventPump(mClock), mInput(input)
    {
        mHandler.setHost(this);
        mHandler.Reset(Transport::kRemote);
        mSystem.setNodesInSystem(2);
        mSystem.setLink(&mLink);
        mSystem.MountNode(1);
    }

    [[nodiscard]] CSystem& System() { return mSystem; }
    [[nodiscard]] CNode& Node() { return *mSystem.Node(1); }
    [[nodiscard]] CMsgHandler& Handler() { return mHandler; }

private:
    void Pump(double seconds) override
    {
        constexpr std::size_t kBytesOfATurn = 6;
        if (mInput.empty())
            mOpen = false;  // the port goes away at the end of the input
        const auto now = mInput.first(std::min(kBytesOfATurn, mInput.size()));
        mInput = mInput.subspan(now.size());
        for (const std::uint8_t byte : now)
            mHandler.ReceiveMsgByte(byte);
        mClock.Advance(now.empty() ? seconds + 0.001 : 0.001);
    }

    bool PortOpenForTx() const override { return mOpen; }
    bool ModemActive() const override { return false; }
    void DisplayMessage(CMessage&) override {}
    void sendFrame(int, const QByteArray&) override {}
    void CloseModemLink() override {}
    void ShowPC(int) override {}
    void ShowBC(int) override {}
    void ShowCollisionMark(bool, const char*) override {}
    void TrafficWaiting() override { (void)mHandler.GetMessageReceived(); }
    // Nothing on this road may raise an error, whatever the bytes are.
    void ShowError(int, const QString&, const QString&, const QString&) override { std::abort(); }
    Button MsgBox(const QString&, QMessageBox::Icon, Buttons, const QString&) override { return QMessageBox::Ok; }

    FuzzClock mClock;
    std::span<const std::uint8_t> mInput;
    bool mOpen = true;
    CommandTable mCommands;
    ComPorts mPorts{QString(), [] { return QList<SerialDevice>(); }};
    SerialControl mPort{mPorts};
    CMsgHandler mHandler{mPort, mClock, *this, mCommands, *this};
    Settings mSettings;
    CSystem mSystem{mSettings, QString()};
    NodeLink mLink{mHandler, *this, mCommands, *this, *this, nullptr};
};

}  // namespace fenrik
