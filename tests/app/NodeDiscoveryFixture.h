#pragma once

#include "AppFixture.h"
#include "app/NodeDiscovery.h"
#include "model/CSystem.h"

namespace fenrik {

/// The window, as far as finding and mounting nodes knows it.
class DiscoveryWindow : public DiscoveryHost {
public:
    void SetUIState(int state) override
    {
        states.push_back(state);
        if (state == 4 || state == 8)
            ready = state == 4;
    }
    [[nodiscard]] bool IsReady() const override { return ready; }
    void ShowMessage(const QString& text) override { messages.push_back(text.toStdString()); }
    void RefreshNodeActions() override { ++refreshes; }
    void ClickNode(int number) override
    {
        clicks.push_back(number);
        system->SelectNode(std::uint8_t(number));
    }
    void ResetStates() override { ++resets; }

    CSystem* system = nullptr;
    std::vector<int> states;
    bool ready = true;
    std::vector<std::string> messages;
    int refreshes = 0;
    std::vector<int> clicks;
    int resets = 0;
};

inline Frame PingReply(int data)
{
    return {902, false, false, std::uint16_t(data)};
}

inline Frame Acknowledge(bool state, int data)
{
    return {903, state, false, std::uint16_t(data)};
}

class NodeDiscoveryTest : public AppTest {
protected:
    NodeDiscoveryTest()
    {
        window.system = &system;
        system.LoadSystem({}, {}, false);
    }

    /// The nodes in `alive` answer pings with their number, mount and unmount requests, and type questions with `type`.
    void Populate(const std::vector<int>& alive, int type = 4)
    {
        network.answer = [alive, type](const Frame& frame) -> std::optional<Frame> {
            if (std::find(alive.begin(), alive.end(), frame.data) == alive.end())
                return std::nullopt;
            if (frame.command == 901)
                return PingReply(frame.data);
            if (frame.command == 905)
                return Acknowledge(frame.state, frame.data);
            if (frame.command == 979)
                return Frame{979, false, false, std::uint16_t(type)};
            return std::nullopt;
        };
    }

    std::vector<int> ActiveNodes() const
    {
        std::vector<int> numbers;
        for (int number = 1; number <= system.NodesInSystem(); ++number) {
            if (system.Node(number)->Active())
                numbers.push_back(number);
        }
        return numbers;
    }

    FakeNetwork network{handler, pump, portState};
    CSystem system{settings, dir.path()};
    DiscoveryWindow window;
    NodeDiscovery discovery{services, portState, system, window};
};

}  // namespace fenrik
