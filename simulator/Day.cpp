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
    {2.0, "Battery Master On", true},
    {2.6, "Driver Window Door Latch", true},
    {2.7, "Driver Dome Lamp", true},
    {3.4, "Park Brake Applied", true},
    {3.9, "Driver Window Door Latch", false},
    {5.0, "Ignition On", true},
    {5.1, "Transmission Neutral", true},
    {5.4, "Parking Lamps", true},
    {5.9, "Dome Lamps Front", true},
    {6.2, "Dome Lamps Rear", true},
    {7.0, "Engine Crank Request", true},
    {10.0, "Engine Crank Request", false},
    {10.1, "Engine Running", true},
    {10.6, "Alternator Charging", true},
    {11.0, "Head Lamps Low Beam", true},
    {11.4, "Front Sign Power", true},
    {12.0, "Heater Coolant Pump", true},
    {12.3, "Driver Blower Low", true},
    {12.8, "Saloon Heater", true},
    {13.5, "Mirror Heaters", true},
    {14.0, "Defroster Blower", true},
    {15.0, "Driver Dome Lamp", false},
    // Out of the yard, backwards.
    {16.0, "Service Brake Applied", true},
    {16.1, "Stop Lamps", true},
    {16.6, "Park Brake Applied", false},
    {17.0, "Transmission Neutral", false},
    {17.1, "Transmission Reverse", true},
    {17.2, "Reverse Lamps", true},
    {17.3, "Back-Up Alarm", true},
    {17.8, "Service Brake Applied", false},
    {17.9, "Stop Lamps", false},
    {22.0, "Transmission Reverse", false},
    {22.1, "Reverse Lamps", false},
    {22.2, "Back-Up Alarm", false},
    {23.0, "Left Turn Signal", true},
    {27.0, "Left Turn Signal", false},
    // On the road, in the rain.
    {28.0, "Vehicle Moving", true},
    {29.0, "Wiper Intermittent", true},
    {33.0, "Wiper Intermittent", false},
    {33.1, "Wiper Low Speed", true},
    {36.0, "Washer Pump", true},
    {37.0, "Washer Pump", false},
    {38.0, "Wiper Low Speed", false},
    {38.1, "Wiper High Speed", true},
    {40.0, "Head Lamps High Beam", true},
    {41.0, "Electric Horn", true},
    {41.4, "Electric Horn", false},
    {43.0, "Head Lamps High Beam", false},
    {44.0, "Wiper High Speed", false},
    {45.0, "Front Fog Lamps", true},
    {47.0, "Driver Blower Low", false},
    {47.1, "Driver Blower High", true},
    {48.0, "Saloon Heater", false},
    {48.1, "Saloon Heater Boost", true},
    // A stop with passengers.
    {50.0, "Stop Request", true},
    {50.1, "Stop Request Sign", true},
    {50.4, "Stop Request", false},
    {53.0, "Right Turn Signal", true},
    {54.0, "Brake Retarder Active", true},
    {55.0, "Service Brake Applied", true},
    {55.1, "Stop Lamps", true},
    {56.5, "Brake Retarder Active", false},
    {56.8, "Vehicle Moving", false},
    {57.0, "Hazard Flashers", true},
    {57.2, "Right Turn Signal", false},
    {57.5, "Door Interlock", true},
    {58.0, "Kneel Active", true},
    {58.2, "Front Door Open Request", true},
    {58.3, "Rear Door Open Request", true},
    {58.4, "Front Door Open Request", false},
    {58.5, "Front Door Is Open", true},
    {58.55, "Rear Door Open Request", false},
    {58.6, "Step Well Lamps Front", true},
    {58.7, "Rear Door Is Open", true},
    {60.0, "Ramp Deploy Request", true},
    {60.4, "Ramp Deploy Request", false},
    {62.0, "Ramp Is Deployed", true},
    {66.0, "Ramp Stow Request", true},
    {66.4, "Ramp Stow Request", false},
    {68.0, "Ramp Is Deployed", false},
    {69.0, "Front Door Close Request", true},
    {69.2, "Rear Door Close Request", true},
    {70.0, "Front Door Close Request", false},
    {70.1, "Front Door Is Open", false},
    {70.2, "Rear Door Close Request", false},
    {70.3, "Rear Door Is Open", false},
    {70.4, "Step Well Lamps Front", false},
    {71.0, "Kneel Active", false},
    {71.5, "Stop Request Sign", false},
    {72.0, "Door Interlock", false},
    {72.5, "Hazard Flashers", false},
    {73.0, "Service Brake Applied", false},
    {73.1, "Stop Lamps", false},
    // A lamp fails, a node loses its supply for a moment.
    Fault(78.0, 1, 5),
    {80.0, "Front Fog Lamps", false},
    {82.0, "Air Conditioning Request", true},
    Restart(86.0, 5),
    {90.0, "Air Conditioning Request", false},
    {92.0, "Driver Blower High", false},
    {92.1, "Saloon Heater Boost", false},
    {94.0, "Defroster Blower", false},
    {94.5, "Mirror Heaters", false},
    // Home.
    {98.0, "Service Brake Applied", true},
    {98.1, "Stop Lamps", true},
    {100.0, "Transmission Neutral", true},
    {100.5, "Park Brake Applied", true},
    {101.0, "Service Brake Applied", false},
    {101.1, "Stop Lamps", false},
    {102.0, "Heater Coolant Pump", false},
    {103.0, "Head Lamps Low Beam", false},
    {103.5, "Front Sign Power", false},
    {104.0, "Engine Running", false},
    {104.2, "Alternator Charging", false},
    {104.5, "Transmission Neutral", false},
    {105.0, "Ignition On", false},
    {107.0, "Dome Lamps Rear", false},
    {107.5, "Dome Lamps Front", false},
    {108.0, "Driver Window Door Latch", true},
    {110.0, "Driver Window Door Latch", false},
    {111.0, "Parking Lamps", false},
    {113.0, "Park Brake Applied", false},
    {115.0, "Battery Master On", false},
};

}  // namespace

std::span<const DayStep> Day()
{
    return kDay;
}

}  // namespace fenrik
