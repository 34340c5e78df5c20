#include "catalogue/LegacyDatabase.h"

#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"

namespace fenrik {

namespace {

QString FirstValue(Database& database, const char* query)
{
    const auto rows = database.OpenRecordset(QLatin1String(query));
    const QVariant value = rows->EndOfFile() ? QVariant() : rows->Fields(0);
    return value.isValid() ? value.toString() : QString();
}

}  // namespace

std::optional<LegacyInfo> ReadLegacyInfo(const QString& path)
{
    try {
        const auto database = Database::OpenDatabase(path, false, true);
        return LegacyInfo{FirstValue(*database, "SELECT SystemName FROM info"),
                          FirstValue(*database, "SELECT DateCreated FROM info"),
                          FirstValue(*database, "SELECT CreatedBy FROM info")};
    } catch (const Error&) {
        return std::nullopt;
    }
}

}  // namespace fenrik
