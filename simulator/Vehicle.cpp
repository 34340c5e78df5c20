#include "simulator/Vehicle.h"

#include "simulator/BusCommands.h"
#include "simulator/NetworkFrames.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr std::uint16_t kPingReply = 902;
constexpr std::uint16_t kAcknowledge = 903;
constexpr std::uint16_t kValue = 950;
constexpr std::uint16_t kOldTypeReply = 976;
constexpr std::uint16_t kOldLumenReply = 978;
constexpr std::uint16_t kTypeReply = 979;
constexpr std::uint16_t kAnonymous = 12345;

}  // namespace

Vehicle::Vehicle(const std::vector<NodeSetup>& setups)
{
    for (const auto& setup : setups)
        mNodes.emplace_back(setup);
    Wire();
}

std::vector<NodeSetup> Vehicle::DefaultNodes()
{
    return {
        {1, 9, "Front body", true},   {2, 0, "Rear body", false},        {3, 2, "Door left", false},
        {4, 5, "Switch panel", true}, {5, 6, "Climate", false},          {6, 10, "Roof lights", true},
        {7, 16, "Engine bay", true},  {8, 1, "Driver's display", false},
    };
}

void Vehicle::Wire()
{
    const auto commands = PlainCommands();
    std::size_t input = 0;
    std::size_t output = 0;
    for (const auto& node : mNodes) {
        for (int i = 1; i <= node.Type().inputs; ++i)
            mInputs.push_back({node.Setup().number, i, commands[input++ % commands.size()].number});
        for (int i = 1; i <= node.Type().outputs; ++i)
            mOutputs.push_back({node.Setup().number, i, commands[output++ % commands.size()].number});
    }
}

SimNode* Vehicle::Node(int number)
{
    const auto node = std::ranges::find_if(mNodes, [=](const SimNode& n) { return n.Setup().number == number; });
    return node == mNodes.end() ? nullptr : &*node;
}

SimNode* Vehicle::Asked(int number)
{
    auto* node = Node(number);
    return node && !node->Silent() ? node : nullptr;
}

std::vector<Frame> Vehicle::Answer(const Frame& question)
{
    struct Row {
        std::uint16_t command;
        Answers (Vehicle::*answer)(const Frame&);
    };
    static constexpr Row kRows[] = {
        {901, &Vehicle::AnswerPing},    {905, &Vehicle::AnswerMount},      {921, &Vehicle::AnswerInputs},
        {922, &Vehicle::AnswerOutputs}, {926, &Vehicle::AnswerCollisions}, {977, &Vehicle::AnswerOldType},
        {979, &Vehicle::AnswerType},
    };
    const auto* row = std::ranges::find(kRows, question.command, &Row::command);
    if (row != std::end(kRows))
        return (this->*row->answer)(question);
    Drive(mOutputs, question.command, question.state, &SimNode::SetOutput);
    return {};
}

Vehicle::Answers Vehicle::AnswerPing(const Frame& question)
{
    const auto* node = Asked(question.data);
    if (!node)
        return {};
    return {{kPingReply, false, false, node->Setup().anonymousPing ? kAnonymous : question.data}};
}

Vehicle::Answers Vehicle::AnswerMount(const Frame& question)
{
    auto* node = Asked(question.data);
    if (!node)
        return {};
    if (auto* before = Node(mMounted); before && (question.state || before == node)) {
        before->StopPushing();
        mMounted = 0;
    }
    if (question.state)
        mMounted = question.data;
    return {{kAcknowledge, true, false, question.data}};
}

Vehicle::Answers Vehicle::AnswerType(const Frame& question)
{
    const auto* node = Asked(question.data);
    if (!node)
        return {};
    if (!node->Setup().oldTypeQuery)
        return {{kTypeReply, false, false, std::uint16_t(node->Type().number)}};
    if (node->Type().number == 1)
        return {{kOldLumenReply, false, false, question.data}};
    return {};
}

Vehicle::Answers Vehicle::AnswerOldType(const Frame& question)
{
    const auto* node = Asked(question.data);
    if (!node || !node->Setup().oldTypeQuery || node->Type().number != 0)
        return {};
    return {{kOldTypeReply, false, false, question.data}};
}

Vehicle::Answers Vehicle::AnswerInputs(const Frame& question)
{
    auto* node = Mounted();
    if (!node)
        return {};
    const int word = (question.extended ? 2 : 0) + (question.state ? 1 : 0);
    // The question whether the node reports by itself looks like a request for word 2, which no model has.
    const bool asksForPushing = word == 2 && node->InputWords() <= 2;
    if (!asksForPushing)
        return {{kValue, false, false, node->InputWord(word)}};
    if (node->Setup().pushes)
        node->StartPushing();
    return {{kAcknowledge, true, node->Setup().pushes, 0}};
}

Vehicle::Answers Vehicle::AnswerOutputs(const Frame& question)
{
    const auto* node = Mounted();
    if (!node)
        return {};
    return {{kValue, false, false, node->OutputWord(question.state ? 1 : 0)}};
}

Vehicle::Answers Vehicle::AnswerCollisions(const Frame&)
{
    const auto* node = Mounted();
    if (!node)
        return {};
    return {{kValue, false, false, node->Collisions()}};
}

void Vehicle::ApplyCommand(int command, bool on)
{
    Drive(mInputs, command, on, &SimNode::SetInput);
    Drive(mOutputs, command, on, &SimNode::SetOutput);
}

void Vehicle::Drive(std::vector<Point>& points, int command, bool on, void (SimNode::*set)(int, bool))
{
    for (const auto& point : points)
        if (point.command == command)
            (Node(point.node)->*set)(point.number, on);
}

std::vector<Frame> Vehicle::MoveInput(int node, int input, bool on)
{
    const auto point =
        std::ranges::find_if(mInputs, [=](const Point& p) { return p.node == node && p.number == input; });
    if (point == mInputs.end())
        return {};
    Node(node)->SetInput(input, on);
    Drive(mOutputs, point->command, on, &SimNode::SetOutput);
    return {{std::uint16_t(point->command), on, false, std::uint16_t(node)}};
}

std::vector<Frame> Vehicle::ChangedWords()
{
    auto* node = Mounted();
    return node ? node->ChangedWords() : std::vector<Frame>{};
}

std::vector<Frame> Vehicle::Restart(int number)
{
    auto* node = Node(number);
    if (!node)
        return {};
    node->Restart();
    if (mMounted == number)
        mMounted = 0;
    return {AnnouncementFrame(number)};
}

void Vehicle::CountCollisions()
{
    for (auto& node : mNodes)
        node.CountCollision();
}

}  // namespace fenrik
