// Requests that an announcing frame and frames of two bytes each answer.

#include "LinkFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;
using testing::SizeIs;

class MultiFrameReplyTest : public LinkTest {
protected:
    std::vector<std::uint8_t> Ask(int tries = 1, bool echoSend = false, bool echoReply = false)
    {
        message = Request(940, 0x0102);
        message.ReplyCommand = 903;
        return handler.SendMessageGetByteArr(message, tries, received, bigEndian, echoSend, echoReply);
    }

    static QByteArray Announce(int length, bool granted = true, bool big = false)
    {
        return Wire(903, length, granted, big);
    }

    /// A frame that carries `low` and `high`.
    static QByteArray Bytes(int low, int high) { return Wire(950, high << 8 | low); }

    /// One request that nobody answers.
    void Fail() { (void)Ask(1); }

    CMessage message;
    int received = 0;
    bool bigEndian = false;
};

TEST_F(MultiFrameReplyTest, TheBytesComeLowByteFirst)
{
    ReceiveAfter(0.1, Announce(4));
    ReceiveAfter(0.1, Bytes(1, 2));
    ReceiveAfter(0.1, Bytes(3, 4));
    EXPECT_THAT(Ask(), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(received, 4);
    EXPECT_FALSE(bigEndian);
    EXPECT_EQ(handler.CommError(), 0);
    EXPECT_EQ(handler.CommErrorCount(), 0);
    EXPECT_THAT(host.payloads, SizeIs(1));
    EXPECT_THAT(host.shown, IsEmpty());
    EXPECT_THAT(ReceivedCommands(), IsEmpty());
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_EQ(commands.Count(950), 2);
}

TEST_F(MultiFrameReplyTest, FramesThatArriveTogetherAreAllCollected)
{
    ReceiveAfter(0.1, Announce(6) + Bytes(1, 2) + Bytes(3, 4) + Bytes(5, 6));
    EXPECT_THAT(Ask(), ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(MultiFrameReplyTest, AnOddLengthTakesOneByteOfTheLastFrame)
{
    ReceiveAfter(0.1, Announce(3) + Bytes(1, 2) + Bytes(3, 99));
    EXPECT_THAT(Ask(), ElementsAre(1, 2, 3));
    EXPECT_EQ(received, 3);
    EXPECT_EQ(handler.CommErrorCount(), 0);
}

TEST_F(MultiFrameReplyTest, ALengthOfOneIsOneByte)
{
    ReceiveAfter(0.1, Announce(1) + Bytes(7, 8));
    EXPECT_THAT(Ask(), ElementsAre(7));
    EXPECT_EQ(received, 1);
}

TEST_F(MultiFrameReplyTest, TheAnnouncementTellsTheByteOrder)
{
    ReceiveAfter(0.1, Announce(2, true, true) + Bytes(1, 2));
    EXPECT_THAT(Ask(), ElementsAre(1, 2));  // the order is told, not applied
    EXPECT_TRUE(bigEndian);
    ReceiveAfter(0.1, Announce(2, true, false) + Bytes(1, 2));
    (void)Ask();
    EXPECT_FALSE(bigEndian);
}

TEST_F(MultiFrameReplyTest, AnAnnouncementOfNoBytesIsNoError)
{
    ReceiveAfter(0.1, Announce(0, true, true));
    EXPECT_THAT(Ask(3), IsEmpty());
    EXPECT_EQ(received, 0);
    EXPECT_TRUE(bigEndian);
    EXPECT_EQ(handler.CommError(), 0);
    EXPECT_EQ(handler.CommErrorCount(), 0);
    EXPECT_FALSE(handler.ProcessingReply());
    EXPECT_THAT(host.payloads, SizeIs(1));
}

TEST_F(MultiFrameReplyTest, AnAnnouncementOfNoBytesLeavesTheNumberReceivedAlone)
{
    received = 5;
    ReceiveAfter(0.1, Announce(0));
    EXPECT_THAT(Ask(1), IsEmpty());
    EXPECT_EQ(received, 5);
    EXPECT_EQ(handler.CommErrorCount(), 0);
}

TEST_F(MultiFrameReplyTest, ARefusalIsOneByteAndNoFailure)
{
    ReceiveAfter(0.1, Announce(4, false, true));
    EXPECT_THAT(Ask(3), SizeIs(1));
    EXPECT_EQ(received, -1);
    EXPECT_FALSE(bigEndian);
    EXPECT_THAT(host.payloads, SizeIs(1));  // it is an answer: no other try
    EXPECT_EQ(handler.CommError(), 0);
    EXPECT_EQ(handler.CommErrorCount(), 0);
}

TEST_F(MultiFrameReplyTest, NoAnswerIsCommErrorMinusTwo)
{
    EXPECT_THAT(Ask(2), SizeIs(1));
    EXPECT_EQ(received, -2);
    EXPECT_EQ(handler.CommError(), CMsgHandler::kNoAnswer);
    EXPECT_EQ(handler.CommErrorCount(), 1);
    EXPECT_THAT(host.payloads, SizeIs(2));
    EXPECT_NEAR(Elapsed(), 30.0, 0.05);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(MultiFrameReplyTest, OnASerialLineEachWaitLastsSevenTenths)
{
    OpenPort(Transport::kTransceiver);
    (void)Ask(2);
    EXPECT_NEAR(Elapsed(), 1.4, 0.01);
}

TEST_F(MultiFrameReplyTest, ATornAnswerIsCommErrorMinusThree)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2));
    EXPECT_THAT(Ask(), ElementsAre(1, 2, 0, 0));
    EXPECT_EQ(received, 2);
    EXPECT_EQ(handler.CommError(), CMsgHandler::kIncompleteAnswer);
    EXPECT_EQ(handler.CommErrorCount(), 1);
    EXPECT_NEAR(Elapsed(), 15.1, 0.01);
}

TEST_F(MultiFrameReplyTest, AnotherTryMayBeAnsweredWhole)
{
    ReceiveAfter(15.5, Announce(2) + Bytes(1, 2));
    EXPECT_THAT(Ask(3), ElementsAre(1, 2));
    EXPECT_EQ(received, 2);
    EXPECT_THAT(host.payloads, SizeIs(2));
    EXPECT_EQ(handler.CommError(), 0);
}

// The number received is not set back between two attempts; callers use the smaller of it and the size.
TEST_F(MultiFrameReplyTest, TheNumberReceivedCountsTheBytesOfAllAttempts)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(9, 9));
    ReceiveAfter(15.1, Announce(4) + Bytes(1, 2) + Bytes(3, 4));
    EXPECT_THAT(Ask(2), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(received, 6);
    EXPECT_EQ(handler.CommError(), 0);
    EXPECT_EQ(handler.CommErrorCount(), 0);
}

TEST_F(MultiFrameReplyTest, TwoHalfAnswersCountAsAWholeOne)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(9, 9));
    ReceiveAfter(15.1, Announce(4) + Bytes(1, 2));
    EXPECT_THAT(Ask(3), ElementsAre(1, 2, 0, 0));
    EXPECT_EQ(received, 4);
    EXPECT_THAT(host.payloads, SizeIs(2));
    EXPECT_EQ(handler.CommErrorCount(), 0);
}

TEST_F(MultiFrameReplyTest, AfterAnOverfullCountTheTriesAreUsedUp)
{
    for (int attempt = 0; attempt < 3; ++attempt)
        ReceiveAfter(attempt == 0 ? 0.1 : 15.1, Announce(6) + Bytes(1, 2) + Bytes(3, 4));
    EXPECT_THAT(Ask(3), ElementsAre(1, 2, 3, 4, 0, 0));
    EXPECT_EQ(received, 12);  // 4, 8 and 12, never the 6 announced
    EXPECT_THAT(host.payloads, SizeIs(3));
    EXPECT_EQ(handler.CommErrorCount(), 0);
}

TEST_F(MultiFrameReplyTest, TheTriesCarryOverBetweenAttempts)
{
    ReceiveAfter(15.1, Announce(4) + Bytes(1, 2));  // answers the second try and stops half way
    EXPECT_THAT(Ask(2), ElementsAre(1, 2, 0, 0));
    EXPECT_THAT(host.payloads, SizeIs(2));
    EXPECT_EQ(handler.CommError(), CMsgHandler::kIncompleteAnswer);
}

TEST_F(MultiFrameReplyTest, OneFailureMakesLaterSuccessesCountAsFailuresToo)
{
    Fail();
    EXPECT_EQ(handler.CommErrorCount(), 1);
    ReceiveAfter(0.1, Announce(2) + Bytes(1, 2));
    received = 0;
    EXPECT_THAT(Ask(), ElementsAre(1, 2));
    EXPECT_EQ(handler.CommError(), CMsgHandler::kNoAnswer);  // nothing sets it back
    EXPECT_EQ(handler.CommErrorCount(), 2);

    handler.ClearCommErrorCount();
    EXPECT_EQ(handler.CommErrorCount(), 0);
    EXPECT_EQ(handler.CommError(), CMsgHandler::kNoAnswer);
    handler.Reset(Transport::kRemote);
    EXPECT_EQ(handler.CommError(), CMsgHandler::kNoAnswer);
}

TEST_F(MultiFrameReplyTest, AFourthRequestAfterThreeFailuresIsRefusedWithoutTraffic)
{
    Fail();
    Fail();
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2));
    received = 0;
    (void)Ask();
    ASSERT_EQ(handler.CommErrorCount(), 3);
    const auto sent = host.payloads.size();
    const double before = Elapsed();
    received = 0;
    EXPECT_THAT(Ask(3), IsEmpty());
    EXPECT_EQ(received, CMsgHandler::kIncompleteAnswer);
    EXPECT_EQ(host.payloads.size(), sent);
    EXPECT_EQ(Elapsed(), before);

    handler.Reset(Transport::kRemote);  // a new connection does not help
    (void)Ask();
    EXPECT_EQ(host.payloads.size(), sent);
    handler.ClearCommErrorCount();
    (void)Ask();
    EXPECT_THAT(host.payloads.size(), Gt(sent));
}

TEST_F(MultiFrameReplyTest, TheFramesAreShownOnlyWithTheirEcho)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2) + Bytes(3, 4));
    (void)Ask(1, true, true);
    ASSERT_THAT(host.shown, SizeIs(4));
    EXPECT_EQ(host.shown[0].Command, 940);
    EXPECT_EQ(host.shown[1].Command, 903);
    EXPECT_EQ(host.shown[2].Command, 950);
    EXPECT_EQ(host.shown[3].data, 0x0403);
}

TEST_F(MultiFrameReplyTest, OtherTrafficBetweenTheFramesIsSortedAsEver)
{
    ReceiveAfter(0.1, Bytes(7, 7));  // before the announcement nobody waits for 950
    ReceiveAfter(0.1, Announce(2));
    ReceiveAfter(0.1, Wire(1) + Announce(9));
    ReceiveAfter(0.1, Bytes(1, 2));
    EXPECT_THAT(Ask(), ElementsAre(1, 2));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(950, 1, 903));
}

// The length announced is a number of bytes and goes down by one for each frame of two, so the link still waits when
// the reply is complete. Which frames the message list shows depends on it.
TEST_F(MultiFrameReplyTest, FramesOf950AfterTheReplyAreKeptFromTheTrafficUntilTheNextSend)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2) + Bytes(3, 4));
    EXPECT_THAT(Ask(), ElementsAre(1, 2, 3, 4));
    EXPECT_TRUE(handler.ProcessingReply());
    Receive(Bytes(5, 6));
    EXPECT_THAT(ReceivedCommands(), IsEmpty());

    CMessage sync = Request(980);
    handler.SendMessage(sync);
    EXPECT_FALSE(handler.ProcessingReply());
    Receive(Bytes(7, 8));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(950));
}

TEST_F(MultiFrameReplyTest, TheLengthRunsOutAfterAsManyFramesAsBytes)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2) + Bytes(3, 4));
    (void)Ask();
    Receive(Bytes(0, 0));
    EXPECT_TRUE(handler.ProcessingReply());
    Receive(Bytes(0, 0));  // the fourth
    EXPECT_FALSE(handler.ProcessingReply());
    Receive(Bytes(5, 6));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(950));
}

TEST_F(MultiFrameReplyTest, TheNextRequestForgetsFramesThatWereLeftOver)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2) + Bytes(3, 4));
    (void)Ask();
    Receive(Bytes(9, 9));
    received = 0;
    ReceiveAfter(0.1, Announce(2) + Bytes(5, 6));
    EXPECT_THAT(Ask(), ElementsAre(5, 6));
    EXPECT_EQ(received, 2);
}

TEST_F(MultiFrameReplyTest, ASingleRequestAfterwardsGetsItsReplyIntoItsSlot)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2) + Bytes(3, 4));
    (void)Ask();
    CMessage read = Request(923, 9, 1);
    ReceiveAfter(0.1, Bytes(77, 0));
    const auto reply = handler.SendMessageGetReply(read, 950, 1);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->data, 77);
}

TEST_F(MultiFrameReplyTest, SoDoesAPlainSendWithAReplyCommand)
{
    (void)Ask();  // nobody answers: the link still collects
    CMessage read = Request(923, 9, 1);
    read.ReplyCommand = 950;
    handler.SendMessage(read);
    ReceiveAfter(0.1, Bytes(77, 0));
    EXPECT_TRUE(handler.GetMessageReply());
}

TEST_F(MultiFrameReplyTest, APortThatVanishesBeforeTheAnswerEndsTheRequest)
{
    pump.After(0.2, [this] { host.open = false; });
    EXPECT_THAT(Ask(3), SizeIs(1));
    EXPECT_EQ(received, -2);
    EXPECT_NEAR(Elapsed(), 0.2, 0.005);
    EXPECT_THAT(host.payloads, SizeIs(1));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(MultiFrameReplyTest, APortThatVanishesBetweenTheFramesEndsTheRequest)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2));
    pump.After(0.2, [this] { host.open = false; });
    EXPECT_THAT(Ask(3), ElementsAre(1, 2, 0, 0));
    EXPECT_EQ(received, 2);
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_EQ(handler.CommError(), CMsgHandler::kIncompleteAnswer);
    EXPECT_THAT(host.payloads, SizeIs(1));
}

TEST_F(MultiFrameReplyTest, AStoppedPumpEndsTheRequestInEachWait)
{
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2));
    pump.After(0.2, [this] { pump.Stop(); });
    EXPECT_THAT(Ask(3), ElementsAre(1, 2, 0, 0));
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_THAT(host.payloads, SizeIs(1));

    received = 0;
    EXPECT_THAT(Ask(3), SizeIs(1));  // and no new one waits
    EXPECT_EQ(received, -2);
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_THAT(host.payloads, SizeIs(2));
}

TEST_F(MultiFrameReplyTest, AWaitThatSpansMidnightEndsThere)
{
    clock.SetTimer(86399.9);
    start = clock.Now();
    pump.After(0.2, [] {});
    ReceiveAfter(0.2, Announce(2) + Bytes(1, 2));
    EXPECT_THAT(Ask(1), SizeIs(1));
    EXPECT_EQ(received, -2);
    EXPECT_NEAR(Elapsed(), 0.2, 0.005);
}

TEST_F(MultiFrameReplyTest, TheLongestAnnouncementFits)
{
    ReceiveAfter(0.1, Announce(65535) + Bytes(1, 2));
    EXPECT_THAT(Ask(1), SizeIs(65535));
    EXPECT_EQ(received, 2);
}

TEST_F(MultiFrameReplyTest, AHandlerThatAsksInsideTheCollectingTakesTheQueueOver)
{
    std::vector<std::uint8_t> inner;
    ReceiveAfter(0.1, Announce(4) + Bytes(1, 2));
    pump.After(0.1, [&] {
        int innerReceived = 0;
        bool innerBig = false;
        CMessage other = Request(940);
        other.ReplyCommand = 903;
        inner = handler.SendMessageGetByteArr(other, 1, innerReceived, innerBig, false, false);
    });
    ReceiveAfter(0.1, Announce(2) + Bytes(8, 9));
    EXPECT_THAT(Ask(1), ElementsAre(1, 2, 0, 0));
    EXPECT_THAT(inner, ElementsAre(8, 9));
}

}  // namespace
}  // namespace fenrik
