#pragma once

#include <QString>
#include <QValidator>

namespace fenrik {

/// What may stand in the data field: digits; or "0x" and hexadecimal digits, whose letters become upper case. Looks at
/// the whole text, so that a paste passes the same gate as a key.
class DataValidator : public QValidator {
    Q_OBJECT

public:
    using QValidator::QValidator;
    State validate(QString& text, int& position) const override;
};

/// The value of a data text: hexadecimal behind "0x", otherwise the leading decimal number ("1F" is 1). Throws Error 6
/// above 2,147,483,647.
[[nodiscard]] std::int32_t DataValue(const QString& text);

}  // namespace fenrik
