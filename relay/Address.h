#pragma once

#include "relay/Handle.h"

#include <string>
#include <sys/socket.h>

namespace fenrik {

/// An address and a port of the network, IPv4 or IPv6.
class Address {
public:
    /// "192.168.0.5:48051", "[::1]:48051", "localhost:48051"; port 0 lets the system choose. Throws
    /// std::invalid_argument if `text` is none.
    [[nodiscard]] static Address Parse(const std::string& text);

    /// The near end of a socket.
    [[nodiscard]] static Address OfSocket(const Handle& socket);

    Address(const sockaddr_storage& storage, socklen_t size) : mStorage(storage), mSize(size) {}

    /// A socket that listens here. Throws std::system_error.
    [[nodiscard]] Handle Listen() const;

    [[nodiscard]] int Family() const { return mStorage.ss_family; }

    /// True if `socket`, of the same family, now has a connection to this address.
    [[nodiscard]] bool Connect(const Handle& socket) const { return ::connect(socket.Get(), Get(), mSize) == 0; }

    /// "192.168.0.5", also where it comes as an IPv6 address that stands for it; "fe80::1".
    [[nodiscard]] std::string Host() const;

    /// With the port, in the form that Parse takes.
    [[nodiscard]] std::string Text() const;

    /// The part of it that one client can't change at will: an IPv4 address, the first 64 bits of an IPv6 address.
    [[nodiscard]] std::string Network() const;

private:
    [[nodiscard]] const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&mStorage); }
    [[nodiscard]] std::string Name(bool port) const;

    sockaddr_storage mStorage;
    socklen_t mSize;
};

}  // namespace fenrik
