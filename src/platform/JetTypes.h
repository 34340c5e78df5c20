#pragma once

#include <QByteArrayView>
#include <QString>
#include <QVariant>

namespace fenrik {

/// Types of a column in a Jet file, by the numbers that its table definition holds.
namespace JetType {
inline constexpr int kBoolean = 1;
inline constexpr int kByte = 2;
inline constexpr int kInteger = 3;
inline constexpr int kLong = 4;
inline constexpr int kMoney = 5;
inline constexpr int kSingle = 6;
inline constexpr int kDouble = 7;
inline constexpr int kDate = 8;
inline constexpr int kBinary = 9;
inline constexpr int kText = 10;
inline constexpr int kOle = 11;
inline constexpr int kMemo = 12;
inline constexpr int kGuid = 15;
inline constexpr int kNumeric = 16;
inline constexpr int kComplex = 18;
inline constexpr int kBigInteger = 19;
}  // namespace JetType

/// The two ways of keeping texts: bytes of Windows-1252, or UCS-2 with an own compression.
enum class JetText : std::uint8_t { Ansi, Unicode };

/// The type of the column in the SQLite copy. Money and decimals have none, so that the engine leaves a number that
/// no double holds as the text that it is.
[[nodiscard]] QString SqliteTypeOf(int jetType);

/// True for the two types whose bytes stand outside the row.
[[nodiscard]] bool IsLongType(int jetType);

/// A text as it stands in the file. Compressed UCS-2 begins with FF FE; then a byte is a character below 256, and a
/// byte 0 switches to two bytes for each character and back.
[[nodiscard]] QString DecodeJetText(QByteArrayView bytes, JetText encoding);

/// The value of a field that is not null. `bytes` is the field, or the whole long value; `scale` is that of a decimal.
/// Integers become qlonglong; singles, doubles double; texts and memos QString; dates "yyyy-MM-dd hh:mm:ss"; GUIDs
/// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"; money and decimals double, or a text of all digits if a double does not
/// hold them; all others QByteArray. Throws Error kDatabaseBroken if the field has too few bytes for its type.
[[nodiscard]] QVariant DecodeJetValue(int jetType, QByteArrayView bytes, JetText encoding, int scale);

}  // namespace fenrik
