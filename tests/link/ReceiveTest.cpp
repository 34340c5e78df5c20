// What the engine makes of received bytes.

#include "LinkFixture.h"

#include "platform/Error.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class ReceiveTest : public LinkTest {
protected:
    QByteArray Noise(int count) const { return QByteArray(count, '\x55'); }
};

TEST_F(ReceiveTest, AGoodFrameJoinsTheQueueWithAllThatItSays)
{
    Receive(Wire(901, 3));
    EXPECT_EQ(handler.ReceivedMessagesPending(), 1);
    EXPECT_EQ(host.traffic, 1);

    const auto message = handler.GetMessageReceived();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->Command, 901);
    EXPECT_EQ(message->State, 0);
    EXPECT_EQ(message->extended, 0);
    EXPECT_EQ(message->data, 3);
    EXPECT_EQ(message->CheckSum, 0xC5);
    EXPECT_EQ(message->RAW(), QStringLiteral("0.AE.14.0.3.C5"));
    EXPECT_EQ(message->TimeStamp(), QStringLiteral("9:05:07.25"));
    EXPECT_EQ(message->DateStamp(), QStringLiteral("2026-03-14"));
    EXPECT_FALSE(message->EchoSend);
    EXPECT_FALSE(message->EchoReply);
    EXPECT_EQ(message->ReplyCommand, 0);
    EXPECT_FALSE(handler.GetMessageReceived());
}

TEST_F(ReceiveTest, StateExtendedAndDataAreTakenApart)
{
    Receive(Wire(1023, 0xFFFE, true, true));
    const auto message = handler.GetMessageReceived();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->Command, 1023);
    EXPECT_EQ(message->State, 1);
    EXPECT_EQ(message->extended, 1);
    EXPECT_EQ(message->data, 0xFFFE);
}

TEST_F(ReceiveTest, MessagesLeaveTheQueueInTheirOrder)
{
    Receive(Wire(1) + Wire(2) + Wire(3));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1, 2, 3));
}

TEST_F(ReceiveTest, ByteZeroTakesNoPartInTheSum)
{
    Receive(QByteArray::fromHex("00a0040000a4"));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1));
}

TEST_F(ReceiveTest, ASumThatIsAMultipleOf256IsZeroOnTheWire)
{
    Receive(QByteArray::fromHex("00a0045a0200"));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1));
}

struct TornRow {
    const char* name;
    const char* hex;
};

class TornFrames : public ReceiveTest, public testing::WithParamInterface<TornRow> {};

TEST_P(TornFrames, AreNoMessagesAndNoErrors)
{
    Receive(QByteArray::fromHex(GetParam().hex));
    EXPECT_EQ(handler.ReceivedMessagesPending(), 0);
    EXPECT_TRUE(handler.ReceivingMessage());
    EXPECT_THAT(errors.reports, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Receive, TornFrames,
                         testing::Values(TornRow{"WrongFirstByte", "01ae140003c5"},
                                         TornRow{"WrongMark", "009e140003b5"}, TornRow{"WrongSum", "00ae140003c4"},
                                         TornRow{"CutShort", "00ae140003"},
                                         TornRow{"OneByteTooMany", "00ae14000003c5"}),
                         [](const auto& row) { return row.param.name; });

// The window is all zeros at first, so a stream that begins inside a frame has its byte 0 already.
TEST_F(ReceiveTest, TheWindowStartsAsZeros)
{
    Receive(Wire(901, 3).mid(1));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(901));
}

TEST_F(ReceiveTest, AFrameAfterNoiseIsFoundAtItsSixthByte)
{
    Receive(QByteArray::fromHex("0000ae00a0ff"));
    const QByteArray frame = Wire(901, 3);
    Receive(frame.left(5));
    EXPECT_EQ(handler.ReceivedMessagesPending(), 0);
    Receive(frame.mid(5));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(901));
}

// Nothing but the three tests marks a frame: the end of one and the start of the next can read as a third.
TEST_F(ReceiveTest, BytesOfTwoFramesThatLookLikeAThirdAreOne)
{
    Receive(Wire(5, 0x00A0) + Wire(37, 1));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(5, 21, 37));
}

TEST_F(ReceiveTest, ReceivingLastsFromAnyByteUntilAGoodFrame)
{
    EXPECT_FALSE(handler.ReceivingMessage());
    handler.ReceiveMsgByte(0x55);
    EXPECT_TRUE(handler.ReceivingMessage());
    Receive(Wire(1));
    EXPECT_FALSE(handler.ReceivingMessage());
}

TEST_F(ReceiveTest, SixteenBytesWithoutAFrameAreOneCollision)
{
    Receive(Noise(15));
    EXPECT_EQ(handler.PCCollisions(), 0);
    Receive(Noise(1));
    EXPECT_EQ(handler.PCCollisions(), 1);
    EXPECT_THAT(host.pc, ElementsAre(1));
    EXPECT_THAT(host.marks, ElementsAre(Pair(true, "PC")));
    Receive(Noise(16));
    EXPECT_EQ(handler.PCCollisions(), 2);
    EXPECT_THAT(host.pc, ElementsAre(1, 2));
}

TEST_F(ReceiveTest, AGoodFrameSetsTheCountOfBytesBack)
{
    Receive(Noise(9) + Wire(1));  // complete at the 15th byte
    Receive(Noise(9) + Wire(2));
    EXPECT_EQ(handler.PCCollisions(), 0);
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1, 2));
}

// The bytes are counted before the window is looked at.
TEST_F(ReceiveTest, AFrameThatTheSixteenthByteCompletesIsStillOneCollision)
{
    Receive(Noise(10) + Wire(1));
    EXPECT_EQ(handler.PCCollisions(), 1);
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1));
}

TEST_F(ReceiveTest, ReceivedFramesOf1To1015AreCounted)
{
    for (const int command : {0, 1, 1015, 1016, 1023})
        Receive(Wire(command));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(0, 1, 1015, 1016, 1023));  // all of them are traffic
    EXPECT_EQ(commands.Count(0), 0);
    EXPECT_EQ(commands.Count(1), 1);
    EXPECT_EQ(commands.Count(1015), 1);
    EXPECT_EQ(commands.Count(1016), 0);
    EXPECT_EQ(commands.Count(1023), 0);
}

TEST_F(ReceiveTest, TheCountRestartsAtZeroAfter32767)
{
    for (int i = 0; i < 32767; ++i)
        commands.CountUp(5);
    Receive(Wire(5));
    EXPECT_EQ(commands.Count(5), 0);
}

TEST_F(ReceiveTest, BytesFromTheRelayAreTakenAsTheyAre)
{
    host.modemActive = true;  // nothing of the modem's applies to the pipe
    handler.ProcessSockEvent(Wire(23, 0x5C5C) + "NO CARRIER" + Wire(901, 0x8AFF));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(23, 901));
    EXPECT_FALSE(handler.CarrierLost());
}

TEST_F(ReceiveTest, ResetForgetsTheConnectionButNotTheQueueAndTheWindow)
{
    CMessage request = Request(901);
    request.ReplyCommand = 902;
    handler.SendMessage(request);
    Receive(Wire(1) + Noise(16) + Wire(903).left(5));
    ASSERT_EQ(handler.PCCollisions(), 1);
    ASSERT_TRUE(handler.ProcessingReply());

    handler.Reset(Transport::kTransceiver);
    EXPECT_EQ(handler.TargetPort(), Transport::kTransceiver);
    EXPECT_EQ(handler.PCCollisions(), 0);
    EXPECT_EQ(handler.BusCollisions(), 0);
    EXPECT_FALSE(handler.ProcessingReply());
    EXPECT_FALSE(handler.ReceivingMessage());
    EXPECT_EQ(host.pc.back(), 0);
    EXPECT_EQ(host.bc.back(), 0);

    Receive(Wire(903).right(1));  // the frame that was half received goes on
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1, 903));
}

TEST_F(ReceiveTest, WithoutAHostFramesAreStillKept)
{
    handler.setHost(nullptr);
    Receive(Noise(16) + Wire(1));
    CMessage request = Request(901);
    handler.SendMessage(request);
    EXPECT_FALSE(handler.SendMessageGetReply(request, 902));
    EXPECT_EQ(handler.PCCollisions(), 1);
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1));
    EXPECT_EQ(Elapsed(), 0.0);
}

TEST_F(ReceiveTest, AFailureOfTheWindowIsReportedAndReceptionGoesOn)
{
    host.onTraffic = [] { throw Error(91, QStringLiteral("No object")); };
    Receive(Wire(1));
    host.onTraffic = [] {};
    host.onMark = [] { throw Error(91, QStringLiteral("No object")); };
    Receive(Noise(16));
    host.onMark = [] {};
    Receive(Wire(2));
    ASSERT_THAT(errors.reports, SizeIs(2));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("CMsgHandler:ReceiveMsgByte"));
    EXPECT_EQ(errors.reports[1].where, QStringLiteral("CMsgHandler:ReceiveMsgByte"));
    EXPECT_EQ(errors.reports[1].number, 91);
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1, 2));
    EXPECT_EQ(handler.PCCollisions(), 1);
}

}  // namespace
}  // namespace fenrik
