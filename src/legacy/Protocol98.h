#pragma once

#include "legacy/MessageTable98.h"

namespace fenrik {

class Boxes;
class Database;
class ErrorReporter;
class Recordset;
struct Settings;

/// The system database of the older network: where it is, whether it is one, and the names of messages in it.
///
/// It has the tables "Info" (who made it) and "System", a row for each message:
///
///   message      number, 0 to 255
///   name         what it is called
///   description  "ANALOG", "LOADSHED" or free text
///   Ignore       true: never shown
///   Divisor      of an analog value
class Protocol98 {
public:
    Protocol98(const Settings& settings, Boxes& boxes, ErrorReporter& errors)
        : mSettings(settings), mBoxes(boxes), mErrors(errors)
    {
    }

    /// The user has chosen a database; it may be gone.
    [[nodiscard]] bool IsChosen() const;
    [[nodiscard]] QString DatabaseFile() const;

    /// True if the chosen database file is there.
    [[nodiscard]] bool ConfirmDB();

    /// Why the file `path` can't be the system database, in words for the user; empty if it can.
    [[nodiscard]] static QString Complaint(const QString& path);

    /// Reads the table anew from the chosen database. What is odd about it is told in a box. True if the tool may
    /// connect: with a table that is too long, too short or empty too.
    [[nodiscard]] bool LoadMessageTable();

    [[nodiscard]] const MessageTable98& Messages() const { return mMessages; }

private:
    [[nodiscard]] QString ReadRows(Recordset& rows);

    const Settings& mSettings;
    Boxes& mBoxes;
    ErrorReporter& mErrors;
    MessageTable98 mMessages;
};

}  // namespace fenrik
