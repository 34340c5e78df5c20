#pragma once

#include "diagnostics/PointTreeModel.h"
#include "diagnostics/PointViewHost.h"
#include "link/LinkFixture.h"
#include "model/CSystem.h"
#include "model/NodeLink.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"

#include <QTreeView>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace fenrik {

/// The window, as far as the views of inputs and outputs know it.
class PointViewHostStub : public OutputViewHost {
public:
    void VerifyNode(CNode& node) override
    {
        verified.push_back(node.number());
        const auto step = onVerify;  // it may put another in its place
        step();
    }
    [[nodiscard]] bool PortOpenForTx() const override { return portOpen; }
    [[nodiscard]] QString FaultText(int node, int output) const override
    {
        const auto found = faults.find({node, output});
        return found == faults.end() ? QString() : found->second;
    }
    void Compose(int command, bool on) override { composed.emplace_back(command, on); }

    bool portOpen = true;
    std::map<std::pair<int, int>, QString> faults;
    std::vector<int> verified;
    std::vector<std::pair<int, bool>> composed;
    std::function<void()> onVerify = [] {};
};

/// A system of 32 nodes, of which a test selects one, behind a real link engine.
class PointViewTest : public LinkTest {
protected:
    PointViewTest()
    {
        system.setLink(&link);
        system.setNodesInSystem(32);
        for (const auto& [number, name] : {std::pair(300, "Wiper"), {301, "Horn"}, {302, "Door"}, {303, "Brake"}})
            commands[number].Name = QLatin1String(name);
        commands.NamesChanged();
    }

    /// Node `number` of model `type` is alive and selected.
    CNode& Select(int number, int type)
    {
        CNode& node = *system.Node(number);
        node.setTypeID(std::int16_t(type));
        node.setActive(true);
        system.SelectNode(std::uint8_t(number));
        return node;
    }

    /// "command state extended data" of each frame that was sent.
    [[nodiscard]] std::vector<std::string> Sent() const
    {
        std::vector<std::string> frames;
        for (const CMessage& message : host.shown) {
            frames.push_back(std::to_string(message.Command) + (message.State ? " 1" : " 0") +
                             (message.extended ? " 1 " : " 0 ") + std::to_string(message.data));
        }
        return frames;
    }

    Settings settings;
    CSystem system{settings, QStringLiteral("/nowhere")};
    BoxRecorder boxes;
    NodeLink link{handler, pump, commands, boxes, errors};
    PointViewHostStub window;
};

/// Text, key, tag and picture of a row, joined by "|".
inline std::string Describe(const QModelIndex& row)
{
    const QStringList parts{row.data().toString(), row.data(PointTreeModel::KeyRole).toString(),
                            row.data(PointTreeModel::TagRole).toString(),
                            row.data(PointTreeModel::IconKeyRole).toString()};
    return parts.join(QLatin1Char('|')).toStdString();
}

}  // namespace fenrik
