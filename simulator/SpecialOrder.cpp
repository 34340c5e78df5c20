#include "simulator/SpecialOrder.h"

namespace fenrik {

namespace {

constexpr int kSwitchAddress = 969;
enum AddressCode { kAssign = 40, kSwap = 41, kTaken = 42, kRefused = 43 };
enum CalibrationCode { kFirstSender = 1, kLastSender = 5, kFactoryValues = 15, kStored = 16, kOutOfRange = 17 };

}  // namespace

std::optional<Frame> SpecialOrder::Answer(bool refuses) const
{
    if (mFrame.state || !mFrame.extended)
        return std::nullopt;
    if (mFrame.command == kSwitchAddress)
        return AnswerAddress(refuses);
    return AnswerCalibration();
}

std::optional<Frame> SpecialOrder::AnswerAddress(bool refuses) const
{
    if (Code() == kAssign)
        return Reply(refuses ? kRefused : kAssign, true);
    if (Code() == kSwap)
        return Reply(kTaken, true);
    return std::nullopt;
}

Frame SpecialOrder::AnswerCalibration() const
{
    const bool isSender = Code() >= kFirstSender && Code() <= kLastSender;
    return Reply(isSender || Code() == kFactoryValues ? kStored : kOutOfRange, false);
}

Frame SpecialOrder::Reply(int code, bool state) const
{
    return {mFrame.command, state, true, std::uint16_t(code << 8 | Node())};
}

}  // namespace fenrik
