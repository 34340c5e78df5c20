#pragma once

#include "remote/RemoteFollowers.h"
#include "remote/RemoteHost.h"
#include "remote/RemoteParts.h"
#include "remote/RemoteReceiver.h"
#include "remote/RemoteSender.h"
#include "remote/RemoteSession.h"
#include "remote/RemoteSocket.h"
#include "remote/RemoteStateSwitch.h"
#include "remote/RemoteView.h"

#include <QByteArray>
#include <QString>

namespace fenrik {

/// The one remote connection: how it begins, how it ends, and the events of its socket. It stays only while it has a
/// pipe, or was never asked for one: every failure of RDconnect ends it again.
class RemoteConnection : public RemoteHost {
public:
    explicit RemoteConnection(const RemoteParts& parts);

    /// The toolbar's "Connect". Returns when a pipe stands or nothing is left of the try; waits pump events.
    /// A call while another one runs does nothing.
    void RDconnect();

    /// The toolbar's "Disconnect"; also the end of a connection that failed.
    void RDdisconnect();

    [[nodiscard]] const RemoteSession& Session() const { return mSession; }
    [[nodiscard]] RemoteSender& Sender() { return mSender; }

    /// Where windows that follow the state sign up; the main window's part is the first already.
    [[nodiscard]] RemoteFollowers& Followers() { return mFollowers; }

    /// For the link engine: a frame by the number of its type.
    void sendFrame(int type, const QByteArray& data);

    [[nodiscard]] std::int32_t RemoteState() const override { return mSession.RemoteState; }
    [[nodiscard]] bool IsRemotePiped() const override { return mSession.IsRemotePiped(); }
    void sendChatMessage(const QString& text) override;
    void sendEchoServer(const QString& text) override;
    void sendEchoClient(const QString& text) override;

private:
    [[nodiscard]] bool EnsureProfile();
    void Start(const RemoteLogon& profile);
    [[nodiscard]] bool ReachPipe();
    [[nodiscard]] bool WaitForLogon();
    [[nodiscard]] bool WaitForUserList();
    [[nodiscard]] bool FindSomebody();
    [[nodiscard]] bool ChooseUser(RemoteWindows::Choice& choice);
    [[nodiscard]] bool WaitForPipe(const RemoteWindows::Choice& choice);
    [[nodiscard]] bool WaitFor(const std::function<bool()>& done, const QString& complaint);
    void Tell(const QString& text, bool warning);

    void HandleConnect();
    void HandleClose();
    void HandleError(int number, const QString& description);

    void ForgetMount();
    void LogOff();
    void CloseSocket();
    void EndWithoutConnection();

    RemoteParts mParts;
    RemoteSocket mSocket;
    RemoteSession mSession;
    RemoteFollowers mFollowers;
    RemoteStateSwitch mSwitch;
    RemoteSender mSender;
    RemoteReceiver mReceiver;
    RemoteLogon mProfile;  // the one that the connection was begun with
    bool mConnecting = false;
};

}  // namespace fenrik
