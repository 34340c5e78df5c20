#pragma once

#include "link/Frame.h"

#include <cstdint>
#include <ostream>
#include <span>
#include <string_view>

namespace fenrik {

class TimeSource;

/// What went over the line, a line of text for each frame or run of bytes, flushed at once:
///
///      1.234 RX 00 AE 14 00 03 C5  901 state=0 ext=0 data=3
///      1.250 TX 00 AE 18 00 03 C9  902 state=0 ext=0 data=3
///      2.000 RX 9E  wake
///
/// Columns: seconds since the start, what happened, the bytes, the frame's fields or a word. What happened is RX
/// (received), TX (handed to the line), LOST (an answer kept back on purpose), DROP (the queue was full) or "--"
/// (a note without bytes).
class TrafficLog {
public:
    /// `out` may be null: then nothing is written. Both outlive the log.
    TrafficLog(const TimeSource& time, std::ostream* out) : mTime(time), mOut(out) {}

    void Bytes(std::string_view what, std::span<const std::uint8_t> bytes, std::string_view meaning);
    void Note(std::string_view text);

    /// "901 state=0 ext=0 data=3", or `otherwise` if the bytes are no frame.
    [[nodiscard]] static std::string Describe(std::span<const std::uint8_t> bytes, std::string_view otherwise);

private:
    const TimeSource& mTime;
    std::ostream* mOut;
};

}  // namespace fenrik
