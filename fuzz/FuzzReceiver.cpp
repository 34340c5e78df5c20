// The tool's end of a connection to a relay that sends any bytes at all, in pieces, also into the boxes that it brings
// up, while the user goes on, too. Whatever it sends, the tool neither dies nor hangs nor hoards, its state is one of
// those that there are, and what it sends itself is well-formed.
//
// The input is a list of steps. Bits 0 and 1 of a step's first byte tell what it is: bytes as they stand, a whole frame
// of a type, such a frame with a length of its type, or what the user does; the other bits which of that.

#include "FuzzLink.h"
#include "FuzzPipe.h"
#include "pipe/PipeReader.h"
#include "remote/RemoteFollowers.h"
#include "remote/RemoteHost.h"
#include "remote/RemoteReceiver.h"
#include "remote/RemoteSender.h"
#include "remote/RemoteSession.h"
#include "remote/RemoteStateSwitch.h"
#include "remote/RemoteStream.h"
#include "remote/RemoteView.h"

namespace fenrik {
namespace {

/// A window of which nothing is seen.
class NoWindow : public RemoteStateView, public RemoteChat, public RemoteWindows, public RemoteConnectionHost {
public:
    void ShowStatus(const QString&) override {}
    void ShowMessage(const QString&) override {}
    void ShowChatButton(const char*, bool, bool) override {}
    void ShowWaitCursor(bool) override {}
    void AdjustFormCaption() override {}
    void RefreshTrafficTimers() override {}
    void RefreshActions() override {}

    bool Exists() const override { return mChat; }
    void Create() override { mChat = true; }
    void SetClients(const std::optional<CUser>&, const std::optional<CUser>&) override {}
    void ClearRemoteClient() override {}
    void ClearHistory() override {}
    void SetVisible(bool) override {}
    void CloseWindow() override { mChat = false; }
    void SubmitChatMessage(const QString&, const QString&) override {}

    void EnsureUsersWindow() override {}
    void SetUserList(const UserList&, int) override {}
    Choice ChooseUser() override { return {}; }
    void HideUsersWindow() override {}
    void replyReceived(const QString&) override {}
    void HideLatencyWindow() override {}
    void ShowTimedMessage(const QString&, int) override { onBox(); }

    std::optional<RemoteLogon> CurrentProfile() const override { return std::nullopt; }
    void OpenPortOptions() override {}
    void SetUIState(int) override {}
    bool PortOpenForRx() const override { return false; }
    bool NodeMounted() const override { return true; }
    void UnmountNode() override {}
    void ForgetMountedNode() override {}
    void ResetPanels() override {}

    std::function<void()> onBox = [] {};

private:
    bool mChat = false;
};

class Client : private EventPump, private ErrorReporter, private Boxes, private RemoteStream {
public:
    explicit Client(FuzzSteps steps) : EventPump(mClock), mSteps(steps)
    {
        mWindow.onBox = [this] { Step(); };
        mFollowers.Add(mSwitch);
        mHandler.setTargetPort(Transport::kRemote);
    }

    void Run()
    {
        while (!mSteps.AtEnd() && !mGone)
            Step();
    }

private:
    void Step()
    {
        const unsigned step = mSteps.Byte();
        if ((step & 3) == 0)
            mArrived += mSteps.Bytes(mSteps.Byte());
        else if ((step & 3) == 1)
            mArrived += AnyPipeFrame(mSteps);
        else if ((step & 3) == 2)
            mArrived += FittingPipeFrame(mSteps, PipeDirection::ToClient);
        else
            Act(step >> 2);
        while (!std::exchange(mQueued, false) && !mArrived.empty() && HandleArrival()) {
        }
        Check();
    }

    void Act(unsigned what)
    {
        constexpr unsigned kEnd = 63;
        const auto text = [this] {
            const std::string_view bytes = mSteps.Bytes(mSteps.Byte());
            return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
        };
        const auto number = [this] { return int(mSteps.Byte()); };
        switch (what % 9) {
        case 0:
            mGone = what == kEnd;
            return;
        case 1:
            return mSender.sendAuthentication({text(), text(), {}, 1});
        case 2:
            return mSender.sendPipeToRequest(number(), QStringLiteral("Cid"));
        case 3:
            return mSender.sendBreakPipeRequest();
        case 4:
            return mSender.sendLogoff();
        case 5:
            return mSender.sendChatMessage(text());
        case 6:
            return (number() & 1) != 0 ? mSender.sendEchoServer(text()) : mSender.sendEchoClient(text());
        case 7:
            return mSender.sendFenrikBussAccessRequest(number());
        case 8:
            return mSender.sendServerInformationRequest();
        }
    }

    /// False if the receiver leaves the rest for later.
    bool HandleArrival()
    {
        const auto before = mArrived.size();
        mReceiver.HandleDataArrival();
        return mArrived.size() < before;
    }

    void Check() const
    {
        constexpr int kMostUsers = int(PipeFrame::kLongestBody / 79);
        if (mSession.RemoteState < 0 || mSession.RemoteState > RemoteStates::kGranted ||
            mSession.remoteUsers.Count() > kMostUsers)
            std::abort();
    }

    // RemoteStream
    void SendData(std::initializer_list<std::string_view> parts) override
    {
        PipeReader reader;
        for (const std::string_view part : parts)
            reader.Append(part);
        PipeFrame frame;
        const bool whole = reader.Next(frame) == PipeReader::Found::Frame && reader.Held() == 0;
        const PipeRule* rule = FindPipeRule(PipeDirection::ToServer, frame.type);
        if (!whole || !rule || !rule->Fits(frame.body.size()))
            std::abort();
    }
    std::string GetData(std::size_t most) override
    {
        const std::string bytes = mArrived.substr(0, most);
        mArrived.erase(0, bytes.size());
        return bytes;
    }
    std::size_t BytesReceived() const override { return mArrived.size(); }
    void QueueDataArrival() override { mQueued = true; }

    void Pump(double) override {}
    void ShowError(int number, const QString&, const QString&, const QString&) override
    {
        constexpr int kLengthOrKey[] = {5, 457};
        if (std::ranges::find(kLengthOrKey, number) == std::end(kLengthOrKey))
            std::abort();
        Step();  // the error's own dialog is a box, too
    }
    Button MsgBox(const QString&, QMessageBox::Icon, Buttons, const QString&) override
    {
        Step();
        return QMessageBox::Ok;
    }

    FuzzClock mClock;
    FuzzSteps mSteps;
    std::string mArrived;
    bool mQueued = false;
    bool mGone = false;
    CommandTable mCommands;
    ComPorts mPorts{QString(), [] { return QList<SerialDevice>(); }};
    SerialControl mPort{mPorts};
    CMsgHandler mHandler{mPort, mClock, *this, mCommands, *this};
    NoWindow mWindow;
    RemoteSession mSession{mHandler};
    RemoteFollowers mFollowers{*this};
    RemoteStateSwitch mSwitch{mSession, mWindow, mWindow, mWindow, *this};
    RemoteSender mSender{*this, mSession, mWindow, *this};
    RemoteReceiver mReceiver{{mHandler, mClock, *this, *this, *this, mWindow, mWindow, mWindow, mWindow},
                             *this,
                             mSession,
                             mSender,
                             mFollowers,
                             [this] { mFollowers.setRemoteState(RemoteStates::kDisconnected); }};
};

}  // namespace
}  // namespace fenrik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const fenrik::FuzzSteps steps({reinterpret_cast<const char*>(data), size});
    fenrik::Client(steps).Run();
    return 0;
}
