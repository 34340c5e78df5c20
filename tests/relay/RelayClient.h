#pragma once

#include "pipe/PipeBodies.h"
#include "pipe/PipeReader.h"
#include "relay/Address.h"

#include <functional>
#include <ostream>

namespace fenrik {

inline bool operator==(const PipeFrame& a, const PipeFrame& b)
{
    return a.type == b.type && a.body == b.body;
}

inline void PrintTo(const PipeFrame& frame, std::ostream* out)
{
    *out << "type " << int(frame.type) << " \"" << frame.body << '"';
}

/// A client of the relay on a real socket. While it waits it calls `turn`, so that a relay of the same thread can work.
class RelayClient {
public:
    using Turn = std::function<void()>;

    /// Connects. `turn` waits for a short time at most.
    RelayClient(const std::string& address, Turn turn, int receiveBuffer = 0);

    void SendBytes(std::string_view bytes);
    void Send(PipeFrameType type, std::string_view body = {}) { SendBytes(EncodePipeFrame(type, body)); }

    /// Logs on and takes the relay's answer.
    void LogOn(std::string_view name);
    [[nodiscard]] std::int32_t Id() const { return mId; }

    /// The next frame, announcements of a changed list left out; nothing if the connection ends or none comes.
    [[nodiscard]] std::optional<PipeFrame> Read();

    /// All frames that come before the answer to an echo that is sent now: what the relay had for this client.
    [[nodiscard]] std::vector<PipeFrame> ReadAll();

    /// The whole frames that have come by now.
    [[nodiscard]] std::vector<PipeFrame> ReadArrived();

    /// All frames up to the end of the connection. Fails the test if it doesn't end.
    [[nodiscard]] std::vector<PipeFrame> ReadToEnd();

    /// Sends nothing more.
    void Close() { mSocket.Close(); }
    [[nodiscard]] bool Ended() const { return mEnded; }
    [[nodiscard]] int Socket() const { return mSocket.Get(); }

    bool keepsAnnouncements = false;

private:
    [[nodiscard]] bool TakeIn();
    [[nodiscard]] bool Wanted(const PipeFrame& frame) const
    {
        return keepsAnnouncements || frame.type != PipeFrameType::frameUserListChanged;
    }

    Handle mSocket;
    Turn mTurn;
    PipeReader mReader;
    std::int32_t mId = 0;
    int mEchoes = 0;
    bool mEnded = false;
};

}  // namespace fenrik
