#pragma once

#include "link/Frame.h"

#include <optional>

namespace fenrik {

/// What a special command tells a mounted node to do, and what the node says to it.
///
///   command  meaning                          answer of the node
///   969      address of an Eaton E33 switch   code 40: 40 with state on, 43 if refused; code 41: 42; others: none
///   973      calibration of its senders       codes 1 to 5 and 15: 16, stored; others: 17, out of range
///
/// The code stands in the high byte of `data`, the node in the low one. What the tool orders has `state` off and
/// `extended` on; everything else is none of the node's business.
class SpecialOrder {
public:
    /// `frame` is of command 969 or 973.
    explicit SpecialOrder(const Frame& frame) : mFrame(frame) {}

    [[nodiscard]] int Node() const { return mFrame.data & 0xFF; }

    [[nodiscard]] std::optional<Frame> Answer(bool refuses) const;

private:
    [[nodiscard]] int Code() const { return mFrame.data >> 8; }
    [[nodiscard]] std::optional<Frame> AnswerAddress(bool refuses) const;
    [[nodiscard]] Frame AnswerCalibration() const;
    [[nodiscard]] Frame Reply(int code, bool state) const;

    Frame mFrame;
};

}  // namespace fenrik
