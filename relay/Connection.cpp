#include "relay/Connection.h"

#include <array>
#include <cerrno>
#include <sys/socket.h>

namespace fenrik {

namespace {

constexpr std::size_t kKeptCapacity = 4096;

}  // namespace

Connection::Connection(Handle socket, std::string address, std::string network, const RelayLimits& limits,
                       std::vector<Connection*>& touched, double now)
    : mSocket(std::move(socket)), mNetwork(std::move(network)), mLimits(limits), mTouchedList(touched),
      mUser(*this, std::move(address)), mIntake(limits), mSince(now), mLastProgress(now)
{
}

bool Connection::WantsToRead() const
{
    if (mGone)
        return false;
    // After the end the client's bytes are dropped: left unread, they would make the system throw away our last ones.
    return mEnding || (!mIntake.Held() && mIntake.Room() > 0);
}

void Connection::Receive(Exchange& exchange, double now)
{
    std::array<char, 16384> buffer;
    const auto most = mEnding ? buffer.size() : std::min(buffer.size(), mIntake.Room());
    const auto got = ::recv(mSocket.Get(), buffer.data(), most, 0);
    if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR))
        return;
    if (got <= 0)
        return Lose(got == 0 ? "hung up" : "connection lost");
    if (mEnding)
        return;
    mIntake.Append({buffer.data(), std::size_t(got)});
    GoOn(exchange, now);
}

void Connection::GoOn(Exchange& exchange, double now)
{
    mIntake.Work(mUser, exchange, now);
    Touch();
}

void Connection::Send(PipeFrameType type, std::string_view body)
{
    if (mEnding || mGone)
        return;
    mBegins = mBegins || Unsent() == 0;
    AppendPipeFrame(mOut, type, body);
    Touch();
    if (Unsent() > mLimits.mostUnsent && Write() && Unsent() > mLimits.mostUnsent)
        Lose("reads too slowly");
}

void Connection::End()
{
    mEnding = true;
    Touch();
}

void Connection::Flush(double now)
{
    const auto before = Unsent();
    if (mGone || !Write())
        return;
    if (Unsent() < before || mBegins)
        mLastProgress = now;
    mBegins = false;
    if (mEnding && Unsent() == 0 && !mShutDown)
        Farewell(now);
}

bool Connection::Write()
{
    while (Unsent() > 0) {
        const auto sent = ::send(mSocket.Get(), mOut.data() + mSent, Unsent(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent < 0 && errno != EAGAIN && errno != EWOULDBLOCK) {
            Lose("connection lost");
            return false;
        }
        if (sent < 0)
            break;
        mSent += std::size_t(sent);
    }
    mOut.erase(0, mSent);
    mSent = 0;
    // A user list is long and rare; a thousand users need not keep the room for one each.
    if (mOut.empty() && mOut.capacity() > kKeptCapacity)
        std::string().swap(mOut);
    return true;
}

// A plain close would take the last frames away from the client if bytes of its own were still on their way to us.
void Connection::Farewell(double now)
{
    mShutDown = true;
    mEndsBy = now + mLimits.farewellSeconds;
    ::shutdown(mSocket.Get(), SHUT_WR);
}

void Connection::Tick(Exchange& exchange, double now)
{
    // What has only just been sent gets its chance first.
    if (!mTouched && Unsent() > 0 && now - mLastProgress > mLimits.stallSeconds)
        Lose("reads nothing");
    if (!mTouched && mEnding && now > (mShutDown ? mEndsBy : mLastProgress + mLimits.farewellSeconds))
        Lose("hung up on");
    if (!mUser.ended && !mUser.LoggedOn() && now - mSince > mLimits.logonSeconds)
        exchange.TurnAway(mUser, "You did not log on in time.", now);
    if (mIntake.Held())
        GoOn(exchange, now);
}

void Connection::Touch()
{
    if (!mTouched)
        mTouchedList.push_back(this);
    mTouched = true;
}

void Connection::Lose(const char* why)
{
    if (!mGone)
        mWhyGone = why;
    mGone = true;
    Touch();
}

}  // namespace fenrik
