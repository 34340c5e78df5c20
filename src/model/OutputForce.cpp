#include "model/OutputForce.h"

#include "link/CMsgHandler.h"
#include "model/CNode.h"
#include "model/CSystem.h"
#include "model/Fixed4.h"
#include "model/NodeLink.h"
#include "model/PulseWidthOutputs.h"
#include "platform/Error.h"

#include <cmath>

namespace fenrik {

namespace {

constexpr int kForceByChannel = 985;
constexpr int kForceNewer = 987;
constexpr int kFourBits = 15;
constexpr int kOlderMark = 0x4000;
constexpr int kFull = 100;

ForceTarget::Way WayOf(CNode& node)
{
    if (node.typeID() == 0 || node.typeID() == 9)
        return ForceTarget::Way::Brontes;
    return node.NewDPWMCCompatible() ? ForceTarget::Way::Newer : ForceTarget::Way::Older;
}

/// The system's output of these numbers, if it is still the same one.
bool StillThere(const CSystem* system, int node, int output, const COutput* wanted)
{
    const CNode* found = system ? system->Node(node) : nullptr;
    return found && found->COutputs().Find(output) == wanted;
}

}  // namespace

ForceLevel ForceLevel::FromPercent(float value)
{
    if (std::isnan(value))
        throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow"));
    if (value < 0)
        return {true, 0, 0};
    if (value >= kFull)
        return {false, kFull, 0};
    const double exact = value;
    const int percent = int(std::floor(exact + 0.25));
    const double rest = exact - std::floor(exact);
    const bool half = rest >= 0.25 && rest < 0.75;
    return {false, percent, percent < kFull && half ? 1 : 0};
}

int ForceTarget::Channel() const
{
    if (way != Way::Brontes)
        return output;
    for (std::size_t i = 0; i < kPulseWidthOutputs.size(); ++i) {
        if (kPulseWidthOutputs[i] == output)
            return int(i) + 1;
    }
    return 0;
}

CMessage ForceTarget::Message(const ForceLevel& level) const
{
    CMessage message;
    message.EchoSend = true;
    message.Command = way == Way::Newer ? kForceNewer : kForceByChannel;
    if (way == Way::Older) {
        message.data = (output & kFourBits) | (level.percent / 10) * 16 | Channel() * 256 | kOlderMark;
        return message;
    }
    message.data = (node & kFourBits) | Channel() * (way == Way::Brontes ? 256 : 16);
    if (level.release)
        return message;
    message.data |= way == Way::Brontes ? int(Fixed4::RoundedQuotient(level.percent * 16, 10)) : level.percent * 512;
    message.State = 1;
    message.extended = std::uint8_t(level.half);
    return message;
}

ForceLevel ForceTarget::Understood(const ForceLevel& level) const
{
    if (way != Way::Older)
        return level;
    if (level.percent < 1)
        return {true, 0, 0};
    return {false, level.percent / 10 * 10, level.half};
}

void ForceOutput(COutput& output, float percent)
{
    const ForceLevel level = ForceLevel::FromPercent(percent);
    CNode& node = *output.Parent();
    const CSystem* system = node.Parent();
    const NodeLink* link = node.Link();
    const int nodeNumber = node.number();
    const int number = output.number();

    // Asking for the version and sending both wait, and what happens meanwhile may rebuild the node's outputs.
    const ForceTarget target{WayOf(node), nodeNumber, number};
    if (target.Channel() == 0)
        return;
    CMessage message = target.Message(level);
    if (link) {
        link->handler.SendMessage(message);
        if (!StillThere(system, nodeNumber, number, &output))
            return;
    }
    const ForceLevel taken = target.Understood(level);
    output.TakeForce(!taken.release, std::uint8_t(taken.release ? 0 : (taken.percent * 2) | taken.half));
}

}  // namespace fenrik
