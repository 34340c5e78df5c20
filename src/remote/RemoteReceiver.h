#pragma once

#include "pipe/PipeReader.h"
#include "remote/RemoteParts.h"

#include <cstdint>
#include <functional>
#include <string>

namespace fenrik {

class RemoteFollowers;
class RemoteSender;
class RemoteSession;
class RemoteStream;

/// Takes the relay's frames off the socket, one after the other, and does what each says. A frame's handler may show
/// a box or wait: the frames behind it are handled meanwhile, so each handler has read its frame before it begins.
///
/// A frame that can't be one (a length below 0, or too short for its type) is reported, and all that has arrived is
/// dropped with it; so it is after a bad preamble. The connection stays.
class RemoteReceiver {
public:
    /// Handlers that may stand on top of each other, each in its box. Frames beyond wait, and the relay with them.
    static constexpr int kDeepest = 16;

    RemoteReceiver(const RemoteParts& parts, RemoteStream& stream, RemoteSession& session, RemoteSender& sender,
                   RemoteFollowers& followers, std::function<void()> rdDisconnect);

    void HandleDataArrival();

    /// Forgets what a connection has left behind.
    void Clear() { mReader.Clear(); }

private:
    struct Row;
    static const Row kRows[];

    bool HandleNext();
    [[nodiscard]] PipeReader::Found FindFrame(PipeFrame& frame);
    void Dispatch(const PipeFrame& frame);
    void DropAll();

    void TellBadPreamble();
    void EchoReply(const std::string& body);
    void Authenticated(const std::string& body);
    void TakeUserList(const std::string& body);
    void Piped(const std::string& body);
    void PipeBroken(const std::string& body);
    void Chat(const std::string& body);
    void UserListChanged(const std::string& body);
    void NetworkMessage(const std::string& body);
    void AccessReply(const std::string& body);
    void ServerError(const std::string& body);
    void FramingError(const std::string& body);

    RemoteParts mParts;
    RemoteStream& mStream;
    RemoteSession& mSession;
    RemoteSender& mSender;
    RemoteFollowers& mFollowers;
    std::function<void()> mRDdisconnect;
    PipeReader mReader;
    int mDepth = 0;
};

}  // namespace fenrik
