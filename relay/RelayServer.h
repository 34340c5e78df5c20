#pragma once

#include "relay/Address.h"
#include "relay/Connection.h"

#include <functional>
#include <memory>
#include <unordered_map>

struct epoll_event;

namespace fenrik {

/// The relay at its sockets: accepts, reads, has the exchange act, writes. One thread, no waiting but for events.
///
/// A turn handles what has happened and then writes; so a frame leaves in the turn in which it came.
class RelayServer {
public:
    using Now = std::function<double()>;  ///< seconds of a steady clock

    /// Throws std::system_error if an address can't be listened to. `log` outlives the server.
    RelayServer(const std::vector<Address>& addresses, const RelayLimits& limits, Consent consent, RelayLog& log,
                Now now);
    ~RelayServer();

    /// The addresses that it listens to, with the ports that the system chose.
    [[nodiscard]] std::vector<Address> Listening() const;

    /// Also calls `ready`, inside Turn, whenever `handle` can be read.
    void Watch(int handle, std::function<void()> ready);

    /// One turn; waits for something to happen for `milliseconds` at most.
    void Turn(int milliseconds);

    /// Accepts nobody any more, tells the users and ends their connections. Finished is true once they have gone.
    void Stop();
    [[nodiscard]] bool Finished() const { return mStopping && mConnections.empty(); }

    [[nodiscard]] std::size_t Connections() const { return mConnections.size(); }
    [[nodiscard]] std::size_t UsersLoggedOn() const { return mExchange.Users().Size(); }

private:
    [[nodiscard]] int WaitMilliseconds(int most) const;
    void Dispatch(const epoll_event& event);
    void Accept(int listener);
    [[nodiscard]] bool AcceptOne(int listener);
    void Welcome(Handle socket, const Address& address);
    void RefuseForWantOfHandles(int listener);
    void Tick();
    void Write();
    void Bury();
    void Settle(Connection& connection);
    void Control(int operation, int handle, unsigned events) const;

    RelayLimits mLimits;
    RelayLog& mLog;
    Now mNow;
    Exchange mExchange;
    Handle mPoll;
    Handle mSpare;  // given up for a moment when there are no more handles
    std::vector<Handle> mListeners;
    std::unordered_map<int, std::function<void()>> mWatched;
    std::vector<Connection*> mTouched;
    std::unordered_map<int, std::unique_ptr<Connection>> mConnections;
    std::unordered_map<std::string, int> mOfNetwork;  // connections
    double mNextTick = 0;
    bool mTimed = false;  // a connection has to be looked at every now and then
    bool mStopping = false;
};

}  // namespace fenrik
