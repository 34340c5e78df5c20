#pragma once

#include <QString>

#include <variant>

namespace fenrik {

/// A line "sleep,500" of a script.
struct DiagScriptSleep {
    int milliseconds = 0;
};

/// A line "128,1,0,0x00FF" of a script: command number, state, three-way flag, data.
struct DiagScriptCommand {
    int command = 0;  ///< 0 to 1279
    bool on = false;
    bool extended = false;
    QString data;  ///< what stands in the composer's data field then
};

using DiagScriptStatement = std::variant<DiagScriptSleep, DiagScriptCommand>;

/// The statement of one line. Fields are split at commas; there is no quoting, and what is behind the last field that
/// counts is left alone.
///
///   field   sleep                      command
///   1       "sleep" in any case        number of the command, decimal
///   2       milliseconds               state, "On" if exactly 1
///   3                                  three-way flag, "True" if exactly 1
///   4                                  data, decimal, or hexadecimal behind "0x"
///
/// Throws Error 9 for a missing field or a command outside the table, 13 for a field that is no number and 6 for a
/// number that is too large.
[[nodiscard]] DiagScriptStatement ParseDiagScriptLine(const QString& line);

}  // namespace fenrik
