#include "diagnostics/AsciiMap.h"

#include "catalogue/FieldValues.h"
#include "platform/Database.h"
#include "platform/Recordset.h"
#include "platform/SubscriptOutOfRange.h"

namespace fenrik {

void PopulateAsciiMaps(AsciiMap& map, const QString& path)
{
    const auto database = Database::OpenDatabase(path, false, true);
    const auto rows = database->OpenRecordset(QStringLiteral("SELECT * FROM AsciiGraphicsMap"));
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const auto number = NumberField<qlonglong>(rows->Fields(QStringLiteral("number")));
        if (number < 0 || number >= qlonglong(map.entries.size()))
            throw SubscriptOutOfRange();

        AsciiMap::Entry& entry = map.entries[std::size_t(number)];
        const QVariant character = rows->Fields(QStringLiteral("char"));
        entry.character = character.isValid() ? character.toString() : QStringLiteral(" ");
        entry.xloc = NumberField<std::int32_t>(rows->Fields(QStringLiteral("xloc")));
        entry.yloc = NumberField<std::int32_t>(rows->Fields(QStringLiteral("yloc")));
    }
}

}  // namespace fenrik
