#pragma once

#include <string>
#include <string_view>

namespace fenrik {

/// A name as others may see it: control characters, zeros among them, become blanks, and none stand at its ends.
[[nodiscard]] std::string CleanName(std::string_view bytes);

/// `bytes` of a client for the log, as UTF-8: nothing in it can end the line or steer a terminal.
[[nodiscard]] std::string LogText(std::string_view bytes);

}  // namespace fenrik
