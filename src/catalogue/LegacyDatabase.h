#pragma once

#include <QString>

#include <optional>

namespace fenrik {

/// Who made a system database of the older network, as the table "Info" of its file tells. A field that was never
/// filled in is a null text.
struct LegacyInfo {
    QString systemName;
    QString created;
    QString createdBy;
};

/// What the file `path` tells of itself; nothing if it is no such database.
[[nodiscard]] std::optional<LegacyInfo> ReadLegacyInfo(const QString& path);

}  // namespace fenrik
