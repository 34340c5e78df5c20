#pragma once

#include "model/SaveStep.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>

namespace fenrik {

class Boxes;
class CSystem;
class Database;

/// A saved system: a copy of the default command database with a table for each node (see NodeTable) and this one:
///
///   table "SystemInfo"   value
///   "Node Count"         number of nodes in the system
///   "Version"            version of the file; a "+" at its end says that it was written by this tool and not by the
///                        one that designs systems
class SystemDatabase {
public:
    /// Failures are told in `boxes`; they stay untold if it is null.
    SystemDatabase(CSystem& system, Boxes* boxes) : mSystem(system), mBoxes(boxes) {}

    /// Writes the system into the file `path`, which is copied from `defaultPath` if it is not there. What else is in
    /// it stays. False if anything was left out.
    ///
    /// All tables are written in one transaction, since each costs several waits for the disk; a table that fails and
    /// is skipped is undone alone. A new file gets its name when it is whole. So a full disk or a crash leaves what was
    /// there, and so does a user who does not go on after a failure. What a killed save has left beside `path` goes a
    /// day later.
    [[nodiscard]] bool Make(const QString& path, const QString& defaultPath);

    /// Adds nodes up to the file's count, which `nodesInSystem` goes up to, and, unless `quickie`, lets every node take
    /// what the file has of it. The file is opened once for all of them, since a Jet file is read whole each time.
    void Load(const QString& path, std::uint8_t& nodesInSystem, bool quickie);

private:
    [[nodiscard]] bool Step(const QString& path, const std::function<void()>& step);
    [[nodiscard]] bool MakeNew(const QString& path, const QString& defaultPath);
    [[nodiscard]] bool WriteFile(const QString& file, const QString& path);
    [[nodiscard]] bool WriteTables(Database& database, const QString& path);
    [[nodiscard]] bool WriteNodes(Database& database);
    void WriteSystemInfo(Database& database, const QString& version) const;
    [[nodiscard]] std::unique_ptr<Database> Open(const QString& path);
    void TryLoading(const std::function<void()>& step);

    CSystem& mSystem;
    Boxes* mBoxes;
    bool mWhole = true;
};

}  // namespace fenrik
