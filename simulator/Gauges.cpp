#include "simulator/Gauges.h"

#include "simulator/BusCommands.h"
#include "simulator/Electrics.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace fenrik {

namespace {

// Values as they stand in a frame's data: tenths where the catalogue shows one decimal, whole units otherwise.
struct GaugeRow {
    std::string_view name;
    double off;       // where it goes while the engine stands
    double on;        // where it goes while the engine runs
    double settle;    // seconds for two thirds of the way
    double tremble;   // widest step to either side at a report
    double interval;  // seconds between reports
};

constexpr std::string_view kBattery = "Battery Voltage";

constexpr GaugeRow kRows[] = {
    {kBattery, 0, 0, 1, 0, 1.0},
    {"Engine Speed", 0, 1450, 3, 60, 0.5},
    {"Vehicle Speed", 0, 38, 12, 2, 0.5},
    {"Coolant Temperature", 180, 860, 90, 3, 2.0},
    {"Oil Pressure", 0, 52, 2, 1, 1.0},
    {"Oil Temperature", 180, 940, 140, 3, 4.0},
    {"Fuel Level", 74, 60, 3600, 0.4, 5.0},
    {"Front Air Pressure", 70, 118, 40, 1, 2.0},
    {"Rear Air Pressure", 66, 116, 45, 1, 2.0},
    {"Outside Temperature", -35, -28, 600, 1, 5.0},
    {"Inside Temperature", 95, 205, 200, 2, 4.0},
    {"Transmission Temperature", 180, 780, 120, 3, 4.0},
    {"Alternator Current", -12, 85, 4, 4, 1.0},
    {"Coolant Level", 92, 95, 60, 0.4, 10.0},
    {"Washer Fluid Level", 61, 58, 1800, 0.4, 10.0},
    {"Intake Temperature", 40, 320, 60, 4, 3.0},
    {"Boost Pressure", 0, 17, 3, 2, 1.0},
    {"Fuel Rate", 0, 142, 4, 15, 1.0},
};

}  // namespace

Gauges::Gauges(const Electrics& electrics, unsigned seed) : mElectrics(electrics), mRandom(seed)
{
    // The first reports are spread, or the slow ones would all come in the same moment for ever.
    double first = 0;
    for (const auto& row : kRows) {
        mGauges.push_back({row.off, first});
        first += 0.11;
    }
}

std::vector<Frame> Gauges::Due(double now)
{
    std::vector<Frame> reports;
    for (std::size_t i = 0; i < mGauges.size(); ++i) {
        auto& gauge = mGauges[i];
        if (gauge.next > now)
            continue;
        const auto command = std::uint16_t(CommandNumber(kRows[i].name));
        const int value = Read(i, kRows[i].interval);
        reports.push_back({command, true, false, std::uint16_t(value & 0xFFFF)});
        gauge.next = now + kRows[i].interval;
    }
    return reports;
}

int Gauges::Read(std::size_t index, double seconds)
{
    const auto& row = kRows[index];
    if (row.name == kBattery)
        return int(std::lround(mElectrics.Volts() * 10));
    auto& value = mGauges[index].value;
    const double target = mElectrics.Running() ? row.on : row.off;
    value += (target - value) * (1.0 - std::exp(-seconds / row.settle));
    const double step = std::uniform_real_distribution<double>(-row.tremble, row.tremble)(mRandom);
    return int(std::lround(target == 0 && std::abs(value) < row.tremble ? 0 : value + step));
}

double Gauges::NextDue() const
{
    return std::ranges::min_element(mGauges, {}, &Gauge::next)->next;
}

}  // namespace fenrik
