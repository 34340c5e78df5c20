#include "remote/RemoteSender.h"

#include "pipe/PipeBodies.h"
#include "platform/CodePage1252.h"
#include "platform/Error.h"
#include "remote/RemoteSession.h"
#include "remote/RemoteStream.h"
#include "remote/RemoteView.h"
#include "shared/ErrorReporter.h"

namespace fenrik {

namespace {

using enum PipeFrameType;

constexpr int kInvalidArgument = 5;

std::string_view View(const QByteArray& bytes)
{
    return {bytes.data(), std::size_t(bytes.size())};
}

}  // namespace

RemoteSender::RemoteSender(RemoteStream& stream, RemoteSession& session, RemoteStateView& view, ErrorReporter& errors)
    : mStream(stream), mSession(session), mView(view), mErrors(errors)
{
}

QByteArray RemoteSender::padTo(const QByteArray& value, int length)
{
    QByteArray padded;
    Guarded(mErrors, "frmDiag.padTo", [&] {
        if (length < 0)
            throw Error(kInvalidArgument, QStringLiteral("Invalid procedure call or argument"));
        padded = QByteArray::fromStdString(PipeField(View(value), std::size_t(length)));
    });
    return padded;
}

void RemoteSender::Send(const char* where, PipeFrameType type, std::string_view body)
{
    Guarded(mErrors, where, [&] {
        if (body.size() > PipeFrame::kLongestBody)
            throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow"));
        // Preamble, type, length and body are separate writes, the last one only if there is a body.
        const std::string frame = EncodePipeFrame(type, body);
        const std::string_view header = std::string_view(frame).substr(0, PipeFrame::kHeaderSize);
        if (body.empty())
            mStream.SendData({header.substr(0, 2), header.substr(2, 2), header.substr(4, 2)});
        else
            mStream.SendData({header.substr(0, 2), header.substr(2, 2), header.substr(4, 2), body});
    });
}

void RemoteSender::sendFrame(PipeFrameType type, const QByteArray& data)
{
    Send("frmDiag.SendFrame", type, View(data));
}

void RemoteSender::sendFrameLng(PipeFrameType type, std::int32_t data)
{
    Send("frmDiag.sendFrameLng", type, PipeNumber(data));
}

void RemoteSender::sendAuthentication(const RemoteLogon& profile)
{
    mView.ShowMessage(QStringLiteral("Authenticating ..."));
    PipeLogon logon;
    logon.logonID = BytesIn1252(profile.LogonID).toStdString();
    logon.userName = BytesIn1252(profile.UserName + QStringLiteral(" [Diag Client]")).toStdString();
    Send("frmDiag.SendFrame", frameAuthenticate, logon.Encode());
}

void RemoteSender::sendUserListRequest()
{
    sendFrame(frameUserListRequest, {});
}

void RemoteSender::sendPipeToRequest(int clientID, const QString& clientName)
{
    if (!mSession.mPipedTo.IsNobody() && mSession.mPipedTo.Id() != clientID)
        return;
    sendFrameLng(framePipeTo, clientID);
    mSession.mPipedTo = {clientName, QString::number(clientID), {}, {}};
}

void RemoteSender::sendBreakPipeRequest()
{
    mSession.mExpectingBreak = true;
    sendFrameLng(frameBreakPipe, mSession.mPipedTo.Id());
}

void RemoteSender::sendLogoff()
{
    sendFrameLng(frameLogoff, mSession.mClientID);
}

void RemoteSender::sendFenrikBussAccessRequest(int clientID)
{
    sendFrameLng(frameBussAccessRequest, clientID);
}

void RemoteSender::sendServerInformationRequest()
{
    sendFrame(frameServerInfoRequest, {});
}

void RemoteSender::sendChatMessage(const QString& text)
{
    sendFrame(frameChat, BytesIn1252(text));
}

void RemoteSender::sendEchoServer(const QString& text)
{
    sendFrame(frameEchoServer, BytesIn1252(text));
}

void RemoteSender::sendEchoClient(const QString& text)
{
    sendFrame(frameEchoClient, BytesIn1252(text));
}

}  // namespace fenrik
