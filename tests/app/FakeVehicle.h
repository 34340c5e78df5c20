#pragma once

#include "link/Frame.h"
#include "support/PseudoTerminal.h"

#include <QSocketNotifier>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace fenrik {

/// A vehicle at the far end of a serial line, answering from the event loop. Its transceiver wakes at once; its nodes
/// answer pings, mounts, the question for their type, and what a mounted node is asked: its collisions and states, a
/// byte of its memory or its version, each of them 0. Questions for more than that are refused.
class FakeVehicle {
public:
    explicit FakeVehicle(std::vector<int> nodes = {1, 2, 3}) : alive(std::move(nodes))
    {
        QObject::connect(&mNotifier, &QSocketNotifier::activated, &mNotifier, [this] { Take(); });
    }

    [[nodiscard]] QString Path() const { return mTerminal.Path(); }

    void Send(const Frame& frame)
    {
        const Frame::Bytes bytes = frame.Encode();
        Write({reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())});
    }
    void Write(const QByteArray& bytes) { mTerminal.Write(bytes); }

    void Unplug()
    {
        mNotifier.setEnabled(false);
        mTerminal.Unplug();
    }

    std::vector<int> alive;
    bool wakes = true;
    bool tellsStates = true;  ///< false: what views ask of the mounted node is the test's to answer, in onFrame
    std::function<void()> onWake = [] {};
    std::function<void(const Frame&)> onFrame = [](const Frame&) {};
    std::vector<std::string> heard;  ///< "command state data" of each frame

private:
    static constexpr char kWakeByte = char(0x9E);
    static constexpr char kAcknowledgeByte = char(0x8A);
    /// Commands without an address: whichever node is mounted answers.
    static constexpr bool AsksTheMounted(int command)
    {
        return command == 921 || command == 922 || command == 923 || command == 926 || command == 937 || command == 940;
    }

    void Take()
    {
        char buffer[256];
        const auto count = ::read(mTerminal.Handle(), buffer, sizeof buffer);
        for (int i = 0; i < count; ++i)
            TakeByte(buffer[i]);
    }

    void TakeByte(char byte)
    {
        if (mFrame.isEmpty() && byte == kWakeByte) {
            if (wakes)
                Write(QByteArray(1, kAcknowledgeByte));
            onWake();
            return;
        }
        mFrame.append(byte);
        if (mFrame.size() < qsizetype(Frame::kSize))
            return;
        Frame::Bytes bytes{};
        std::copy_n(mFrame.begin(), bytes.size(), bytes.begin());
        mFrame.clear();
        TakeFrame(Frame::Decode(bytes).value());
    }

    void TakeFrame(const Frame& frame)
    {
        heard.push_back(std::to_string(frame.command) + (frame.state ? " 1 " : " 0 ") + std::to_string(frame.data));
        const bool isForOne = !AsksTheMounted(frame.command);
        if (!isForOne || std::find(alive.begin(), alive.end(), frame.data) != alive.end()) {
            if (const auto reply = Answer(frame))
                Send(*reply);
        }
        onFrame(frame);
    }

    [[nodiscard]] std::optional<Frame> Answer(const Frame& frame) const
    {
        if (!tellsStates && AsksTheMounted(frame.command) && frame.command != 926)
            return std::nullopt;
        switch (frame.command) {
        case 901:
            return Frame{902, false, false, frame.data};
        case 905:
            return Frame{903, frame.state, false, frame.data};
        case 979:
            return Frame{979, false, false, 4};
        case 940:
            return Frame{903, false, false, 0};
        default:
            return AsksTheMounted(frame.command) ? std::optional(Frame{950, false, false, 0}) : std::nullopt;
        }
    }

    PseudoTerminal mTerminal;
    QSocketNotifier mNotifier{mTerminal.Handle(), QSocketNotifier::Read};
    QByteArray mFrame;
};

}  // namespace fenrik
