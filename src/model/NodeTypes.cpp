#include "model/NodeTypes.h"

#include "model/PulseWidthOutputs.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace fenrik::NodeTypes {

namespace {

constexpr bool T = true;
constexpr bool F = false;
constexpr std::int16_t kAsBefore = NodeType::kAsBefore;

// clang-format off
constexpr MemoryMap kNoMap{};

//                                    Node    Input   Spare   Output  Output  Rela-   In-     its     Switch  On      Three-  its     Delay
//                                    name    names   names   names   records tions   Command stride  type    state   way     stride  table
constexpr MemoryMap kBrontesMap{      0x1760, 0x1781, 0x1980, 0x1A01, 0x0081, 0x0088, 0x0D80, 2,      0x0E01, 0x0E00, 0x0E02, 3,      0x3400};
constexpr MemoryMap kPetite4x12Map{   0x0C60, 0x0C80, 0,      0x0D00, 0x0081, 0x0089, 0x0980, 7,      0x0982, 0x0983, 0x0984, 7,      0x2500};
constexpr MemoryMap kPetite16InMap{   0x0C60, 0x0C80, 0,      0,      0,      0,      0x0980, 7,      0x0982, 0x0983, 0x0984, 7,      0};

constexpr const char* kNone = "";
constexpr const char* kLumenIn = "The Lumen node does not have any physical inputs.";
constexpr const char* kLumenOut = "The Lumen node does not have any physical outputs.";
constexpr const char* kBridgeIn = "The Bridge node does not have any physical inputs.";
constexpr const char* kBridgeOut = "The Bridge node does not have any physical outputs.";
constexpr const char* kPetite16Out = "The Petite 16x0 node does not have any physical outputs.";
// Also those of the types 12 and 15, whatever their own names are.
constexpr const char* kLumen3In = "The Lumen III node does not have any physical inputs.";
constexpr const char* kLumen3Out = "The Lumen III node does not have any physical outputs.";
constexpr const char* kNotAvailable = "This information is not available to Diagnostics at this time.";
constexpr const char* kQuadOut = "The QUAD Controller node does not have any physical outputs.";
constexpr const char* kUnknownIn = "Inputs not defined for Unknown Node Type.";
constexpr const char* kUnknownOut = "Outputs not defined for Unknown Node Type.";

constexpr NodeType kRows[] = {
//   type      name               in  out  rsv bits       refr del vfl  input label    output label   map
    {0,        "Brontes",         16, 26,  4,  1,         T,   T,  F,   kNone,         kNone,         &kBrontesMap},
    {1,        "Lumen",           0,  0,   0,  0,         F,   F,  F,   kLumenIn,      kLumenOut,     &kNoMap},
    {2,        "Petite 4x12",     4,  12,  2,  2,         T,   T,  F,   kNone,         kNone,         &kPetite4x12Map},
    {3,        "Bridge",          0,  0,   0,  0,         F,   F,  F,   kBridgeIn,     kBridgeOut,    &kNoMap},
    {4,        "Lumen",           0,  0,   0,  0,         F,   F,  F,   kLumenIn,      kLumenOut,     &kNoMap},
    {5,        "Petite 16 Input", 16, 0,   0,  2,         T,   F,  F,   kNone,         kPetite16Out,  &kPetite16InMap},
    {6,        "Comfort Module",  3,  8,   3,  1,         T,   F,  T,   kNone,         kNone,         &kNoMap},
    {7,        "Lumen III",       0,  0,   0,  0,         F,   F,  F,   kLumen3In,     kLumen3Out,    &kNoMap},
    {8,        "QUAD Controller", 0,  0,   0,  kAsBefore, F,   F,  F,   kNotAvailable, kQuadOut,      &kNoMap},
    {9,        "Brontes04",       16, 26,  4,  1,         T,   T,  F,   kNone,         kNone,         &kBrontesMap},
    {10,       "Petite 8-16",     8,  16,  3,  1,         T,   T,  F,   kNone,         kNone,         &kNoMap},
    {11,       "Trip Recorder",   0,  0,   0,  kAsBefore, F,   F,  F,   kNotAvailable, kNotAvailable, &kNoMap},
    {12,       "Lumen III Touch", 0,  0,   0,  0,         F,   F,  F,   kLumen3In,     kLumen3Out,    &kNoMap},
    {15,       "Lumen IV",        0,  0,   0,  0,         F,   F,  F,   kLumen3In,     kLumen3Out,    &kNoMap},
    {16,       "Brontes-HC",      16, 32,  5,  1,         T,   T,  F,   kNone,         kNone,         &kNoMap},
    {255,      "Brontes",         16, 26,  4,  1,         T,   T,  F,   kNone,         kNone,         &kBrontesMap},
    {kUnknown, "Unknown Type",    0,  0,   0,  0,         F,   F,  F,   kUnknownIn,    kUnknownOut,   &kNoMap},
};

constexpr const char* kBrontesInputs[] = {"34", "35", "17", "18", "19", "20", "8",  "21",
                                          "33", "16", "6",  "2",  "9",  "10", "22", "23"};
constexpr const char* kPetite4x12Inputs[] = {"3", "2", "10", "4"};
constexpr const char* kPetite16Inputs[] = {"B1", "B2",  "B3",  "B4",  "B5", "B6", "B7", "B8",
                                           "B9", "B10", "B11", "B12", "A1", "A2", "A3", "A4"};
constexpr const char* kComfortInputs[] = {"J3-12", "J3-11", "J3-5"};
constexpr const char* kBrontesHcInputs[] = {"E1", "E2",  "E3",  "E4",  "E5",  "E6",  "E7",  "E8",
                                            "E9", "E10", "E11", "E12", "E13", "E14", "E15", "E16"};

constexpr const char* kBrontesOutputs[] = {"R", "S", "F", "T", "G", "U", "H", "V", "L", "B", "M", "C", "N",
                                           "D", "O", "P", "Q", "E", "A", "J", "W", "X", "K", "7", "14", "11"};
constexpr const char* kPetite4x12Outputs[] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"};
constexpr const char* kComfortOutputs[] = {"J1-1",  "J1-2",  "J3-13", "J3-14", "J3-15", "J3-16", "J3-17", "J3-18"};
// Not in the order of the pins: the last four lie between the others.
constexpr const char* kBrontesHcOutputs[] = {"A1", "A2", "A3", "A4", "A5", "A6", "A7", "A8",
                                             "B1", "B2", "B3", "B4", "B5", "B6", "B7", "B8",
                                             "C1", "C2", "C3", "C6", "C7", "C8",
                                             "D1", "D2", "D3", "D6", "D7", "D8",
                                             "C4", "C5", "D4", "D5"};
// clang-format on

struct PinRow {
    int typeID;
    std::span<const char* const> inputs;
    std::span<const char* const> outputs;
};

constexpr PinRow kPins[] = {
    {0, kBrontesInputs, kBrontesOutputs},
    {9, kBrontesInputs, kBrontesOutputs},
    {255, kBrontesInputs, kBrontesOutputs},
    {2, kPetite4x12Inputs, kPetite4x12Outputs},
    {5, kPetite16Inputs, {}},
    {6, kComfortInputs, kComfortOutputs},
    {16, kBrontesHcInputs, kBrontesHcOutputs},
};

QString Pin(std::span<const char* const> pins, int number)
{
    return number >= 1 && number <= int(pins.size()) ? QString::fromLatin1(pins[std::size_t(number - 1)]) : QString();
}

const PinRow& Pins(int typeID)
{
    static constexpr PinRow kNoPins{kUnknown, {}, {}};
    const auto row = std::find_if(std::begin(kPins), std::end(kPins),
                                  [typeID](const PinRow& pins) { return pins.typeID == typeID; });
    return row == std::end(kPins) ? kNoPins : *row;
}

}  // namespace

const NodeType& Row(int typeID)
{
    const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                  [typeID](const NodeType& type) { return type.typeID == typeID; });
    return row == std::end(kRows) ? *std::prev(std::end(kRows)) : *row;
}

bool IsBrontes(int typeID)
{
    return typeID == 0 || typeID == 9 || typeID == 255;
}

QString InputPin(int typeID, int number)
{
    return Pin(Pins(typeID).inputs, number);
}

QString OutputPin(int typeID, int number)
{
    return Pin(Pins(typeID).outputs, number);
}

std::uint8_t PwmKind(int typeID, int output)
{
    // 255 is the same model as 0 in every other respect, and yet its outputs count as those of a newer node.
    if (typeID != 0 && typeID != 9)
        return 2;
    return std::find(kPulseWidthOutputs.begin(), kPulseWidthOutputs.end(), output) != kPulseWidthOutputs.end() ? 1 : 0;
}

}  // namespace fenrik::NodeTypes
