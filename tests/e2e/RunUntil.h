#pragma once

#include <functional>

namespace fenrik {

/// Runs the event loop, as a program does that waits for its user, until `holds`; false if it does not in that time.
[[nodiscard]] bool RunUntil(const std::function<bool()>& holds, int milliseconds);

}  // namespace fenrik
