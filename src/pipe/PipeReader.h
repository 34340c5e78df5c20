#pragma once

#include "pipe/PipeFrame.h"

namespace fenrik {

/// Takes the bytes of a stream in pieces of any size and gives whole frames only. Knows no socket and never holds more
/// than kCapacity bytes.
///
///     while (socket has bytes) {
///         reader.Append(up to reader.Room() bytes of it);
///         while (reader.Next(frame) == PipeReader::Found::Frame)
///             Handle(frame);
///     }
///
/// The frame is the caller's own copy: Handle may wait, and bytes may be appended meanwhile.
class PipeReader {
public:
    /// Two frames of the greatest length: whatever is held, either a frame is whole or there is room.
    static constexpr std::size_t kCapacity = 2 * (PipeFrame::kHeaderSize + PipeFrame::kLongestBody);

    enum class Found {
        Nothing,      ///< more bytes are needed
        Frame,        ///< a frame was taken off the stream
        BadPreamble,  ///< no frame begins here; Preamble() tells what stands in its place
        BadLength,    ///< a length below 0 or above what the reader accepts
    };

    explicit PipeReader(std::size_t longestBody = PipeFrame::kLongestBody) : mLongestBody(longestBody) {}

    [[nodiscard]] std::size_t Room() const { return kCapacity - Held(); }
    [[nodiscard]] std::size_t Held() const { return mBytes.size() - mBegin; }

    /// Takes as many of `bytes` as there is room for and returns their number.
    std::size_t Append(std::string_view bytes);

    /// Fills `frame` if the answer is Frame. After BadPreamble or BadLength nothing was taken off: the same answer
    /// comes again until Clear. A bad header is told at once, before the body that it announces has come.
    [[nodiscard]] Found Next(PipeFrame& frame);

    /// The two bytes with which the held bytes begin, as a number.
    [[nodiscard]] std::int16_t Preamble() const { return Short(0); }

    /// Drops everything that is held.
    void Clear();

private:
    [[nodiscard]] std::int16_t Short(std::size_t offset) const;
    void Drop(std::size_t count);

    std::size_t mLongestBody;
    std::string mBytes;
    std::size_t mBegin = 0;  // what stands before it was given out already
};

}  // namespace fenrik
