#pragma once

#include "remote/CUser.h"

#include <cstdint>

namespace fenrik {

class CMsgHandler;
class RemoteChat;

/// What is known of the one remote connection: written by those who handle its frames, read by everybody.
class RemoteSession {
public:
    explicit RemoteSession(const CMsgHandler& handler) : mHandler(handler) {}

    std::int32_t RemoteState = 0;   ///< one of RemoteStates; 0 before the first connection
    std::int32_t mClientID = 0;     ///< this tool's id, by the relay
    CUser mPipedTo;                 ///< the other end of the pipe, or whom a pipe was asked for; else nobody
    UserList remoteUsers;           ///< the last list, this tool included
    bool userListReceived = false;  ///< since the connection, or since the relay said that the list has changed
    bool mExpectingBreak = false;   ///< this tool ends the pipe, so its end is no news

    /// The relay is the transport, and its connection has come that far.
    [[nodiscard]] bool IsRemoteConnected() const;  ///< PortOpen
    [[nodiscard]] bool IsRemotePiped() const;      ///< PortOpenForRx
    [[nodiscard]] bool IsRemoteGranted() const;    ///< PortOpenForTx

    /// What the main window's caption says of the pipe; empty if there is none.
    [[nodiscard]] QString PipeCaption() const;

    /// Tells the chat window who its two clients are; Ensure makes the window first if it isn't there.
    void SetChatClients(RemoteChat& chat) const;
    void EnsureChat(RemoteChat& chat) const;

private:
    [[nodiscard]] bool Reached(std::int32_t state) const;

    const CMsgHandler& mHandler;
};

}  // namespace fenrik
