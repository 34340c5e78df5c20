#include "app/DataValidator.h"

#include "platform/Error.h"
#include "shared/TextFormat.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace fenrik {

namespace {

const QString kPrefix = QStringLiteral("0x");

}  // namespace

QValidator::State DataValidator::validate(QString& text, int&) const
{
    static const QRegularExpression kAllowed(QStringLiteral("^(\\d*|0x[0-9A-Fa-f]*)$"));
    if (!kAllowed.match(text).hasMatch())
        return Invalid;
    if (text.startsWith(kPrefix))
        text = kPrefix + text.mid(kPrefix.size()).toUpper();
    return Acceptable;
}

std::int32_t DataValue(const QString& text)
{
    if (text.startsWith(kPrefix))
        return HexToLong(text);
    const double value = std::round(Val(text));
    if (value > std::numeric_limits<std::int32_t>::max())
        throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow"));
    return std::int32_t(value);
}

}  // namespace fenrik
