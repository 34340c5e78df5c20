#pragma once

#include "simulator/FileHandle.h"

#include <string>
#include <string_view>

namespace fenrik {

/// The simulator's TCP connection to a relay. After the constructor nothing waits.
class RelaySocket {
public:
    /// Connects to "HOST:PORT" or "[ADDRESS]:PORT". Throws std::runtime_error with the reason if that fails.
    explicit RelaySocket(const std::string& where);

    [[nodiscard]] int Handle() const { return mSocket.Get(); }

    /// What has come, empty if there is nothing. Throws std::runtime_error if the relay has gone.
    [[nodiscard]] std::string Read();

    void Send(std::string_view bytes);
    void Flush();
    [[nodiscard]] bool Unsent() const { return !mOut.empty(); }
    [[nodiscard]] bool HasRoom() const { return mOut.size() < kMostUnsent; }

private:
    static constexpr std::size_t kMostUnsent = 65536;

    FileHandle mSocket;
    std::string mOut;
};

}  // namespace fenrik
