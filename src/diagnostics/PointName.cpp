#include "diagnostics/PointName.h"

namespace fenrik {

namespace {

const QString kPlaceHolder = QStringLiteral("|NAME|");
constexpr std::int16_t kUsualLimit = 96;
constexpr std::int16_t kLeastLimit = 10;

}  // namespace

QString PointName::DisplayName(int number, const QString& pin, const QString& name, std::int16_t& limit)
{
    if (limit == 0)
        limit = kUsualLimit;
    if (limit < kLeastLimit)
        limit = kLeastLimit;

    const QString before = QStringLiteral("%1 Pin ").arg(number) + pin + QStringLiteral(" (");
    const auto with = [&before](const QString& shown) { return before + shown + QLatin1Char(')'); };
    const qsizetype templateLength = with(kPlaceHolder).size();
    // The template counts twice, on purpose: names are shortened well before the limit.
    if (with(name).size() + templateLength <= limit)
        return with(name);
    const qsizetype room = qMax(limit - templateLength + kPlaceHolder.size(), qsizetype(0));
    return with(name.left(room) + QLatin1Char('.'));
}

QString PointName::Key(int number, int level)
{
    return QStringLiteral("O%1%2").arg(number, 2, 10, QLatin1Char('0')).arg(level, 2, 10, QLatin1Char('0'));
}

int PointName::NumberOf(const QString& key)
{
    return key.mid(1, 2).toInt();
}

int PointName::LevelOf(const QString& key)
{
    return key.mid(3, 2).toInt();
}

}  // namespace fenrik
