#pragma once

#include <cstddef>

namespace fenrik {

/// What one client, and all of them together, may use of the relay.
struct RelayLimits {
    int users = 1000;                 ///< logged on at the same time
    int usersPerAddress = 64;         ///< connections from one IPv4 address or one IPv6 network of 64 bits
    std::size_t longestBody = 32767;  ///< of a frame from a client, bytes
    int framesPerSecond = 1000;       ///< of one client; what comes faster waits in its own connection
    double logonSeconds = 10;         ///< from the connection to the log-on
    std::size_t mostUnsent = 262144;  ///< bytes that a slow reader may leave behind
    double stallSeconds = 30;         ///< how long a reader may take nothing of what waits for it
    double farewellSeconds = 2;       ///< how long the last frames of a connection may take

    /// Connections at the same time, those that have still to log on among them.
    [[nodiscard]] int Connections() const { return users + users / 10 + 16; }
};

/// Who lets the user that opened a pipe send to the network at the other end.
enum class Consent {
    Grant,  ///< the relay, at once; the piped user may withdraw it
    Ask,    ///< the piped user
    Deny,   ///< nobody: pipes are for watching
};

}  // namespace fenrik
