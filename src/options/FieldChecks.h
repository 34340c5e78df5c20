#pragma once

#include <QString>

#include <optional>

namespace fenrik {

class Boxes;

/// The two checks of a field. Each tells the user what is wrong.
class FieldChecks {
public:
    explicit FieldChecks(Boxes& boxes) : mBoxes(boxes) {}

    /// False for a text of nothing but blanks.
    [[nodiscard]] bool validateTextField(const QString& field, const QString& text) const;

    /// The number, or nothing if `text` is none or not from `lowest` to `highest`. Fractions are out of range.
    [[nodiscard]] std::optional<int> validateNumericField(const QString& field, const QString& text, int lowest,
                                                          int highest) const;

private:
    void Tell(const QString& text) const;

    Boxes& mBoxes;
};

}  // namespace fenrik
