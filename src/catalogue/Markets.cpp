#include "catalogue/Markets.h"

#include "catalogue/FieldValues.h"
#include "platform/Database.h"
#include "platform/Recordset.h"

namespace fenrik {

std::vector<Market> ReadMarkets(const QString& path)
{
    try {
        const auto database = Database::OpenDatabase(path, false, true);
        const auto rows = database->OpenRecordset(QStringLiteral("select * from market where marketid > 0"));
        std::vector<Market> markets;
        for (; !rows->EndOfFile(); rows->MoveNext())
            markets.push_back({NumberField<std::int32_t>(rows->Fields(QStringLiteral("MarketID"))),
                               TextField(rows->Fields(QStringLiteral("MarketName")))});
        return markets;
    } catch (const Error&) {
        return {};
    }
}

}  // namespace fenrik
