#pragma once

#include "link/Frame.h"
#include "simulator/ModemOrder.h"
#include "simulator/SimNode.h"

#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fenrik {

/// One thing that a scenario has the simulator do.
struct Action {
    enum class Verb {
        Send,           ///< `frame`
        Burst,          ///< `count` frames: `frame`, or one command after the other if its command is 0
        Noise,          ///< `count` bytes that are no frame
        Fault,          ///< output `count` of `node` has failed
        Shed,           ///< `node` sheds loads of level `count`
        Voltage,        ///< held at `value`; follows the engine again if !on
        Input,          ///< input `count` of `node` goes `on`
        Restart,        ///< `node` starts anew
        Silent,         ///< `node` hears nothing while `on`
        AnswerDelay,    ///< answers take `value` to `value2` seconds
        Lose,           ///< every `count`th answer is lost; 0: none
        LoseReply,      ///< every `count`th reply is lost whole; 0: none
        AnswerAs,       ///< `node` gives number `count` for its own while `on`
        Cut,            ///< array replies of `node` end after `count` data frames while `on`
        Refuse,         ///< `node` refuses `queries`; none any more if !on
        Ignore,         ///< `node` is deaf to `steps`; to nothing any more if !on
        StateAs,        ///< `node` tells `count` for the state of every item while `on`
        Deny,           ///< `node` declines mounts and assignments while `on`
        Odd,            ///< array replies of `node` have odd lengths while `on`
        NoTransceiver,  ///< the transceiver doesn't answer while `on`
        Quiet,          ///< no traffic of the vehicle's own while `on`
        Flood,          ///< `value` frames a second; 0: none
        Modem,          ///< `modem`
        Unplug,
        Plug,
        Quit,
        // Of the older network:
        Message,   ///< `node` sends `bytes`: a message, or one with its value
        ShedLine,  ///< loads of level `count` are shed, or no more
        Miss,      ///< `node` misses the token `count` times
        Collide,   ///< `count` messages are lost in collisions
        Bytes      ///< `bytes` stand on the line at once
    };

    Verb verb = Verb::Quit;
    Frame frame{};
    int node = 0;
    int count = 0;
    bool on = true;
    double value = 0;
    double value2 = 0;
    std::vector<std::uint16_t> queries;  ///< codes of query kinds
    std::vector<NodeStep> steps;
    std::vector<std::uint8_t> bytes;
    ModemOrder modem{};
};

/// The generation of the network, each with statements of its own.
enum class Network { Fenrik2000, Fenrik98 };

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
