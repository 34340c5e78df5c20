#include "remote/RemoteReceiver.h"

#include "link/CMsgHandler.h"
#include "pipe/PipeBodies.h"
#include "platform/Boxes.h"
#include "platform/CodePage1252.h"
#include "platform/Error.h"
#include "remote/RemoteFollowers.h"
#include "remote/RemoteHost.h"
#include "remote/RemoteSender.h"
#include "remote/RemoteSession.h"
#include "remote/RemoteStream.h"
#include "remote/RemoteView.h"
#include "shared/ErrorReporter.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace fenrik {

namespace {

using enum PipeFrameType;

constexpr int kInvalidLength = 5;
constexpr int kTimedMessageMs = 2000;

QString Text(const std::string& bytes)
{
    return TextFrom1252({bytes.data(), qsizetype(bytes.size())});
}

}  // namespace

/// What to do with a frame of `type`, whose body has at least `least` bytes. A type that isn't here is dropped.
struct RemoteReceiver::Row {
    PipeFrameType type;
    std::size_t least;
    void (RemoteReceiver::*handle)(const std::string& body);
};

const RemoteReceiver::Row RemoteReceiver::kRows[] = {
    {frameEchoReply, 0, &RemoteReceiver::EchoReply},
    {frameAuthenticated, 4, &RemoteReceiver::Authenticated},
    {frameUserList, 0, &RemoteReceiver::TakeUserList},
    {framePiped, PipeNotice::kLeastSize, &RemoteReceiver::Piped},
    {framePipeBroken, PipeNotice::kLeastSize, &RemoteReceiver::PipeBroken},
    {frameChat, 0, &RemoteReceiver::Chat},
    {frameUserListChanged, 0, &RemoteReceiver::UserListChanged},
    {frameNetworkMessage, 0, &RemoteReceiver::NetworkMessage},
    {frameBussAccessReply, 1, &RemoteReceiver::AccessReply},
    {frameServerError, 0, &RemoteReceiver::ServerError},
    {frameFramingError, 0, &RemoteReceiver::FramingError},
};

RemoteReceiver::RemoteReceiver(const RemoteParts& parts, RemoteStream& stream, RemoteSession& session,
                               RemoteSender& sender, RemoteFollowers& followers, std::function<void()> rdDisconnect)
    : mParts(parts), mStream(stream), mSession(session), mSender(sender), mFollowers(followers),
      mRDdisconnect(std::move(rdDisconnect))
{
}

void RemoteReceiver::HandleDataArrival()
{
    if (mDepth >= kDeepest)
        return;
    const QScopedValueRollback depth(mDepth, mDepth + 1);
    Guarded(mParts.errors, "frmDiag.Winsock.DataArrival", [this] {
        while (HandleNext()) {
        }
    });
}

bool RemoteReceiver::HandleNext()
{
    PipeFrame frame;
    switch (FindFrame(frame)) {
    case PipeReader::Found::Frame:
        // The handler may wait for the very frame that came together with this one.
        if (mReader.Held() > 0 || mStream.BytesReceived() > 0)
            mStream.QueueDataArrival();
        Dispatch(frame);
        return true;
    case PipeReader::Found::BadPreamble:
        TellBadPreamble();
        return false;
    case PipeReader::Found::BadLength:
        DropAll();
        throw Error(kInvalidLength, QStringLiteral("The server has sent a frame with a length below 0"));
    default:
        return false;
    }
}

PipeReader::Found RemoteReceiver::FindFrame(PipeFrame& frame)
{
    auto found = mReader.Next(frame);
    while (found == PipeReader::Found::Nothing) {
        if (mReader.Append(mStream.GetData(mReader.Room())) == 0)
            break;
        found = mReader.Next(frame);
    }
    return found;
}

void RemoteReceiver::Dispatch(const PipeFrame& frame)
{
    const auto* row = std::ranges::find(kRows, frame.type, &Row::type);
    if (row == std::end(kRows))
        return;
    if (frame.body.size() < row->least) {
        DropAll();
        throw Error(kInvalidLength, QStringLiteral("The server has sent a frame of type %1 with a length of %2")
                                        .arg(int(frame.type))
                                        .arg(frame.body.size()));
    }
    (this->*row->handle)(frame.body);
}

void RemoteReceiver::DropAll()
{
    mReader.Clear();
    while (!mStream.GetData(PipeReader::kCapacity).empty()) {
    }
}

void RemoteReceiver::TellBadPreamble()
{
    const int preamble = mReader.Preamble();
    DropAll();
    mParts.boxes.MsgBox(QStringLiteral("Bad preamble value [%1]").arg(preamble), QMessageBox::Critical);
}

void RemoteReceiver::EchoReply(const std::string& body)
{
    mParts.windows.replyReceived(Text(body));
}

void RemoteReceiver::Authenticated(const std::string& body)
{
    const auto welcome = PipeWelcome::Decode(body).value();
    mSession.mClientID = welcome.clientID;
    mSession.mPipedTo = {};
    mFollowers.setRemoteState(RemoteStates::kLoggedOn);
    // The server's text takes the place of the state's own.
    mParts.view.ShowMessage(Text(welcome.text));
    mSender.sendUserListRequest();
}

void RemoteReceiver::TakeUserList(const std::string& body)
{
    // Also true of a list that is of no use, so that whoever waits for one goes on.
    mSession.userListReceived = true;
    mSession.remoteUsers.Clear();
    const auto records = PipeUserRecord::DecodeList(body);
    if (!records)
        return;
    for (const auto& record : *records)
        mSession.remoteUsers.Add(
            {Text(record.userName), QString::number(record.clientID), Text(record.clientIP), Text(record.userFlags)});
    mParts.windows.SetUserList(mSession.remoteUsers, mSession.mClientID);
}

void RemoteReceiver::Piped(const std::string& body)
{
    const auto notice = PipeNotice::Decode(body).value();
    const CUser* known = mSession.remoteUsers.Find(notice.clientID);
    mSession.mPipedTo = known ? *known : CUser{Text(notice.name), QString::number(notice.clientID), {}, {}};
    mSession.EnsureChat(mParts.chat);
    mSession.SetChatClients(mParts.chat);
    if (mSession.RemoteState < RemoteStates::kWaiting) {
        mFollowers.setRemoteState(RemoteStates::kWaiting);
        mParts.chat.ClearHistory();
    }
    mParts.host.ResetPanels();
    mSession.mExpectingBreak = false;
    mParts.view.AdjustFormCaption();
}

void RemoteReceiver::PipeBroken(const std::string& body)
{
    const auto notice = PipeNotice::Decode(body).value();
    if (mSession.mPipedTo.Id() != notice.clientID)
        return;
    mSession.mPipedTo = {};
    if (mParts.chat.Exists())
        mParts.chat.ClearRemoteClient();
    if (mSession.IsRemotePiped())
        mFollowers.setRemoteState(RemoteStates::kLoggedOn);
    if (mParts.host.NodeMounted())
        mParts.host.ForgetMountedNode();
    // The flag falls only with the next pipe.
    if (mSession.mExpectingBreak)
        return;
    mRDdisconnect();
    mParts.windows.ShowTimedMessage(Text(notice.name) + QStringLiteral(" has disconnected from you!"), kTimedMessageMs);
}

void RemoteReceiver::Chat(const std::string& body)
{
    mSession.EnsureChat(mParts.chat);
    mParts.chat.SetVisible(true);
    mParts.chat.SubmitChatMessage(Text(body), mSession.mPipedTo.UserName);
}

void RemoteReceiver::UserListChanged(const std::string&)
{
    mSession.userListReceived = false;
    mSender.sendUserListRequest();
}

void RemoteReceiver::NetworkMessage(const std::string& body)
{
    mParts.handler.ProcessSockEvent(QByteArray::fromStdString(body));
}

void RemoteReceiver::AccessReply(const std::string& body)
{
    const bool granted = PipeAccessReply::Decode(body).value().granted;
    // A denial of what was never granted changes nothing: the other user may still make up their mind.
    if (!granted && mSession.RemoteState >= RemoteStates::kGranted)
        mFollowers.setRemoteState(RemoteStates::kDenied);
    else if (granted && mSession.RemoteState >= RemoteStates::kWaiting)
        mFollowers.setRemoteState(RemoteStates::kGranted);
}

void RemoteReceiver::ServerError(const std::string& body)
{
    mParts.boxes.MsgBox(QStringLiteral("Server Error: ") + Text(body), QMessageBox::Critical);
}

void RemoteReceiver::FramingError(const std::string&)
{
    mParts.boxes.MsgBox(QStringLiteral("A framing error was received from the server."), QMessageBox::Critical);
}

}  // namespace fenrik
