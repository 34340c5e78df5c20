#include "shared/Clock.h"

#include <QTimeZone>

#include <algorithm>
#include <chrono>

namespace fenrik {

QDateTime Moment::DateTime() const
{
    // The number is local time already; UTC here only keeps Qt from shifting it once more.
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}

QString Moment::TimeStamp() const
{
    const std::int64_t ofDay = milliseconds % kPerDay;
    const int seconds = int(ofDay / 1000);
    const int hundredths = std::min(99, int(ofDay % 1000 + 5) / 10);  // .996 stays below the next second
    return QString::asprintf("%d:%02d:%02d.%02d", seconds / 3600, seconds / 60 % 60, seconds % 60, hundredths);
}

QString Moment::DateStamp() const
{
    return DateTime().date().toString(QStringLiteral("yyyy-MM-dd"));
}

Moment SystemClock::Now() const
{
    using namespace std::chrono;
    const std::int64_t utc = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
    constexpr std::int64_t kQuarter = 15 * 60 * 1000;
    if (utc >= mOffsetUntil || utc < mOffsetUntil - kQuarter) {
        mOffset = QDateTime::fromMSecsSinceEpoch(utc).offsetFromUtc() * 1000LL;
        mOffsetUntil = (utc / kQuarter + 1) * kQuarter;
    }
    return {utc + mOffset};
}

}  // namespace fenrik
