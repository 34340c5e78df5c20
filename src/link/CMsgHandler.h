#pragma once

#include "link/CMessage.h"
#include "link/LinkHost.h"

#include <QByteArray>

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace fenrik {

class Clock;
class CommandTable;
class ErrorReporter;
class EventPump;
class SerialControl;

/// How the frames travel.
namespace Transport {
inline constexpr int kNone = 0;
inline constexpr int kTransceiver = 1;
inline constexpr int kModem = 2;
inline constexpr int kRemote = 3;
}  // namespace Transport

/// The link engine of the Fenrik 2000 network; one for the whole program. It finds frames in the received bytes,
/// sorts each either into the queue of traffic to show or into the reply slot of the caller that waits for it, sends
/// frames over the present transport, and counts collisions.
///
/// Everything runs on one thread. A wait pumps events, and bytes reach ReceiveMsgByte only that way. There is one
/// reply slot: a handler that sends and waits inside another's wait takes it over, and the outer wait times out.
///
/// A multi-frame reply on the wire:
///
///   frame      Command  State        extended         data
///   announce   903      1 = granted  1 = big-endian   number of bytes that follow
///   each next  950                                    two bytes, the low byte first
class CMsgHandler {
public:
    /// Codes of CommError.
    static constexpr int kNoAnswer = -2;
    static constexpr int kIncompleteAnswer = -3;

    CMsgHandler(SerialControl& port, const Clock& clock, EventPump& pump, CommandTable& commands,
                ErrorReporter& errors);

    /// Without a host nothing can be sent and nothing is shown. `host` outlives the engine or is taken away with
    /// nullptr first.
    void setHost(LinkHost* host);

    [[nodiscard]] int TargetPort() const { return mTargetPort; }
    void setTargetPort(int target) { mTargetPort = target; }

    /// A connection starts: counters, reply state and lost carrier are forgotten. The queues, CommError,
    /// CommErrorCount and the windows stay as they are.
    void Reset(int targetPort);

    [[nodiscard]] int PCCollisions() const { return mPCCollisions; }
    [[nodiscard]] int BusCollisions() const { return mBusCollisions; }

    [[nodiscard]] int ReceivedMessagesPending() const { return int(mReceivedMessages.size()); }

    /// Takes the oldest received message off the queue; nothing if it is empty.
    [[nodiscard]] std::optional<CMessage> GetMessageReceived();

    [[nodiscard]] bool ProcessingReply() const { return mWaitingForReply > 0; }
    [[nodiscard]] bool ReceivingMessage() const { return mReceivingMessage; }

    /// Last failure of a multi-frame request; nothing ever sets it back to 0.
    [[nodiscard]] int CommError() const { return mCommError; }
    [[nodiscard]] int CommErrorCount() const { return mCommErrorCount; }
    void ClearCommErrorCount() { mCommErrorCount = 0; }

    [[nodiscard]] bool CarrierLost() const { return mCarrierLost; }
    void ResetCarrierLostStatus() { mCarrierLost = false; }

    /// One received byte. Allocates nothing until it completes a good frame.
    void ReceiveMsgByte(std::uint8_t byte)
    {
        mReceivingMessage = true;
        mFrameWindow = (mFrameWindow << 8 | byte) & kWindowMask;
        if (++mBytesSinceFrame > kBytesOfCollision)
            CountPCCollision();
        // Byte 0 and the upper half of byte 1 first: almost everything that is no frame ends here.
        if (mFrameWindow >> 36 == 0x00A && SumHolds())
            TakeFrame();
    }

    /// An event of the serial port, by the codes of SerialControl.
    void ProcessCommEvent(int commEvent);

    /// Frame bytes from the relay's pipe.
    void ProcessSockEvent(const QByteArray& inData);

    /// Sends and does not wait for an answer. Waits up to a second for a frame that is just being received.
    void SendMessage(CMessage& message);

    /// Sends up to `tries` times until the frame `replyCommand` has come; nothing if it never does.
    std::optional<CMessage> SendMessageGetReply(CMessage& message, int replyCommand, int tries = 3,
                                                bool echoSend = false, bool echoReply = false);

    /// Waits for the reply to the frame just sent, 0.7 s or 15 s by relay.
    std::optional<CMessage> GetMessageReply();

    /// Ends a running GetMessageReply without a reply, for a user who won't wait.
    void AbandonReply() { mReplyAbandoned = true; }

    /// Sends `message` (whose ReplyCommand is set) and collects a multi-frame reply. `bytesReceived` carries over
    /// from attempt to attempt and can exceed the size of the result: callers use the smaller of the two. It is -1
    /// after a refusal, -2 with no answer, and CommError when the link refuses to ask after three failures.
    std::vector<std::uint8_t> SendMessageGetByteArr(CMessage& message, int tries, int& bytesReceived, bool& bigEndian,
                                                    bool echoSend, bool echoReply);

    /// The six bytes of the frame. Stamps the message, counts its command and sets the reply state.
    Frame::Bytes getMessageAsByteArr(CMessage& message);

    /// The same as characters; counts the command as well, since it builds the frame.
    QByteArray getMessageAsData(CMessage& message);

    /// Every "\" doubled: the escape character of the modem module.
    [[nodiscard]] static QByteArray toEscapedString(const QByteArray& bytes);

private:
    struct Collected;

    static constexpr std::uint64_t kWindowMask = 0xFFFF'FFFF'FFFF;
    static constexpr int kBytesOfCollision = 15;

    [[nodiscard]] bool SumHolds() const
    {
        const std::uint64_t window = mFrameWindow;
        return std::uint8_t((window >> 32) + (window >> 24) + (window >> 16) + (window >> 8)) == std::uint8_t(window);
    }
    void CountPCCollision();
    void TakeFrame();
    [[nodiscard]] CMessage MessageInWindow() const;
    void Sort(CMessage&& message);
    void AddToMultiFrameReply(CMessage&& message);

    void WatchCarrier(std::uint8_t byte);
    [[nodiscard]] bool SwallowEscape(std::uint8_t byte);

    [[nodiscard]] bool CanSend(const CMessage& message) const;
    void Send(CMessage& message);
    void WaitForQuietBus();
    void Transmit(CMessage& message, const Frame::Bytes& bytes);
    [[nodiscard]] double ReplyTimeout() const;

    [[nodiscard]] bool CanGoOn() const;
    void RequestUntilAnswered(CMessage& message, int tries, int& tryCount);
    bool WaitForArrayFrame();
    CMessage TakeArrayFrame();
    void TakeAnnouncement(Collected& collected, bool& bigEndian);
    void CollectBytes(Collected& collected);
    void JudgeRequest(int expected, int bytesReceived);

    SerialControl& mPort;
    const Clock& mClock;
    EventPump& mPump;
    CommandTable& mCommands;
    ErrorReporter& mErrors;
    LinkHost* mHost;

    std::int32_t mWaitingForReply = 0;     // number of the reply that somebody waits for; 0: nobody does
    bool mCommandReply = false;            // it has come and stands in mReplyMessage
    bool mReceivingMessage = false;        // bytes have come since the last whole frame
    bool mEchoReply = false;               // of the message that was sent last
    std::int32_t mNewWaitingForReply = 0;  // not 0 while a multi-frame reply is collected
    std::deque<CMessage> mArrayMsgQue;
    std::int32_t mMsgLength = 0;  // see AddToMultiFrameReply
    std::int16_t mCommError = 0;
    std::int16_t mCommErrorCount = 0;
    bool mCarrierLost = false;
    std::array<char, 10> mCarrierWindow{};
    std::uint64_t mFrameWindow = 0;  // the last six bytes, the oldest on top
    std::int16_t mBytesSinceFrame = 0;
    int mTargetPort = Transport::kNone;
    std::int32_t mPCCollisions = 0;
    std::int32_t mBusCollisions = 0;
    std::deque<CMessage> mReceivedMessages;
    CMessage mReplyMessage;
    bool mEscapePending = false;
    bool mReplyAbandoned = false;
};

}  // namespace fenrik
