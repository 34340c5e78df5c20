#include "simulator/Schedule.h"

#include <algorithm>
#include <limits>

namespace fenrik {

Schedule::Schedule(const Scenario& scenario)
{
    using When = ScheduledAction::When;
    for (const auto& scheduled : scenario.actions) {
        const double interval = scheduled.when == When::Every ? scheduled.seconds
                                : scheduled.when == When::At  ? scenario.repeat
                                                              : 0.0;
        mEntries.push_back({scheduled.seconds, interval, scheduled.action});
    }
}

std::vector<Schedule::Entry>::iterator Schedule::Earliest()
{
    return std::ranges::min_element(mEntries, {}, &Entry::next);
}

std::vector<Action> Schedule::Due(double now)
{
    std::vector<Action> due;
    for (auto entry = Earliest(); entry != mEntries.end() && entry->next <= now; entry = Earliest()) {
        due.push_back(entry->action);
        if (entry->interval > 0)
            entry->next += entry->interval;
        else
            mEntries.erase(entry);
    }
    return due;
}

double Schedule::NextDue() const
{
    if (mEntries.empty())
        return std::numeric_limits<double>::infinity();
    return std::ranges::min_element(mEntries, {}, &Entry::next)->next;
}

}  // namespace fenrik
