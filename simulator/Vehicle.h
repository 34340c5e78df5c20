#pragma once

#include "simulator/ForceOrder.h"
#include "simulator/NodeAnswers.h"
#include "simulator/SimNode.h"

#include <set>
#include <vector>

namespace fenrik {

/// The nodes of the simulated vehicle and what they answer to the tool.
///
/// Every input sends the command that its node's configuration names, every output follows its relationship.
class Vehicle {
public:
    explicit Vehicle(const std::vector<NodeSetup>& setups);

    /// Eight nodes of the usual models.
    [[nodiscard]] static std::vector<NodeSetup> DefaultNodes();

    /// What the nodes answer to `question`, in order; nothing if no node is asked or it is silent. A plain command
    /// from the tool is no question, but outputs follow it.
    [[nodiscard]] std::vector<Frame> Answer(const Frame& question);

    /// The answer to `question` has reached the line without a loss.
    void NoteArrived(const Frame& question);

    /// The node that is meant forces or releases its output; gives its number, or 0 if none obeys: it is not there, is
    /// silent, has no such output or knows another form only.
    int Obey(const ForceOrder& order);

    /// A plain command stands on the bus: its inputs take `on`, and outputs follow it.
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

    [[nodiscard]] SimNode* Asked(int number);
    /// The same, null also if the node is deaf to `step`.
    [[nodiscard]] SimNode* Asked(int number, NodeStep step);
    [[nodiscard]] SimNode* Mounted() { return Asked(mMounted); }
    /// The answers of the mounted node, null if there is none or it is silent.
    [[nodiscard]] NodeAnswers* MountedAnswers();
    void TakeCommand(int command, bool on);
    void FollowRelationships();

    Answers AnswerPing(const Frame& question);
    Answers AnswerMount(const Frame& question);
    Answers AnswerType(const Frame& question);
    Answers AnswerOldType(const Frame& question);
    Answers AnswerInputs(const Frame& question);
    Answers AnswerOutputs(const Frame& question);
    Answers AnswerCollisions(const Frame& question);
    Answers AnswerItemState(const Frame& question);
    Answers AnswerSpecial(const Frame& question);
    Answers AnswerMemoryRead(const Frame& question);
    Answers AnswerVersion(const Frame& question);
    Answers AnswerQuery(const Frame& question);

    std::vector<SimNode> mNodes;
    std::vector<NodeAnswers> mAnswers;  // of mNodes, in the same order
    std::set<int> mCommandsOn;
    int mMounted = 0;
};

}  // namespace fenrik
