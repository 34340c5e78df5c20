#include "relay/Address.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace fenrik {

namespace {

constexpr std::string_view kMapped = "::ffff:";  // begins an IPv6 address that stands for an IPv4 one

struct HostAndPort {
    std::string host;
    std::string port;
};

HostAndPort Split(const std::string& text)
{
    const auto colon = text.rfind(':');
    if (colon == std::string::npos || colon == 0 || colon + 1 == text.size())
        throw std::invalid_argument(text + " is not ADDRESS:PORT");
    auto host = text.substr(0, colon);
    if (host.front() == '[' && host.back() == ']')
        host = host.substr(1, host.size() - 2);
    else if (host.find(':') != std::string::npos)
        throw std::invalid_argument("an IPv6 address stands in brackets: [" + host + "]:" + text.substr(colon + 1));
    return {host, text.substr(colon + 1)};
}

void CheckPort(const std::string& port)
{
    if (port.size() > 5 || port.find_first_not_of("0123456789") != std::string::npos || std::stoi(port) > 65535)
        throw std::invalid_argument(port + " is no port");
}

void SetOption(const Handle& socket, int level, int name, int value)
{
    if (::setsockopt(socket.Get(), level, name, &value, sizeof value) != 0)
        throw std::system_error(errno, std::generic_category(), "setsockopt");
}

}  // namespace

Address Address::Parse(const std::string& text)
{
    const auto parts = Split(text);
    CheckPort(parts.port);
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICSERV;
    addrinfo* found = nullptr;
    if (const int error = ::getaddrinfo(parts.host.c_str(), parts.port.c_str(), &hints, &found); error != 0)
        throw std::invalid_argument(parts.host + ": " + ::gai_strerror(error));
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
    sockaddr_storage storage{};
    const auto* bytes = reinterpret_cast<const char*>(found->ai_addr);
    std::copy(bytes, bytes + found->ai_addrlen, reinterpret_cast<char*>(&storage));
    return {storage, found->ai_addrlen};
}

Address Address::OfSocket(const Handle& socket)
{
    sockaddr_storage storage{};
    socklen_t size = sizeof storage;
    if (::getsockname(socket.Get(), reinterpret_cast<sockaddr*>(&storage), &size) != 0)
        throw std::system_error(errno, std::generic_category(), "getsockname");
    return {storage, size};
}

Handle Address::Listen() const
{
    Handle socket(::socket(mStorage.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket.Valid())
        throw std::system_error(errno, std::generic_category(), Text());
    SetOption(socket, SOL_SOCKET, SO_REUSEADDR, 1);
    // So that [::] and 0.0.0.0 can be listened to side by side, whatever the system's default is.
    if (mStorage.ss_family == AF_INET6)
        SetOption(socket, IPPROTO_IPV6, IPV6_V6ONLY, 1);
    if (::bind(socket.Get(), Get(), mSize) != 0 || ::listen(socket.Get(), SOMAXCONN) != 0)
        throw std::system_error(errno, std::generic_category(), Text());
    return socket;
}

std::string Address::Name(bool port) const
{
    std::array<char, NI_MAXHOST> host{};
    std::array<char, NI_MAXSERV> service{};
    if (::getnameinfo(Get(), mSize, host.data(), host.size(), service.data(), service.size(),
                      NI_NUMERICHOST | NI_NUMERICSERV) != 0)
        return "unknown";
    std::string name = host.data();
    if (name.starts_with(kMapped) && name.find('.') != std::string::npos)
        name.erase(0, kMapped.size());
    if (!port)
        return name;
    if (name.find(':') != std::string::npos)
        name = '[' + name + ']';
    return name + ':' + service.data();
}

std::string Address::Host() const
{
    return Name(false);
}

std::string Address::Text() const
{
    return Name(true);
}

std::string Address::Network() const
{
    const auto host = Host();
    if (mStorage.ss_family != AF_INET6 || host.find(':') == std::string::npos)
        return host;
    const auto& address = reinterpret_cast<const sockaddr_in6&>(mStorage).sin6_addr;
    return {reinterpret_cast<const char*>(address.s6_addr), 8};
}

}  // namespace fenrik
