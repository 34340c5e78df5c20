#pragma once

#include "diagnostics/FaceFixture.h"
#include "diagnostics/Graphics.h"
#include "diagnostics/NodeViewHost.h"
#include "link/LinkFixture.h"
#include "model/CSystem.h"
#include "model/NodeLink.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace fenrik {

/// The window, as far as the views of a node know it.
class NodeViewHostStub : public NodeViewHost {
public:
    [[nodiscard]] int DisplayState() const override { return displayState; }
    void SetUIState(int state) override { uiStates.push_back(state); }
    bool VerifyNode(CNode* node, bool force) override
    {
        if (!node)
            return false;
        verified.emplace_back(node->number(), force);
        onVerify();
        return node->typeID() != CNode::kUnknownType;
    }

    int displayState = kViewStates;
    std::vector<int> uiStates;
    std::vector<std::pair<int, bool>> verified;  ///< node number and `force` of each call
    std::function<void()> onVerify = [] {};
};

/// A system of eight nodes with node 3 mounted, selected and answering by a script, behind a real link engine.
class NodeViewTest : public LinkTest {
protected:
    NodeViewTest() : face(sheets, {672, 740}, 32), graphics(face)
    {
        system.setLink(&link);
        system.setNodesInSystem(8);
        host.onSendFrame = [this] { Hear(host.payloads.back()); };
    }

    /// Node `number` of model `type` is alive and selected.
    CNode& Select(int number, int type)
    {
        CNode& node = *system.Node(number);
        node.setTypeID(std::int16_t(type));
        node.setVerified(true);
        node.setActive(true);
        system.SelectNode(std::uint8_t(number));
        return node;
    }

    CNode& Mount(int number, int type)
    {
        CNode& node = Select(number, type);
        system.MountNode(std::uint8_t(number));
        return node;
    }

    /// The mount ends during a wait, as when the node restarts.
    virtual void Restart() { system.UnmountNode(); }

    void Hear(const QByteArray& payload)
    {
        Frame::Bytes bytes{};
        std::copy_n(payload.begin(), bytes.size(), bytes.begin());
        const Frame frame = Frame::Decode(bytes).value();
        heard.push_back(std::to_string(frame.command) + (frame.state ? " 1" : " 0") + (frame.extended ? " 1 " : " 0 ") +
                        std::to_string(frame.data));
        for (const Frame& reply : answer(frame))
            ReceiveAfter(0.01, Wire(reply.command, reply.data, reply.state, reply.extended));
    }

    using Frames = std::vector<Frame>;

    Settings settings;
    CSystem system{settings, QStringLiteral("/nowhere")};
    BoxRecorder boxes;
    NodeLink link{handler, pump, commands, boxes, errors};
    AsciiMap map = MapOfTheSheets();
    GlyphSheets sheets{map};
    CharacterFace face;
    Graphics graphics;
    NodeViewHostStub window;
    std::function<Frames(const Frame&)> answer = [](const Frame&) { return Frames{}; };
    std::vector<std::string> heard;  ///< "command state extended data" of each frame that was sent
};

}  // namespace fenrik
