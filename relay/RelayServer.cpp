#include "relay/RelayServer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <system_error>

namespace fenrik {

namespace {

constexpr double kTickSeconds = 0.05;
constexpr int kAcceptedInATurn = 64;
constexpr int kTurnedAwayWithAWord = 16;  // connections of one address beyond its share

Handle Spare()
{
    return Handle(::open("/dev/null", O_RDONLY | O_CLOEXEC));
}

/// A dead client is noticed by the system, after one minute if something waits for it and two if not; the protocol has
/// no probes. The system keeps little of what a client doesn't read: the relay's own limit is meant to count.
void SetUp(const Handle& socket)
{
    struct Option {
        int level;
        int name;
        int value;
    };
    static constexpr Option kOptions[] = {
        {IPPROTO_TCP, TCP_NODELAY, 1},          {SOL_SOCKET, SO_KEEPALIVE, 1}, {IPPROTO_TCP, TCP_KEEPIDLE, 60},
        {IPPROTO_TCP, TCP_KEEPINTVL, 15},       {IPPROTO_TCP, TCP_KEEPCNT, 4}, {SOL_SOCKET, SO_SNDBUF, 65536},
        {IPPROTO_TCP, TCP_USER_TIMEOUT, 60000},
    };
    for (const auto& option : kOptions)
        ::setsockopt(socket.Get(), option.level, option.name, &option.value, sizeof option.value);
}

}  // namespace

RelayServer::RelayServer(const std::vector<Address>& addresses, const RelayLimits& limits, Consent consent,
                         RelayLog& log, Now now)
    : mLimits(limits), mLog(log), mNow(std::move(now)), mExchange(limits, consent, log),
      mPoll(::epoll_create1(EPOLL_CLOEXEC)), mSpare(Spare())
{
    if (!mPoll.Valid())
        throw std::system_error(errno, std::generic_category(), "epoll");
    for (const auto& address : addresses) {
        mListeners.push_back(address.Listen());
        Control(EPOLL_CTL_ADD, mListeners.back().Get(), EPOLLIN);
    }
}

RelayServer::~RelayServer() = default;

std::vector<Address> RelayServer::Listening() const
{
    std::vector<Address> addresses;
    for (const auto& listener : mListeners)
        addresses.push_back(Address::OfSocket(listener));
    return addresses;
}

void RelayServer::Watch(int handle, std::function<void()> ready)
{
    mWatched[handle] = std::move(ready);
    Control(EPOLL_CTL_ADD, handle, EPOLLIN);
}

void RelayServer::Control(int operation, int handle, unsigned events) const
{
    epoll_event event{};
    event.events = events;
    event.data.fd = handle;
    if (::epoll_ctl(mPoll.Get(), operation, handle, &event) != 0)
        throw std::system_error(errno, std::generic_category(), "epoll");
}

void RelayServer::Turn(int milliseconds)
{
    std::array<epoll_event, 256> events;
    const int count = ::epoll_wait(mPoll.Get(), events.data(), int(events.size()), WaitMilliseconds(milliseconds));
    if (count < 0 && errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "epoll");
    for (int i = 0; i < count; ++i)
        Dispatch(events[std::size_t(i)]);
    Tick();
    mExchange.Users().Announce(mNow());
    Write();
}

int RelayServer::WaitMilliseconds(int most) const
{
    double due = mExchange.Users().NextDue();
    if (mTimed)
        due = std::min(due, mNextTick);
    return int(std::clamp(std::ceil((due - mNow()) * 1000), 0.0, double(most)));
}

// Handles are closed between turns only, so an event can't be about a handle that has been given out anew.
void RelayServer::Dispatch(const epoll_event& event)
{
    const int handle = event.data.fd;
    if (const auto found = mConnections.find(handle); found != mConnections.end()) {
        auto& connection = *found->second;
        if ((event.events & EPOLLOUT) != 0) {
            connection.Flush(mNow());
            connection.GoOn(mExchange, mNow());
        }
        if ((event.events & ~unsigned(EPOLLOUT)) != 0 && !connection.Gone())
            connection.Receive(mExchange, mNow());
    } else if (const auto watched = mWatched.find(handle); watched != mWatched.end()) {
        watched->second();
    } else {
        Accept(handle);
    }
}

void RelayServer::Accept(int listener)
{
    for (int i = 0; i < kAcceptedInATurn && !mStopping && AcceptOne(listener); ++i) {
    }
}

bool RelayServer::AcceptOne(int listener)
{
    sockaddr_storage storage{};
    socklen_t size = sizeof storage;
    Handle socket(::accept4(listener, reinterpret_cast<sockaddr*>(&storage), &size, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (!socket.Valid()) {
        if (errno == EMFILE || errno == ENFILE)
            RefuseForWantOfHandles(listener);
        // A client that went before it was accepted is no reason to stop.
        return errno == ECONNABORTED || errno == EINTR;
    }
    Welcome(std::move(socket), Address(storage, size));
    return true;
}

void RelayServer::Welcome(Handle socket, const Address& address)
{
    const auto network = mOfNetwork.find(address.Network());
    const int share = mLimits.usersPerAddress + kTurnedAwayWithAWord;
    if (mConnections.size() >= std::size_t(mLimits.Connections()) ||
        (network != mOfNetwork.end() && network->second >= share))
        return mLog.Line(mNow(), "client at " + address.Host() + " refused: too many connections");
    SetUp(socket);
    const int handle = socket.Get();
    auto& connection = mConnections[handle];
    connection =
        std::make_unique<Connection>(std::move(socket), address.Host(), address.Network(), mLimits, mTouched, mNow());
    connection->watched = EPOLLIN;
    Control(EPOLL_CTL_ADD, handle, connection->watched);
    mTimed = true;
    if (++mOfNetwork[connection->Network()] > mLimits.usersPerAddress)
        mExchange.TurnAway(connection->GetUser(), "There are too many connections from your address.", mNow());
}

// Left alone, the waiting client would be reported again and again.
void RelayServer::RefuseForWantOfHandles(int listener)
{
    mSpare.Close();
    Handle(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC)).Close();
    mSpare = Spare();
    mLog.Line(mNow(), "a client was refused: the process may open no more files");
    errno = EMFILE;
}

void RelayServer::Tick()
{
    const double now = mNow();
    if (!mTimed || now < mNextTick)
        return;
    mNextTick = now + kTickSeconds;
    mTimed = false;
    for (const auto& [handle, connection] : mConnections) {
        if (!connection->Timed())
            continue;
        mTimed = true;
        connection->Tick(mExchange, now);
    }
}

void RelayServer::Write()
{
    // What is said to the partners of those who are lost here may touch others: the list can grow.
    for (std::size_t i = 0; i < mTouched.size(); ++i) {
        auto& connection = *mTouched[i];
        connection.Flush(mNow());
        if (connection.Gone())
            mExchange.Leave(connection.GetUser(), connection.WhyGone(), mNow());
        Settle(connection);
        connection.Untouch();
    }
    Bury();
}

void RelayServer::Bury()
{
    // The list may name a connection twice, so none dies before its end.
    std::vector<std::unique_ptr<Connection>> dead;
    for (auto* connection : mTouched) {
        if (!connection->Gone())
            continue;
        if (auto node = mConnections.extract(connection->Socket()); !node.empty())
            dead.push_back(std::move(node.mapped()));
    }
    mTouched.clear();
    for (const auto& connection : dead) {
        if (--mOfNetwork[connection->Network()] == 0)
            mOfNetwork.erase(connection->Network());
    }
}

// Tells the system which events matter now.
void RelayServer::Settle(Connection& connection)
{
    mTimed = mTimed || connection.Timed();
    const unsigned wanted =
        (connection.WantsToRead() ? unsigned(EPOLLIN) : 0u) | (connection.WantsToWrite() ? unsigned(EPOLLOUT) : 0u);
    if (wanted == connection.watched)
        return;
    connection.watched = wanted;
    Control(EPOLL_CTL_MOD, connection.Socket(), wanted);
}

void RelayServer::Stop()
{
    if (mStopping)
        return;
    mStopping = true;
    for (const auto& listener : mListeners)
        Control(EPOLL_CTL_DEL, listener.Get(), 0);
    mListeners.clear();
    mExchange.Close();
    for (const auto& [handle, connection] : mConnections)
        mExchange.TurnAway(connection->GetUser(), "The server is being shut down.", mNow());
}

}  // namespace fenrik
