#pragma once

#include "relay/RelayLimits.h"

#include <string>
#include <vector>

namespace fenrik {

/// What the command line asks for.
struct RelayOptions {
    std::vector<std::string> listen;  ///< ADDRESS:PORT
    Consent consent = Consent::Ask;
    std::string log;  ///< path; empty: standard error
    RelayLimits limits;
    bool help = false;
    bool version = false;

    /// Throws std::invalid_argument with the reason if the line is bad. `arguments` without the program's name.
    [[nodiscard]] static RelayOptions Parse(const std::vector<std::string>& arguments);

    [[nodiscard]] static const char* HelpText();
};

}  // namespace fenrik
