#include "SerialFixture.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace fenrik {
namespace {

using testing::Each;
using testing::SizeIs;

TEST_F(SerialControlTest, OpensAndClosesThePortOfItsNumber)
{
    EXPECT_FALSE(port.PortOpen());
    Open();
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(port.CommPort(), kPort);
    EXPECT_EQ(port.Settings(), QStringLiteral("9600,n,8,1"));
    port.setPortOpen(false);
    EXPECT_FALSE(port.PortOpen());
    port.setPortOpen(false);  // closing what is closed is no error
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialControlTest, APortThatIsOpenAlreadyIsInUse)
{
    Open();
    EXPECT_EQ(NumberOfError([this] { port.setPortOpen(true); }), ErrorNumber::kPortAlreadyOpen);
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(SerialControlTest, APortThatAnotherControlHoldsIsInUse)
{
    Open();
    SerialControl second(ports);
    second.setCommPort(kPort);
    EXPECT_EQ(NumberOfError([&second] { second.setPortOpen(true); }), ErrorNumber::kPortAlreadyOpen);
    EXPECT_FALSE(second.PortOpen());

    port.setPortOpen(false);
    second.setPortOpen(true);
    EXPECT_TRUE(second.PortOpen());
}

TEST_F(SerialControlTest, APortThatAnotherProgramHasLockedIsInUse)
{
    const int handle = ::open(terminal.Path().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(handle, 0);
    ASSERT_EQ(::flock(handle, LOCK_EX | LOCK_NB), 0);
    EXPECT_EQ(NumberOfError([this] { Open(); }), ErrorNumber::kPortAlreadyOpen);
    EXPECT_FALSE(port.PortOpen());

    ::close(handle);
    Open();
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(SerialControlTest, HoldsALockWhileItIsOpen)
{
    Open();
    const int handle = ::open(terminal.Path().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (handle >= 0) {  // the administrator alone gets this far
        EXPECT_NE(::flock(handle, LOCK_EX | LOCK_NB), 0);
        port.setPortOpen(false);
        EXPECT_EQ(::flock(handle, LOCK_EX | LOCK_NB), 0);
        ::close(handle);
    } else {
        EXPECT_EQ(errno, EBUSY);
    }
}

TEST_F(SerialControlTest, ANumberWithoutADeviceDoesNotExist)
{
    port.setCommPort(7);
    EXPECT_EQ(NumberOfError([this] { port.setPortOpen(true); }), ErrorNumber::kPortNotFound);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialControlTest, ALinkToAVanishedDeviceDoesNotExist)
{
    folder.Link(4, QStringLiteral("/dev/no-such-device"));
    port.setCommPort(4);
    EXPECT_EQ(NumberOfError([this] { port.setPortOpen(true); }), ErrorNumber::kPortNotFound);
}

TEST_F(SerialControlTest, ADeviceThatIsNoSerialLineCannotBeSetUp)
{
    folder.Link(4, QStringLiteral("/dev/null"));
    port.setCommPort(4);
    EXPECT_EQ(NumberOfError([this] { port.setPortOpen(true); }), ErrorNumber::kSetCommState);
    EXPECT_FALSE(port.PortOpen());
}

class BadLineParameters : public SerialControlTest, public testing::WithParamInterface<const char*> {};

TEST_P(BadLineParameters, CannotBeSetUp)
{
    port.setSettings(QString::fromLatin1(GetParam()));
    EXPECT_EQ(NumberOfError([this] { Open(); }), ErrorNumber::kSetCommState);
    EXPECT_FALSE(port.PortOpen());

    port.setSettings(QStringLiteral("9600,n,8,1"));
    Open();
    EXPECT_EQ(NumberOfError([this] { port.setSettings(QString::fromLatin1(GetParam())); }), ErrorNumber::kSetCommState);
}

INSTANTIATE_TEST_SUITE_P(SerialControl, BadLineParameters,
                         testing::Values("", "9600", "9600,n,8", "9600,n,8,1,x", "0,n,8,1", "-9600,n,8,1", "fast,n,8,1",
                                         "9600,x,8,1", "9600,n,4,1", "9600,n,9,1", "9600,n,8,3"));

class GoodLineParameters : public SerialControlTest, public testing::WithParamInterface<const char*> {};

TEST_P(GoodLineParameters, AreTakenBeforeAndAfterOpening)
{
    port.setSettings(QString::fromLatin1(GetParam()));
    Open();
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(NumberOfError([this] { port.setSettings(QString::fromLatin1(GetParam())); }), 0);
    EXPECT_EQ(port.Settings(), QString::fromLatin1(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(SerialControl, GoodLineParameters,
                         testing::Values("9600,n,8,1", "9600,N,8,1", "57600, n, 8, 1", "300,n,8,2", " 115200 ,n,8,1"));

TEST_F(SerialControlTest, OutputGoesOutAsItIs)
{
    Open();
    const QByteArray bytes = QByteArray::fromHex("00ff0a0d1113 7f80");
    port.Output(bytes);
    EXPECT_EQ(terminal.Read(int(bytes.size())), bytes);
}

TEST_F(SerialControlTest, OutputToAClosedPortIsAnError)
{
    EXPECT_EQ(NumberOfError([this] { port.Output("x"); }), ErrorNumber::kPortNotOpen);
}

TEST_F(SerialControlTest, InputComesInAsItIs)
{
    Open();
    const QByteArray bytes = QByteArray::fromHex("00ff0a0d1113 7f80");
    terminal.Write(bytes);
    ASSERT_TRUE(HasArrived(int(bytes.size())));
    EXPECT_EQ(port.Input(), bytes);
    EXPECT_EQ(port.InBufferCount(), 0);
    EXPECT_EQ(port.Input(), QByteArray());
}

TEST_F(SerialControlTest, InputLenCutsEachInput)
{
    Open();
    port.setInputLen(2);
    EXPECT_EQ(port.InputLen(), 2);
    terminal.Write("abcde");
    ASSERT_TRUE(HasArrived(5));
    EXPECT_EQ(port.Input(), QByteArray("ab"));
    EXPECT_EQ(port.InBufferCount(), 3);
    EXPECT_EQ(port.InputByte(), 'c');
    EXPECT_EQ(port.Input(), QByteArray("de"));
    EXPECT_EQ(port.Input(), QByteArray());
}

TEST_F(SerialControlTest, BytesReadAndBytesArrivingKeepTheirOrder)
{
    Open();
    port.setInputLen(1);
    terminal.Write("abc");
    ASSERT_TRUE(HasArrived(3));
    EXPECT_EQ(port.Input(), QByteArray("a"));
    terminal.Write("def");
    ASSERT_TRUE(HasArrived(5));
    port.setInputLen(0);
    EXPECT_EQ(port.Input(), QByteArray("bcdef"));
}

TEST_F(SerialControlTest, ClearInputDropsWhatHasArrived)
{
    Open();
    terminal.Write("abc");
    ASSERT_TRUE(HasArrived(3));
    port.ClearInput();
    EXPECT_EQ(port.InBufferCount(), 0);
}

TEST_F(SerialControlTest, OpeningForgetsWhatTheLastSessionLeft)
{
    Open();
    terminal.Write("abc");
    ASSERT_TRUE(HasArrived(3));
    port.setPortOpen(false);
    EXPECT_EQ(port.InBufferCount(), 0);
    Open();
    EXPECT_EQ(port.InBufferCount(), 0);
}

TEST_F(SerialControlTest, RaisesOneEventForEachByte)
{
    Watch();
    Open();
    terminal.Write("abcdef");
    ASSERT_TRUE(QTest::qWaitFor([this] { return events.size() >= 6; }));
    QTest::qWait(0);
    EXPECT_THAT(events, SizeIs(6));
    EXPECT_THAT(events, Each(SerialControl::kEvReceive));
}

TEST_F(SerialControlTest, RaisesNoEventsForBytesThatAHandlerHasTaken)
{
    QByteArray taken;
    Watch([this, &taken] { taken += port.Input(); });
    Open();
    terminal.Write("abcdef");
    ASSERT_TRUE(QTest::qWaitFor([&taken] { return taken.size() == 6; }));
    const auto raised = events.size();
    EXPECT_LT(raised, 6u);
    QTest::qWait(0);
    EXPECT_EQ(events.size(), raised);
}

TEST_F(SerialControlTest, OutputRaisesNoEventBeforeItReturns)
{
    Watch();
    Open();
    terminal.Write("answer");
    port.Output("question");
    EXPECT_THAT(events, SizeIs(0));
    EXPECT_TRUE(QTest::qWaitFor([this] { return events.size() == 6; }));
}

TEST_F(SerialControlTest, BytesThatArriveWhileAHandlerWaitsReachTheWait)
{
    const SystemClock clock;
    QtEventPump pump(clock);
    QByteArray inOrder;
    bool waited = false;
    Watch([&] {
        inOrder += port.Input();
        if (waited)
            return;
        waited = true;
        terminal.Write("later");
        EXPECT_TRUE(pump.WaitFor([&] { return inOrder.endsWith("later"); }, 5.0));
    });
    Open();
    terminal.Write("first");
    ASSERT_TRUE(QTest::qWaitFor([&] { return inOrder.size() == 10; }));
    EXPECT_EQ(inOrder, QByteArray("firstlater"));
}

TEST_F(SerialControlTest, BytesOfTheSameBurstReachTheWaitOfTheFirstOnesHandler)
{
    const SystemClock clock;
    QtEventPump pump(clock);
    port.setInputLen(1);
    QByteArray inOrder;
    bool waited = false;
    Watch([&] {
        inOrder += port.Input();
        if (waited)
            return;
        waited = true;
        EXPECT_TRUE(pump.WaitFor([&] { return inOrder.size() == 5; }, 5.0));
    });
    Open();
    terminal.Write("burst");
    ASSERT_TRUE(QTest::qWaitFor([&] { return inOrder.size() == 5; }));
    EXPECT_EQ(inOrder, QByteArray("burst"));
    EXPECT_THAT(events, SizeIs(5));
}

TEST_F(SerialControlTest, ALineThatFellSilentIsHeardAgain)
{
    Open();
    terminal.Write("abc");
    ASSERT_TRUE(HasArrived(3));
    QTest::qWait(50);  // longer than a silent line is looked at
    terminal.Write("def");
    EXPECT_TRUE(HasArrived(6));
    EXPECT_EQ(port.Input(), QByteArray("abcdef"));
}

TEST_F(SerialControlTest, AStreamIsLookedAtInTheIntervalThatWasSet)
{
    QElapsedTimer clock;
    std::vector<qint64> heardAt;
    Watch([this, &clock, &heardAt] {
        heardAt.push_back(clock.elapsed());
        static_cast<void>(port.Input());
        if (heardAt.size() == 1)
            terminal.Write("b");
    });
    port.setGatherTime(100);
    Open();
    clock.start();
    terminal.Write("a");
    ASSERT_TRUE(QTest::qWaitFor([&heardAt] { return heardAt.size() == 2; }));
    EXPECT_GE(heardAt[1] - heardAt[0], 50);  // a timer may be early; at 4 ms it would be long here
}

TEST_F(SerialControlTest, AnOutputIntoAStreamLosesNothingOfIt)
{
    QByteArray heard;
    Watch([this, &heard] {
        heard += port.Input();
        if (heard.size() == 3) {
            terminal.Write("def");
            port.Output("question");
            terminal.Write("ghi");
        }
    });
    Open();
    terminal.Write("abc");
    ASSERT_TRUE(QTest::qWaitFor([&heard] { return heard.size() == 9; }));
    EXPECT_EQ(heard, QByteArray("abcdefghi"));
}

TEST_F(SerialControlTest, AHandlerMayCloseThePort)
{
    Watch([this] { port.setPortOpen(false); });
    Open();
    terminal.Write("abcdef");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !events.empty(); }));
    QTest::qWait(0);
    EXPECT_THAT(events, SizeIs(1));
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialControlTest, ALineWithoutRtsIsNoError)
{
    QSignalSpy lost(&port, &SerialControl::PortLost);
    port.setRTSEnable(true);
    Open();
    port.setRTSEnable(true);
    port.setRTSEnable(false);
    EXPECT_TRUE(port.PortOpen());
    port.Output("x");
    EXPECT_EQ(terminal.Read(1), QByteArray("x"));
    EXPECT_EQ(lost.count(), 0);
}

}  // namespace
}  // namespace fenrik
