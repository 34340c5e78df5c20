#include "simulator/Scenario.h"

#include "simulator/LegacyMessages.h"
#include "simulator/Vehicle.h"
#include "simulator/Words.h"

#include <algorithm>
#include <stdexcept>

namespace fenrik {

namespace {

constexpr double kLongestTime = 86400;
constexpr double kShortestInterval = 0.001;

std::vector<NodeSetup> LegacyNodes()
{
    std::vector<NodeSetup> nodes(kLegacyNodes);
    for (int i = 0; i < kLegacyNodes; ++i)
        nodes[std::size_t(i)].number = i + 1;
    return nodes;
}

struct TraitRow {
    std::string_view word;
    bool NodeSetup::*trait;
};

constexpr TraitRow kTraits[] = {
    {"push", &NodeSetup::pushes},       {"anonymous", &NodeSetup::anonymousPing}, {"old", &NodeSetup::oldTypeQuery},
    {"memory", &NodeSetup::memoryOnly}, {"plain", &NodeSetup::plainFlash},        {"early", &NodeSetup::early},
};

// push, late 4
void TakeTrait(Words& words, NodeSetup& node)
{
    for (const auto& row : kTraits) {
        if (words.TakeIf(row.word)) {
            node.*row.trait = true;
            return;
        }
    }
    if (words.TakeIf("late"))
        node.lateSeconds = words.TakeDecimal("seconds", 0, kLongestTime);
    else
        words.ExpectEnd();
}

// node 3 type 2 "Door left" [push] [anonymous] [old] [memory] [plain] [early] [late 4]
void TakeNodeSetup(Words& words, Scenario& scenario)
{
    NodeSetup node;
    node.number = words.TakeNumber("node number", 1, NodeSetup::kMaxNumber);
    if (!words.TakeIf("type"))
        throw std::invalid_argument("\"type\" and a number is expected");
    node.type = words.TakeNumber("type", 0, 255);
    if (!FindNodeType(node.type))
        throw std::invalid_argument("there is no node of type " + std::to_string(node.type));
    if (!words.Empty())
        node.name = words.Take("name");
    while (!words.Empty())
        TakeTrait(words, node);
    if (std::ranges::any_of(scenario.nodes, [&](const NodeSetup& other) { return other.number == node.number; }))
        throw std::invalid_argument("node " + std::to_string(node.number) + " is there already");
    scenario.nodes.push_back(node);
}

// The nodes may stand behind the statements that name them, so this comes when all are known.
void CheckNodes(const Action& action, const std::vector<NodeSetup>& nodes)
{
    if (action.node == 0)
        return;
    const auto node = std::ranges::find(nodes, action.node, &NodeSetup::number);
    if (node == nodes.end())
        throw std::invalid_argument("the vehicle has no node " + std::to_string(action.node));
    if (action.verb == Action::Verb::Input && action.count > FindNodeType(node->type)->inputs)
        throw std::invalid_argument("node " + std::to_string(action.node) + " has no input " +
                                    std::to_string(action.count));
}

void CheckScheduled(const ScheduledAction& scheduled, const Scenario& scenario)
{
    CheckNodes(scheduled.action, scenario.nodes);
    if (scheduled.when == ScheduledAction::When::At && scenario.repeat > 0 && scheduled.seconds >= scenario.repeat)
        throw std::invalid_argument("the scenario repeats before this time comes");
}

void TakeStatement(Words& words, Scenario& scenario, int line, Network network)
{
    using When = ScheduledAction::When;
    if (network == Network::Fenrik2000 && words.TakeIf("node"))
        return TakeNodeSetup(words, scenario);
    if (words.TakeIf("repeat")) {
        scenario.repeat = words.TakeDecimal("seconds", kShortestInterval, kLongestTime);
        return words.ExpectEnd();
    }
    ScheduledAction scheduled;
    scheduled.line = line;
    if (words.TakeIf("at")) {
        scheduled.when = When::At;
        scheduled.seconds = words.TakeDecimal("seconds", 0, kLongestTime);
    } else if (words.TakeIf("every")) {
        scheduled.when = When::Every;
        scheduled.seconds = words.TakeDecimal("seconds", kShortestInterval, kLongestTime);
    }
    scheduled.action = TakeAction(words, network);
    scenario.actions.push_back(scheduled);
}

}  // namespace

Scenario Scenario::Parse(std::istream& in, std::vector<ScenarioProblem>& problems, Network network)
{
    Scenario scenario;
    const auto attempt = [&](int line, auto&& work) {
        try {
            work();
        } catch (const std::invalid_argument& bad) {
            problems.push_back({line, bad.what()});
        }
    };
    std::string line;
    for (int number = 1; std::getline(in, line); ++number)
        attempt(number, [&] {
            Words words(line);
            if (!words.Empty())
                TakeStatement(words, scenario, number, network);
        });
    if (scenario.nodes.empty())
        scenario.nodes = network == Network::Fenrik98 ? LegacyNodes() : Vehicle::DefaultNodes();
    for (const auto& scheduled : scenario.actions)
        attempt(scheduled.line, [&] { CheckScheduled(scheduled, scenario); });
    std::ranges::stable_sort(problems, {}, &ScenarioProblem::line);
    return scenario;
}

std::optional<Action> ParseAction(std::string_view line, const std::vector<NodeSetup>& nodes, Network network)
{
    Words words(line);
    if (words.Empty())
        return std::nullopt;
    const auto action = TakeAction(words, network);
    CheckNodes(action, nodes);
    return action;
}

}  // namespace fenrik
