#pragma once

#include <QMap>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace fenrik {

class Database;

/// How the search for a command database ended.
enum class CatalogueStatus : std::uint8_t {
    Good = 0,
    DefaultMissing = 1,  ///< the default file was asked for and can't be opened
    BothMissing = 2,     ///< neither the custom file nor the default file can be opened
    CustomMissing = 3,   ///< the default file was opened in place of the custom one
    DefaultCorrupt = 4,  ///< the default file was opened and holds no catalogue
    CustomCorrupt = 5,   ///< the custom file was opened and holds no catalogue
};

/// All commands with their categories, in the order of their numbers, whatever the market. The fourth column is
/// the category's number, although its alias repeats the third one's: the files' tools know the query in this form,
/// so it stays, and the column is read by its position.
inline constexpr const char* kAllCommandsQuery =
    "SELECT Commands.Command as command, Commands.Name as FriendlyName, Categorys.Name as CatName, "
    "Categorys.CategoryID as CatName  FROM Commands,categorys  WHERE Commands.categoryid = categorys.categoryid  "
    "order by command ";

/// Opens the command database `path` read-only; if that fails, the default file `defaultPath`. A database without a
/// catalogue is given all the same; only with nothing to open the result is null. Never throws.
[[nodiscard]] std::unique_ptr<Database> OpenCommandDatabase(const QString& path, const QString& defaultPath,
                                                            CatalogueStatus& status);

/// True if `path` ends in ".dav", can be opened and names at least one command.
[[nodiscard]] bool IsValidCommandDatabase(const QString& path);

/// What is known of a database file: "Name", "Path", "Version", "AccessVersion", "Build". A file that can't be read
/// has its names and kNoVersion; nothing is given for an empty path or an absent file.
[[nodiscard]] std::optional<QMap<QString, QString>> GetDatabaseProperties(const QString& path);

inline constexpr const char* kNoVersion = "No Version Information Available";

}  // namespace fenrik
