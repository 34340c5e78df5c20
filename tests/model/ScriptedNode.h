#pragma once

#include "link/LinkFixture.h"
#include "model/CSystem.h"
#include "model/DownloadHost.h"
#include "model/NodeImage.h"
#include "model/NodeLink.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace fenrik {

using ByteList = std::vector<std::uint8_t>;

/// The node at the far end of the link: answers each frame a little later, frame by frame, out of its tables.
class ScriptedNode {
public:
    struct Sent {
        int command;
        int state;
        int extended;
        int data;
        bool operator==(const Sent&) const = default;
    };

    /// How a reply to a query comes back.
    struct Answer {
        ByteList bytes;
        bool granted = true;
        int announced = -1;    ///< length in the announcement; -1 for the true one
        int framesLost = 0;    ///< of the end of the reply
        bool doubled = false;  ///< every frame comes twice
        int command = 903;     ///< of the announcement
        double delay = kLag;   ///< seconds until the announcement
    };

    static constexpr double kLag = 0.01;

    void Receive(const QByteArray& payload)
    {
        Frame::Bytes bytes{};
        std::copy(payload.begin(), payload.end(), bytes.begin());
        const auto frame = Frame::Decode(bytes);
        sent.push_back({frame->command, frame->state, frame->extended, frame->data});
        if (onFrame)
            onFrame(sent.back());
        if (silent)
            return;
        if (frame->command == 923)
            AnswerMemory(frame->data);
        else if (frame->command == 940 && frame->extended)
            Reply(kLag, Wire(903, 0, pagesGranted));
        else if (frame->command == 940 && !flash.empty())
            AnswerFlash(frame->data);
        else if (frame->command == 940)
            AnswerQuery(frame->data);
        else if (frame->command == 937 && version >= 0)
            Reply(kLag, Wire(950, version, versionState, versionExtended));
    }

    /// The `data` of each frame of `command` that was sent.
    std::vector<int> Data(int command) const
    {
        std::vector<int> numbers;
        for (const Sent& frame : sent) {
            if (frame.command == command)
                numbers.push_back(frame.data);
        }
        return numbers;
    }

    std::function<void(double, const QByteArray&)> deliver;  ///< bytes that reach the tool so many seconds on
    std::function<void(const Sent&)> onFrame;
    std::vector<Sent> sent;
    std::map<int, Answer> answers;  ///< by the query's data; no entry, no answer
    ByteList memory;                ///< by offset; beyond it no answer
    ByteList flash;                 ///< variable flash by address; beyond it zeros
    bool silent = false;
    bool pagesGranted = true;
    int version = -1;
    bool versionState = false;
    bool versionExtended = false;

private:
    void Reply(double seconds, const QByteArray& bytes) { deliver(seconds, bytes); }

    void AnswerMemory(int offset)
    {
        if (offset < int(memory.size()))
            Reply(kLag, Wire(950, 0x5500 | memory[std::size_t(offset)]));
    }

    void AnswerFlash(int address)
    {
        const auto at = [this](int place) { return place < int(flash.size()) ? flash[std::size_t(place)] : 0; };
        Reply(kLag, Wire(950, at(address + 1) << 8 | at(address)));
    }

    void AnswerQuery(int data)
    {
        const auto found = answers.find(data);
        if (found == answers.end())
            return;
        const Answer& answer = found->second;
        const int size = int(answer.bytes.size());
        Send(answer, answer.delay,
             Wire(answer.command, answer.announced < 0 ? size : answer.announced, answer.granted));
        if (!answer.granted)
            return;
        for (int i = 0; i < size - 2 * answer.framesLost; i += 2) {
            const int high = i + 1 < size ? answer.bytes[std::size_t(i + 1)] : 0xEE;
            Send(answer, kLag, Wire(950, high << 8 | answer.bytes[std::size_t(i)]));
        }
    }

    void Send(const Answer& answer, double delay, const QByteArray& bytes)
    {
        Reply(delay, bytes);
        if (answer.doubled)
            Reply(kLag, bytes);
    }
};

/// The window during a download.
class DownloadRecorder : public DownloadHost {
public:
    void MountNode(int number) override
    {
        calls.push_back("MountNode " + std::to_string(number));
        if (mounts)
            system->MountNode(std::uint8_t(number));
    }
    void UnmountNode(int number) override
    {
        calls.push_back("UnmountNode " + std::to_string(number));
        system->UnmountNode();
    }
    void pbProgressInit(int steps) override { total = steps; }
    void pbProgressUpdate(int step) override
    {
        done += step;
        if (onStep)
            onStep();
    }
    void pbProgressEnd() override { calls.push_back("pbProgressEnd"); }
    void ShowStatus(const QString& text) override { statuses.push_back(text); }
    void ShowBusyCursor(bool busy) override { cursors += busy ? 1 : -1; }
    bool DidCancel() const override { return cancelled; }
    void setDidCancel(bool cancel) override { cancelled = cancel; }

    [[nodiscard]] QString LastStatus() const { return statuses.empty() ? QString() : statuses.back(); }

    CSystem* system = nullptr;
    bool mounts = true;
    bool cancelled = false;
    int total = 0;
    int done = 0;
    int cursors = 0;
    std::function<void()> onStep;
    std::vector<std::string> calls;
    std::vector<QString> statuses;
};

/// A system of three nodes, node 2 of which is mounted and scripted.
class ScriptedNodeTest : public LinkTest {
protected:
    ScriptedNodeTest()
    {
        settings.NodesInSystem = 3;
        system.LoadSystem({}, {}, false);
        system.setLink(&link);
        system.MountNode(2);
        window.system = &system;
        peer.deliver = [this](double seconds, const QByteArray& bytes) { ReceiveAfter(seconds, bytes); };
        host.onSendFrame = [this] { peer.Receive(host.payloads.back()); };
    }

    CNode& Node() { return *system.Node(2); }

    CDigitalInput& Input(int number) { return Node().CDigitalInputs()[number]; }
    COutput& Output(int number) { return Node().COutputs()[number]; }

    ScriptedNode peer;
    DownloadRecorder window;
    BoxRecorder boxes;
    Settings settings;
    CSystem system{settings, QStringLiteral("/program")};
    NodeLink link{handler, pump, commands, boxes, errors, &window};
};

}  // namespace fenrik
