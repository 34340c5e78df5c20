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
    {"Starter Battery Voltage", 127, 136, 4, 1, 3.0},
    {"Alternator Current", -12, 85, 4, 4, 1.0},
    {"Coolant Temperature", 18, 86, 90, 0.4, 2.0},
    {"Engine Oil Pressure", 0, 52, 2, 1, 1.0},
    {"Engine Oil Temperature", 18, 94, 140, 0.4, 4.0},
    {"Engine Speed", 0, 1450, 3, 60, 0.5},
    {"Road Speed", 0, 380, 12, 15, 0.5},
    {"Fuel Level", 742, 600, 3600, 3, 5.0},
    {"Urea Tank Level", 805, 760, 3600, 3, 10.0},
    {"Transmission Oil Temp", 18, 78, 120, 0.4, 4.0},
    {"Front Air Pressure", 70, 118, 40, 1, 2.0},
    {"Rear Air Pressure", 66, 116, 45, 1, 2.0},
    {"Front Axle Load", 9800, 10350, 60, 40, 5.0},
    {"Drive Axle Load", 17200, 18900, 60, 60, 5.0},
    {"Outside Temperature", -35, -28, 600, 1, 5.0},
    {"Driver Area Temperature", 60, 215, 150, 2, 4.0},
    {"Saloon Temperature", 45, 205, 200, 2, 4.0},
    {"Hydraulic Pressure", 0, 640, 5, 20, 2.0},
    {"Boost Pressure", 0, 172, 3, 15, 1.0},
    {"Exhaust Temperature", 20, 340, 30, 6, 2.0},
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
