// What the engine makes of the serial port's events: bytes, the carrier, the modem's escapes, framing errors.

#include "LinkFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class PortEventsTest : public LinkTest {
protected:
    /// Bytes come over the line; the engine gets the port's event once all of them are there.
    void Arrive(const QByteArray& bytes)
    {
        terminal.Write(bytes);
        ASSERT_TRUE(QTest::qWaitFor([&] { return port.InBufferCount() >= bytes.size(); }));
        handler.ProcessCommEvent(SerialControl::kEvReceive);
        EXPECT_EQ(port.InBufferCount(), 0);
    }

    void Connect(bool modem)
    {
        OpenPort(modem ? Transport::kModem : Transport::kTransceiver);
        host.modemActive = modem;
    }

    std::vector<int> ReceivedData()
    {
        std::vector<int> data;
        while (const auto message = handler.GetMessageReceived())
            data.push_back(message->data);
        return data;
    }
};

TEST_F(PortEventsTest, OneEventTakesAllBytes)
{
    Connect(false);
    Arrive(Wire(1) + Wire(2));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1, 2));
}

TEST_F(PortEventsTest, AFrameMaySpanEvents)
{
    Connect(false);
    Arrive(Wire(901, 3).left(4));
    Arrive(Wire(901, 3).mid(4));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(901));
}

TEST_F(PortEventsTest, AFramingErrorIsABusCollisionUnderTheMarkOfThePCs)
{
    Connect(false);
    handler.ProcessCommEvent(SerialControl::kFramingError);
    handler.ProcessCommEvent(SerialControl::kFramingError);
    EXPECT_EQ(handler.BusCollisions(), 2);
    EXPECT_EQ(handler.PCCollisions(), 0);
    EXPECT_THAT(host.bc, ElementsAre(1, 2));
    EXPECT_THAT(host.pc, IsEmpty());
    EXPECT_THAT(host.marks, ElementsAre(Pair(true, "PC"), Pair(true, "PC")));
}

TEST_F(PortEventsTest, OtherEventsAreIgnored)
{
    Connect(false);
    terminal.Write(Wire(1));
    ASSERT_TRUE(QTest::qWaitFor([this] { return port.InBufferCount() == 6; }));
    for (const int event : {0, 1, 3, 1001, 1008})
        handler.ProcessCommEvent(event);
    EXPECT_EQ(port.InBufferCount(), 6);
    EXPECT_EQ(handler.BusCollisions(), 0);
}

TEST_F(PortEventsTest, AnEventWithoutBytesDoesNothing)
{
    Connect(false);
    handler.ProcessCommEvent(SerialControl::kEvReceive);
    EXPECT_FALSE(handler.ReceivingMessage());
}

// --- The carrier ---------------------------------------------------------------------------------------------------

TEST_F(PortEventsTest, ALostCarrierHangsUpAtOnce)
{
    Connect(true);
    bool lostWhenHungUp = false;
    host.onHangUp = [&] { lostWhenHungUp = handler.CarrierLost(); };
    Arrive("\r\nNO CARRIER");
    EXPECT_TRUE(handler.CarrierLost());
    EXPECT_TRUE(lostWhenHungUp);
    EXPECT_EQ(host.hangUps, 1);
    EXPECT_EQ(host.traffic, 1);

    handler.ResetCarrierLostStatus();
    EXPECT_FALSE(handler.CarrierLost());
    Arrive("\r\n");
    EXPECT_EQ(host.hangUps, 1);
}

TEST_F(PortEventsTest, TheCarriersLossIsSeenAcrossEvents)
{
    Connect(true);
    Arrive("NO CA");
    EXPECT_FALSE(handler.CarrierLost());
    Arrive("RR");
    Arrive("IER");
    EXPECT_TRUE(handler.CarrierLost());
    EXPECT_EQ(host.hangUps, 1);
}

TEST_F(PortEventsTest, TheCarriersLossIsSeenInsideDataAndWhereverItIsSplit)
{
    Connect(true);
    const QByteArray lost = "NO CARRIER";
    for (qsizetype split = 0; split <= lost.size(); ++split) {
        Arrive(Wire(901, 3) + lost.left(split));
        EXPECT_EQ(handler.CarrierLost(), split == lost.size()) << split;
        Arrive(lost.mid(split) + Wire(902, 3));
        EXPECT_TRUE(handler.CarrierLost()) << split;
        handler.ResetCarrierLostStatus();
    }
    EXPECT_EQ(host.hangUps, lost.size() + 1);
}

TEST_F(PortEventsTest, ATextThatBeginsAnewBeforeItEndsIsSeen)
{
    Connect(true);
    for (const char* text : {"NNO CARRIER", "NO NO CARRIER", "NO CARRIENO CARRIER", "NO CARNO CARRIER"}) {
        Arrive(text);
        EXPECT_TRUE(handler.CarrierLost()) << text;
        handler.ResetCarrierLostStatus();
    }
    for (const char* text : {"NO  CARRIER", "NO CCARRIER", "O CARRIER", "NO CARRIE", "ER"}) {
        Arrive(text);
        EXPECT_FALSE(handler.CarrierLost()) << text;
    }
}

TEST_F(PortEventsTest, OnlyTheExactTextIsALostCarrier)
{
    Connect(true);
    Arrive("no carrier NO-CARRIER NO CARRIE NOCARRIER NO CARRIEr");
    EXPECT_FALSE(handler.CarrierLost());
    EXPECT_EQ(host.hangUps, 0);
    Arrive("NO NO CARRIER");
    EXPECT_EQ(host.hangUps, 1);
}

TEST_F(PortEventsTest, TheCarrierIsWatchedBeforeTheEscapesAreTakenOut)
{
    Connect(true);
    Arrive("NO\\ CARRIER");  // the byte behind the escape is swallowed for the frames only
    EXPECT_FALSE(handler.CarrierLost());
    Arrive("\\NO CARRIER");
    EXPECT_TRUE(handler.CarrierLost());
}

TEST_F(PortEventsTest, AHangUpThatClosesThePortEndsTheReading)
{
    Connect(true);
    host.onHangUp = [this] {
        port.setPortOpen(false);
        host.modemActive = false;
    };
    terminal.Write("NO CARRIER" + Wire(1));
    ASSERT_TRUE(QTest::qWaitFor([this] { return port.InBufferCount() == 16; }));
    handler.ProcessCommEvent(SerialControl::kEvReceive);
    EXPECT_THAT(ReceivedCommands(), IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(PortEventsTest, ResetForgetsALostCarrierAndCollisions)
{
    Connect(true);
    Arrive("NO CARRIER");
    handler.ProcessCommEvent(SerialControl::kFramingError);
    handler.Reset(Transport::kModem);
    EXPECT_FALSE(handler.CarrierLost());
    EXPECT_EQ(handler.BusCollisions(), 0);
}

// --- The modem's escapes -------------------------------------------------------------------------------------------

TEST_F(PortEventsTest, ADoubledBackslashIsOneByteOfData)
{
    Connect(true);
    Arrive(CMsgHandler::toEscapedString(Wire(23, 0x5C5C)));
    EXPECT_THAT(ReceivedData(), ElementsAre(0x5C5C));
}

TEST_F(PortEventsTest, ABackslashAndAnotherByteAreDropped)
{
    Connect(true);
    const QByteArray frame = Wire(901, 3);
    Arrive(frame.left(3) + "\\x" + frame.mid(3) + "\\" + QByteArray(1, '\0') + Wire(2));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(901, 2));
}

TEST_F(PortEventsTest, AnEscapeMaySpanEventsAndConnections)
{
    Connect(true);
    Arrive("\\");
    EXPECT_FALSE(handler.ReceivingMessage());
    handler.Reset(Transport::kModem);  // the escape state lives as long as the engine
    Arrive("x" + Wire(1));
    EXPECT_THAT(ReceivedCommands(), ElementsAre(1));
    EXPECT_EQ(handler.PCCollisions(), 0);
}

TEST_F(PortEventsTest, ThreeBackslashesAreOneByteAndAnOpenEscape)
{
    Connect(true);
    const QByteArray frame = Wire(1, 0x005C);  // ends in 5C and the sum
    const QByteArray escaped = CMsgHandler::toEscapedString(frame);
    Arrive(escaped.left(escaped.size() - 1) + "\\x" + escaped.right(1));
    EXPECT_THAT(ReceivedData(), ElementsAre(0x005C));
}

TEST_F(PortEventsTest, ABackslashInAnyByteOfAFrameComesThrough)
{
    Connect(true);
    // A backslash in each place that can have one, which the first two can't: header, data, sum.
    for (const QByteArray& frame :
         {Wire(279, 0), Wire(23, 0x5C00), Wire(23, 0x005C), Wire(23, 0x5C5C), Wire(1, 0x00B8)}) {
        Arrive(CMsgHandler::toEscapedString(frame));
        ASSERT_EQ(handler.ReceivedMessagesPending(), 1) << frame.toHex().toStdString();
        EXPECT_EQ(handler.GetMessageReceived()->rawBytes.back(), std::uint8_t(frame.back()));
    }
}

struct EscapeRow {
    const char* name;
    int transport;
    bool modemActive;
};

class WithoutTheModem : public PortEventsTest, public testing::WithParamInterface<EscapeRow> {};

TEST_P(WithoutTheModem, ABackslashIsDataLikeAnyOther)
{
    OpenPort(GetParam().transport);
    host.modemActive = GetParam().modemActive;
    Arrive(Wire(23, 0x5C01) + Wire(24, 0x5C5C));
    EXPECT_THAT(ReceivedData(), ElementsAre(0x5C01, 0x5C5C));
}

// The filter needs both: the modem's flag and the modem's transport.
INSTANTIATE_TEST_SUITE_P(PortEvents, WithoutTheModem,
                         testing::Values(EscapeRow{"Transceiver", Transport::kTransceiver, false},
                                         EscapeRow{"TransceiverWithTheFlagLeftOn", Transport::kTransceiver, true},
                                         EscapeRow{"ModemThatWasHungUp", Transport::kModem, false}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
