#pragma once

#include "link/Frame.h"
#include "simulator/ModemOrder.h"
#include "simulator/NodeFaults.h"

#include <cstdint>
#include <vector>

namespace fenrik {

class Words;

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

/// The action that a statement without a time tells. Throws std::invalid_argument with the reason if it is bad. Whether
/// the vehicle has the nodes that it names is not looked at.
[[nodiscard]] Action TakeAction(Words& words, Network network);

}  // namespace fenrik
