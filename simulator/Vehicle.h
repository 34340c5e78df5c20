#pragma once

#include "simulator/SimNode.h"

#include <vector>

namespace fenrik {

/// The nodes of the simulated vehicle and what they answer to the tool.
///
/// Commands of the bus are wired to the nodes: every input of the vehicle sends one plain command, every output
/// follows one, dealt out in turn over the vehicle's points so that any set of nodes has something to do.
class Vehicle {
public:
    explicit Vehicle(const std::vector<NodeSetup>& setups);

    /// Eight nodes of the usual models.
    [[nodiscard]] static std::vector<NodeSetup> DefaultNodes();

    /// What the nodes answer to `question`, in order; nothing if no node is asked or it is silent. A plain command
    /// from the tool is no question, but outputs follow it.
    [[nodiscard]] std::vector<Frame> Answer(const Frame& question);

    /// A plain command stands on the bus: its input and the outputs wired to it take `on`.
    void ApplyCommand(int command, bool on);

    /// Moves an input and gives the command that it sends, or nothing if there is no such input.
    [[nodiscard]] std::vector<Frame> MoveInput(int node, int input, bool on);

    /// State words that the mounted node reports by itself since the last call.
    [[nodiscard]] std::vector<Frame> ChangedWords();

    /// Node `number` starts anew and loses its mount; gives its announcement.
    [[nodiscard]] std::vector<Frame> Restart(int number);

    void CountCollisions();

    [[nodiscard]] SimNode* Node(int number);
    [[nodiscard]] const std::vector<SimNode>& Nodes() const { return mNodes; }
    [[nodiscard]] int MountedNode() const { return mMounted; }  ///< 0 if none

private:
    using Answers = std::vector<Frame>;
    struct Point {
        int node;
        int number;
        int command;
    };

    void Wire();
    [[nodiscard]] SimNode* Asked(int number);
    [[nodiscard]] SimNode* Mounted() { return Asked(mMounted); }
    void Drive(std::vector<Point>& points, int command, bool on, void (SimNode::*set)(int, bool));

    Answers AnswerPing(const Frame& question);
    Answers AnswerMount(const Frame& question);
    Answers AnswerType(const Frame& question);
    Answers AnswerOldType(const Frame& question);
    Answers AnswerInputs(const Frame& question);
    Answers AnswerOutputs(const Frame& question);
    Answers AnswerCollisions(const Frame& question);

    std::vector<SimNode> mNodes;
    std::vector<Point> mInputs;
    std::vector<Point> mOutputs;
    int mMounted = 0;
};

}  // namespace fenrik
