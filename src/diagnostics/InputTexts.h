#pragma once

#include <QString>

namespace fenrik {

class CommandTable;

/// What the input view says of one input, in words. Codes that mean nothing read "Unavailable".
///
///   SwitchType  1 to 6: momentary or latching, normally open or closed, or neither told
///   OnState     low three bits: level of one contact state; bits 4 to 6: level of the other; the rest is not looked at
///   ThreeWay    0 or 1
namespace InputTexts {
[[nodiscard]] QString SwitchType(int code);
[[nodiscard]] QString OnState(int code);
[[nodiscard]] QString ThreeWay(int code);

/// Name of the command that the input sends.
[[nodiscard]] QString CommandName(int command, const CommandTable& commands);
}  // namespace InputTexts

}  // namespace fenrik
