#pragma once

#include <array>

namespace fenrik {

/// The outputs of the first model generation that have a pulse-width stage, in the order of its channels 1 to 4.
inline constexpr std::array<int, 4> kPulseWidthOutputs{1, 2, 15, 16};

}  // namespace fenrik
