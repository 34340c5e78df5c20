#pragma once

#include "commands/CommandsHost.h"
#include "link/LinkFixture.h"
#include "model/CSystem.h"
#include "shared/Settings.h"

#include <QTemporaryDir>

#include <optional>
#include <string>
#include <vector>

namespace fenrik {

inline Settings EightNodes()
{
    Settings settings;
    settings.NodesInSystem = 8;
    return settings;
}

/// A system of eight nodes on a link whose far end answers as a test says, a tenth of a second after each frame.
class CommandsTest : public LinkTest {
protected:
    CommandsTest()
    {
        system.LoadSystem({}, {}, false);
        host.onSendFrame = [this] { TakeFrame(); };
    }

    /// Nodes answer pings and mounts with their number, and the question for an item's state with `state`.
    [[nodiscard]] std::optional<Frame> NodesAnswer(const Frame& frame) const
    {
        switch (frame.command) {
        case 901:
            return Frame{902, false, false, frame.data};
        case 905:
            return Frame{903, true, false, frame.data};
        case 920:
            return Frame{950, false, false, std::uint16_t(state)};
        default:
            return std::nullopt;
        }
    }

    QTemporaryDir dir;
    Settings settings = EightNodes();
    CSystem system{settings, dir.path()};
    int state = 1;
    std::function<std::optional<Frame>(const Frame&)> answer = [this](const Frame& frame) {
        return NodesAnswer(frame);
    };
    std::vector<std::string> sent;  ///< "command state data"

private:
    void TakeFrame()
    {
        Frame::Bytes bytes{};
        std::copy_n(host.payloads.back().constBegin(), bytes.size(), bytes.begin());
        const Frame frame = Frame::Decode(bytes).value();
        sent.push_back(std::to_string(frame.command) + (frame.state ? " 1 " : " 0 ") + std::to_string(frame.data));
        if (const auto reply = answer(frame))
            ReceiveAfter(0.1, Wire(reply->command, reply->data, reply->state, reply->extended));
    }
};

/// The main window as the windows of the operator commands know it.
class CommandsHostRecorder : public CommandsHost {
public:
    CommandsHostRecorder(CSystem& system, const HostRecorder& link) : mSystem(system), mLink(link) {}

    [[nodiscard]] bool PortOpenForTx() const override { return mLink.open; }
    bool MountNode(int node) override
    {
        calls.push_back("mount " + std::to_string(node));
        onMount();
        mSystem.setMountedNodeNumber(std::int16_t(node == mountable || mountable == 0 ? node : 0));
        return mSystem.MountedNodeNumber() == node;
    }
    bool UnmountNode(int node) override
    {
        calls.push_back("unmount " + std::to_string(node));
        mSystem.UnmountNode();
        return true;
    }

    std::vector<std::string> calls;
    int mountable = 0;  ///< the one node that can be mounted, 0 if all can
    std::function<void()> onMount = [] {};

private:
    CSystem& mSystem;
    const HostRecorder& mLink;
};

}  // namespace fenrik
