#pragma once

#include <QByteArray>
#include <QString>

namespace fenrik {

/// INI files whose values are meant to be texts. QSettings also knows a form for stored objects, "@Variant(...)", and
/// makes whatever it says: a list as long, or as deep, as it claims to be. The program writes no such values, so a file
/// that has one was not written by it.
namespace IniTexts {

/// True if QSettings would find a stored object in the file `bytes`. Also true of some files in which it would not,
/// none of which has texts alone.
[[nodiscard]] bool HoldObjects(const QByteArray& bytes);

/// Renames the file to `<file>.broken` if it holds objects, so that it is kept and not read. True if it did.
[[nodiscard]] bool SetObjectsAside(const QString& path);

}  // namespace IniTexts

}  // namespace fenrik
