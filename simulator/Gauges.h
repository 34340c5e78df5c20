#pragma once

#include "link/Frame.h"

#include <random>
#include <vector>

namespace fenrik {

class Electrics;

/// The measured values of the vehicle: each drifts towards where the engine's state draws it, trembles a little, and
/// is reported at its own interval.
class Gauges {
public:
    Gauges(const Electrics& electrics, unsigned seed);

    /// The reports that are due by `now` (seconds).
    [[nodiscard]] std::vector<Frame> Due(double now);
    [[nodiscard]] double NextDue() const;

private:
    struct Gauge {
        double value;
        double next;  // when it is reported
    };

    [[nodiscard]] int Read(std::size_t row, double seconds);

    const Electrics& mElectrics;
    std::mt19937 mRandom;
    std::vector<Gauge> mGauges;  // one for each row of the table
};

}  // namespace fenrik
