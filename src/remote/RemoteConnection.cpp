#include "remote/RemoteConnection.h"

#include "link/CMsgHandler.h"
#include "platform/Boxes.h"
#include "shared/Clock.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"

#include <QScopedValueRollback>

namespace fenrik {

namespace {

constexpr int kUiConnected = 1;
constexpr int kUiDisconnected = 2;
constexpr int kLimitSeconds = 2;
constexpr const char* kCannotConnect = "Cannot connect to Remote Diagnostics:\n";

/// Limits are kept in whole seconds, so a wait can be up to a second shorter than it says.
Moment Limit(const Clock& clock)
{
    constexpr std::int64_t kSecond = 1000;
    return Moment{clock.Now().milliseconds / kSecond * kSecond}.Plus(kLimitSeconds);
}

}  // namespace

RemoteConnection::RemoteConnection(const RemoteParts& parts)
    : mParts(parts), mSession(parts.handler), mFollowers(parts.errors),
      mSwitch(mSession, parts.view, parts.chat, parts.windows, parts.errors),
      mSender(mSocket, mSession, parts.view, parts.errors),
      mReceiver(parts, mSocket, mSession, mSender, mFollowers, [this] { RDdisconnect(); })
{
    mFollowers.Add(mSwitch);
    QObject::connect(&mSocket, &RemoteSocket::Connected, &mSocket, [this] { HandleConnect(); });
    QObject::connect(&mSocket, &RemoteSocket::DataArrival, &mSocket, [this] { mReceiver.HandleDataArrival(); });
    QObject::connect(&mSocket, &RemoteSocket::Closed, &mSocket, [this] { HandleClose(); });
    QObject::connect(&mSocket, &RemoteSocket::Failed, &mSocket,
                     [this](int number, const QString& description) { HandleError(number, description); });
}

void RemoteConnection::RDconnect()
{
    if (mConnecting)
        return;
    const QScopedValueRollback connecting(mConnecting, true);
    Guarded(mParts.errors, "frmDiag.RDConnect", [this] {
        if (!EnsureProfile())
            return;
        Start(*mParts.host.CurrentProfile());
        // A pipe that came while a box was open counts as well, whatever the box said.
        const bool piped = ReachPipe() || IsRemotePiped();
        if (piped)
            mParts.handler.Reset(Transport::kRemote);
        mParts.view.ShowWaitCursor(false);
        if (!piped)
            RDdisconnect();
    });
}

bool RemoteConnection::EnsureProfile()
{
    if (mParts.host.CurrentProfile())
        return true;
    const auto answer = mParts.boxes.MsgBox(
        QStringLiteral("You have not selected a Remote Diagnostics User Profile.  On the Network Options screen, make "
                       "sure the 'Enable Remote Diagnostics' option is checked, and then select a User Profile.  You "
                       "may have to create one if none exist.\n\nWould you like to choose a User Profile now?"),
        QMessageBox::Information, QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes)
        mParts.host.OpenPortOptions();
    return mParts.host.CurrentProfile().has_value();
}

void RemoteConnection::Start(const RemoteLogon& profile)
{
    if (mSocket.IsOpen())
        HandleClose();
    mProfile = profile;
    mParts.windows.EnsureUsersWindow();
    mParts.view.ShowWaitCursor(true);
    mParts.view.ShowMessage(QStringLiteral("Connecting to %1 ...").arg(profile.ServerName));
    mParts.handler.Reset(Transport::kRemote);
    mSocket.Connect(profile.ServerName, profile.ServerPort);
}

bool RemoteConnection::ReachPipe()
{
    RemoteWindows::Choice choice;
    if (!WaitForLogon() || !WaitForUserList() || !FindSomebody() || !ChooseUser(choice))
        return false;
    return IsRemotePiped() || WaitForPipe(choice);
}

bool RemoteConnection::WaitFor(const std::function<bool()>& done, const QString& complaint)
{
    const auto doneOrPiped = [this, &done] { return IsRemotePiped() || done(); };
    if (mParts.pump.WaitUntil(doneOrPiped, Limit(mParts.clock)))
        return true;
    if (!mParts.pump.Stopped())
        Tell(QLatin1String(kCannotConnect) + complaint, true);
    return false;
}

void RemoteConnection::Tell(const QString& text, bool warning)
{
    mParts.boxes.MsgBox(text, warning ? QMessageBox::Warning : QMessageBox::Information);
}

bool RemoteConnection::WaitForLogon()
{
    return WaitFor([this] { return mSession.RemoteState >= RemoteStates::kLoggedOn; },
                   QStringLiteral("Authentication has timed out."));
}

bool RemoteConnection::WaitForUserList()
{
    return WaitFor([this] { return mSession.userListReceived; },
                   QStringLiteral("No list of Users is available.  Please try connecting again."));
}

bool RemoteConnection::FindSomebody()
{
    // This tool is on the list itself.
    if (IsRemotePiped() || mSession.remoteUsers.Count() > 1)
        return true;
    Tell(QStringLiteral("There are currently no other Users logged on to the Remote Diagnostics network.\n\n"
                        "Please contact the User to whom you are trying to connect, and make sure they have "
                        "successfully connected and logged on to the Remote Diagnostics network."),
         false);
    return false;
}

bool RemoteConnection::ChooseUser(RemoteWindows::Choice& choice)
{
    while (!IsRemotePiped()) {
        choice = mParts.windows.ChooseUser();
        if (IsRemotePiped() || choice.clientID == CUser::kNobody || mParts.pump.Stopped())
            break;
        const CUser* user = mSession.remoteUsers.Find(choice.clientID);
        if (!user)
            break;
        if (!user->isPiped()) {
            mSender.sendPipeToRequest(user->Id(), user->UserName);
            return true;
        }
        Tell(user->UserName + QStringLiteral(" is already piped to another client!"), false);
    }
    return IsRemotePiped();
}

bool RemoteConnection::WaitForPipe(const RemoteWindows::Choice& choice)
{
    return WaitFor([] { return false; }, QStringLiteral("Pipe to %1 has timed out.").arg(choice.userName));
}

void RemoteConnection::RDdisconnect()
{
    Guarded(mParts.errors, "frmDiag.RDdisconnect", [this] {
        if (!mSession.IsRemoteConnected()) {
            EndWithoutConnection();
            return;
        }
        if (mParts.host.NodeMounted())
            mParts.host.UnmountNode();
        if (IsRemotePiped()) {
            mSender.sendBreakPipeRequest();
            mParts.pump.Once();
        }
        LogOff();
        mParts.handler.setTargetPort(Transport::kNone);
        CloseSocket();
        mFollowers.setRemoteState(RemoteStates::kDisconnected);
        mParts.host.SetUIState(kUiDisconnected);
    });
}

void RemoteConnection::LogOff()
{
    // The peer may have gone while the end of the pipe was on its way.
    if (mSocket.IsConnected())
        mSender.sendLogoff();
}

void RemoteConnection::EndWithoutConnection()
{
    if (mParts.handler.TargetPort() == Transport::kRemote)
        mParts.handler.setTargetPort(Transport::kNone);
    // A connection that is still being made would stand later, when nobody waits for it.
    CloseSocket();
    if (mSession.RemoteState >= RemoteStates::kConnected)
        mFollowers.setRemoteState(RemoteStates::kDisconnected);
    if (!mParts.host.PortOpenForRx())
        mParts.host.SetUIState(kUiDisconnected);
}

void RemoteConnection::CloseSocket()
{
    mSocket.Close();
    mReceiver.Clear();
}

void RemoteConnection::HandleConnect()
{
    Guarded(mParts.errors, "frmDiag.Winsock.Connect", [this] {
        mSession.userListReceived = false;
        mFollowers.setRemoteState(RemoteStates::kConnected);
        mParts.host.SetUIState(kUiConnected);
        mSender.sendAuthentication(mProfile);
    });
}

void RemoteConnection::HandleClose()
{
    Guarded(mParts.errors, "frmDiag.Winsock.Close", [this] {
        CloseSocket();
        mFollowers.setRemoteState(RemoteStates::kDisconnected);
        if (mParts.handler.TargetPort() != Transport::kRemote)
            return;
        ForgetMount();
        mParts.host.SetUIState(kUiDisconnected);
        mParts.handler.setTargetPort(Transport::kNone);
    });
}

void RemoteConnection::ForgetMount()
{
    if (mParts.host.NodeMounted())
        mParts.host.ForgetMountedNode();
}

void RemoteConnection::HandleError(int number, const QString& description)
{
    Guarded(mParts.errors, "frmDiag.Winsock.Error", [&] {
        mParts.boxes.MsgBox(QStringLiteral("Remote Diagnostics communications error [%1]\n\n").arg(number) +
                                description,
                            QMessageBox::Critical);
        mParts.handler.setTargetPort(Transport::kNone);
        CloseSocket();
        mParts.view.ShowMessage(description);
        mFollowers.setRemoteState(RemoteStates::kDisconnected);
        ForgetMount();
        // Also of a connection that stood: the user may connect again at once.
        mParts.host.SetUIState(kUiDisconnected);
    });
}

void RemoteConnection::sendFrame(int type, const QByteArray& data)
{
    mSender.sendFrame(PipeFrameType(type), data);
}

void RemoteConnection::sendChatMessage(const QString& text)
{
    if (mSession.IsRemoteConnected())
        mSender.sendChatMessage(text);
}

void RemoteConnection::sendEchoServer(const QString& text)
{
    if (mSession.IsRemoteConnected())
        mSender.sendEchoServer(text);
}

void RemoteConnection::sendEchoClient(const QString& text)
{
    if (mSession.IsRemoteConnected())
        mSender.sendEchoClient(text);
}

}  // namespace fenrik
