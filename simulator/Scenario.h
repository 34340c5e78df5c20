#pragma once

#include "simulator/SimNode.h"
#include "simulator/Statements.h"

#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fenrik {

/// An action and when it is carried out, in seconds since the scenario began.
struct ScheduledAction {
    enum class When { Start, At, Every };

    When when = When::Start;
    double seconds = 0;
    Action action;
    int line = 0;  ///< of the file, from 1
};

/// A bad line of a scenario.
struct ScenarioProblem {
    int line = 0;  ///< from 1
    std::string text;
};

/// What a scenario file says. Its statements are described in README.md.
struct Scenario {
    std::vector<NodeSetup> nodes;  ///< the default vehicle's if the file names none
    std::vector<ScheduledAction> actions;
    double repeat = 0;  ///< seconds after which the timed actions begin again; 0: never

    /// Reads a whole file; every bad line adds to `problems`, and the scenario is then not to be used.
    [[nodiscard]] static Scenario Parse(std::istream& in, std::vector<ScenarioProblem>& problems,
                                        Network network = Network::Fenrik2000);
};

/// The action that one statement without a time names, nothing for a blank line or a comment.
/// Throws std::invalid_argument with the reason if the statement is bad or names what `nodes` don't have.
[[nodiscard]] std::optional<Action> ParseAction(std::string_view line, const std::vector<NodeSetup>& nodes,
                                                Network network = Network::Fenrik2000);

}  // namespace fenrik
