#pragma once

#include <QString>
#include <QStringList>

namespace fenrik {

class SettingsStore;

/// The digits of a phone number, without all that people write between them.
[[nodiscard]] QString FilteredTelephoneNumber(const QString& text);

/// The numbers that were dialled, kept from run to run as they were written: section "PhoneNumbers", keys "Number1"
/// (the last one dialled) to "Number10".
class PhoneNumbers {
public:
    static constexpr int kMost = 10;

    /// `store` outlives the object.
    explicit PhoneNumbers(SettingsStore& store) : mStore(store) {}

    /// The last one dialled first; none twice.
    [[nodiscard]] QStringList All() const;

    /// Puts `number` first. It replaces one of the same digits.
    void Add(const QString& number);

private:
    SettingsStore& mStore;
};

}  // namespace fenrik
