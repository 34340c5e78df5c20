// The tool's end of a connection to a relay that sends any bytes at all, in pieces, also into the boxes that it brings
// up. Whatever it sends, the tool neither dies nor hangs nor hoards, and its state is one of those that there are.
//
// The input is a list of steps. Bits 0 and 1 of a step's first byte tell what it is: bytes as they stand, a whole frame
// of a type, or the end of the connection.

#include "FuzzLink.h"
#include "FuzzSteps.h"
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
        else if ((step & 3) == 3 && step >> 2 == 63)
            mGone = true;
        else
            AppendPipeFrame(mArrived, PipeFrameType(mSteps.Byte()), mSteps.Bytes(mSteps.Byte()));
        while (!std::exchange(mQueued, false) && !mArrived.empty() && HandleArrival()) {
        }
        Check();
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
    void SendData(std::initializer_list<std::string_view>) override {}
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
