#include "shared/EventPump.h"

#include "support/ScriptedPump.h"

#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

bool Never()
{
    return false;
}

/// The rules of a wait, on a clock that jumps.
class EventPumpTest : public testing::Test {
protected:
    double Elapsed() const { return double((clock.Now().milliseconds - start.milliseconds)) / 1000.0; }

    FakeClock clock;
    ScriptedPump pump{clock};
    Moment start = clock.Now();
};

TEST_F(EventPumpTest, AConditionThatHoldsEndsTheWaitBeforeAnyEvent)
{
    pump.After(0.0, [] { ADD_FAILURE() << "pumped"; });
    EXPECT_TRUE(pump.WaitFor([] { return true; }, 1.0));
    EXPECT_EQ(pump.Turns(), 0);
}

TEST_F(EventPumpTest, AConditionThatComesToHoldEndsTheWait)
{
    bool done = false;
    pump.After(0.2, [] {});
    pump.After(0.1, [&done] { done = true; });
    EXPECT_TRUE(pump.WaitFor([&done] { return done; }, 0.7));
    EXPECT_NEAR(Elapsed(), 0.3, 0.002);
}

TEST_F(EventPumpTest, TheWaitEndsWhenMoreThanItsTimeHasPassed)
{
    EXPECT_FALSE(pump.WaitFor(Never, 0.7));
    EXPECT_GT(Elapsed(), 0.7);
    EXPECT_NEAR(Elapsed(), 0.7, 0.003);
}

TEST_F(EventPumpTest, AWaitOfReadingsEndsAtMidnight)
{
    clock.SetTimer(86399.9);
    start = clock.Now();
    pump.After(0.05, [] {});
    pump.After(0.05, [] {});
    pump.After(0.05, [] { ADD_FAILURE() << "the wait goes on after midnight"; });
    EXPECT_FALSE(pump.WaitFor(Never, 15.0));
    EXPECT_NEAR(Elapsed(), 0.1, 0.002);
}

TEST_F(EventPumpTest, AWaitUntilADateDoesNotMindMidnight)
{
    clock.SetTimer(86399.9);
    start = clock.Now();
    pump.After(0.2, [] {});
    EXPECT_FALSE(pump.WaitUntil(Never, start.Plus(1.0)));
    EXPECT_NEAR(Elapsed(), 1.0, 0.003);
}

TEST_F(EventPumpTest, WaitPausesForWholeSeconds)
{
    pump.Wait(3);
    EXPECT_NEAR(Elapsed(), 3.0, 0.003);
}

TEST_F(EventPumpTest, StopEndsTheRunningWaits)
{
    bool innerEnded = false;
    pump.After(0.1, [&] {
        EXPECT_FALSE(pump.WaitFor(Never, 10.0));
        innerEnded = true;
    });
    pump.After(0.1, [&] { pump.Stop(); });
    EXPECT_FALSE(pump.WaitFor(Never, 10.0));
    EXPECT_TRUE(innerEnded);
    EXPECT_NEAR(Elapsed(), 0.2, 0.002);
}

TEST_F(EventPumpTest, AfterStopNoWaitPumps)
{
    pump.Stop();
    EXPECT_TRUE(pump.Stopped());
    EXPECT_FALSE(pump.WaitFor(Never, 10.0));
    EXPECT_FALSE(pump.WaitUntil(Never, clock.Now().Plus(10.0)));
    EXPECT_TRUE(pump.WaitFor([] { return true; }, 10.0));  // what holds already still counts
    EXPECT_EQ(pump.Turns(), 0);
}

TEST_F(EventPumpTest, KnowsWhetherAWaitRuns)
{
    EXPECT_FALSE(pump.Waiting());
    pump.After(0.1, [&] {
        EXPECT_TRUE(pump.Waiting());
        (void)pump.WaitFor([] { return true; }, 1.0);
        EXPECT_TRUE(pump.Waiting());
    });
    (void)pump.WaitFor(Never, 0.2);
    EXPECT_FALSE(pump.Waiting());
}

TEST_F(EventPumpTest, AWaitThatAnExceptionLeavesIsOver)
{
    pump.After(0.1, [] { throw std::runtime_error("out"); });
    EXPECT_THROW((void)pump.WaitFor(Never, 1.0), std::runtime_error);
    EXPECT_FALSE(pump.Waiting());
}

/// The pump over the real event loop: short times only.
class QtEventPumpTest : public testing::Test {
protected:
    SystemClock clock;
    QtEventPump pump{clock};
};

TEST_F(QtEventPumpTest, DeliversTimersToTheWait)
{
    bool fired = false;
    QTimer::singleShot(5, [&fired] { fired = true; });
    EXPECT_TRUE(pump.WaitFor([&fired] { return fired; }, 5.0));
}

TEST_F(QtEventPumpTest, DeliversPostedCallsToANestedWait)
{
    bool inner = false;
    bool outer = false;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&inner] { inner = true; });
        EXPECT_TRUE(pump.WaitFor([&inner] { return inner; }, 5.0));
        outer = true;
    });
    EXPECT_TRUE(pump.WaitFor([&outer] { return outer; }, 5.0));
}

TEST_F(QtEventPumpTest, WithoutEventsItSleepsUntilTheTimeHasPassed)
{
    QElapsedTimer timer;
    timer.start();
    int asked = 0;
    EXPECT_FALSE(pump.WaitFor(
        [&asked] {
            ++asked;
            return false;
        },
        0.05));
    EXPECT_GE(timer.elapsed(), 50);
    EXPECT_LT(asked, 20);  // a loop that spins would ask many thousand times
}

TEST_F(QtEventPumpTest, StopWakesTheSleeper)
{
    QElapsedTimer timer;
    timer.start();
    QTimer::singleShot(5, [this] { pump.Stop(); });
    EXPECT_FALSE(pump.WaitFor(Never, 30.0));
    EXPECT_LT(timer.elapsed(), 10000);
}

TEST_F(QtEventPumpTest, OnceDeliversWhatIsThereAndReturns)
{
    bool delivered = false;
    QTimer::singleShot(0, [&delivered] { delivered = true; });
    pump.Once();
    EXPECT_TRUE(delivered);
    pump.Once();  // with nothing there it does not sleep
}

}  // namespace
}  // namespace fenrik
