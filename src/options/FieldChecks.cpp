#include "options/FieldChecks.h"

#include "platform/Boxes.h"

#include <cmath>

namespace fenrik {

bool FieldChecks::validateTextField(const QString& field, const QString& text) const
{
    if (!text.trimmed().isEmpty())
        return true;
    Tell(field + QStringLiteral(" must contain a value!"));
    return false;
}

std::optional<int> FieldChecks::validateNumericField(const QString& field, const QString& text, int lowest,
                                                     int highest) const
{
    if (!validateTextField(field, text))
        return std::nullopt;
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    if (!isNumber || std::isnan(number)) {
        Tell(field + QStringLiteral(" must contain a numeric value!"));
        return std::nullopt;
    }
    if (number < lowest || number > highest || number != std::floor(number)) {
        Tell(field + QStringLiteral(" is not within a valid numeric range!"));
        return std::nullopt;
    }
    return int(number);
}

void FieldChecks::Tell(const QString& text) const
{
    mBoxes.MsgBox(text, QMessageBox::Critical);
}

}  // namespace fenrik
