#pragma once

#include <cstdint>
#include <span>

namespace fenrik {

struct Action;

/// A network at its line, of one kind or the other: what the program around it works. It knows no device and no clock
/// of its own; the caller gives it bytes and calls Step when it is due.
class Simulated {
public:
    virtual ~Simulated() = default;

    /// Bytes from the tool.
    virtual void Receive(std::span<const std::uint8_t> bytes) = 0;

    /// Does what is due by now.
    virtual void Step() = 0;

    /// When Step has something to do (seconds of the time source).
    [[nodiscard]] virtual double NextDue() const = 0;

    /// True if Step is also to be called when the line has room again.
    [[nodiscard]] virtual bool Blocked() const = 0;

    /// Carries out `action` at once.
    virtual void Carry(const Action& action) = 0;
};

}  // namespace fenrik
