// How frames go out.

#include "LinkFixture.h"

#include "platform/Error.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SendTest : public LinkTest {
protected:
    void Send(int command, int data = 0)
    {
        CMessage message = Request(command, data);
        handler.SendMessage(message);
    }
};

TEST_F(SendTest, TheTransceiverGetsTheSixBytes)
{
    OpenPort(Transport::kTransceiver);
    Send(901, 0x5C5C);  // a backslash means nothing here
    EXPECT_EQ(terminal.Read(6), Wire(901, 0x5C5C));
    EXPECT_THAT(host.types, IsEmpty());
}

TEST_F(SendTest, TheModemGetsEveryBackslashDoubled)
{
    OpenPort(Transport::kModem);
    Send(901, 0x5C03);
    const QByteArray frame = Wire(901, 0x5C03);
    EXPECT_EQ(terminal.Read(7), frame.left(3) + "\\\\" + frame.mid(4));
    Send(901, 0x5C5C);
    EXPECT_EQ(terminal.Read(8), Wire(901, 0x5C5C).replace("\\", "\\\\"));
}

TEST_F(SendTest, ABackslashInAnyByteOfAFrameLeavesTwiceByModem)
{
    OpenPort(Transport::kModem);
    // A backslash in each place that can have one, which the first two can't: header, data, sum.
    for (const auto& [command, data] : {std::pair(279, 0), {1, 0x5C00}, {1, 0x005C}, {1, 0x00B8}}) {
        const QByteArray frame = Wire(command, data);
        ASSERT_EQ(frame.count('\\'), 1) << frame.toHex().toStdString();
        Send(command, data);
        EXPECT_EQ(terminal.Read(7), CMsgHandler::toEscapedString(frame));
    }
}

TEST_F(SendTest, TheRelayGetsTheBytesInAFrameOfType50)
{
    Send(901, 0x5C5C);
    EXPECT_THAT(host.types, ElementsAre(50));
    EXPECT_THAT(host.payloads, ElementsAre(Wire(901, 0x5C5C)));
}

TEST_F(SendTest, StateAndExtendedAboveOneCountAsOneAndDataIsCut)
{
    CMessage message = Request(901, 0x12345, 2, 255);
    handler.SendMessage(message);
    EXPECT_THAT(host.payloads, ElementsAre(Wire(901, 0x2345, true, true)));
}

TEST_F(SendTest, SendingStampsTheMessage)
{
    CMessage message = Request(901, 3);
    handler.SendMessage(message);
    EXPECT_EQ(message.CheckSum, 0xC5);
    EXPECT_EQ(message.RAW(), QStringLiteral("00.AE.14.00.03.C5"));
    EXPECT_EQ(message.TimeStamp(), QStringLiteral("9:05:07.25"));
    EXPECT_EQ(message.DateStamp(), QStringLiteral("2026-03-14"));
}

TEST_F(SendTest, CommandZeroIsNeverSentNorWaitedFor)
{
    CMessage message = Request(0);
    message.EchoSend = true;
    message.ReplyCommand = 902;
    handler.SendMessage(message);
    EXPECT_FALSE(handler.SendMessageGetReply(message, 902));
    int received = 7;
    bool big = true;
    EXPECT_THAT(handler.SendMessageGetByteArr(message, 3, received, big, false, false), IsEmpty());
    EXPECT_EQ(received, 7);
    EXPECT_TRUE(big);
    EXPECT_THAT(host.payloads, IsEmpty());
    EXPECT_THAT(host.shown, IsEmpty());
    EXPECT_FALSE(handler.ProcessingReply());
    EXPECT_EQ(commands.Count(0), 0);
    EXPECT_EQ(Elapsed(), 0.0);
}

TEST_F(SendTest, NothingIsSentWhileThePortIsClosed)
{
    host.open = false;
    Send(901);
    CMessage message = Request(901);
    EXPECT_FALSE(handler.SendMessageGetReply(message, 902));
    EXPECT_THAT(host.payloads, IsEmpty());
    EXPECT_EQ(commands.Count(901), 0);
    EXPECT_EQ(message.RAW(), QString());
    EXPECT_EQ(Elapsed(), 0.0);
}

struct CountRow {
    int transport;
    int count;
};

class CountsOfOneSend : public SendTest, public testing::WithParamInterface<CountRow> {};

// The building of the frame counts the command as well, and two transports build it twice. The count column of the
// message list shows these numbers, so they stay.
TEST_P(CountsOfOneSend, DependOnTheTransport)
{
    OpenPort(GetParam().transport);
    Send(901);
    EXPECT_EQ(commands.Count(901), GetParam().count);
    Send(901);
    EXPECT_EQ(commands.Count(901), 2 * GetParam().count);
}

TEST_P(CountsOfOneSend, RestartAtZeroAfter32767)
{
    OpenPort(GetParam().transport);
    for (int i = 0; i < 32767; ++i)
        commands.CountUp(901);
    Send(901);
    EXPECT_EQ(commands.Count(901), GetParam().count - 1);
}

INSTANTIATE_TEST_SUITE_P(Send, CountsOfOneSend,
                         testing::Values(CountRow{Transport::kTransceiver, 2}, CountRow{Transport::kModem, 3},
                                         CountRow{Transport::kRemote, 3}));

TEST_F(SendTest, BuildingAFrameCountsItsCommandAndSetsTheReplyState)
{
    CMessage message = Request(901, 3);
    message.ReplyCommand = 902;
    EXPECT_EQ(handler.getMessageAsByteArr(message).back(), 0xC5);
    EXPECT_EQ(commands.Count(901), 1);
    EXPECT_TRUE(handler.ProcessingReply());
    EXPECT_EQ(handler.getMessageAsData(message), Wire(901, 3));
    EXPECT_EQ(commands.Count(901), 2);
    EXPECT_THAT(host.payloads, IsEmpty());
}

TEST_F(SendTest, ASentMessageIsShownOnlyWithItsEcho)
{
    CMessage message = Request(901, 3);
    handler.SendMessage(message);
    EXPECT_THAT(host.shown, IsEmpty());
    message.EchoSend = true;
    handler.SendMessage(message);
    ASSERT_THAT(host.shown, SizeIs(1));
    EXPECT_EQ(host.shown[0].RAW(), QStringLiteral("00.AE.14.00.03.C5"));
}

TEST_F(SendTest, AQuietBusIsNotWaitedFor)
{
    Receive(Wire(1));
    Send(901);
    EXPECT_EQ(Elapsed(), 0.0);
    EXPECT_THAT(host.payloads, SizeIs(1));
}

TEST_F(SendTest, AFrameThatStopsHalfWayHoldsTheSenderForOneSecond)
{
    double sentAt = -1;
    host.onSendFrame = [&] { sentAt = Elapsed(); };
    Receive(Wire(1).left(3));
    Send(901);
    EXPECT_GT(sentAt, 1.0);
    EXPECT_NEAR(sentAt, 1.0, 0.005);
    EXPECT_FALSE(handler.ReceivingMessage());
    EXPECT_THAT(host.payloads, SizeIs(1));
}

TEST_F(SendTest, TheSenderGoesOnAsSoonAsTheFrameIsComplete)
{
    double sentAt = -1;
    host.onSendFrame = [&] { sentAt = Elapsed(); };
    Receive(Wire(1).left(3));
    ReceiveAfter(0.2, Wire(1).mid(3, 2));
    ReceiveAfter(0.2, Wire(1).mid(5));
    Send(901);
    EXPECT_NEAR(sentAt, 0.4, 0.005);
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1));
}

TEST_F(SendTest, MidnightDoesNotEndTheWaitForAQuietBus)
{
    clock.SetTimer(86399.9);
    start = clock.Now();
    double sentAt = -1;
    host.onSendFrame = [&] { sentAt = Elapsed(); };
    Receive(Wire(1).left(3));
    pump.After(0.3, [] {});
    ReceiveAfter(0.3, Wire(1).mid(3));
    Send(901);
    EXPECT_NEAR(sentAt, 0.6, 0.005);
}

TEST_F(SendTest, APortThatVanishesInTheWaitForAQuietBusEndsIt)
{
    Receive(Wire(1).left(3));
    pump.After(0.3, [this] { host.open = false; });
    Send(901);
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_THAT(host.payloads, IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(SendTest, AStoppedPumpEndsTheWaitForAQuietBusAndTheFrameGoesOut)
{
    Receive(Wire(1).left(3));
    pump.After(0.3, [this] { pump.Stop(); });
    Send(901);
    EXPECT_NEAR(Elapsed(), 0.3, 0.005);
    EXPECT_THAT(host.payloads, SizeIs(1));  // a window that closes still unmounts its node
}

TEST_F(SendTest, AFailureOfTheTransportIsReportedAndTheStateStaysAsItStands)
{
    host.onSendFrame = [] { throw Error(10054, QStringLiteral("Connection reset")); };
    CMessage message = Request(901);
    message.ReplyCommand = 902;
    message.EchoSend = true;
    handler.SendMessage(message);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, 10054);
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("CMsgHandler:SendMessage"));
    EXPECT_TRUE(handler.ProcessingReply());
    EXPECT_THAT(host.shown, IsEmpty());
    EXPECT_EQ(commands.Count(901), 2);  // built twice, and not sent
}

TEST_F(SendTest, APortThatIsClosedUnderTheHostsFeetIsReported)
{
    OpenPort(Transport::kTransceiver);
    port.setPortOpen(false);
    Send(901);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, ErrorNumber::kPortNotOpen);
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("CMsgHandler:SendMessage"));
}

TEST_F(SendTest, WithoutATransportNothingGoesOut)
{
    handler.setTargetPort(Transport::kNone);
    Send(901);
    EXPECT_THAT(host.payloads, IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST(ToEscapedString, DoublesEveryBackslash)
{
    EXPECT_EQ(CMsgHandler::toEscapedString(""), QByteArray());
    EXPECT_EQ(CMsgHandler::toEscapedString("abc"), QByteArray("abc"));
    EXPECT_EQ(CMsgHandler::toEscapedString("\\"), QByteArray("\\\\"));
    EXPECT_EQ(CMsgHandler::toEscapedString("a\\\\b\\"), QByteArray("a\\\\\\\\b\\\\"));
    EXPECT_EQ(CMsgHandler::toEscapedString(QByteArray::fromHex("005c00")), QByteArray::fromHex("005c5c00"));
}

}  // namespace
}  // namespace fenrik
