#include "simulator/BusCommands.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr BusCommand kPlain[] = {
    {1, "Head Lamps Low Beam"},
    {2, "Head Lamps High Beam"},
    {3, "Parking Lamps"},
    {6, "Left Turn Signal"},
    {7, "Right Turn Signal"},
    {8, "Hazard Flashers"},
    {9, "Stop Lamps"},
    {10, "Reverse Lamps"},
    {11, "Front Fog Lamps"},
    {31, "Dome Lamps Front"},
    {32, "Dome Lamps Rear"},
    {34, "Step Well Lamps Front"},
    {37, "Driver Dome Lamp"},
    {57, "Front Door Open Request"},
    {58, "Front Door Close Request"},
    {59, "Front Door Is Open"},
    {61, "Rear Door Open Request"},
    {62, "Rear Door Close Request"},
    {63, "Rear Door Is Open"},
    {66, "Door Interlock"},
    {70, "Driver Window Door Latch"},
    {72, "Ramp Deploy Request"},
    {73, "Ramp Stow Request"},
    {75, "Ramp Is Deployed"},
    {91, "Wiper Low Speed"},
    {92, "Wiper High Speed"},
    {93, "Wiper Intermittent"},
    {95, "Washer Pump"},
    {105, "Driver Blower Low"},
    {107, "Driver Blower High"},
    {108, "Defroster Blower"},
    {109, "Saloon Heater"},
    {110, "Saloon Heater Boost"},
    {111, "Heater Coolant Pump"},
    {113, "Air Conditioning Request"},
    {123, "Mirror Heaters"},
    {135, "Park Brake Applied"},
    {136, "Service Brake Applied"},
    {139, "Brake Retarder Active"},
    {157, "Transmission Neutral"},
    {158, "Transmission Reverse"},
    {179, "Ignition On"},
    {180, "Engine Crank Request"},
    {183, "Engine Running"},
    {209, "Battery Master On"},
    {211, "Alternator Charging"},
    {233, "Stop Request"},
    {235, "Stop Request Sign"},
    {259, "Kneel Active"},
    {277, "Electric Horn"},
    {280, "Back-Up Alarm"},
    {520, "Front Sign Power"},
    {560, "Vehicle Moving"},
};

constexpr BusCommand kAnalog[] = {
    {300, "Battery Voltage"},
    {301, "Starter Battery Voltage"},
    {302, "Alternator Current"},
    {303, "Coolant Temperature"},
    {304, "Engine Oil Pressure"},
    {305, "Engine Oil Temperature"},
    {306, "Engine Speed"},
    {307, "Road Speed"},
    {308, "Fuel Level"},
    {309, "Urea Tank Level"},
    {310, "Transmission Oil Temp"},
    {311, "Front Air Pressure"},
    {312, "Rear Air Pressure"},
    {314, "Front Axle Load"},
    {315, "Drive Axle Load"},
    {317, "Outside Temperature"},
    {318, "Driver Area Temperature"},
    {319, "Saloon Temperature"},
    {320, "Hydraulic Pressure"},
    {324, "Boost Pressure"},
    {325, "Exhaust Temperature"},
};

}  // namespace

std::span<const BusCommand> PlainCommands()
{
    return kPlain;
}

std::span<const BusCommand> AnalogCommands()
{
    return kAnalog;
}

int CommandNumber(std::string_view name)
{
    for (const auto commands : {PlainCommands(), AnalogCommands()})
        if (const auto row = std::ranges::find(commands, name, &BusCommand::name); row != commands.end())
            return row->number;
    return 0;
}

}  // namespace fenrik
