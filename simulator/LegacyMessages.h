#pragma once

#include <cstdint>
#include <string_view>

namespace fenrik {

/// A message that the simulated vehicle of the older network sends, by number and name as in the sample database.
struct LegacyMessage {
    std::uint8_t number;
    std::string_view name;
};

/// The node that sends a switch's messages, and the two of them.
struct LegacySwitch {
    int node;
    LegacyMessage on;
    LegacyMessage off;
};

/// A measured value: its byte lies between `least` and `most`.
struct LegacyGauge {
    int node;
    LegacyMessage message;
    std::uint8_t least;
    std::uint8_t most;
    double interval;  ///< seconds between two reports
};

inline constexpr int kLegacyNodes = 6;
inline constexpr int kLegacyTokenBase = 100;  ///< a node's token is its number and this
inline constexpr int kShedLevels = 8;
inline constexpr std::uint8_t kFirstShedMessage = 70;  ///< level 1 on; then level 1 off, level 2 on, ...

inline constexpr LegacySwitch kLegacySwitches[] = {
    {1, {10, "Ignition On"}, {11, "Ignition Off"}},
    {1, {12, "Front Door Open"}, {13, "Front Door Closed"}},
    {2, {14, "Rear Door Open"}, {15, "Rear Door Closed"}},
    {3, {16, "Headlamps On"}, {17, "Headlamps Off"}},
    {3, {18, "Left Turn Signal On"}, {19, "Left Turn Signal Off"}},
    {3, {20, "Right Turn Signal On"}, {21, "Right Turn Signal Off"}},
    {4, {22, "Stop Lamps On"}, {23, "Stop Lamps Off"}},
    {4, {24, "Reverse Lamps On"}, {25, "Reverse Lamps Off"}},
    {5, {26, "Wipers On"}, {27, "Wipers Off"}},
    {5, {28, "Dome Lamps On"}, {29, "Dome Lamps Off"}},
    {6, {30, "Horn On"}, {31, "Horn Off"}},
    {6, {32, "Stop Requested"}, {33, "Stop Request Cleared"}},
};

inline constexpr LegacyGauge kLegacyGauges[] = {
    {1, {50, "Battery Voltage"}, 118, 142, 0.5},   {1, {51, "Engine Speed"}, 7, 24, 0.4},
    {2, {52, "Oil Pressure"}, 35, 62, 1.0},        {2, {53, "Coolant Temperature"}, 150, 195, 1.5},
    {3, {54, "Air Pressure Front"}, 95, 122, 1.0}, {3, {55, "Air Pressure Rear"}, 95, 122, 1.0},
    {4, {56, "Fuel Level"}, 60, 62, 2.5},          {5, {57, "Inside Temperature"}, 64, 74, 2.0},
    {6, {58, "Alternator Current"}, 20, 140, 0.7},
};

/// What each node says to show that it lives; the sample database has it ignored.
inline constexpr LegacyMessage kLegacyAlive{1, "Node Alive"};

}  // namespace fenrik
