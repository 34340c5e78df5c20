#include "commands/DiagScriptLine.h"

#include "platform/Error.h"
#include "shared/CommandTable.h"

#include <QStringList>

#include <cmath>
#include <limits>

namespace fenrik {

namespace {

constexpr int kLongestHex = 8;
const QString kHexPrefix = QStringLiteral("0x");

[[noreturn]] void Mismatch(const QString& field)
{
    throw Error(ErrorNumber::kTypeMismatch, QStringLiteral("Type mismatch: \"%1\" is no number").arg(field.left(20)));
}

double ToNumber(const QString& field)
{
    bool isNumber = false;
    const double number = field.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        Mismatch(field);
    return number;
}

/// A fraction is rounded, a half to the even neighbour.
int ToInteger(const QString& field)
{
    const double number = std::nearbyint(ToNumber(field));
    if (std::abs(number) > std::numeric_limits<int>::max())
        throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow"));
    return int(number);
}

/// The hexadecimal number that the field can be read as. A decimal one takes this gate too, which lets any of up to
/// eight digits pass; "0X" counts as no prefix, so the letter in it is no digit.
std::int32_t ToHexNumber(const QString& field)
{
    if (field.isEmpty())
        return 0;
    const QString digits = field.startsWith(kHexPrefix) ? field.mid(kHexPrefix.size()) : field;
    for (const QChar digit : digits) {
        if (!QStringLiteral("0123456789ABCDEFabcdef").contains(digit))
            Mismatch(field);
    }
    if (digits.isEmpty())
        Mismatch(field);
    if (digits.size() > kLongestHex)
        throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow"));
    return std::int32_t(digits.toUInt(nullptr, 16));
}

QString DataText(const QString& field)
{
    const std::int32_t number = ToHexNumber(field);
    return field.startsWith(kHexPrefix) ? QString::number(number) : field;
}

QString Field(const QStringList& fields, int index)
{
    if (index >= fields.size())
        throw Error(ErrorNumber::kSubscriptOutOfRange, QStringLiteral("Subscript out of range: a field is missing"));
    return fields[index];
}

DiagScriptSleep SleepOf(const QStringList& fields)
{
    const int milliseconds = ToInteger(Field(fields, 1));
    if (milliseconds < 0)
        throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow: a pause can't be negative"));
    return {milliseconds};
}

DiagScriptCommand CommandOf(const QStringList& fields)
{
    const QString data = DataText(Field(fields, 3));
    const int command = ToInteger(fields[0]);
    if (!CommandTable::Contains(command))
        throw Error(ErrorNumber::kSubscriptOutOfRange,
                    QStringLiteral("Subscript out of range: there is no command %1").arg(command));
    return {command, ToNumber(fields[1]) == 1, ToNumber(fields[2]) == 1, data};
}

}  // namespace

DiagScriptStatement ParseDiagScriptLine(const QString& line)
{
    const QStringList fields = line.split(QLatin1Char(','));
    if (fields[0].toLower() == QLatin1String("sleep"))
        return SleepOf(fields);
    return CommandOf(fields);
}

}  // namespace fenrik
