#include "simulator/RelaySocket.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <sys/socket.h>

namespace fenrik {

namespace {

using AddressList = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

AddressList Find(const std::string& where)
{
    const auto colon = where.rfind(':');
    if (colon == std::string::npos)
        throw std::runtime_error(where + " is not HOST:PORT");
    auto host = where.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']'))
        host = host.substr(1, host.size() - 2);
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (const int error = ::getaddrinfo(host.c_str(), where.c_str() + colon + 1, &hints, &found); error != 0)
        throw std::runtime_error(where + ": " + ::gai_strerror(error));
    return {found, ::freeaddrinfo};
}

}  // namespace

RelaySocket::RelaySocket(const std::string& where)
{
    const auto addresses = Find(where);
    for (const auto* address = addresses.get(); address && !mSocket.Valid(); address = address->ai_next) {
        FileHandle socket(::socket(address->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
        if (socket.Valid() && ::connect(socket.Get(), address->ai_addr, address->ai_addrlen) == 0)
            mSocket = std::move(socket);
    }
    if (!mSocket.Valid())
        throw std::runtime_error(where + ": " + std::strerror(errno));
    const int on = 1;
    ::setsockopt(mSocket.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    ::fcntl(mSocket.Get(), F_SETFL, ::fcntl(mSocket.Get(), F_GETFL) | O_NONBLOCK);
}

std::string RelaySocket::Read()
{
    std::array<char, 4096> buffer;
    const auto got = ::recv(mSocket.Get(), buffer.data(), buffer.size(), 0);
    if (got > 0)
        return {buffer.data(), std::size_t(got)};
    if (got < 0 && (errno == EAGAIN || errno == EINTR))
        return {};
    throw std::runtime_error(got == 0 ? "the relay has hung up" : std::string("the relay: ") + std::strerror(errno));
}

void RelaySocket::Send(std::string_view bytes)
{
    mOut += bytes;
    Flush();
}

// A connection that is lost shows when it is read.
void RelaySocket::Flush()
{
    if (mOut.empty())
        return;
    const auto sent = ::send(mSocket.Get(), mOut.data(), mOut.size(), MSG_NOSIGNAL);
    if (sent > 0)
        mOut.erase(0, std::size_t(sent));
}

}  // namespace fenrik
