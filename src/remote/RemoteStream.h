#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace fenrik {

/// The bytes of a connection to the relay, as those see them who write and read frames.
class RemoteStream {
public:
    virtual ~RemoteStream() = default;

    /// Writes `parts` one after the other; they leave together, in one segment where the system allows. All of them or,
    /// with an Error thrown, none.
    virtual void SendData(std::initializer_list<std::string_view> parts) = 0;

    /// What has arrived, at most `most` bytes of it. The rest stays and holds the sender up.
    [[nodiscard]] virtual std::string GetData(std::size_t most) = 0;
    [[nodiscard]] virtual std::size_t BytesReceived() const = 0;

    /// DataArrival comes once more from the event loop, for a handler that left something undone.
    virtual void QueueDataArrival() = 0;
};

}  // namespace fenrik
