#include "simulator/BusCommands.h"

#include <algorithm>
#include <iterator>

namespace fenrik {

namespace {

constexpr BusCommand kPlain[] = {
    {1, "Ignition"},
    {2, "Engine Start"},
    {3, "Engine Running"},
    {4, "Parking Brake"},
    {5, "Service Brake"},
    {6, "Reverse Gear"},
    {7, "Neutral"},
    {8, "Battery Switch"},
    {10, "Front Door Open"},
    {11, "Front Door Close"},
    {12, "Rear Door Open"},
    {13, "Rear Door Close"},
    {14, "Driver Door Ajar"},
    {15, "Door Interlock"},
    {20, "Headlights Low"},
    {21, "Headlights High"},
    {22, "Parking Lights"},
    {23, "Left Turn Signal"},
    {24, "Right Turn Signal"},
    {25, "Hazard Lights"},
    {26, "Brake Lights"},
    {27, "Reverse Lights"},
    {28, "Fog Lights"},
    {29, "Interior Lights Front"},
    {30, "Interior Lights Rear"},
    {31, "Driver Light"},
    {32, "Step Lights"},
    {33, "Destination Sign"},
    {40, "Wiper Low"},
    {41, "Wiper High"},
    {42, "Wiper Interval"},
    {43, "Washer Pump"},
    {44, "Mirror Heat"},
    {45, "Windshield Defrost"},
    {50, "Heater Pump"},
    {51, "Driver Fan Low"},
    {52, "Driver Fan High"},
    {53, "Passenger Fan Low"},
    {54, "Passenger Fan High"},
    {55, "Air Conditioning"},
    {60, "Horn"},
    {61, "Stop Request"},
    {62, "Stop Request Sign"},
    {63, "Kneel"},
    {64, "Ramp Out"},
    {65, "Ramp In"},
    {66, "Reverse Alarm"},
    {67, "Retarder"},
};

constexpr BusCommand kAnalog[] = {
    {200, "Battery Voltage"},     {201, "Engine Speed"},       {202, "Vehicle Speed"},
    {203, "Coolant Temperature"}, {204, "Oil Pressure"},       {205, "Oil Temperature"},
    {206, "Fuel Level"},          {207, "Front Air Pressure"}, {208, "Rear Air Pressure"},
    {209, "Outside Temperature"}, {210, "Inside Temperature"}, {211, "Transmission Temperature"},
    {212, "Alternator Current"},  {213, "Coolant Level"},      {214, "Washer Fluid Level"},
    {215, "Intake Temperature"},  {216, "Boost Pressure"},     {217, "Fuel Rate"},
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
