#pragma once

#include "link/CMessage.h"
#include "shared/CommandTable.h"

#include <cstdint>

namespace fenrik {

/// One line of the message list as it is kept: numbers only, 24 bytes. Texts are made when a line is painted. The
/// fields of a line without a message have no value, so that room for many lines costs nothing before it is used.
///
/// The wire word tells the frame's bytes again, since byte 0 is always 0, the upper half of byte 1 is always 0xA, bytes
/// 3 and 4 are the low 16 bits of the data and byte 5 is their sum:
///
///   bits     value
///   0 - 11   the header word's low 12 bits: command << 2 | state << 1 | extended, as on the wire
///   12 - 13  CMessage::RawForm
///   14       State is shown as "On"
///   15       Three-Way is shown as "True"
///
/// The command that is shown and the one on the wire differ for sub-commands: 1024 and up travel as 1000.
struct MessageRecord {
    std::int64_t time;      ///< Moment::milliseconds
    std::int32_t data;      ///< as shown; may exceed the 16 bits that travel
    std::uint32_t name;     ///< of LineNames
    std::uint16_t command;  ///< as shown, 0 to 1279
    std::uint16_t wire;     ///< see above
    std::int16_t count;     ///< the command's counter when the line was written
    std::uint8_t checkSum;
    std::uint8_t unseen;  ///< bit n: column n has changed since the views were told

    static constexpr std::uint16_t kOn = 1 << 14;
    static constexpr std::uint16_t kThreeWay = 1 << 15;

    MessageRecord() = default;
    MessageRecord(const CMessage& message, std::uint32_t itsName, std::int16_t itsCount)
        : time(message.time.milliseconds), data(message.data), name(itsName), command(std::uint16_t(message.Command)),
          wire(WireWord(message)), count(itsCount), checkSum(std::uint8_t(message.CheckSum)), unseen(0)
    {
    }

    [[nodiscard]] bool On() const { return (wire & kOn) != 0; }
    [[nodiscard]] bool ThreeWay() const { return (wire & kThreeWay) != 0; }
    [[nodiscard]] CMessage::RawForm Form() const { return CMessage::RawForm(wire >> 12 & 3); }

    /// The frame as it was on the wire; meaningless while Form is None.
    [[nodiscard]] Frame::Bytes Bytes() const
    {
        return Frame{std::uint16_t(wire >> 2 & 0x3FF), (wire & 2) != 0, (wire & 1) != 0, std::uint16_t(data)}.Encode();
    }

private:
    static std::uint16_t WireWord(const CMessage& message)
    {
        const std::uint16_t shown = (message.State ? kOn : 0) | (message.extended ? kThreeWay : 0);
        if (message.rawForm == CMessage::RawForm::None)
            return shown;
        const unsigned header = (message.rawBytes[1] & 0x0Fu) << 8 | message.rawBytes[2];
        return std::uint16_t(shown | unsigned(message.rawForm) << 12 | header);
    }
};

static_assert(sizeof(MessageRecord) == 24, "five million lines are to fit in 120 MB");

}  // namespace fenrik
