#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace fenrik {

class TrafficLog;

/// The way from the module to the caller and to the network.
class ModuleHost {
public:
    virtual ~ModuleHost() = default;
    virtual void ToCaller(const std::string& bytes) = 0;
    virtual void ToNetwork(std::uint8_t byte) = 0;
    virtual void ModuleHangsUp() = 0;
    [[nodiscard]] virtual bool CallLasts(char command) = 0;  ///< false if the line breaks at this command
};

/// The modem module on a vehicle's network, once it has answered a call. It takes two characters for a command: "\v"
/// tells its version, "\p" begins to pass the network through, "\P" ends that, "\h" hangs up. While it passes through,
/// "\\" is one byte 0x5C of the network in either direction; between its bytes the module may say "\" and a letter.
class ModemModule {
public:
    ModemModule(TrafficLog& log, ModuleHost& host) : mLog(log), mHost(host) {}

    /// A call begins: it takes commands.
    void Answer();

    /// A byte from the caller.
    void Hear(std::uint8_t byte);

    /// What the caller is sent for the network's `bytes`, with the notes that are due.
    [[nodiscard]] std::string Escape(std::span<const std::uint8_t> bytes);

    [[nodiscard]] bool PassesThrough() const { return mPassesThrough; }

    void SetDeaf(bool deaf) { mDeaf = deaf; }
    void SetNotesEvery(int bytes) { mNotesEvery = bytes; }
    void SayNote(char note);

    static constexpr char kVersion[] = "1.4";

private:
    void Obey(char command);

    TrafficLog& mLog;
    ModuleHost& mHost;
    bool mPassesThrough = false;
    bool mEscape = false;
    bool mDeaf = false;
    int mNotesEvery = 0;
    int mSinceNote = 0;  // bytes of the network
};

}  // namespace fenrik
