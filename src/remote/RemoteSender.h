#pragma once

#include "pipe/PipeFrame.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace fenrik {

class ErrorReporter;
class RemoteSession;
class RemoteStream;
class RemoteStateView;
struct RemoteLogon;

/// Everything that this tool says to the relay. Errors are reported, never thrown; a frame that fails is not sent.
class RemoteSender {
public:
    RemoteSender(RemoteStream& stream, RemoteSession& session, RemoteStateView& view, ErrorReporter& errors);

    /// `value` with blanks up to `length` bytes, or its first `length`. Empty after an error (a negative length).
    [[nodiscard]] QByteArray padTo(const QByteArray& value, int length);

    void sendFrame(PipeFrameType type, const QByteArray& data);
    void sendFrameLng(PipeFrameType type, std::int32_t data);

    void sendAuthentication(const RemoteLogon& profile);
    void sendUserListRequest();

    /// Only while there is no pipe, or that very one. The pipe's user is set before the relay has answered.
    void sendPipeToRequest(int clientID, const QString& clientName);
    void sendBreakPipeRequest();
    void sendLogoff();

    /// Not asked for anywhere in the tool: hooks of the protocol.
    void sendFenrikBussAccessRequest(int clientID);
    void sendServerInformationRequest();

    void sendChatMessage(const QString& text);
    void sendEchoServer(const QString& text);
    void sendEchoClient(const QString& text);

private:
    void Send(const char* where, PipeFrameType type, std::string_view body);

    RemoteStream& mStream;
    RemoteSession& mSession;
    RemoteStateView& mView;
    ErrorReporter& mErrors;
};

}  // namespace fenrik
