#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

/// The leading number of a text: blanks are skipped, digits, a sign, a point and an exponent are read, and reading
/// stops at the first character that fits no number. "1F" is 1, "x" is 0. The point is always ".".
[[nodiscard]] double Val(const QString& text);

/// Upper-case hexadecimal without padding; a negative number shows its 32 bits.
[[nodiscard]] QString Hex(std::int32_t value);

/// "0x" and Hex.
[[nodiscard]] QString HexData(std::int32_t value);

/// The value of a hexadecimal text: empty counts as "0", a leading "0x" is dropped, reading stops at the first
/// character that is no hexadecimal digit.
[[nodiscard]] std::int32_t HexToLong(const QString& text);

/// "True" or "False".
[[nodiscard]] QString BooleanText(bool value);

}  // namespace fenrik
