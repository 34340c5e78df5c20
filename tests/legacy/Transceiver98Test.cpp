#include "legacy/Transceiver98.h"

#include "legacy/LegacyFixture.h"
#include "support/ScriptedPump.h"

#include <QTest>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A real port on a pseudo-terminal; bytes arrive by the script.
class Waking : public MonitorTest {
protected:
    Waking()
    {
        QObject::connect(&port, &SerialControl::OnComm, &port, [this] { transceiver.ProcessPortEvent(); });
        portFolder.Link(1, terminal.Path());
        port.setCommPort(1);
        port.setPortOpen(true);
    }

    void Answer(double after, const QByteArray& bytes)
    {
        pump.After(after, [this, bytes] {
            terminal.Write(bytes);
            ASSERT_TRUE(QTest::qWaitFor([this] { return seen; }, 2000));
            seen = false;
        });
        QObject::connect(&port, &SerialControl::OnComm, &port, [this] { seen = true; });
    }

    [[nodiscard]] double Elapsed() const { return double(clock.Now().milliseconds - start.milliseconds) / 1000; }

    ScriptedPump pump{clock};
    Moment start = clock.Now();
    Transceiver98 transceiver{port, pump, monitor, errors};
    bool seen = false;
};

TEST_F(Waking, EndsAtTheAcknowledge)
{
    Answer(0.1, "\x8A");
    transceiver.SetTRMode();
    EXPECT_EQ(terminal.Read(1), "\x9E");
    EXPECT_NEAR(Elapsed(), 0.1, 0.01);
    EXPECT_EQ(terminal.Read(1, 50), "");
}

TEST_F(Waking, IsTriedThreeTimesAndThenLeftAlone)
{
    transceiver.SetTRMode();
    EXPECT_EQ(terminal.Read(3), "\x9E\x9E\x9E");
    EXPECT_EQ(terminal.Read(1, 50), "");
    EXPECT_NEAR(Elapsed(), 2.1, 0.01);
    EXPECT_THAT(errors.reports, IsEmpty()) << "no answer is no error";
}

TEST_F(Waking, TheSecondTryMayBeTheOneThatIsAnswered)
{
    Answer(1.0, "\x8A");
    transceiver.SetTRMode();
    EXPECT_EQ(terminal.Read(2), "\x9E\x9E");
    EXPECT_NEAR(Elapsed(), 1.0, 0.01);
}

TEST_F(Waking, OtherBytesAreDroppedMeanwhile)
{
    Answer(0.1, "\x65\x0A");
    transceiver.SetTRMode();
    EXPECT_NEAR(Elapsed(), 2.1, 0.1);
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(DimMisc(1), "*123456*");
}

TEST_F(Waking, OnlyTheFirstByteOfAPieceIsLookedAt)
{
    Answer(0.1, "\x0A\x8A");
    transceiver.SetTRMode();
    EXPECT_GT(Elapsed(), 2.0);
}

TEST_F(Waking, CollisionsAreNotCountedMeanwhile)
{
    marks.Reset();
    pump.After(0.1, [this] {
        framingErrors = 3;
        terminal.Write("\x8A");
        ASSERT_TRUE(QTest::qWaitFor([this] { return port.InBufferCount() == 0 && *framingErrors == 3; }, 50));
        QTest::qWait(0);
    });
    transceiver.SetTRMode();
    EXPECT_EQ(Misc(5), "BC 00000");
}

TEST_F(Waking, WhatComesAfterwardsIsMonitored)
{
    transceiver.SetTRMode();
    terminal.Write("\x65\x8A");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Lines().empty(); }));
    EXPECT_THAT(Lines(), ElementsAre("1||138||32709.35|Command")) << "138 is a message again";
}

TEST_F(Waking, EndsWhenThePortGoesAway)
{
    pump.After(0.1, [this] { port.setPortOpen(false); });
    transceiver.SetTRMode();
    EXPECT_NEAR(Elapsed(), 0.1, 0.01);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(Waking, EndsWhenTheProgramEnds)
{
    pump.After(0.1, [this] { pump.Stop(); });
    transceiver.SetTRMode();
    EXPECT_NEAR(Elapsed(), 0.1, 0.01);
    EXPECT_EQ(terminal.Read(1), "\x9E");
}

TEST_F(Waking, AClosedPortIsAskedNothing)
{
    port.setPortOpen(false);
    transceiver.SetTRMode();
    EXPECT_THAT(errors.reports, IsEmpty());
    EXPECT_EQ(Elapsed(), 0);
}

}  // namespace
}  // namespace fenrik
