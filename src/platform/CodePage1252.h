#pragma once

#include <QByteArray>
#include <QString>

namespace fenrik {

/// Windows-1252, the code page of texts in databases and files of the tool, made total and reversible: the five
/// codes that it leaves unassigned are the control characters of the same number.
[[nodiscard]] QChar CharacterFrom1252(char byte);

/// The byte of a character; a question mark for what the code page does not have.
[[nodiscard]] char ByteIn1252(QChar character);

[[nodiscard]] QString TextFrom1252(QByteArrayView bytes);
[[nodiscard]] QByteArray BytesIn1252(QStringView text);

}  // namespace fenrik
