#include "ModemFixture.h"
#include "platform/Error.h"

namespace fenrik {
namespace {

using testing::AllOf;
using testing::Ge;
using testing::IsEmpty;
using testing::Lt;

class MModemTest : public ModemTest {
protected:
    void Open() { modem.Open(6, 57600); }

    /// Seconds that `work` takes.
    template <typename Work>
    double Takes(Work work)
    {
        const double before = Elapsed();
        work();
        return Elapsed() - before;
    }
};

// --- Lines ---------------------------------------------------------------------------------------------------------

struct LineRow {
    const char* name;
    QByteArray said;
    QString line;
    int left;  ///< bytes that stay for the next line
};

class Lines : public MModemTest, public testing::WithParamInterface<LineRow> {};

TEST_P(Lines, EndAtTheLineFeedAndHaveNoReturns)
{
    Open();
    Say(GetParam().said);
    EXPECT_EQ(modem.ReadModemLine(1000), GetParam().line);
    EXPECT_EQ(port.InBufferCount(), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(
    MModem, Lines,
    testing::Values(LineRow{"Plain", "OK\r\n", "OK", 0}, LineRow{"Empty", "\r\nOK\r\n", "", 4},
                    LineRow{"OnlyTheFirst", "CONNECT\nOK\n", "CONNECT", 3},
                    LineRow{"ReturnsAnywhere", "\rO\r\rK\r\n", "OK", 0}, LineRow{"Unended", "NO CARR", "NO CARR", 0},
                    LineRow{"AnyByte", QByteArray("\x01\xFF\0 z\n", 6), QString("\x01ÿ") + QChar(0) + " z", 0},
                    LineRow{"TenThousandCharacters", QByteArray(10'000, 'x') + "\r\nOK", QString(10'000, 'x'), 2},
                    LineRow{"NoMoreThanTheLongest", QByteArray(70'000, 'x') + '\n', QString(MModem::kLongestLine, 'x'),
                            0}),
    [](const auto& row) { return row.param.name; });

TEST_F(MModemTest, ALineThatTimesOutIsGivenAsFarAsItCame)
{
    Open();
    SayAfter(0.4, "OK");
    SayAfter(2.0, "\n");
    QString line;
    EXPECT_THAT(Takes([&] { line = modem.ReadModemLine(1000); }), AllOf(Ge(1.0), Lt(1.1)));
    EXPECT_EQ(line, "OK");
}

TEST_F(MModemTest, ALineMayComeByteByByte)
{
    Open();
    for (const char byte : QByteArray("CONNECT 57600\r\n"))
        SayAfter(0.01, QByteArray(1, byte));
    EXPECT_EQ(modem.ReadModemLine(1000), "CONNECT 57600");
}

TEST_F(MModemTest, ReadingEndsWhenThePortGoesAway)
{
    Open();
    SayAfter(0.1, "NO");
    UnplugAfter(0.1);
    QString line;
    EXPECT_THAT(Takes([&] { line = modem.ReadModemLine(60'000); }), Lt(0.3));
    EXPECT_EQ(line, "NO");
}

TEST_F(MModemTest, InterruptEndsReadingAndDelaysUntilResume)
{
    Open();
    pump.After(0.1, [this] { modem.Interrupt(); });
    EXPECT_THAT(Takes([&] { EXPECT_EQ(modem.ReadModemLine(60'000), QString()); }), Lt(0.2));
    EXPECT_EQ(Takes([&] { modem.Delay(2); }), 0.0);
    EXPECT_EQ(Takes([&] { modem.DropInput(); }), 0.0);
    modem.Resume();
    EXPECT_THAT(Takes([&] { modem.Delay(2); }), AllOf(Ge(2.0), Lt(2.1)));
}

// --- The port ------------------------------------------------------------------------------------------------------

TEST_F(MModemTest, OpensThePortAtEachSpeedOfTheOptions)
{
    for (const int baud : {9600, 14400, 19200, 28800, 38400, 57600}) {
        EXPECT_NO_THROW(modem.Open(6, baud)) << baud;
        EXPECT_EQ(port.Settings(), QString("%1,n,8,1").arg(baud));
        modem.Close();
    }
}

// --- Commands ------------------------------------------------------------------------------------------------------

struct ReplyRow {
    const char* name;
    QByteArray said;
    QString reply;
};

class Replies : public MModemTest, public testing::WithParamInterface<ReplyRow> {};

TEST_P(Replies, AreTheFirstLineThatIsNoEcho)
{
    Open();
    Talk(0.1, "ATDT5551234\r", GetParam().said);
    EXPECT_EQ(modem.SendCommandGetReply("ATDT5551234\r", 1000), GetParam().reply);
    EXPECT_TRUE(HeardNothing());
}

INSTANTIATE_TEST_SUITE_P(MModem, Replies,
                         testing::Values(ReplyRow{"WithEcho", "ATDT5551234\r\r\nCONNECT 57600\r\n", "CONNECT 57600"},
                                         ReplyRow{"WithoutEcho", "\r\nCONNECT 57600\r\n", "CONNECT 57600"},
                                         ReplyRow{"WithoutAnEmptyLine", "CONNECT\r\n", "CONNECT"},
                                         ReplyRow{"EchoAndAnEmptyLine", "ATDT5551234\r\r\n\r\nBUSY\r\n", "BUSY"},
                                         // Whatever stands in the command passes for its echo, once.
                                         ReplyRow{"APartOfTheCommand", "555\r\nNO CARRIER\r\n", "NO CARRIER"},
                                         ReplyRow{"TwoParts", "555\r\n1234\r\n", "1234"},
                                         ReplyRow{"Garbled", "\x8F\xFE~{\r\n", QString::fromLatin1("\x8F\xFE~{")},
                                         ReplyRow{"TooManyEmptyLines", "\r\n\r\n\r\nOK\r\n", ""}),
                         [](const auto& row) { return row.param.name; });

TEST_F(MModemTest, ASilentModemCostsThreeTimesTheTimeOutAndHearsTheCommandOnce)
{
    Open();
    EXPECT_THAT(Takes([&] { EXPECT_EQ(modem.SendCommandGetReply("AT\r", 1000), QString()); }), AllOf(Ge(3.0), Lt(3.1)));
    EXPECT_EQ(Heard(3), "AT\r");
    EXPECT_TRUE(HeardNothing());
}

TEST_F(MModemTest, AnAnswerInTheThirdTryIsTaken)
{
    Open();
    Talk(2.9, "AT\r", "OK\r\n");
    EXPECT_EQ(modem.SendCommandGetReply("AT\r", 1000), "OK");
}

TEST_F(MModemTest, ACommandWithoutAPortIsAnError)
{
    EXPECT_THROW(modem.SendCommandGetReply("AT\r", 1000), Error);
}

TEST_F(MModemTest, DroppingInputWaitsUntilTheModemHasFallenSilent)
{
    Open();
    SayAfter(0.05, "AT&F\r\r\n");
    SayAfter(0.2, "OK\r\n");
    EXPECT_THAT(Takes([&] { modem.DropInput(); }), Lt(1.0));
    EXPECT_EQ(port.InBufferCount(), 0);
    EXPECT_TRUE(pump.ScriptDone());
}

TEST_F(MModemTest, DroppingInputEndsAlsoWithAModemThatNeverFallsSilent)
{
    Open();
    for (int i = 0; i < 40; ++i)
        SayAfter(0.1, "x");
    EXPECT_THAT(Takes([&] { modem.DropInput(); }), AllOf(Ge(1.5), Lt(1.7)));
    EXPECT_EQ(port.InBufferCount(), 0);
}

// --- Detection -----------------------------------------------------------------------------------------------------

class Detection : public MModemTest {
protected:
    QString text;
};

TEST_F(Detection, FindsAModemThatEchoes)
{
    Talk(0.1, "AT\r", "AT\r\r\nOK\r\n");
    Talk(0.1, "ATI3\r", "ATI3\r\r\nTel 56k V1.2\r\n\r\nOK\r\n");
    EXPECT_TRUE(modem.DetectModem(6, text));
    EXPECT_EQ(text, "Tel 56k V1.2");
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(port.Settings(), "9600,n,8,1");
    EXPECT_EQ(port.InputLen(), 1);
    EXPECT_FALSE(run.ModemActive);
}

TEST_F(Detection, FindsAModemThatIsSilentAboutItself)
{
    Talk(0.1, "AT\r", "\r\nOK\r\n");
    EXPECT_TRUE(modem.DetectModem(6, text));
    EXPECT_EQ(text, "");
}

struct NoModemRow {
    const char* name;
    QByteArray said;
};

class NoModem : public Detection, public testing::WithParamInterface<NoModemRow> {};

TEST_P(NoModem, IsToldAndThePortStaysOpen)
{
    Talk(0.1, "AT\r", GetParam().said);
    EXPECT_FALSE(modem.DetectModem(6, text));
    EXPECT_EQ(text, "No modem detected on COM6");
    EXPECT_TRUE(port.PortOpen());
}

INSTANTIATE_TEST_SUITE_P(MModem, NoModem,
                         testing::Values(NoModemRow{"Silent", ""}, NoModemRow{"NotExactlyOk", "OK \r\n"},
                                         NoModemRow{"SmallLetters", "ok\r\n"}, NoModemRow{"Refuses", "ERROR\r\n"},
                                         NoModemRow{"Garbled", "\xF0\x9F\r\n"}, NoModemRow{"OnlyAnEcho", "AT\r\r\n"},
                                         NoModemRow{"VeryLong", QByteArray(10'000, 'O') + "K\r\n"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(Detection, ClosesAPortThatAFailedDialLeftOpenAndForgetsItsInput)
{
    Open();
    Say("NO CARRIER\r\n");
    Talk(0.1, "AT\r", "OK\r\n");
    Talk(0.1, "ATI3\r", "Tel\r\n");
    EXPECT_TRUE(modem.DetectModem(6, text));
}

TEST_F(Detection, OfAPortThatDoesNotExistTellsTheError)
{
    EXPECT_FALSE(modem.DetectModem(7, text));
    EXPECT_EQ(text, "Error 8002 detecting modem");
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(Detection, OfAPortInUseTellsTheError)
{
    SerialControl other(ports);
    other.setCommPort(6);
    other.setPortOpen(true);
    EXPECT_FALSE(modem.DetectModem(6, text));
    EXPECT_EQ(text, "Error 8005 detecting modem");
}

TEST_F(Detection, OfAPortThatGoesAwayAfterTheFirstAnswerHoldsAModem)
{
    Talk(0.1, "AT\r", "OK\r\n");
    UnplugAfter(0.1);
    EXPECT_TRUE(modem.DetectModem(6, text));
    EXPECT_FALSE(port.PortOpen());
}

// --- Hanging up ----------------------------------------------------------------------------------------------------

TEST_F(MModemTest, HangingUpKeepsTheGuardTimes)
{
    Open();
    run.ModemActive = true;
    Talk(1.5, "+++", "\r\nOK\r\n");
    EXPECT_THAT(Takes([&] { modem.HangUpModem(); }), AllOf(Ge(2.0), Lt(2.1)));
    EXPECT_EQ(Heard(9), "ATH0\rATZ\r");
    EXPECT_FALSE(run.ModemActive);
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(MModemTest, HangingUpThatIsInterruptedLeavesTheModemAlone)
{
    Open();
    run.ModemActive = true;
    pump.After(0.5, [this] { modem.Interrupt(); });
    EXPECT_THAT(Takes([&] { modem.HangUpModem(); }), Lt(0.6));
    EXPECT_TRUE(HeardNothing());
    EXPECT_TRUE(run.ModemActive);
}

TEST_F(MModemTest, WithoutAPortNothingIsHungUpAndTheFlagStays)
{
    run.ModemActive = true;
    EXPECT_EQ(Takes([&] { modem.HangUpModem(); }), 0.0);
    EXPECT_TRUE(run.ModemActive);
}

TEST_F(MModemTest, APortThatGoesAwayWhileHangingUpEndsIt)
{
    Open();
    run.ModemActive = true;
    UnplugAfter(0.5);
    EXPECT_THAT(Takes([&] { modem.HangUpModem(); }), Lt(0.6));
    EXPECT_FALSE(run.ModemActive);
}

TEST_F(MModemTest, ClosingTheLinkLeavesTheModuleFirst)
{
    Open();
    run.ModemActive = true;
    Talk(0.5, "\\P\\h", "\r\nNO CARRIER\r\n");
    Talk(1.0, "+++", "");
    EXPECT_THAT(Takes([&] { modem.CloseModemLink(); }), AllOf(Ge(2.0), Lt(2.1)));
    EXPECT_EQ(Heard(4), "ATZ\r");
    EXPECT_FALSE(port.PortOpen());
    EXPECT_TRUE(run.ModemActive) << "only hanging up clears it";
}

TEST_F(MModemTest, ClosingTheLinkDoesNotRunInsideItself)
{
    Open();
    pump.After(0.5, [this] {
        EXPECT_TRUE(modem.ClosingModemLink());
        modem.CloseModemLink();
        EXPECT_TRUE(port.PortOpen());
    });
    modem.CloseModemLink();
    EXPECT_EQ(Heard(11), "\\P\\h+++ATZ\r");
    EXPECT_TRUE(HeardNothing());
    EXPECT_FALSE(modem.ClosingModemLink());
}

TEST_F(MModemTest, ClosingTheLinkWithoutAPortDoesNothing)
{
    EXPECT_EQ(Takes([&] { modem.CloseModemLink(); }), 0.0);
}

TEST_F(MModemTest, APortThatGoesAwayWhileTheLinkIsClosedEndsIt)
{
    Open();
    UnplugAfter(0.2);
    EXPECT_THAT(Takes([&] { modem.CloseModemLink(); }), Lt(0.3));
    EXPECT_FALSE(modem.ClosingModemLink());
}

}  // namespace
}  // namespace fenrik
