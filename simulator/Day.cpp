#include "simulator/Day.h"

namespace fenrik {

namespace {

constexpr DayStep Fault(double seconds, int node, int output)
{
    return {seconds, {}, true, DayStep::Kind::Fault, node, output};
}

constexpr DayStep Restart(double seconds, int node)
{
    return {seconds, {}, true, DayStep::Kind::Restart, node, 0};
}

constexpr DayStep kDay[] = {
    // The driver comes, walks round and starts the engine.
    {2.0, "Battery Switch", true},
    {2.6, "Driver Door Ajar", true},
    {2.7, "Driver Light", true},
    {3.4, "Parking Brake", true},
    {3.9, "Driver Door Ajar", false},
    {5.0, "Ignition", true},
    {5.1, "Neutral", true},
    {5.4, "Parking Lights", true},
    {5.9, "Interior Lights Front", true},
    {6.2, "Interior Lights Rear", true},
    {7.0, "Engine Start", true},
    {10.0, "Engine Start", false},
    {10.1, "Engine Running", true},
    {11.0, "Headlights Low", true},
    {11.4, "Destination Sign", true},
    {12.0, "Heater Pump", true},
    {12.3, "Driver Fan Low", true},
    {12.8, "Passenger Fan Low", true},
    {13.5, "Mirror Heat", true},
    {14.0, "Windshield Defrost", true},
    {15.0, "Driver Light", false},
    // Out of the yard, backwards.
    {16.0, "Service Brake", true},
    {16.1, "Brake Lights", true},
    {16.6, "Parking Brake", false},
    {17.0, "Neutral", false},
    {17.1, "Reverse Gear", true},
    {17.2, "Reverse Lights", true},
    {17.3, "Reverse Alarm", true},
    {17.8, "Service Brake", false},
    {17.9, "Brake Lights", false},
    {22.0, "Reverse Gear", false},
    {22.1, "Reverse Lights", false},
    {22.2, "Reverse Alarm", false},
    {23.0, "Left Turn Signal", true},
    {27.0, "Left Turn Signal", false},
    // On the road, in the rain.
    {29.0, "Wiper Interval", true},
    {33.0, "Wiper Interval", false},
    {33.1, "Wiper Low", true},
    {36.0, "Washer Pump", true},
    {37.0, "Washer Pump", false},
    {38.0, "Wiper Low", false},
    {38.1, "Wiper High", true},
    {40.0, "Headlights High", true},
    {41.0, "Horn", true},
    {41.4, "Horn", false},
    {43.0, "Headlights High", false},
    {44.0, "Wiper High", false},
    {45.0, "Fog Lights", true},
    {47.0, "Driver Fan Low", false},
    {47.1, "Driver Fan High", true},
    {48.0, "Passenger Fan Low", false},
    {48.1, "Passenger Fan High", true},
    // A stop with passengers.
    {50.0, "Stop Request", true},
    {50.1, "Stop Request Sign", true},
    {50.4, "Stop Request", false},
    {53.0, "Right Turn Signal", true},
    {54.0, "Retarder", true},
    {55.0, "Service Brake", true},
    {55.1, "Brake Lights", true},
    {56.5, "Retarder", false},
    {57.0, "Hazard Lights", true},
    {57.2, "Right Turn Signal", false},
    {57.5, "Door Interlock", true},
    {58.0, "Kneel", true},
    {58.5, "Front Door Open", true},
    {58.6, "Step Lights", true},
    {58.7, "Rear Door Open", true},
    {59.5, "Front Door Open", false},
    {59.7, "Rear Door Open", false},
    {60.0, "Ramp Out", true},
    {62.0, "Ramp Out", false},
    {66.0, "Ramp In", true},
    {68.0, "Ramp In", false},
    {69.0, "Front Door Close", true},
    {69.2, "Rear Door Close", true},
    {70.0, "Front Door Close", false},
    {70.2, "Rear Door Close", false},
    {70.4, "Step Lights", false},
    {71.0, "Kneel", false},
    {71.5, "Stop Request Sign", false},
    {72.0, "Door Interlock", false},
    {72.5, "Hazard Lights", false},
    {73.0, "Service Brake", false},
    {73.1, "Brake Lights", false},
    // A lamp fails, a node loses its supply for a moment.
    Fault(78.0, 1, 5),
    {80.0, "Fog Lights", false},
    {82.0, "Air Conditioning", true},
    Restart(86.0, 5),
    {90.0, "Air Conditioning", false},
    {92.0, "Driver Fan High", false},
    {92.1, "Passenger Fan High", false},
    {94.0, "Windshield Defrost", false},
    {94.5, "Mirror Heat", false},
    // Home.
    {98.0, "Service Brake", true},
    {98.1, "Brake Lights", true},
    {100.0, "Neutral", true},
    {100.5, "Parking Brake", true},
    {101.0, "Service Brake", false},
    {101.1, "Brake Lights", false},
    {102.0, "Heater Pump", false},
    {103.0, "Headlights Low", false},
    {103.5, "Destination Sign", false},
    {104.0, "Engine Running", false},
    {104.5, "Neutral", false},
    {105.0, "Ignition", false},
    {107.0, "Interior Lights Rear", false},
    {107.5, "Interior Lights Front", false},
    {108.0, "Driver Door Ajar", true},
    {110.0, "Driver Door Ajar", false},
    {111.0, "Parking Lights", false},
    {113.0, "Parking Brake", false},
    {115.0, "Battery Switch", false},
};

}  // namespace

std::span<const DayStep> Day()
{
    return kDay;
}

}  // namespace fenrik
