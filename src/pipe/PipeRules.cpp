#include "pipe/PipeRules.h"

#include "pipe/PipeBodies.h"

#include <algorithm>

namespace fenrik {

namespace {

using enum PipeDirection;
using enum PipeFrameType;

constexpr std::size_t kAny = PipeFrame::kLongestBody;
constexpr std::size_t kMessage = 6;  // a message of the vehicle's network

constexpr PipeRule kRules[] = {
    {ToServer, frameEchoServer, "frameEchoServer", 0, kAny, 1, false},
    {ToServer, frameEchoClient, "frameEchoClient", 0, kAny, 1, true},
    {ToServer, frameEchoReply, "frameEchoReply", 0, kAny, 1, true},
    {ToServer, frameAuthenticate, "frameAuthenticate", PipeLogon::kSize, PipeLogon::kSize, 1, false},
    {ToServer, frameLogoff, "frameLogoff", 4, 4, 1, false},
    {ToServer, frameUserListRequest, "frameUserListRequest", 0, 0, 1, false},
    {ToServer, framePipeTo, "framePipeTo", 4, 4, 1, false},
    {ToServer, frameBreakPipe, "frameBreakPipe", 4, 4, 1, false},
    {ToServer, frameChat, "frameChat", 0, kAny, 1, true},
    {ToServer, frameNetworkMessage, "frameNetworkMessage", kMessage, kMessage, 1, true},
    {ToServer, frameBussAccessRequest, "frameBussAccessRequest", 4, 4, 1, true},
    {ToServer, frameBussAccessReply, "frameBussAccessReply", 1, kAny, 1, true},
    {ToServer, frameServerInfoRequest, "frameServerInfoRequest", 0, 0, 1, false},

    {ToClient, frameEchoClient, "frameEchoClient", 0, kAny, 1, true},
    {ToClient, frameEchoReply, "frameEchoReply", 0, kAny, 1, false},
    {ToClient, frameAuthenticated, "frameAuthenticated", 4, kAny, 1, false},
    {ToClient, frameUserList, "frameUserList", 0, kAny, PipeUserRecord::kSize, false},
    {ToClient, framePiped, "framePiped", PipeNotice::kLeastSize, kAny, 1, false},
    {ToClient, framePipeBroken, "framePipeBroken", PipeNotice::kLeastSize, kAny, 1, false},
    {ToClient, frameChat, "frameChat", 0, kAny, 1, true},
    {ToClient, frameUserListChanged, "frameUserListChanged", 0, kAny, 1, false},
    {ToClient, frameNetworkMessage, "frameNetworkMessage", kMessage, kMessage, 1, true},
    {ToClient, frameBussAccessRequest, "frameBussAccessRequest", 0, 0, 1, true},
    {ToClient, frameBussAccessReply, "frameBussAccessReply", 1, kAny, 1, true},
    {ToClient, frameReserved53, "frameReserved53", 0, 0, 1, false},
    {ToClient, frameServerInfo, "frameServerInfo", 0, kAny, 1, false},
    {ToClient, frameServerError, "frameServerError", 0, kAny, 1, false},
    {ToClient, frameFramingError, "frameFramingError", 0, kAny, 1, false},
};

}  // namespace

const PipeRule* FindPipeRule(PipeDirection direction, PipeFrameType type)
{
    const auto* rule = std::ranges::find_if(
        kRules, [&](const PipeRule& row) { return row.direction == direction && row.type == type; });
    return rule == std::end(kRules) ? nullptr : rule;
}

std::string PipeTypeName(PipeFrameType type)
{
    const auto* rule = std::ranges::find(kRules, type, &PipeRule::type);
    return rule == std::end(kRules) ? "frame " + std::to_string(int(type)) : rule->name;
}

}  // namespace fenrik
