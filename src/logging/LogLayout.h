#pragma once

#include "shared/Clock.h"

#include <QLocale>
#include <QString>
#include <QStringList>

#include <optional>

namespace fenrik {

class VersionInfo;
struct CMessage;
struct CMessage98;

/// How the two logs look. Columns are counted from 1; what lies between two fields is blank, and a text that is longer
/// than its column is cut, so that the columns hold. Numbers marked "printed" stand between two blanks, " 1 "; the
/// first is the place of a minus; a fraction stands without a zero before its point, " .5 ".
///
///   Fenrik 2000                              Fenrik 98
///   1   name of the command, 27 wide         1   node, printed
///   28  data, 5 wide                         11  name, 35 wide
///   35  state, printed                       46  data, printed
///   42  extended, printed                    56  description, 20 wide
///   52  checksum, 5 wide                     76  seconds since midnight, printed
///   62  raw bytes
///   80  time, "h:mm:ss.00"
///   93  date
namespace LogLayout {

/// The head of a connection; `connected` is its third line.
[[nodiscard]] QStringList Header00(const VersionInfo& version, const QString& connected);
[[nodiscard]] QString Line00(const QString& name, const CMessage& message);

/// `connected` is the fourth line; the third names the `trigger`, if there is one.
[[nodiscard]] QStringList Header98(std::optional<int> trigger, const QString& connected);
[[nodiscard]] QString Line98(const CMessage98& entry);

/// The locale's short date with all digits of the year, and its time with seconds: "3/14/2026 9:05:07 AM".
[[nodiscard]] QString GeneralDate(Moment moment, const QLocale& locale);

}  // namespace LogLayout

}  // namespace fenrik
