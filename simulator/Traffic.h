#pragma once

#include "simulator/Electrics.h"
#include "simulator/Gauges.h"

#include <vector>

namespace fenrik {

class Vehicle;
struct DayStep;

/// What the vehicle does by itself: the nodes announce themselves, a driver goes through a short day again and again,
/// gauges report, the master sends its sync, and nodes shed loads when the voltage sags.
class Traffic {
public:
    static constexpr double kSyncSeconds = 2.5;
    static constexpr double kTickSeconds = 0.1;  ///< how often the electrics are looked at

    Traffic(Vehicle& vehicle, unsigned seed);

    /// The frames that are due by `now` (seconds), in order. The vehicle's inputs and outputs move along.
    [[nodiscard]] std::vector<Frame> Due(double now);
    [[nodiscard]] double NextDue() const;

    /// Goes on from `now` as if the time since the last Due had not passed.
    void Resume(double now);

    [[nodiscard]] Electrics& Supply() { return mElectrics; }

private:
    void Announce(double now, std::vector<Frame>& frames);
    void Sync(double now, std::vector<Frame>& frames);
    void Drive(double now, std::vector<Frame>& frames);
    void Take(const DayStep& step, std::vector<Frame>& frames);
    void Shed(double now, std::vector<Frame>& frames);

    Vehicle& mVehicle;
    Electrics mElectrics;
    Gauges mGauges;
    std::vector<std::pair<double, int>> mAnnouncements;  // when and which node, latest first
    double mNextSync = kSyncSeconds;
    double mDayStart = 0;
    std::size_t mDayStep = 0;
    double mNextTick = 0;
    int mShedLevel = 0;  // last reported
};

}  // namespace fenrik
