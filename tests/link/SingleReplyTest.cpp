// Requests that one frame answers.

#include "LinkFixture.h"

#include "platform/Error.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SingleReplyTest : public LinkTest {
protected:
    std::optional<CMessage> Ask(int tries = 3, bool echoSend = false, bool echoReply = false)
    {
        CMessage message = Request(901, 3);
        return handler.SendMessageGetReply(message, 902, tries, echoSend, echoReply);
    }
};

TEST_F(SingleReplyTest, TheReplyEndsTheWaitAndNeverReachesTheQueue)
{
    ReceiveAfter(0.1, Wire(1));
    ReceiveAfter(0.1, Wire(902, 3));
    const auto reply = Ask();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->Command, 902);
    EXPECT_EQ(reply->data, 3);
    EXPECT_FALSE(reply->EchoReply);
    EXPECT_NEAR(Elapsed(), 0.2, 0.005);
    EXPECT_THAT(host.payloads, SizeIs(1));
    EXPECT_THAT(host.shown, IsEmpty());
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1));  // other traffic is sorted as ever
    EXPECT_EQ(commands.Count(902), 1);
}

TEST_F(SingleReplyTest, TheHandlerWaitsOnlyUntilTheReply)
{
    pump.After(0.1, [this] { EXPECT_TRUE(handler.ProcessingReply()); });
    pump.After(0.1, [this] {
        Receive(Wire(902));
        EXPECT_FALSE(handler.ProcessingReply());
        Receive(Wire(902, 9));  // one slot, one reply: the second is traffic
    });
    const auto reply = Ask();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->data, 0);
    EXPECT_THAT(ReceivedCommands(), ElementsAre(902));
}

struct TimeOutRow {
    int transport;
    double seconds;
};

class TimeOuts : public SingleReplyTest, public testing::WithParamInterface<TimeOutRow> {};

TEST_P(TimeOuts, DependOnTheTransport)
{
    OpenPort(GetParam().transport);
    EXPECT_FALSE(Ask(1));
    EXPECT_GT(Elapsed(), GetParam().seconds);
    EXPECT_NEAR(Elapsed(), GetParam().seconds, 0.005);
    EXPECT_FALSE(handler.ProcessingReply());
}

INSTANTIATE_TEST_SUITE_P(SingleReply, TimeOuts,
                         testing::Values(TimeOutRow{Transport::kTransceiver, 0.7}, TimeOutRow{Transport::kModem, 0.7},
                                         TimeOutRow{Transport::kRemote, 15.0}));

TEST_F(SingleReplyTest, AsksAsOftenAsItIsTold)
{
    EXPECT_FALSE(Ask(2));
    EXPECT_THAT(host.payloads, SizeIs(2));
    CMessage message = Request(901);
    EXPECT_FALSE(handler.SendMessageGetReply(message, 902));
    EXPECT_THAT(host.payloads, SizeIs(2 + 3));  // three where no number is given
    EXPECT_NEAR(Elapsed(), 5 * 15.0, 0.05);
    EXPECT_THAT(errors.reports, IsEmpty());  // silence on the network is no error
}

TEST_F(SingleReplyTest, ALaterTryCanBeAnswered)
{
    ReceiveAfter(15.5, Wire(902, 7));
    const auto reply = Ask();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->data, 7);
    EXPECT_THAT(host.payloads, SizeIs(2));
}

TEST_F(SingleReplyTest, ZeroTriesAreNeverReached)
{
    ReceiveAfter(15.5 * 6, Wire(902));
    EXPECT_TRUE(Ask(0));
    EXPECT_GE(host.payloads.size(), 6u);
}

TEST_F(SingleReplyTest, AReplyThatComesTooLateIsTraffic)
{
    EXPECT_FALSE(Ask(1));
    Receive(Wire(902));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(902));
}

TEST_F(SingleReplyTest, TheReplyIsShownOnlyWithItsEcho)
{
    ReceiveAfter(0.1, Wire(902, 3));
    const auto reply = Ask(3, true, true);
    ASSERT_TRUE(reply);
    EXPECT_TRUE(reply->EchoReply);
    ASSERT_THAT(host.shown, SizeIs(2));
    EXPECT_EQ(host.shown[0].Command, 901);
    EXPECT_EQ(host.shown[1].Command, 902);
    EXPECT_THAT(ReceivedCommands(), IsEmpty());
}

TEST_F(SingleReplyTest, WhatTheSenderExpectsIsStoredInItsMessage)
{
    ReceiveAfter(0.1, Wire(902));
    CMessage message = Request(901);
    EXPECT_TRUE(handler.SendMessageGetReply(message, 902, 1, true, true));
    EXPECT_EQ(message.ReplyCommand, 902);
    EXPECT_TRUE(message.EchoSend);
    EXPECT_TRUE(message.EchoReply);
}

// 0 stands for nobody waiting, so a frame of command 0 can't be a reply.
TEST_F(SingleReplyTest, AFrameOfCommandZeroIsTraffic)
{
    CMessage message = Request(901);
    ReceiveAfter(0.1, Wire(0, 5));
    EXPECT_FALSE(handler.SendMessageGetReply(message, 0, 1));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(0));
}

TEST_F(SingleReplyTest, RepliesAbove1015AreTakenButNotCounted)
{
    CMessage message = Request(901);
    ReceiveAfter(0.1, Wire(1020, 5));
    EXPECT_TRUE(handler.SendMessageGetReply(message, 1020, 1));
    EXPECT_EQ(commands.Count(1020), 0);
}

// The difference of two readings of the timer jumps at midnight.
TEST_F(SingleReplyTest, AWaitThatSpansMidnightEndsThere)
{
    clock.SetTimer(86399.8);
    start = clock.Now();
    pump.After(0.1, [] {});
    pump.After(0.2, [] {});
    ReceiveAfter(0.1, Wire(902));
    EXPECT_FALSE(Ask(1));
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_FALSE(pump.ScriptDone());
}

TEST_F(SingleReplyTest, APortThatVanishesInTheWaitEndsItWithoutAnotherTry)
{
    pump.After(0.2, [this] { host.open = false; });
    EXPECT_FALSE(Ask(3));
    EXPECT_NEAR(Elapsed(), 0.2, 0.005);
    EXPECT_THAT(host.payloads, SizeIs(1));
    EXPECT_THAT(errors.reports, IsEmpty());
    EXPECT_FALSE(handler.ProcessingReply());
}

TEST_F(SingleReplyTest, APumpThatIsStoppedInTheWaitEndsItWithoutAnotherTry)
{
    pump.After(0.2, [this] { pump.Stop(); });
    EXPECT_FALSE(Ask(3));
    EXPECT_NEAR(Elapsed(), 0.2, 0.005);
    EXPECT_THAT(host.payloads, SizeIs(1));
}

TEST_F(SingleReplyTest, ZeroTriesEndWithThePort)
{
    pump.After(40.0, [this] { host.open = false; });
    EXPECT_FALSE(Ask(0));
    EXPECT_NEAR(Elapsed(), 40.0, 0.05);
}

// One reply slot: the last sender owns it.
TEST_F(SingleReplyTest, AHandlerThatAsksInsideAWaitTakesTheSlotOver)
{
    bool innerAnswered = false;
    pump.After(0.1, [&] {
        CMessage inner = Request(979, 5);
        innerAnswered = handler.SendMessageGetReply(inner, 978, 1).has_value();
    });
    ReceiveAfter(0.1, Wire(978));
    ReceiveAfter(0.1, Wire(902));
    EXPECT_FALSE(Ask(1));
    EXPECT_TRUE(innerAnswered);
    EXPECT_GT(Elapsed(), 15.0);  // the outer wait runs into its time-out
    EXPECT_THAT(ReceivedCommands(), ElementsAre(902));
}

TEST_F(SingleReplyTest, AHandlerThatOnlySendsInsideAWaitForgetsTheReply)
{
    pump.After(0.1, [&] {
        CMessage sync = Request(980, 1, 0, 1);
        handler.SendMessage(sync);
    });
    ReceiveAfter(0.1, Wire(902));
    EXPECT_FALSE(Ask(1));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(902));
}

TEST_F(SingleReplyTest, AFailureWhileShowingTheReplyIsReported)
{
    host.onDisplay = [] { throw Error(91, QStringLiteral("No object")); };
    ReceiveAfter(0.1, Wire(902));
    EXPECT_FALSE(Ask(1, false, true));
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("CMsgHandler:ReplyCommandRecieved"));
}

TEST_F(SingleReplyTest, TheReplyOfAnEarlierRequestIsNotTakenForThisOne)
{
    CMessage first = Request(901);
    first.ReplyCommand = 902;
    handler.SendMessage(first);
    Receive(Wire(902, 1));  // arrives while nobody waits, and lies in the slot
    EXPECT_FALSE(Ask(1));
}

TEST_F(SingleReplyTest, AReplyToAPlainSendCanBeFetched)
{
    CMessage message = Request(901);
    message.ReplyCommand = 902;
    handler.SendMessage(message);
    ReceiveAfter(0.3, Wire(902, 4));
    const auto reply = handler.GetMessageReply();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->data, 4);
    EXPECT_FALSE(handler.ProcessingReply());
}

}  // namespace
}  // namespace fenrik
