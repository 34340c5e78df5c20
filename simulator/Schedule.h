#pragma once

#include "simulator/Scenario.h"

#include <vector>

namespace fenrik {

/// The timed actions of a scenario, given out when their time comes.
class Schedule {
public:
    explicit Schedule(const Scenario& scenario);

    /// The actions that are due by `now` (seconds), in order of time; those of one moment in order of the file.
    [[nodiscard]] std::vector<Action> Due(double now);

    /// When the next one is due; infinity if none is left.
    [[nodiscard]] double NextDue() const;

private:
    struct Entry {
        double next;      // seconds
        double interval;  // seconds until it comes again; 0: never
        Action action;
    };

    [[nodiscard]] std::vector<Entry>::iterator Earliest();

    std::vector<Entry> mEntries;
};

}  // namespace fenrik
