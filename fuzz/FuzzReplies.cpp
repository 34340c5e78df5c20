// A node that answers a download with any bytes at all: the first byte chooses the node's type and road, the rest
// comes in while the tool waits. A second look decodes the same bytes as if they had been a whole reply.

#include "FuzzLink.h"
#include "model/NodeReplies.h"

namespace {

void Decode(std::span<const std::uint8_t> reply)
{
    fenrik::CNode node;
    node.setTypeID(2);
    (void)fenrik::NodeReplies::DecodeNodeInfo(reply);
    (void)fenrik::NodeReplies::DecodeString(reply);
    (void)fenrik::NodeReplies::DecodeRelationship(reply);
    (void)fenrik::NodeReplies::DecodeCommandSets(reply);
    (void)fenrik::NodeReplies::DecodeRelationshipLevel(reply);
    (void)fenrik::NodeReplies::DecodeFlashPattern(reply);
    (void)fenrik::NodeReplies::DecodeSleepSettings(reply);
    (void)fenrik::NodeReplies::IsAnalogInput(reply);
    (void)fenrik::NodeReplies::AnalogThresholdList(reply);
    (void)fenrik::NodeReplies::IsUnconfiguredInput(reply);
    fenrik::NodeReplies::ApplyDigitalInput(reply, node.CDigitalInputs()[1]);
    fenrik::NodeReplies::ApplyOutput(reply, node.COutputs()[1]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const auto rest = std::span(data, size).subspan(1);
    Decode(rest);

    fenrik::FuzzLink link(rest);
    constexpr std::int16_t kTypes[] = {0, 2, 5, 6, 10, 16, 255, 254};
    link.Node().setTypeID(kTypes[data[0] & 7]);
    link.Node().setIProtocol(data[0] >> 3 & 3);
    std::uint8_t nodes = 0;
    link.Node().ReadNode(QString(), nodes, (data[0] & 0x80) != 0);
    return 0;
}
