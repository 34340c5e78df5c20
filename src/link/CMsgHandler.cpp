#include "link/CMsgHandler.h"

#include "platform/SerialControl.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"

#include <cstring>

namespace fenrik {

namespace {

/// Stands in while no window is there: nothing can be sent, nothing is shown.
class NoHost : public LinkHost {
public:
    bool PortOpenForTx() const override { return false; }
    bool ModemActive() const override { return false; }
    void DisplayMessage(CMessage&) override {}
    void sendFrame(int, const QByteArray&) override {}
    void CloseModemLink() override {}
    void ShowPC(int) override {}
    void ShowBC(int) override {}
    void ShowCollisionMark(bool, const char*) override {}
    void TrafficWaiting() override {}
};

NoHost noHost;  // has no state

constexpr char kNoCarrier[] = "NO CARRIER";
constexpr std::uint8_t kEscape = 0x5C;
constexpr int kAnnouncement = 903;
constexpr int kFramePayload = 50;  // the pipe's frame type for network bytes
constexpr double kBusQuietSeconds = 1.0;

/// Port errors are counted under the same marker as the collisions that this PC sees.
constexpr const char* kCollisionKind = "PC";

}  // namespace

CMsgHandler::CMsgHandler(SerialControl& port, const Clock& clock, EventPump& pump, CommandTable& commands,
                         ErrorReporter& errors)
    : mPort(port), mClock(clock), mPump(pump), mCommands(commands), mErrors(errors), mHost(&noHost)
{
}

void CMsgHandler::setHost(LinkHost* host)
{
    mHost = host ? host : &noHost;
}

void CMsgHandler::Reset(int targetPort)
{
    mPCCollisions = 0;
    mBusCollisions = 0;
    mBytesSinceFrame = 0;
    mWaitingForReply = 0;
    mCommandReply = false;
    mReceivingMessage = false;
    mCarrierLost = false;
    mNewWaitingForReply = 0;
    mMsgLength = 0;
    mTargetPort = targetPort;
    mHost->ShowPC(0);
    mHost->ShowBC(0);
}

std::optional<CMessage> CMsgHandler::GetMessageReceived()
{
    if (mReceivedMessages.empty())
        return std::nullopt;
    CMessage message = mReceivedMessages.front();
    mReceivedMessages.pop_front();
    return message;
}

// --- Receiving -----------------------------------------------------------------------------------------------------

void CMsgHandler::CountPCCollision()
{
    ++mPCCollisions;
    mBytesSinceFrame = 0;
    Guarded(mErrors, "CMsgHandler:ReceiveMsgByte", [this] {
        mHost->ShowCollisionMark(true, kCollisionKind);
        mHost->ShowPC(mPCCollisions);
    });
}

void CMsgHandler::TakeFrame()
{
    try {
        mReceivingMessage = false;
        mBytesSinceFrame = 0;
        CMessage message = MessageInWindow();
        const int command = message.Command;
        Sort(std::move(message));
        if (command >= 1 && command <= 1015)
            mCommands.CountUp(command);
    } catch (const std::exception&) {
        ReportCurrentException(mErrors, "CMsgHandler:ReceiveMsgByte");
    }
}

CMessage CMsgHandler::MessageInWindow() const
{
    CMessage message;
    for (std::size_t i = 0; i < Frame::kSize; ++i)
        message.rawBytes[i] = std::uint8_t(mFrameWindow >> (8 * (Frame::kSize - 1 - i)));
    message.rawForm = CMessage::RawForm::Received;
    message.time = mClock.Now();
    const std::uint32_t header = std::uint32_t(mFrameWindow >> 24) & 0xFFFF;
    message.Command = header >> 2 & 0x3FF;
    message.State = header >> 1 & 1;
    message.extended = header & 1;
    message.data = mFrameWindow >> 8 & 0xFFFF;
    message.CheckSum = mFrameWindow & 0xFF;
    return message;
}

void CMsgHandler::Sort(CMessage&& message)
{
    // 0 is nobody waiting, so a frame of command 0 is traffic like any other.
    if (message.Command != mWaitingForReply || mWaitingForReply == 0) {
        mReceivedMessages.push_back(message);
        mHost->TrafficWaiting();
    } else if (mNewWaitingForReply != 0) {
        AddToMultiFrameReply(std::move(message));
    } else {
        message.EchoReply = mEchoReply;
        mReplyMessage = message;
        mCommandReply = true;
        mWaitingForReply = 0;
    }
}

void CMsgHandler::AddToMultiFrameReply(CMessage&& message)
{
    // The length is a number of bytes and yet goes down by one for each frame of two bytes. So it does not reach 0
    // at the end of a reply, and frames of command 950 are taken off the traffic until the next send. A count of
    // frames would change which frames reach the message list, so it stays.
    if (message.Command == kAnnouncement)
        mMsgLength = message.data;
    else if (mMsgLength != 0)
        --mMsgLength;
    message.EchoReply = mEchoReply;
    mArrayMsgQue.push_back(message);
    if (mMsgLength == 0)
        mNewWaitingForReply = 0;
    mWaitingForReply = mNewWaitingForReply;
}

void CMsgHandler::ProcessCommEvent(int commEvent)
{
    if (commEvent == SerialControl::kEvReceive) {
        while (mPort.InBufferCount() >= 1) {
            const std::uint8_t byte = mPort.InputByte();
            WatchCarrier(byte);
            if (!SwallowEscape(byte))
                ReceiveMsgByte(byte);
        }
    } else if (commEvent == SerialControl::kFramingError) {
        ++mBusCollisions;
        mHost->ShowCollisionMark(true, kCollisionKind);
        mHost->ShowBC(mBusCollisions);
    }
}

void CMsgHandler::ProcessSockEvent(const QByteArray& inData)
{
    for (const char byte : inData)
        ReceiveMsgByte(std::uint8_t(byte));
}

void CMsgHandler::WatchCarrier(std::uint8_t byte)
{
    std::memmove(mCarrierWindow.data(), mCarrierWindow.data() + 1, mCarrierWindow.size() - 1);
    mCarrierWindow.back() = char(byte);
    if (std::memcmp(mCarrierWindow.data(), kNoCarrier, mCarrierWindow.size()) != 0)
        return;
    mCarrierLost = true;
    mHost->CloseModemLink();
    mHost->TrafficWaiting();
}

bool CMsgHandler::SwallowEscape(std::uint8_t byte)
{
    // By the transport as well as by the modem's flag: a transceiver session after a modem session loses nothing.
    if (mTargetPort != Transport::kModem || !mHost->ModemActive())
        return false;
    const bool isEscape = byte == kEscape;
    if (mEscapePending) {
        mEscapePending = false;
        return !isEscape;  // "\" and a letter is the module's own word; "\\" stands for one data byte
    }
    mEscapePending = isEscape;
    return isEscape;
}

// --- Sending -------------------------------------------------------------------------------------------------------

bool CMsgHandler::CanSend(const CMessage& message) const
{
    return message.Command != 0 && mHost->PortOpenForTx();
}

Frame::Bytes CMsgHandler::getMessageAsByteArr(CMessage& message)
{
    const Frame frame{std::uint16_t(message.Command), message.State != 0, message.extended != 0,
                      std::uint16_t(message.data)};
    message.rawBytes = frame.Encode();
    message.CheckSum = message.rawBytes.back();
    message.rawForm = CMessage::RawForm::Sent;
    message.time = mClock.Now();
    mCommands.CountUp(message.Command);
    mEchoReply = message.EchoReply;
    mWaitingForReply = message.ReplyCommand;
    return message.rawBytes;
}

QByteArray CMsgHandler::getMessageAsData(CMessage& message)
{
    const Frame::Bytes bytes = getMessageAsByteArr(message);
    return {reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())};
}

QByteArray CMsgHandler::toEscapedString(const QByteArray& bytes)
{
    QByteArray escaped = bytes;
    return escaped.replace('\\', "\\\\");
}

void CMsgHandler::WaitForQuietBus()
{
    // A frame that stops half way holds the sender up for a second and no longer.
    const Moment deadline = mClock.Now().Plus(kBusQuietSeconds);
    mPump.WaitUntil([this] { return !mReceivingMessage || !mHost->PortOpenForTx(); }, deadline);
    mReceivingMessage = false;
}

void CMsgHandler::Transmit(CMessage& message, const Frame::Bytes& bytes)
{
    switch (mTargetPort) {
    case Transport::kTransceiver:
        mPort.Output({reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())});
        break;
    case Transport::kModem:
        // Building the frame a second time counts the command once more; the list's count column shows it so.
        mPort.Output(toEscapedString(getMessageAsData(message)));
        break;
    case Transport::kRemote:
        mHost->sendFrame(kFramePayload, getMessageAsData(message));
        break;
    default:
        break;
    }
}

void CMsgHandler::SendMessage(CMessage& message)
{
    // A single reply can't reach its slot while the link still collects the frames of an earlier request.
    if (message.ReplyCommand != 0)
        mNewWaitingForReply = 0;
    Send(message);
}

void CMsgHandler::Send(CMessage& message)
{
    if (!CanSend(message))
        return;
    Guarded(mErrors, "CMsgHandler:SendMessage", [this, &message] {
        const Frame::Bytes bytes = getMessageAsByteArr(message);
        WaitForQuietBus();
        if (!mHost->PortOpenForTx())
            return;  // the port went away during the wait
        Transmit(message, bytes);
        mWaitingForReply = message.ReplyCommand;
        if (message.EchoSend)
            mHost->DisplayMessage(message);
        mEchoReply = message.EchoReply;
        mCommands.CountUp(message.Command);
    });
}

}  // namespace fenrik
