#include "diagnostics/AsciiMap.h"

#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"

namespace fenrik {

namespace {

std::int32_t LongField(const Recordset& rows, const QString& name)
{
    bool isNumber = false;
    const int value = rows.Fields(name).toInt(&isNumber);
    if (!isNumber)
        throw Error(ErrorNumber::kTypeMismatch, QStringLiteral("AsciiGraphicsMap: %1 is not a number").arg(name));
    return value;
}

}  // namespace

void PopulateAsciiMaps(AsciiMap& map, const QString& path)
{
    const auto database = Database::OpenDatabase(path, false, true);
    const auto rows = database->OpenRecordset(QStringLiteral("SELECT * FROM AsciiGraphicsMap"));
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const std::int32_t number = LongField(*rows, QStringLiteral("number"));
        if (number < 0 || number >= std::int32_t(map.entries.size()))
            throw Error(ErrorNumber::kSubscriptOutOfRange, QStringLiteral("Subscript out of range"));

        AsciiMap::Entry& entry = map.entries[std::size_t(number)];
        const QVariant character = rows->Fields(QStringLiteral("char"));
        entry.character = character.isValid() ? character.toString() : QStringLiteral(" ");
        entry.xloc = LongField(*rows, QStringLiteral("xloc"));
        entry.yloc = LongField(*rows, QStringLiteral("yloc"));
    }
}

}  // namespace fenrik
