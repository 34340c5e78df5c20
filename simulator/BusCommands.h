#pragma once

#include <span>
#include <string_view>

namespace fenrik {

/// A command that the simulated vehicle sends, by number and name as in the default catalogue.
struct BusCommand {
    int number;
    std::string_view name;
};

/// Commands that switch something on or off.
[[nodiscard]] std::span<const BusCommand> PlainCommands();

/// Commands whose data is a measured value.
[[nodiscard]] std::span<const BusCommand> AnalogCommands();

/// The number of the command of that name; 0 if there is none.
[[nodiscard]] int CommandNumber(std::string_view name);

}  // namespace fenrik
