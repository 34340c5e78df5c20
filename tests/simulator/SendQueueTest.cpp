#include "simulator/Fixtures.h"
#include "simulator/TrafficLog.h"

#include <gmock/gmock.h>
#include <sstream>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SendQueueTest : public testing::Test {
protected:
    FakeTime time;
    LineRecorder line;
    std::ostringstream text;
    TrafficLog log{time, &text};
    SendQueue queue{line, log, false};
    SendQueue paced{line, log, true};

    /// Sends 6000 bytes at a pace with a look at the line each `step` seconds; the bytes that have left by `until`.
    std::size_t SentBy(double until, double step)
    {
        for (int i = 0; i < 1000; ++i)
            paced.Push(0, ByteList(6, std::uint8_t(i)));
        for (int i = 0; i * step <= until; ++i)
            paced.Send(i * step);
        return line.bytes.size();
    }
};

TEST_F(SendQueueTest, BytesWithoutAPaceLeaveAtOnce)
{
    queue.Push(0, ByteList{1, 2, 3});
    queue.Push(0, ByteList{4});
    queue.Send(0);
    EXPECT_THAT(line.bytes, ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(queue.NextDue(), SendQueue::kNever);
}

TEST_F(SendQueueTest, ARunWaitsForItsTime)
{
    queue.Push(0.5, ByteList{1});
    EXPECT_DOUBLE_EQ(queue.NextDue(), 0.5);
    queue.Send(0.4);
    EXPECT_THAT(line.bytes, IsEmpty());
    queue.Send(0.5);
    EXPECT_THAT(line.bytes, ElementsAre(1));
}

TEST_F(SendQueueTest, RunsLeaveInOrderOfTheirTimesAndThoseOfOneTimeInOrderOfArrival)
{
    queue.Push(0.2, ByteList{3});
    queue.Push(0.1, ByteList{1});
    queue.Push(0.1, ByteList{2});
    queue.Send(1);
    EXPECT_THAT(line.bytes, ElementsAre(1, 2, 3));
}

TEST_F(SendQueueTest, AtAPaceTheFirstByteLeavesAtOnceAndTheNextAfterItsTime)
{
    paced.Push(0, ByteList{1, 2});
    paced.Send(0);
    EXPECT_THAT(line.bytes, ElementsAre(1));
    EXPECT_DOUBLE_EQ(paced.NextDue(), 1 / 960.0);
    paced.Send(paced.NextDue());
    EXPECT_THAT(line.bytes, ElementsAre(1, 2));
}

TEST_F(SendQueueTest, ASecondAtAPaceCarries160Frames)
{
    EXPECT_NEAR(double(SentBy(1.0, 0.001)), 960, 2);
}

TEST_F(SendQueueTest, ThePaceIsKeptWhenTheQueueIsLookedAtSeldom)
{
    EXPECT_NEAR(double(SentBy(1.0, 0.05)), 960, 2);
}

TEST_F(SendQueueTest, AnIdleLineSavesUpNothing)
{
    paced.Push(0, ByteList{1});
    paced.Send(0);
    paced.Push(5, ByteList(6, 9));
    paced.Send(5);
    EXPECT_EQ(line.bytes.size(), 2u);
}

TEST_F(SendQueueTest, ARunThatHasBegunIsFinishedFirst)
{
    paced.Push(0.001, ByteList{1, 1, 1});
    paced.Send(0.001);
    paced.Push(0, ByteList{2});
    paced.Send(1);
    EXPECT_THAT(line.bytes, ElementsAre(1, 1, 1, 2));
}

TEST_F(SendQueueTest, AFullLineKeepsTheRestForLater)
{
    line.room = 4;
    queue.Push(0, ByteList{1, 2, 3, 4, 5, 6});
    queue.Send(0);
    EXPECT_TRUE(queue.Blocked());
    EXPECT_EQ(queue.NextDue(), SendQueue::kNever);
    line.room = 100;
    queue.Send(0.1);
    EXPECT_FALSE(queue.Blocked());
    EXPECT_THAT(line.bytes, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(SendQueueTest, TimeInWhichTheLineWasFullIsNotMadeUpFor)
{
    line.room = 0;
    for (int i = 0; i < 100; ++i)
        paced.Push(0, ByteList(6, 1));
    paced.Send(0);
    paced.Send(10);
    line.room = 1000;
    paced.Send(10);
    EXPECT_THAT(line.bytes, ElementsAre(1));
}

TEST_F(SendQueueTest, WhatNobodyHearsIsLost)
{
    line.heard = false;
    queue.Push(0, ByteList{1});
    queue.Push(0.5, ByteList{2});
    queue.Send(0.1);
    line.heard = true;
    queue.Send(1);
    EXPECT_THAT(line.bytes, ElementsAre(2));
    EXPECT_THAT(text.str(), Not(HasSubstr("TX 01")));
}

TEST_F(SendQueueTest, AFullQueueDropsAndLogsWhatComesNew)
{
    line.room = 0;
    for (std::size_t i = 0; i < SendQueue::kLimit; ++i)
        queue.Push(0, ByteList{1});
    EXPECT_THAT(text.str(), IsEmpty());
    queue.Push(0, ToBytes({12, true, false, 100}));
    EXPECT_EQ(queue.Pending(), SendQueue::kLimit);
    EXPECT_THAT(text.str(), EndsWith("DROP 00 A0 32 00 64 36  12 state=1 ext=0 data=100\n"));
}

TEST_F(SendQueueTest, ARunIsLoggedOnceItHasLeft)
{
    line.room = 2;
    queue.Push(0, ByteList{0x11, 0x22, 0x33}, "noise");
    queue.Send(0);
    EXPECT_EQ(text.str(), "");
    line.room = 1;
    queue.Send(0);
    EXPECT_EQ(text.str(), "   0.000 TX 11 22 33  noise\n");
}

}  // namespace
}  // namespace fenrik
