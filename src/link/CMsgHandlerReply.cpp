// The half of CMsgHandler that waits for answers: single replies and multi-frame replies.

#include "link/CMsgHandler.h"

#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"

#include <algorithm>

namespace fenrik {

namespace {

constexpr double kLocalReplySeconds = 0.7;
constexpr double kRemoteReplySeconds = 15.0;
constexpr int kDataFrame = 950;
constexpr int kFailuresUntilRefusal = 3;
constexpr int kRefused = -1;
constexpr int kUnknownLength = -1;

}  // namespace

/// One attempt at a multi-frame reply.
struct CMsgHandler::Collected {
    std::vector<std::uint8_t> bytes;
    int expected = kUnknownLength;
    int& bytesReceived;
};

double CMsgHandler::ReplyTimeout() const
{
    return mTargetPort == Transport::kRemote ? kRemoteReplySeconds : kLocalReplySeconds;
}

std::optional<CMessage> CMsgHandler::SendMessageGetReply(CMessage& message, int replyCommand, int tries, bool echoSend,
                                                         bool echoReply)
{
    mCommandReply = false;
    message.ReplyCommand = replyCommand;
    message.EchoSend = echoSend;
    message.EchoReply = echoReply;
    if (!CanSend(message))
        return std::nullopt;

    std::optional<CMessage> reply;
    int tryCount = 0;
    do {
        mNewWaitingForReply = 0;
        Send(message);
        ++tryCount;
        reply = GetMessageReply();
    } while (!reply && tryCount != tries && CanGoOn());
    return reply;
}

bool CMsgHandler::CanGoOn() const
{
    return mHost->PortOpenForTx() && !mPump.Stopped();
}

std::optional<CMessage> CMsgHandler::GetMessageReply()
{
    std::optional<CMessage> reply;
    Guarded(mErrors, "CMsgHandler:ReplyCommandRecieved", [this, &reply] {
        mReplyAbandoned = false;
        mPump.WaitFor([this] { return mCommandReply || mReplyAbandoned || !mHost->PortOpenForTx(); }, ReplyTimeout());
        mWaitingForReply = 0;
        if (!mCommandReply)
            return;
        mCommandReply = false;
        // A copy: showing it pumps nothing today, but the slot belongs to whoever sends next.
        CMessage message = mReplyMessage;
        if (message.EchoReply)
            mHost->DisplayMessage(message);
        reply = message;
    });
    return reply;
}

std::vector<std::uint8_t> CMsgHandler::SendMessageGetByteArr(CMessage& message, int tries, int& bytesReceived,
                                                             bool& bigEndian, bool echoSend, bool echoReply)
{
    if (mCommErrorCount >= kFailuresUntilRefusal) {
        bytesReceived = mCommError;
        return {};
    }
    message.EchoSend = echoSend;
    message.EchoReply = echoReply;
    if (!CanSend(message))
        return {};

    // bytesReceived is not reset between two attempts, so after a torn reply it counts the bytes of both.
    for (int tryCount = 0;;) {
        Collected collected{{}, kUnknownLength, bytesReceived};
        RequestUntilAnswered(message, tries, tryCount);
        if (mArrayMsgQue.empty()) {
            collected.bytes.assign(1, 0);
            bytesReceived = kNoAnswer;
            mCommError = kNoAnswer;
        } else {
            TakeAnnouncement(collected, bigEndian);
        }
        if (tryCount == tries || bytesReceived == collected.expected || !CanGoOn()) {
            JudgeRequest(collected.expected, bytesReceived);
            return collected.bytes;
        }
    }
}

void CMsgHandler::RequestUntilAnswered(CMessage& message, int tries, int& tryCount)
{
    mArrayMsgQue.clear();
    mNewWaitingForReply = kDataFrame;
    do {
        Send(message);
        ++tryCount;
        WaitForArrayFrame();
    } while (mArrayMsgQue.empty() && tryCount != tries && CanGoOn());
}

bool CMsgHandler::WaitForArrayFrame()
{
    mPump.WaitFor([this] { return !mArrayMsgQue.empty() || !mHost->PortOpenForTx(); }, ReplyTimeout());
    return !mArrayMsgQue.empty();
}

CMessage CMsgHandler::TakeArrayFrame()
{
    CMessage frame = mArrayMsgQue.front();
    mArrayMsgQue.pop_front();
    if (frame.EchoReply) {
        CMessage shown = frame;
        mHost->DisplayMessage(shown);
    }
    return frame;
}

void CMsgHandler::TakeAnnouncement(Collected& collected, bool& bigEndian)
{
    const CMessage first = TakeArrayFrame();
    if (first.State != 1) {
        collected.bytes.assign(1, 0);
        collected.bytesReceived = kRefused;
        return;
    }
    bigEndian = first.extended > 0;
    collected.expected = first.data;
    if (collected.expected > 0)
        CollectBytes(collected);
}

void CMsgHandler::CollectBytes(Collected& collected)
{
    collected.bytes.assign(std::size_t(collected.expected), 0);
    std::size_t place = 0;
    for (int remaining = collected.expected; remaining > 0; place += 2) {
        if (!WaitForArrayFrame())
            return;
        const CMessage frame = TakeArrayFrame();
        collected.bytes[place] = std::uint8_t(frame.data);
        if (remaining > 1)
            collected.bytes[place + 1] = std::uint8_t(frame.data >> 8);
        const int taken = std::min(remaining, 2);
        remaining -= taken;
        collected.bytesReceived += taken;
    }
}

void CMsgHandler::JudgeRequest(int expected, int bytesReceived)
{
    if (bytesReceived < expected && expected >= 1) {
        mCommError = kIncompleteAnswer;
        ++mCommErrorCount;
    } else if (mCommError != 0) {
        // The last failure is never forgotten, so after one of them the good requests count as well, until the
        // caller clears the count.
        ++mCommErrorCount;
    }
}

}  // namespace fenrik
