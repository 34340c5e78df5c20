#include "simulator/Traffic.h"

#include "simulator/BusCommands.h"
#include "simulator/Day.h"
#include "simulator/NetworkFrames.h"
#include "simulator/Vehicle.h"

#include <algorithm>
#include <functional>

namespace fenrik {

namespace {

constexpr double kAnnouncementSeconds = 0.05;
constexpr std::string_view kStarter = "Engine Crank Request";
constexpr std::string_view kEngine = "Engine Running";

}  // namespace

Traffic::Traffic(Vehicle& vehicle, unsigned seed) : mVehicle(vehicle), mGauges(mElectrics, seed)
{
    for (double time = 0; const auto& node : mVehicle.Nodes()) {
        mAnnouncements.emplace_back(time + node.Setup().lateSeconds, node.Setup().number);
        time += kAnnouncementSeconds;
    }
    std::ranges::sort(mAnnouncements, std::greater());
}

std::vector<Frame> Traffic::Due(double now)
{
    std::vector<Frame> frames;
    Announce(now, frames);
    Sync(now, frames);
    Drive(now, frames);
    Shed(now, frames);
    const auto readings = mGauges.Due(now);
    frames.insert(frames.end(), readings.begin(), readings.end());
    return frames;
}

double Traffic::NextDue() const
{
    return std::min({mNextTick, mNextSync, mGauges.NextDue()});
}

void Traffic::Resume(double now)
{
    mDayStart += now - mNextTick;
    mNextSync = now + kSyncSeconds;
    mNextTick = now;
}

void Traffic::Announce(double now, std::vector<Frame>& frames)
{
    for (; !mAnnouncements.empty() && mAnnouncements.back().first <= now; mAnnouncements.pop_back())
        frames.push_back(AnnouncementFrame(mAnnouncements.back().second));
}

void Traffic::Sync(double now, std::vector<Frame>& frames)
{
    if (now < mNextSync)
        return;
    frames.push_back(SyncFrame());
    mNextSync += kSyncSeconds;
}

void Traffic::Drive(double now, std::vector<Frame>& frames)
{
    const auto day = Day();
    while (now - mDayStart >= kDaySeconds) {
        mDayStart += kDaySeconds;
        mDayStep = 0;
    }
    for (; mDayStep < day.size() && day[mDayStep].seconds <= now - mDayStart; ++mDayStep)
        Take(day[mDayStep], frames);
}

void Traffic::Take(const DayStep& step, std::vector<Frame>& frames)
{
    if (step.kind == DayStep::Kind::Fault) {
        if (mVehicle.Node(step.node))
            frames.push_back(FaultFrame(step.node, step.output));
        return;
    }
    if (step.kind == DayStep::Kind::Restart) {
        const auto announcement = mVehicle.Restart(step.node);
        frames.insert(frames.end(), announcement.begin(), announcement.end());
        return;
    }
    const int command = CommandNumber(step.name);
    mVehicle.ApplyCommand(command, step.on);
    if (step.name == kStarter)
        mElectrics.SetCranking(step.on);
    if (step.name == kEngine)
        mElectrics.SetRunning(step.on);
    frames.push_back({std::uint16_t(command), step.on, false, 0});
}

void Traffic::Shed(double now, std::vector<Frame>& frames)
{
    for (; mNextTick <= now; mNextTick += kTickSeconds)
        mElectrics.Advance(kTickSeconds);
    if (mElectrics.ShedLevel() == mShedLevel)
        return;
    mShedLevel = mElectrics.ShedLevel();
    for (const auto& node : mVehicle.Nodes())
        if (node.Type().outputs > 0 && !node.Silent())
            frames.push_back(LoadShedFrame(node.Setup().number, mShedLevel));
}

}  // namespace fenrik
