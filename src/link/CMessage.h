#pragma once

#include "link/Frame.h"
#include "shared/Clock.h"

#include <QString>

#include <cstdint>

namespace fenrik {

/// One frame inside the program: what it says, when it passed, and what its sender expects of the answer.
/// Numbers only; `RAW`, `TimeStamp` and `DateStamp` become text when they are asked for.
struct CMessage {
    /// Which of the two text forms `RAW` has: a received frame and a sent one are written differently.
    enum class RawForm : std::uint8_t { None, Received, Sent };

    std::int32_t Command = 0;   ///< 0 to 1023 on the wire; 1024 to 1279 inside the program only; 0 is never sent
    std::uint8_t State = 0;     ///< "On" if not 0
    std::uint8_t extended = 0;  ///< "True" if not 0
    std::int32_t data = 0;      ///< the low 16 bits travel
    std::int32_t CheckSum = 0;
    RawForm rawForm = RawForm::None;
    Frame::Bytes rawBytes{};        ///< the frame as it was on the wire; meaningless while rawForm is None
    Moment time;                    ///< of sending or receipt
    std::int32_t ReplyCommand = 0;  ///< number of the reply that the sender waits for; 0 = none
    bool EchoSend = false;          ///< show this message in the list when it is sent
    bool EchoReply = false;         ///< show the reply to this message in the list

    /// The six bytes in hexadecimal, joined by ".". Received: unpadded, "0.AE.14.0.3.C5". Sent: texts of digits only
    /// are padded to two places and texts with a letter are left alone, "00.AE.14.00.03.C5", but 0x0A reads "A".
    [[nodiscard]] QString RAW() const { return RawText(rawForm, rawBytes); }
    [[nodiscard]] QString TimeStamp() const { return rawForm == RawForm::None ? QString() : time.TimeStamp(); }
    [[nodiscard]] QString DateStamp() const { return rawForm == RawForm::None ? QString() : time.DateStamp(); }

    [[nodiscard]] static QString RawText(RawForm form, const Frame::Bytes& bytes);
};

}  // namespace fenrik
