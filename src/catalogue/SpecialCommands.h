#pragma once

#include "catalogue/CSpecialCommand.h"

#include <map>

namespace fenrik {

class Boxes;
class CatalogueHost;
class CommandTable;
class Database;

/// All special commands by command number; one instance, filled at start from "SpecialCommands.dav".
///
///   table      columns
///   Version    Version: text that holds a number
///   General    Command, CodeMask, CodeShift, NodeMask, NodeShift (both may be null: 0), "Text Seperator",
///              "Requires Mount" (from version 1.1)
///   Defaults   Command, State, extended, Extra, Icon: what a null in a row of Details stands for
///   Details    Command, Name, Code, State, extended, Extra, Icon: one item each
class SpecialCommands {
public:
    /// Both references outlive the object. Items that a message creates are named from `commands`.
    SpecialCommands(const CommandTable& commands, CatalogueHost& host) : mCommands(commands), mHost(host) {}

    /// Reads all special commands from the file `path`, anew. If that fails, a box says so and the host ends the
    /// program.
    void LoadSpecialCommands(const QString& path, Boxes& boxes);

    [[nodiscard]] bool IsSpecialCommand(int number) const { return mByNumber.contains(number); }

    /// Null if `number` is no special command. Owned by the collection.
    [[nodiscard]] CSpecialCommand* Find(int number) const;

    [[nodiscard]] int Count() const { return int(mByNumber.size()); }

private:
    void ReadAll(const QString& path);
    void ReadGeneral(Database& database, double version);
    void ReadDetails(Database& database);
    [[nodiscard]] CSpecialCommand& Known(int number) const;

    const CommandTable& mCommands;
    CatalogueHost& mHost;
    std::map<int, std::unique_ptr<CSpecialCommand>> mByNumber;
};

}  // namespace fenrik
