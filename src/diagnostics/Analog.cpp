#include "diagnostics/Analog.h"

#include "diagnostics/Graphics.h"
#include "platform/Database.h"
#include "platform/Recordset.h"

#include <QHash>

#include <cstdlib>

namespace fenrik {

namespace {

constexpr QChar kDegree(0x00B0);

/// Tenths in the format ".0": no digit stands before the point unless there is one.
QString Tenths(std::int32_t value)
{
    const std::int32_t whole = std::abs(value) / 10;
    return QStringLiteral("%1%2.%3")
        .arg(value < 0 ? QStringLiteral("-") : QString(), whole ? QString::number(whole) : QString())
        .arg(std::abs(value) % 10);
}

QString Symbol(const QString& scaled, std::int32_t value)
{
    if (scaled == QLatin1String("Positive"))
        return value >= 0 ? QStringLiteral("+") : QStringLiteral(" ");
    if (scaled == QLatin1String("Pounds"))
        return QStringLiteral("#");
    return scaled == QLatin1String("Degree") ? QString(kDegree) : QString();
}

}  // namespace

void Analog::GetAnalogCommands(const QString& path)
{
    const auto database = Database::OpenDatabase(path, false, true);
    const auto rows = database->OpenRecordset(QStringLiteral("SELECT * FROM AnalogSymbolMaps"));
    QHash<QString, AnalogFormat> byName;
    for (; !rows->EndOfFile(); rows->MoveNext())
        byName.insert(
            rows->Fields(QStringLiteral("Name")).toString(),
            {rows->Fields(QStringLiteral("Decimal")).toInt() != 0, rows->Fields(QStringLiteral("scaled")).toString()});
    for (int command = 0; command < CommandTable::kSize; ++command)
        mAnalogMap[std::size_t(command)] =
            mCommands.AnalogCommand(command) ? byName.value(mCommands[command].Name) : AnalogFormat();
}

int Analog::SlotOf(int command)
{
    for (int slot = 0; slot < kSlots; ++slot) {
        std::int16_t& entry = mSlots[std::size_t(slot)];
        if (entry == 0)
            entry = std::int16_t(command);
        if (entry == command)
            return slot;
    }
    return kSlots;
}

void Analog::UpdateAnalog(int command, bool draw)
{
    if (command == 0)
        return;
    const int slot = SlotOf(command);
    if (draw)
        DrawRow(command, slot + 1);
}

void Analog::RedrawAnalog()
{
    for (int slot = 0; slot < kSlots && mSlots[std::size_t(slot)] != 0; ++slot)
        DrawRow(mSlots[std::size_t(slot)], slot + 1);
}

QString Analog::ValueText(std::int32_t data, const AnalogFormat& format)
{
    const std::int32_t value = data > INT16_MAX ? data - 65536 : data;
    return (format.Decimal ? Tenths(value) : QString::number(value)) + Symbol(format.scaled, value);
}

void Analog::DrawRow(int command, int row)
{
    const CommandEntry& entry = mCommands[command];
    const QString text = ValueText(entry.LastValue, mAnalogMap[std::size_t(command)]);
    // The blanks before the value wipe the rest of a longer one that stood there.
    const auto room = Graphics::kColumns - entry.Name.size();
    mGraphics.PutString(entry.Name, 1, row, false, false);
    mGraphics.PutString(text.rightJustified(room), Graphics::kColumns, row, false, true);
}

}  // namespace fenrik
