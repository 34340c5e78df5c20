#include "modem/PhoneNumbers.h"

#include "platform/SettingsStore.h"

#include <algorithm>

namespace fenrik {

namespace {

const QString kSection = QStringLiteral("PhoneNumbers");

QString Key(int place)
{
    return QStringLiteral("Number%1").arg(place);
}

}  // namespace

QString FilteredTelephoneNumber(const QString& text)
{
    QString digits;
    std::ranges::copy_if(text, std::back_inserter(digits), [](QChar c) { return c >= u'0' && c <= u'9'; });
    return digits;
}

QStringList PhoneNumbers::All() const
{
    QStringList numbers;
    for (int place = 1; place <= kMost; ++place) {
        const QString number = mStore.GetSetting(kSection, Key(place), QString());
        if (!number.isEmpty() && !numbers.contains(number))
            numbers.append(number);
    }
    return numbers;
}

void PhoneNumbers::Add(const QString& number)
{
    QStringList numbers = All();
    const QString digits = FilteredTelephoneNumber(number);
    numbers.removeIf([&digits](const QString& other) { return FilteredTelephoneNumber(other) == digits; });
    numbers.prepend(number);
    for (int place = 1; place <= kMost; ++place)
        mStore.SaveSetting(kSection, Key(place), numbers.value(place - 1));
}

}  // namespace fenrik
