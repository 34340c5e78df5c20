#pragma once

#include "relay/RelayClient.h"
#include "relay/RelayServer.h"

#include <gmock/gmock.h>
#include <memory>
#include <sstream>

namespace fenrik {

MATCHER_P(HasType, type, "")
{
    return arg.type == type;
}

MATCHER_P2(IsFrame, type, body, "")
{
    return arg.type == type && arg.body == body;
}

/// framePiped or framePipeBroken about a user.
MATCHER_P2(IsNotice, type, about, "")
{
    const auto notice = PipeNotice::Decode(arg.body);
    return arg.type == type && notice && notice->clientID == about;
}

/// A relay on a real socket, in a time that the test moves.
class RelayTest : public testing::Test {
protected:
    /// Must be called before the first client. Limits and consent are those set until then.
    void Start()
    {
        server.emplace(std::vector{Address::Parse("127.0.0.1:0")}, limits, consent, log, [this] { return now; });
        address = server->Listening().front().Text();
    }
    RelayClient Connect(int receiveBuffer = 0)
    {
        if (!server)
            Start();
        return {address, [this] { server->Turn(10); }, receiveBuffer};
    }
    RelayClient LogOn(std::string_view name)
    {
        auto client = Connect();
        client.LogOn(name);
        return client;
    }
    /// `opener` gets a pipe to `other`; the frames that this brings are taken.
    void Pipe(RelayClient& opener, RelayClient& other)
    {
        opener.Send(PipeFrameType::framePipeTo, PipeNumber(other.Id()));
        EXPECT_THAT(opener.ReadAll(), testing::Contains(IsNotice(PipeFrameType::framePiped, other.Id())));
        EXPECT_THAT(other.ReadAll(), testing::Contains(IsNotice(PipeFrameType::framePiped, opener.Id())));
    }
    /// As Pipe, and `other` lets `opener` send.
    void PipeWithAccess(RelayClient& opener, RelayClient& other)
    {
        Pipe(opener, other);
        other.Send(PipeFrameType::frameBussAccessReply, "\x01");
        EXPECT_THAT(other.ReadAll(), testing::IsEmpty());
        EXPECT_THAT(opener.ReadAll(), testing::ElementsAre(IsFrame(PipeFrameType::frameBussAccessReply, "\x01")));
    }
    void TurnUntil(const std::function<bool()>& done)
    {
        for (int i = 0; i < 1000 && !done(); ++i)
            server->Turn(10);
        EXPECT_TRUE(done());
    }

    double now = 1000;
    RelayLimits limits{.longestBody = 4096};
    Consent consent = Consent::Ask;
    std::ostringstream text;
    RelayLog log{text, RelayLog::Stamp::None};
    std::optional<RelayServer> server;
    std::string address;
};

}  // namespace fenrik
