#pragma once

#include <QString>

namespace fenrik {

/// What a technician can do about a connection that fails: said below the failure's own words.
namespace ConnectAdvice {

[[nodiscard]] QString NoTransceiver();
[[nodiscard]] QString PortInUse();
[[nodiscard]] QString NoPort();

}  // namespace ConnectAdvice

}  // namespace fenrik
