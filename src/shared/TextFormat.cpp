#include "shared/TextFormat.h"

#include <QRegularExpression>

namespace fenrik {

double Val(const QString& text)
{
    static const QRegularExpression kNumber(QStringLiteral("^\\s*([+-]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][+-]?\\d+)?)"));
    return kNumber.match(text).captured(1).toDouble();
}

QString Hex(std::int32_t value)
{
    return QString::number(std::uint32_t(value), 16).toUpper();
}

QString HexData(std::int32_t value)
{
    return QStringLiteral("0x") + Hex(value);
}

std::int32_t HexToLong(const QString& text)
{
    const bool prefixed = text.startsWith(QStringLiteral("0x"), Qt::CaseInsensitive);
    static const QRegularExpression kDigits(QStringLiteral("^[0-9A-Fa-f]{1,8}"));
    const QString digits = kDigits.match(prefixed ? text.mid(2) : text).captured();
    return std::int32_t(digits.toUInt(nullptr, 16));
}

QString BooleanText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

}  // namespace fenrik
