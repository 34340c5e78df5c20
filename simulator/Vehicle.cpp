#include "simulator/Vehicle.h"

#include "simulator/ConfigMaker.h"
#include "simulator/NetworkFrames.h"
#include "simulator/Relationship.h"
#include "simulator/SpecialOrder.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr std::uint16_t kPingReply = 902;
constexpr std::uint16_t kAcknowledge = 903;
constexpr std::uint16_t kValue = 950;
constexpr std::uint16_t kOldTypeReply = 976;
constexpr std::uint16_t kOldLumenReply = 978;
constexpr std::uint16_t kTypeReply = 979;
constexpr std::uint16_t kQuery = 940;
constexpr double kLateSeconds = 4;

}  // namespace

Vehicle::Vehicle(const std::vector<NodeSetup>& setups)
{
    for (const auto& setup : setups)
        mNodes.emplace_back(setup);
    for (auto& config : MakeConfigs(setups))
        mAnswers.emplace_back(std::move(config));
    FollowRelationships();
}

std::vector<NodeSetup> Vehicle::DefaultNodes()
{
    auto nodes = std::vector<NodeSetup>{
        {1, 9, "Front body", true},  {2, 0, "Rear body", false},   {3, 2, "Door left", false},
        {4, 1, "Driver's display"},  {5, 6, "Climate", false},     {6, 10, "Roof lights", true},
        {7, 16, "Engine bay", true}, {8, 5, "Switch panel", true},
    };
    nodes[3].lateSeconds = kLateSeconds;
    // The last one: a tool that found a node without queries may mistrust the queries of those that it reads next.
    nodes[7].memoryOnly = true;
    return nodes;
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

SimNode* Vehicle::Asked(int number, NodeStep step)
{
    auto* node = Asked(number);
    return node && !node->Faults().ignored.contains(step) ? node : nullptr;
}

std::vector<Frame> Vehicle::Answer(const Frame& question)
{
    struct Row {
        std::uint16_t command;
        Answers (Vehicle::*answer)(const Frame&);
    };
    static constexpr Row kRows[] = {
        {901, &Vehicle::AnswerPing},     {905, &Vehicle::AnswerMount},      {921, &Vehicle::AnswerInputs},
        {922, &Vehicle::AnswerOutputs},  {926, &Vehicle::AnswerCollisions}, {977, &Vehicle::AnswerOldType},
        {979, &Vehicle::AnswerType},     {923, &Vehicle::AnswerMemoryRead}, {937, &Vehicle::AnswerVersion},
        {kQuery, &Vehicle::AnswerQuery}, {920, &Vehicle::AnswerItemState},  {969, &Vehicle::AnswerSpecial},
        {973, &Vehicle::AnswerSpecial},
    };
    const auto* row = std::ranges::find(kRows, question.command, &Row::command);
    if (row != std::end(kRows))
        return (this->*row->answer)(question);
    TakeCommand(question.command, question.state);
    return {};
}

Vehicle::Answers Vehicle::AnswerPing(const Frame& question)
{
    const auto* node = Asked(question.data, NodeStep::Ping);
    if (!node)
        return {};
    return {{kPingReply, false, false, std::uint16_t(node->Faults().answersAs.value_or(question.data))}};
}

Vehicle::Answers Vehicle::AnswerMount(const Frame& question)
{
    auto* node = Asked(question.data, question.state ? NodeStep::Mount : NodeStep::Unmount);
    if (!node)
        return {};
    if (question.state && node->Faults().denies)
        return {{kAcknowledge, false, false, question.data}};
    if (auto* before = Node(mMounted); before && (question.state || before == node)) {
        before->StopPushing();
        mMounted = 0;
    }
    if (question.state)
        mMounted = question.data;
    const int answersAs = node->Faults().answersAs.value_or(question.data);
    const int given = answersAs == NodeSetup::kAnonymous ? question.data : answersAs;
    return {{kAcknowledge, true, false, std::uint16_t(given)}};
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

Vehicle::Answers Vehicle::AnswerItemState(const Frame& question)
{
    const auto* node = Asked(mMounted, NodeStep::State);
    if (!node || !question.state)
        return {};
    const int believed = mCommandsOn.contains(question.data) ? 1 : 0;
    return {{kValue, false, false, std::uint16_t(node->Faults().stateAs.value_or(believed))}};
}

Vehicle::Answers Vehicle::AnswerSpecial(const Frame& question)
{
    const SpecialOrder order(question);
    const auto* node = order.Node() == mMounted ? Asked(mMounted, NodeStep::Special) : nullptr;
    const auto answer = node ? order.Answer(node->Faults().denies) : std::nullopt;
    return answer ? Answers{*answer} : Answers{};
}

Vehicle::Answers Vehicle::AnswerMemoryRead(const Frame& question)
{
    const auto* answers = MountedAnswers();
    return answers ? answers->AnswerMemoryRead(question) : Answers{};
}

Vehicle::Answers Vehicle::AnswerVersion(const Frame& question)
{
    const auto* answers = MountedAnswers();
    return answers ? answers->AnswerVersion(question) : Answers{};
}

Vehicle::Answers Vehicle::AnswerQuery(const Frame& question)
{
    auto* answers = MountedAnswers();
    return answers ? answers->AnswerQuery(question, Mounted()->Faults()) : Answers{};
}

void Vehicle::NoteArrived(const Frame& question)
{
    if (auto* answers = MountedAnswers(); answers && question.command == kQuery)
        answers->QueryArrived();
}

int Vehicle::Obey(const ForceOrder& order)
{
    auto* node = order.node == 0 ? Mounted() : Asked(order.node);
    if (!node || ForceOrder::FormOf(node->Setup()) != order.form || !node->ForceOutput(order.output, order.halves))
        return 0;
    return node->Setup().number;
}

NodeAnswers* Vehicle::MountedAnswers()
{
    const auto* node = Mounted();
    return node ? &mAnswers[std::size_t(node - mNodes.data())] : nullptr;
}

void Vehicle::ApplyCommand(int command, bool on)
{
    for (std::size_t i = 0; i < mNodes.size(); ++i)
        for (int number = 1; const auto& input : mAnswers[i].Config().inputs) {
            if (input.command == command)
                mNodes[i].SetInput(number, on);
            ++number;
        }
    TakeCommand(command, on);
}

void Vehicle::TakeCommand(int command, bool on)
{
    if (on)
        mCommandsOn.insert(command);
    else
        mCommandsOn.erase(command);
    FollowRelationships();
}

void Vehicle::FollowRelationships()
{
    const auto isOn = [this](int command) { return mCommandsOn.contains(command); };
    for (std::size_t i = 0; i < mNodes.size(); ++i)
        for (int number = 1; const auto& output : mAnswers[i].Config().outputs)
            mNodes[i].SetOutput(number++, Holds(output.relationship, isOn));
}

std::vector<Frame> Vehicle::MoveInput(int node, int input, bool on)
{
    auto* moved = Node(node);
    if (!moved || input < 1 || input > moved->Type().inputs)
        return {};
    const auto& config = mAnswers[std::size_t(moved - mNodes.data())].Config().inputs[std::size_t(input - 1)];
    moved->SetInput(input, on);
    if (config.command == 0 || config.analog)
        return {};
    TakeCommand(config.command, on);
    return {{std::uint16_t(config.command), on, false, std::uint16_t(node)}};
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
    mAnswers[std::size_t(node - mNodes.data())].Restart();
    FollowRelationships();
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
