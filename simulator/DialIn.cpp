#include "simulator/DialIn.h"

#include <sstream>

namespace fenrik {

namespace {

Scenario CoachScenario()
{
    std::istringstream text("node 1 type 9 \"Coach front\" push\n"
                            "node 2 type 10 \"Coach lights\" push\n"
                            "node 3 type 2 \"Coach door\"\n");
    std::vector<ScenarioProblem> problems;
    return Scenario::Parse(text, problems);
}

}  // namespace

DialIn::DialIn(const Simulation::Settings& settings, const TimeSource& time, TrafficLog& log, DialInHost& host)
    : mHost(host), mModem(time, log, *this), mCoachLine(mModem),
      mCoach(CoachScenario(), settings, time, mCoachLine, log, *this)
{
}

void DialIn::ToVehicle(PhoneNumber::Answer vehicle, std::uint8_t byte)
{
    if (vehicle == PhoneNumber::Answer::Vehicle)
        mHost.ByteForVehicle(byte);
    else
        mCoach.Receive({&byte, 1});
}

void DialIn::Step()
{
    mModem.Step();
    mCoach.Step();
}

double DialIn::NextDue() const
{
    return std::min(mModem.NextDue(), mCoach.NextDue());
}

}  // namespace fenrik
