#include "simulator/NodeTypes.h"

#include <algorithm>
#include <iterator>

namespace fenrik {

namespace {

constexpr NodeType kNodeTypes[] = {
    {0, "Brontes", 16, 26, 1},        {1, "Lumen", 0, 0, 0},         {2, "Petite 4x12", 4, 12, 2},
    {3, "Bridge", 0, 0, 0},           {4, "Lumen", 0, 0, 0},         {5, "Petite 16 Input", 16, 0, 2},
    {6, "Comfort Module", 3, 8, 1},   {7, "Lumen III", 0, 0, 0},     {8, "QUAD Controller", 0, 0, 0},
    {9, "Brontes04", 16, 26, 1},      {10, "Petite 8-16", 8, 16, 1}, {11, "Trip Recorder", 0, 0, 0},
    {12, "Lumen III Touch", 0, 0, 0}, {15, "Lumen IV", 0, 0, 0},     {16, "Brontes-HC", 16, 32, 1},
    {255, "Brontes", 16, 26, 1},
};

}  // namespace

const NodeType* FindNodeType(int number)
{
    const auto* row = std::ranges::find(kNodeTypes, number, &NodeType::number);
    return row == std::end(kNodeTypes) ? nullptr : row;
}

}  // namespace fenrik
