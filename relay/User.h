#pragma once

#include "pipe/PipeFrame.h"

#include <cstdint>

namespace fenrik {

/// The way to one client. Neither call reaches back into the exchange.
class UserLine {
public:
    virtual ~UserLine() = default;

    virtual void Send(PipeFrameType type, std::string_view body) = 0;

    /// The connection ends as soon as what was sent has left.
    virtual void End() = 0;

    /// True while so much waits to be read by the client that its own requests have to wait.
    [[nodiscard]] virtual bool Backlogged() const = 0;
};

/// A client of the relay, from its connection to its end.
struct User {
    User(UserLine& itsLine, std::string itsAddress) : line(itsLine), address(std::move(itsAddress)) {}

    UserLine& line;
    std::string address;  ///< network address, as text

    std::int32_t id = 0;  ///< 0: not logged on
    std::string name;     ///< what the others see
    bool ended = false;   ///< its frames are no longer handled

    User* partner = nullptr;  ///< the other end of its pipe
    bool opener = false;      ///< it asked for the pipe: the network is at the other end
    bool asked = false;       ///< it waits for, or has, the partner's answer about access
    bool granted = false;     ///< the partner lets it send to its network

    std::uint64_t listVersion = 0;  ///< of the user list that it fetched last
    bool listAnnounced = false;     ///< it was told to fetch the list, and has not yet
    bool strayTold = false;         ///< the log has a line about frames of it that led nowhere

    [[nodiscard]] bool LoggedOn() const { return id != 0; }
    [[nodiscard]] bool MayFeed() const { return partner && (!opener || granted); }
};

}  // namespace fenrik
