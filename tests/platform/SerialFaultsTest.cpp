// What becomes of a serial line whose device goes, or that counts framing errors.

#include "SerialFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;

TEST_F(SerialControlTest, UnpluggingClosesThePortAndTellsItOnce)
{
    QSignalSpy lost(&port, &SerialControl::PortLost);
    Open();
    terminal.Write("ab");
    ASSERT_TRUE(HasArrived(2));
    terminal.Unplug();
    ASSERT_TRUE(QTest::qWaitFor([&lost] { return lost.count() > 0; }));
    QTest::qWait(0);
    EXPECT_EQ(lost.count(), 1);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(port.InBufferCount(), 0);
    EXPECT_EQ(NumberOfError([this] { port.Output("x"); }), ErrorNumber::kPortNotOpen);
}

TEST_F(SerialControlTest, SendingToAnUnpluggedDeviceLosesThePortWithoutAnError)
{
    QSignalSpy lost(&port, &SerialControl::PortLost);
    Open();
    terminal.Unplug();
    EXPECT_EQ(NumberOfError([this] { port.Output("frame"); }), 0);
    EXPECT_TRUE(QTest::qWaitFor([&lost] { return lost.count() > 0; }));
    EXPECT_EQ(lost.count(), 1);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialControlTest, WorksAgainAfterTheDeviceHasComeBack)
{
    Watch([this] { (void)port.Input(); });
    Open();
    terminal.Unplug();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !port.PortOpen(); }));

    PseudoTerminal again;
    folder.Link(kPort, again.Path());
    port.setPortOpen(true);
    port.Output("x");
    EXPECT_EQ(again.Read(1), QByteArray("x"));
    again.Write("y");
    EXPECT_TRUE(QTest::qWaitFor([this] { return events.size() == 1; }));
}

TEST_F(SerialControlTest, UnpluggingInsideAHandlersWaitEndsInAClosedPort)
{
    const SystemClock clock;
    QtEventPump pump(clock);
    QSignalSpy lost(&port, &SerialControl::PortLost);
    Watch([&] {
        terminal.Unplug();
        EXPECT_TRUE(pump.WaitFor([this] { return !port.PortOpen(); }, 5.0));
    });
    Open();
    terminal.Write("abc");
    ASSERT_TRUE(QTest::qWaitFor([&lost] { return lost.count() > 0; }));
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(lost.count(), 1);
}

TEST_F(SerialControlTest, FramingErrorsAreToldOneByOneBeforeTheBytesThatCameWithThem)
{
    framingErrors = 5;  // what the driver counted before this session is not told
    Watch([this] {
        if (port.CommEvent() == SerialControl::kEvReceive)
            (void)port.InputByte();
    });
    Open();
    framingErrors = 7;
    terminal.Write("a");
    ASSERT_TRUE(QTest::qWaitFor([this] { return events.size() >= 3; }));
    EXPECT_THAT(events,
                ElementsAre(SerialControl::kFramingError, SerialControl::kFramingError, SerialControl::kEvReceive));
}

TEST_F(SerialControlTest, FramingErrorsWithoutDataAreToldAfterAWhile)
{
    framingErrors = 0;
    Watch();
    Open();
    framingErrors = 1;
    ASSERT_TRUE(QTest::qWaitFor([this] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre(SerialControl::kFramingError));
}

TEST_F(SerialControlTest, ACounterThatWrapsAroundLosesNothing)
{
    framingErrors = 0xFFFFFFFF;
    Watch([this] { port.ClearInput(); });
    Open();
    framingErrors = 1;
    terminal.Write("a");
    ASSERT_TRUE(QTest::qWaitFor([this] { return events.size() >= 2; }));
    EXPECT_THAT(events, ElementsAre(SerialControl::kFramingError, SerialControl::kFramingError));
}

TEST_F(SerialControlTest, ACounterThatItsDriverSetsBackTellsNothing)
{
    framingErrors = 100;
    Watch();
    Open();
    framingErrors = 0;
    terminal.Write("a");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre(SerialControl::kEvReceive));
}

TEST_F(SerialControlTest, APortWithoutACounterTellsNoFramingErrors)
{
    Watch();
    Open();
    terminal.Write("a");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre(SerialControl::kEvReceive));
    EXPECT_EQ(SerialControl::DriverFramingErrors(-1), std::nullopt);
}

}  // namespace
}  // namespace fenrik
