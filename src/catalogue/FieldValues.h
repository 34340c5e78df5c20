#pragma once

#include "platform/Error.h"

#include <QVariant>

#include <limits>

namespace fenrik {

/// A field as a whole number of type `Number`. Throws Error 13 for null or a text that is no number, and Error 6 for
/// a number that the type can't hold.
template <class Number>
[[nodiscard]] Number NumberField(const QVariant& field)
{
    bool isNumber = false;
    const qlonglong value = field.toLongLong(&isNumber);
    if (!isNumber)
        throw Error(ErrorNumber::kTypeMismatch, QStringLiteral("A number is missing in the database."));
    if (value < std::numeric_limits<Number>::min() || value > std::numeric_limits<Number>::max())
        throw Error(ErrorNumber::kOverflow, QStringLiteral("The number %1 is too large.").arg(value));
    return Number(value);
}

/// A field as a text. Throws Error 13 for null.
[[nodiscard]] inline QString TextField(const QVariant& field)
{
    if (!field.isValid())
        throw Error(ErrorNumber::kTypeMismatch, QStringLiteral("A text is missing in the database."));
    return field.toString();
}

}  // namespace fenrik
