#pragma once

#include "link/CMessage.h"

namespace fenrik {

/// A message as it comes from the wire. A sub-command (1024 and up) has travelled as 1000, its number in the data.
inline CMessage Received(int command, int data = 0, bool state = false, bool extended = false)
{
    CMessage message;
    message.Command = command;
    message.State = state ? 1 : 0;
    message.extended = extended ? 1 : 0;
    message.data = data;
    const int onWire = command >= 1024 ? 1000 : command;
    message.rawBytes = Frame{std::uint16_t(onWire), state, extended, std::uint16_t(data)}.Encode();
    message.CheckSum = message.rawBytes[5];
    message.rawForm = CMessage::RawForm::Received;
    message.time = {((9 * 60 + 5) * 60 + 7) * 1000 + 250};
    return message;
}

inline CMessage Sent(int command, int data = 0)
{
    CMessage message = Received(command, data);
    message.rawForm = CMessage::RawForm::Sent;
    return message;
}

}  // namespace fenrik
