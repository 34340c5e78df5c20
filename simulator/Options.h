#pragma once

#include "simulator/Colleague.h"
#include "simulator/NodeDescriber.h"
#include "simulator/Scenario.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace fenrik {

/// What the command line asks for.
struct Options {
    int port = 0;                      ///< COM number, 1 to 16; 0: none given
    std::filesystem::path deviceLink;  ///< in place of the port's own link
    std::string relay;                 ///< HOST:PORT of a relay, in place of a port; empty: none
    std::string name = "Colleague";    ///< at the relay
    AccessAnswer access = AccessAnswer::Grant;
    std::filesystem::path log;
    std::filesystem::path scenario;
    bool modem = false;  ///< the port is a modem's, which is to be dialled
    bool paced = false;
    bool control = false;
    std::optional<double> duration;  ///< seconds
    unsigned seed = 1;
    bool help = false;
    bool legacy = false;                   ///< the older network
    std::filesystem::path writeImages;     ///< folder; empty: none are written
    std::string system = "Demonstration";  ///< begins the images' names
    bool describe = false;
    std::optional<Road> road;  ///< to describe; nothing: each node's usual one

    [[nodiscard]] Network NetworkKind() const { return legacy ? Network::Fenrik98 : Network::Fenrik2000; }

    /// True if the vehicle itself is asked for, and not only its description or images.
    [[nodiscard]] bool RunsVehicle() const { return !describe && writeImages.empty(); }

    /// Throws std::invalid_argument with the reason if the line is bad. `arguments` without the program's name.
    [[nodiscard]] static Options Parse(const std::vector<std::string>& arguments);

    [[nodiscard]] static const char* HelpText();

    /// Statements come from standard input.
    [[nodiscard]] bool Controlled() const { return control || access == AccessAnswer::Ask; }

    /// "COM5", or the link's path if no number was given.
    [[nodiscard]] std::string PortName() const;
    [[nodiscard]] std::filesystem::path LinkPath() const;
};

}  // namespace fenrik
