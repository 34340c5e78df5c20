#pragma once

#include "remote/RemoteFixture.h"
#include "remote/RemoteFollowers.h"
#include "remote/RemoteHost.h"
#include "remote/RemoteReceiver.h"
#include "remote/RemoteSender.h"
#include "remote/RemoteSession.h"
#include "remote/RemoteSocket.h"
#include "remote/RemoteStateSwitch.h"

namespace fenrik {

/// A connection to a relay that stands already, without the procedure that makes one.
class PipeFixture : public RemoteFixture {
protected:
    PipeFixture()
    {
        followers.Add(stateSwitch);
        handler.setTargetPort(Transport::kRemote);
        QObject::connect(&socket, &RemoteSocket::DataArrival, &socket, [this] { receiver.HandleDataArrival(); });
        relay.onAccept = [this] { accepted = true; };
        socket.Connect(QStringLiteral("127.0.0.1"), relay.Port());
    }

    void SetUp() override
    {
        ASSERT_TRUE(Until([this] { return accepted && socket.IsConnected(); }));
    }

    /// Sends, and behind it an echo by which its end is known.
    void Receive(const std::string& bytes)
    {
        const auto replies = windows.replies.size();
        relay.SendBytes(bytes + EncodePipeFrame(frameEchoReply, "end"));
        ASSERT_TRUE(Until([&] { return windows.replies.size() > replies; }));
    }
    void Receive(PipeFrameType type, const std::string& body = {}) { Receive(EncodePipeFrame(type, body)); }

    /// Sends what makes the receiver drop everything behind it too, so nothing can follow.
    void ReceiveBad(const std::string& bytes)
    {
        relay.SendBytes(bytes);
        ASSERT_TRUE(Until([this] { return !errors.reports.empty() || !boxes.boxes.empty(); }));
    }

    /// The body of the next frame of `type` that the relay gets.
    std::string Sent(PipeFrameType type)
    {
        EXPECT_TRUE(Until([&] { return relay.Count(type) > 0; }));
        const auto found = std::ranges::find(relay.frames, type, &PipeFrame::type);
        return found == relay.frames.end() ? "none" : found->body;
    }

    void GoTo(std::int32_t state)
    {
        session.mPipedTo = {QStringLiteral("Bob"), QStringLiteral("8"), {}, {}};
        followers.setRemoteState(state);
    }

    static std::string Notice(int id, const std::string& name) { return PipeNotice{id, name, "text"}.Encode(); }

    FakeRelay relay;
    bool accepted = false;
    int disconnects = 0;
    RemoteSocket socket;
    RemoteSession session{handler};
    RemoteFollowers followers{errors};
    RemoteStateSwitch stateSwitch{session, view, chat, windows, errors};
    RemoteSender sender{socket, session, view, errors};
    RemoteReceiver receiver{Parts(), socket, session, sender, followers, [this] { ++disconnects; }};
};

}  // namespace fenrik
