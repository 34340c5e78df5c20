#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

/// How far the remote connection has come. The order counts: most tests are "at least".
namespace RemoteStates {
inline constexpr std::int32_t kDisconnected = 1;
inline constexpr std::int32_t kConnected = 2;  ///< the socket is up
inline constexpr std::int32_t kLoggedOn = 3;
inline constexpr std::int32_t kWaiting = 4;  ///< piped; the other user hasn't decided yet
inline constexpr std::int32_t kDenied = 5;   ///< piped; may watch and not send
inline constexpr std::int32_t kGranted = 6;  ///< piped; may send
}  // namespace RemoteStates

/// Whoever follows the remote connection. Called on the UI thread, perhaps inside a wait.
class IRemoteStateable {
public:
    virtual ~IRemoteStateable() = default;

    /// `state`: one of RemoteStates, or 0 before the first connection. May be the state that already was.
    virtual void setState(std::int32_t state) = 0;
};

/// What the windows around a remote connection need of it. Sending never waits and reports its own errors; while
/// there is no connection it does nothing.
class RemoteHost {
public:
    virtual ~RemoteHost() = default;
    [[nodiscard]] virtual std::int32_t RemoteState() const = 0;
    [[nodiscard]] virtual bool IsRemotePiped() const = 0;
    virtual void sendChatMessage(const QString& text) = 0;
    virtual void sendEchoServer(const QString& text) = 0;
    virtual void sendEchoClient(const QString& text) = 0;
};

}  // namespace fenrik
