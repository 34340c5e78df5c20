#include "shared/Clock.h"

#include "support/FakeClock.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace fenrik {
namespace {

/// A moment of 2026-03-14.
Moment At(int hours, int minutes, int seconds, int milliseconds)
{
    return {20526LL * Moment::kPerDay + ((hours * 60LL + minutes) * 60 + seconds) * 1000 + milliseconds};
}

struct StampRow {
    Moment moment;
    const char* text;
};

class TimeStamps : public testing::TestWithParam<StampRow> {};

TEST_P(TimeStamps, AreHoursWithoutPaddingAndHundredths)
{
    EXPECT_EQ(GetParam().moment.TimeStamp(), QString::fromLatin1(GetParam().text));
}

// The last row: rounded to 1.00 the text would show second 59 with a fraction of the next.
INSTANTIATE_TEST_SUITE_P(Moment, TimeStamps,
                         testing::Values(StampRow{At(0, 0, 0, 0), "0:00:00.00"},
                                         StampRow{At(9, 5, 7, 250), "9:05:07.25"},
                                         StampRow{At(9, 5, 7, 4), "9:05:07.00"}, StampRow{At(9, 5, 7, 5), "9:05:07.01"},
                                         StampRow{At(23, 59, 59, 994), "23:59:59.99"},
                                         StampRow{At(23, 59, 59, 999), "23:59:59.99"}));

TEST(Moment, TheDateStampIsYearMonthDay)
{
    EXPECT_EQ(At(23, 59, 59, 999).DateStamp(), QStringLiteral("2026-03-14"));
    EXPECT_EQ(At(23, 59, 59, 999).Plus(0.001).DateStamp(), QStringLiteral("2026-03-15"));
    EXPECT_EQ(At(1, 2, 3, 4).DateTime().time(), QTime(1, 2, 3, 4));
}

TEST(Moment, TheTimerStartsAnewAtMidnight)
{
    EXPECT_DOUBLE_EQ(At(0, 1, 0, 500).Timer(), 60.5);
    EXPECT_DOUBLE_EQ(At(23, 59, 59, 999).Timer(), 86399.999);
    EXPECT_DOUBLE_EQ(At(23, 59, 59, 999).Plus(0.001).Timer(), 0.0);
}

TEST(Moment, MomentsAreInOrder)
{
    EXPECT_LT(At(1, 0, 0, 0), At(1, 0, 0, 1));
    EXPECT_EQ(At(1, 0, 0, 0).Plus(1.5), At(1, 0, 1, 500));
}

TEST(SystemClock, TellsTheLocalTime)
{
    const SystemClock clock;
    const QDateTime before = QDateTime::currentDateTime();
    const Moment now = clock.Now();
    const QDateTime after = QDateTime::currentDateTime();

    const QDateTime told(now.DateTime().date(), now.DateTime().time());  // read as local time
    EXPECT_GE(told, before);
    EXPECT_LE(told, after);
    EXPECT_GE(clock.Timer(), 0.0);
    EXPECT_LT(clock.Timer(), 86400.0);
}

TEST(SystemClock, FollowsTheZoneOfTheMachine)
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "XXX-05:30");  // 5 hours 30 minutes ahead
    ::tzset();
    const std::int64_t ahead = SystemClock().Now().milliseconds - QDateTime::currentMSecsSinceEpoch();
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
    ::tzset();
    EXPECT_NEAR(double(ahead), (5 * 60 + 30) * 60 * 1000.0, 1000.0);
}

}  // namespace
}  // namespace fenrik
