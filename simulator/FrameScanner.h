#pragma once

#include "link/Frame.h"

#include <cstdint>
#include <deque>
#include <limits>
#include <span>
#include <vector>

namespace fenrik {

/// One thing found in the received bytes.
struct Received {
    enum class Kind {
        Frame,
        Wake,     ///< the byte that asks the transceiver for an answer, outside a frame
        Unparsed  ///< bytes that belong to no frame
    };

    Kind kind = Kind::Unparsed;
    std::vector<std::uint8_t> bytes;
    Frame frame{};  ///< meaningful for Kind::Frame
};

/// Takes what the tool sends apart into frames, wake bytes and the rest.
///
/// Other than the tool, the scanner keeps the bytes of a possible frame back until it is whole, since only then is it
/// known whether a wake byte stands inside or outside of one. What stays half a frame for kPatience is given up.
class FrameScanner {
public:
    static constexpr std::uint8_t kWakeByte = 158;
    static constexpr double kPatience = 0.1;  ///< seconds; a whole frame takes 6.25 ms
    static constexpr double kNever = std::numeric_limits<double>::infinity();

    /// What `bytes` completed. `now` in seconds.
    [[nodiscard]] std::vector<Received> Take(std::span<const std::uint8_t> bytes, double now);

    /// Gives up half a frame whose patience is over.
    [[nodiscard]] std::vector<Received> Expire(double now);

    /// When Expire has something to do; kNever if nothing is kept back.
    [[nodiscard]] double Deadline() const { return mHeld.empty() ? kNever : mLast + kPatience; }

private:
    enum class Start { No, Perhaps, Whole };

    [[nodiscard]] Start FrameAtStart() const;
    void Scan(std::vector<Received>& found);
    void TakeFrame(std::vector<Received>& found);
    void TakeLoneByte(std::vector<Received>& found);

    std::deque<std::uint8_t> mHeld;
    double mLast = 0;  // when the last byte came
};

}  // namespace fenrik
