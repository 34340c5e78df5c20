#include "simulator/ForceOrder.h"

#include "simulator/SimNode.h"

#include <algorithm>
#include <iterator>

namespace fenrik {

namespace {

constexpr std::uint16_t kForceByChannel = 985;
constexpr std::uint16_t kForceNewer = 987;
constexpr int kEarlyMark = 0x4000;
constexpr int kFull = 200;  // halves of a percent
constexpr int kHalvesInTen = 20;
constexpr int kChannelOutputs[] = {1, 2, 15, 16};

int NodeIn(int data)
{
    const int number = data & 15;
    return number == 0 ? 16 : number;
}

ForceOrder ReadChannel(const Frame& frame)
{
    const int channel = frame.data >> 8;
    const bool exists = channel >= 1 && channel <= int(std::size(kChannelOutputs));
    ForceOrder order{ForceOrder::Form::Channel, NodeIn(frame.data), exists ? kChannelOutputs[channel - 1] : 0, {}};
    if (frame.state)
        order.halves = std::min((frame.data >> 4 & 15) * kHalvesInTen + (frame.extended ? 1 : 0), kFull);
    return order;
}

ForceOrder ReadNewer(const Frame& frame)
{
    const int output = frame.data >> 4 & 31;
    ForceOrder order{ForceOrder::Form::Newer, NodeIn(frame.data), output == 0 ? 32 : output, {}};
    if (frame.state)
        order.halves = std::min((frame.data >> 9) * 2 + (frame.extended ? 1 : 0), kFull);
    return order;
}

ForceOrder ReadEarly(const Frame& frame)
{
    const int tens = frame.data >> 4 & 15;
    ForceOrder order{ForceOrder::Form::Early, 0, frame.data & 15, {}};
    if (tens > 0)
        order.halves = std::min(tens * kHalvesInTen, kFull);
    return order;
}

}  // namespace

std::optional<ForceOrder> ForceOrder::Read(const Frame& frame)
{
    std::optional<ForceOrder> order;
    if (frame.command == kForceNewer)
        order = ReadNewer(frame);
    else if (frame.command == kForceByChannel)
        order = frame.data & kEarlyMark ? ReadEarly(frame) : ReadChannel(frame);
    if (order && order->output == 0)
        return std::nullopt;
    return order;
}

ForceOrder::Form ForceOrder::FormOf(const NodeSetup& setup)
{
    if (setup.type == 0 || setup.type == 9)
        return Form::Channel;
    return setup.type == 2 && setup.early ? Form::Early : Form::Newer;
}

std::string ForceOrder::Words() const
{
    if (!halves)
        return "released";
    return "forced to " + std::to_string(*halves / 2) + (*halves % 2 != 0 ? ".5%" : "%");
}

}  // namespace fenrik
