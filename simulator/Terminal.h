#pragma once

#include "simulator/FileHandle.h"
#include "simulator/SendQueue.h"

#include <cstdint>
#include <span>
#include <string>

namespace fenrik {

/// A pseudo-terminal: the simulator's end of it, and the device that the tool opens as a serial port.
///
/// The device is raw before anybody opens it. The terminal keeps a descriptor of the device itself, so that its own end
/// stays usable while no program has the device open, and counts the programs that open and close it.
class Terminal final : public SimulatorLine {
public:
    /// Throws std::system_error if the system has no terminal to give.
    Terminal();

    [[nodiscard]] const std::string& Device() const { return mDevice; }

    /// What is written while nobody has the device open is lost, as on a real port.
    std::size_t Write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] bool Heard() const override { return mUsers > 0 || !mWatch.Valid(); }

    /// Reads what is there into `buffer` and returns the number of bytes, 0 if there are none. Never waits.
    [[nodiscard]] std::size_t Read(std::span<std::uint8_t> buffer);

    /// Takes note of programs that opened or closed the device. When the last one has gone, what it didn't read is
    /// thrown away and its claim on the device is lifted. True if Heard changed.
    bool NoteUsers();

    [[nodiscard]] int DataHandle() const { return mOwn.Get(); }     ///< to wait for bytes or room
    [[nodiscard]] int UsersHandle() const { return mWatch.Get(); }  ///< to wait for NoteUsers; -1 if it can't be known

private:
    void MakeRaw() const;
    void WatchUsers();
    [[nodiscard]] bool UsersMayHaveChanged() const;

    FileHandle mOwn;
    FileHandle mKept;  // of the device
    FileHandle mWatch;
    std::string mDevice;
    int mUsers = 0;
};

}  // namespace fenrik
