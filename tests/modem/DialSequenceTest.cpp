#include "modem/DialSequence.h"

#include "DialFixture.h"
#include "platform/Error.h"

#include <QFile>

#include <optional>

namespace fenrik {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::Lt;

class ViewRecorder : public DialView {
public:
    void ShowStatus(const QString& text) override { texts.append(text); }

    QStringList texts;
};

class DialSequenceTest : public DialTest {
protected:
    /// The number of the error in which the dial ends, 0 if it succeeds.
    int Fails(const QString& phoneNumber = "555-1234")
    {
        try {
            EXPECT_TRUE(sequence.Dial(phoneNumber));
            return 0;
        } catch (const Error& error) {
            description = error.Description();
            return error.Number();
        }
    }

    ViewRecorder view;
    DialSequence sequence{modem, pump, settings, run, view};
    QString description;
};

TEST_F(DialSequenceTest, GoesFromTheNumberToPassThrough)
{
    Connected();
    Module();
    EXPECT_TRUE(sequence.Dial("555-1234"));
    EXPECT_THAT(view.texts, ElementsAre("Looking for the modem on COM6...", "Dialing 5551234...", "Connect 57600",
                                        "Fenrik Modem Module v1.4"));
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(port.CommPort(), 6);
    EXPECT_EQ(port.Settings(), "57600,n,8,1");
    EXPECT_TRUE(run.ModemActive);
    EXPECT_TRUE(pump.ScriptDone());
    EXPECT_TRUE(HeardNothing());
}

TEST_F(DialSequenceTest, LeavesTheNetworksBytesToTheLink)
{
    Connected();
    Module("1.4\r\n", QByteArray("ACK\r\n\0\xAE", 7));
    EXPECT_TRUE(sequence.Dial("555-1234"));
    EXPECT_EQ(port.InBufferCount(), 2);
}

struct NumberRow {
    const char* name;
    QString text;
    bool isNumber;
};

class Numbers : public DialSequenceTest, public testing::WithParamInterface<NumberRow> {};

TEST_P(Numbers, NeedThreeDigits)
{
    const int code = Fails(GetParam().text);
    EXPECT_EQ(code == DialError::kNoNumber, !GetParam().isNumber) << code;
    EXPECT_EQ(port.PortOpen(), GetParam().isNumber) << "without a number the modem isn't looked for";
}

INSTANTIATE_TEST_SUITE_P(Dial, Numbers,
                         testing::Values(NumberRow{"Empty", "", false}, NumberRow{"TwoDigitsAndAHyphen", "1-2", false},
                                         NumberRow{"OnlySigns", "(-) .", false}, NumberRow{"ThreeDigits", "911", true},
                                         NumberRow{"DigitsOfAnotherScript", QString("١٢٣٤٥"), false},
                                         NumberRow{"FourWithAHyphen", "55-12", true}),
                         [](const auto& row) { return row.param.name; });

TEST_F(DialSequenceTest, DialsTheDigitsAlone)
{
    Detected();
    Talk(0.7, "ATDT15551234\r", "BUSY\r\n");
    EXPECT_EQ(Fails("+1 (555) 12-34 ext."), DialError::kNotConnected);
}

TEST_F(DialSequenceTest, FourDigitsWithAHyphenAreDialledWithoutIt)
{
    Detected();
    Talk(0.7, "ATDT5512\r", "BUSY\r\n");
    EXPECT_EQ(Fails("55-12"), DialError::kNotConnected);
    EXPECT_TRUE(view.texts.contains("Dialing 5512..."));
}

// --- No modem ------------------------------------------------------------------------------------------------------

TEST_F(DialSequenceTest, ASilentModemIsResetAndAskedOnceMore)
{
    EXPECT_EQ(Fails(), DialError::kNoModem);
    EXPECT_THAT(view.texts, ElementsAre("Looking for the modem on COM6...",
                                        "Modem in use or not available, attempting to reset..."));
    EXPECT_EQ(Heard(18), "AT\r+++ATH0\rATZ\rAT\r");
    EXPECT_THAT(Elapsed(), AllOf(Ge(8.0), Lt(8.2)));
    EXPECT_TRUE(port.PortOpen()) << "it stays open until the next dial";
    EXPECT_FALSE(run.ModemActive);
}

TEST_F(DialSequenceTest, AModemThatAnswersAfterTheResetIsDialled)
{
    Talk(3.1, "AT\r", "");
    Talk(1.1, "+++", "OK\r\n");
    Talk(1.0, "ATH0\rATZ\rAT\r", "OK\r\n");
    Talk(0.1, "ATI3\r", "Tel\r\n");
    Dialled("NO ANSWER");
    EXPECT_EQ(Fails(), DialError::kNotConnected);
    EXPECT_TRUE(pump.ScriptDone());
}

TEST_F(DialSequenceTest, ARedialNeedsNoReset)
{
    Detected();
    Dialled("BUSY");
    EXPECT_EQ(Fails(), DialError::kNotConnected);
    EXPECT_TRUE(port.PortOpen());
    Connected();
    Module();
    EXPECT_TRUE(sequence.Dial("555-1234"));
    EXPECT_FALSE(view.texts.contains("Modem in use or not available, attempting to reset..."));
}

TEST_F(DialSequenceTest, APortThatDoesNotExistIsNoModem)
{
    settings.ModemCommPort = 7;
    EXPECT_EQ(Fails(), DialError::kNoModem);
    EXPECT_EQ(Elapsed(), 0.0);
}

TEST_F(DialSequenceTest, APortThatVanishesAfterItsModemWasFoundIsInvalid)
{
    Talk(0.1, "AT\r", "OK\r\n");
    pump.After(0.1, [this] { QFile::remove(folder.Path() + "/com6"); });
    EXPECT_EQ(Fails(), ErrorNumber::kPortNotFound);
    EXPECT_FALSE(run.ModemActive);
}

TEST_F(DialSequenceTest, WhatTheModemStillSaysOfItselfIsNotTakenForTheDials)
{
    Talk(0.1, "AT\r", "AT\r\r\nOK\r\n");
    Talk(0.1, "ATI3\r", "ATI3\r\r\nTel 56k\r\n");
    SayAfter(0.05, "\r\nOK\r\n");
    Dialled();
    Module();
    EXPECT_TRUE(sequence.Dial("555-1234"));
}

// --- The initialisation string -------------------------------------------------------------------------------------

TEST_F(DialSequenceTest, WhatTheModemSaysToItsInitializationIsNotTakenForTheDials)
{
    settings.ModemInitString = "AT&F";
    Detected();
    Talk(0.3005, "AT&F\r", "AT&F\r\r\n");
    SayAfter(0.1, "OK\r\n");
    Talk(0.7, "ATDT5551234\r", "CONNECT\r\n");
    Module();
    EXPECT_TRUE(sequence.Dial("555-1234"));
    EXPECT_EQ(view.texts.value(1), "Initializing modem...");
    EXPECT_EQ(view.texts.value(3), "Connect");
}

TEST_F(DialSequenceTest, TheInitializationIsGivenAMillisecondForEachTry)
{
    modem.Open(6, 57600);
    (void)modem.SendCommandGetReply("AT&F\r", 1);
    EXPECT_THAT(Elapsed(), AllOf(Ge(0.003), Lt(0.01)));
}

TEST_F(DialSequenceTest, AModemThatIsSilentAboutItsInitializationIsDialledAllTheSame)
{
    settings.ModemInitString = "AT&F";
    Detected();
    Talk(0.9, "AT&F\rATDT5551234\r", "CONNECT\r\n");
    Module();
    EXPECT_TRUE(sequence.Dial("555-1234"));
}

// --- The call ------------------------------------------------------------------------------------------------------

struct CallRow {
    const char* name;
    QByteArray reply;
};

class Unconnected : public DialSequenceTest, public testing::WithParamInterface<CallRow> {};

TEST_P(Unconnected, TakesTheReplyAlong)
{
    Detected();
    Dialled(GetParam().reply);
    EXPECT_EQ(Fails(), DialError::kNotConnected);
    EXPECT_EQ(description, QString::fromLatin1(GetParam().reply));
    EXPECT_TRUE(port.PortOpen());
    EXPECT_TRUE(run.ModemActive);
}

INSTANTIATE_TEST_SUITE_P(Dial, Unconnected,
                         testing::Values(CallRow{"NoCarrier", "NO CARRIER"}, CallRow{"Busy", "BUSY"},
                                         CallRow{"NoAnswer", "NO ANSWER"}, CallRow{"NoDialTone", "NO DIALTONE"},
                                         CallRow{"Error", "ERROR"}, CallRow{"Ring", "RING"},
                                         CallRow{"SmallLetters", "connect"}, CallRow{"Garbled", "\x9C\xFF~"},
                                         CallRow{"TenThousandCharacters", QByteArray(10'000, 'B')}),
                         [](const auto& row) { return row.param.name; });

TEST_F(DialSequenceTest, ACallThatIsNeverAnsweredIsGivenUp)
{
    Detected();
    Talk(0.7, "ATDT5551234\r", "");
    EXPECT_EQ(Fails(), DialError::kNotConnected);
    EXPECT_EQ(description, "");
    EXPECT_THAT(Elapsed(), AllOf(Ge(180.0), Lt(182.0)));
}

TEST_F(DialSequenceTest, ACallThatIsAnsweredLateIsTaken)
{
    Detected();
    Talk(0.7, "ATDT5551234\r", "");
    SayAfter(59.0, "CONNECT 300\r\n");
    Module();
    EXPECT_TRUE(sequence.Dial("555-1234"));
}

// --- The module ----------------------------------------------------------------------------------------------------

TEST_F(DialSequenceTest, AModuleThatIsSilentAboutItsVersionIsUsed)
{
    Connected();
    Talk(2.1, "\\v", "");
    Talk(5.0, "\\p", "ACK\r\n");
    EXPECT_TRUE(sequence.Dial("555-1234"));
    EXPECT_EQ(view.texts.constLast(), "Fenrik Modem Module v");
}

class NoPassThrough : public DialSequenceTest, public testing::WithParamInterface<CallRow> {};

TEST_P(NoPassThrough, FailsAndLeavesThePortOpen)
{
    Connected();
    Module("1.4\r\n", GetParam().reply);
    EXPECT_EQ(Fails(), DialError::kNoPassThrough);
    EXPECT_TRUE(port.PortOpen());
}

INSTANTIATE_TEST_SUITE_P(Dial, NoPassThrough,
                         testing::Values(CallRow{"Silent", ""}, CallRow{"Refuses", "NAK\r\n"},
                                         CallRow{"SmallLetters", "ack\r\n"}, CallRow{"More", "ACK!\r\n"},
                                         CallRow{"AnEmptyLineFirst", "\r\nACK\r\n"},
                                         CallRow{"NoCarrier", "\nNO CARRIER\r\n"}),
                         [](const auto& row) { return row.param.name; });

// --- A port that vanishes, and the user's and the program's end -----------------------------------------------------

/// The steps at which something happens: how many of the modem's answers have come.
struct StepRow {
    const char* name;
    int answers;
    double seconds;  ///< after the last of them
};

const StepRow kSteps[] = {{"DetectingFirst", 0, 0.5},    {"DetectingSecond", 1, 0.5},    {"BeforeTheDial", 2, 0.2},
                          {"Dialing", 2, 30.0},          {"BeforeTheVersion", 3, 1.0},   {"AskingTheVersion", 3, 3.0},
                          {"BeforePassThrough", 4, 1.0}, {"EnteringPassThrough", 4, 3.0}};

class AtEachStep : public DialSequenceTest, public testing::WithParamInterface<StepRow> {
protected:
    /// `event` happens at the row's step, and nothing after it.
    void At(const std::function<void()>& event)
    {
        const std::pair<QByteArray, QByteArray> answers[] = {
            {"AT\r", "OK\r\n"}, {"ATI3\r", "Tel\r\n"}, {"ATDT5551234\r", "CONNECT\r\n"}, {"\\v", "1.4\r\n"}};
        const double delays[] = {0.1, 0.1, 0.7, 2.1};
        for (int i = 0; i < GetParam().answers; ++i)
            Talk(delays[i], answers[i].first, answers[i].second);
        pump.After(GetParam().seconds, [this, event] {
            happened = Elapsed();
            event();
        });
    }

    double happened = -1;
};

TEST_P(AtEachStep, CancelEndsTheDialAtOnce)
{
    At([this] { sequence.Cancel(); });
    EXPECT_FALSE(sequence.Dial("5551234"));
    EXPECT_EQ(Elapsed(), happened);
}

TEST_P(AtEachStep, TheProgramsEndEndsTheDialAtOnce)
{
    At([this] { pump.Stop(); });
    EXPECT_FALSE(sequence.Dial("5551234"));
    EXPECT_EQ(Elapsed(), happened);
}

TEST_P(AtEachStep, APortThatGoesAwayEndsTheDialWithAnError)
{
    At([this] {
        terminal.Unplug();
        QFile::remove(folder.Path() + "/com6");
        EXPECT_TRUE(QTest::qWaitFor([this] { return !port.PortOpen(); }));
    });
    EXPECT_THAT(Fails(), testing::AnyOf(DialError::kNoModem, DialError::kNotConnected, DialError::kNoPassThrough,
                                        ErrorNumber::kPortNotFound, ErrorNumber::kPortNotOpen));
    EXPECT_THAT(Elapsed() - happened, Lt(0.1));
}

TEST_P(AtEachStep, AModemThatHangsUpEndsTheDialWithAnError)
{
    At([this] { Say("\r\nNO CARRIER\r\n"); });
    EXPECT_NE(Fails(), 0);
}

INSTANTIATE_TEST_SUITE_P(Dial, AtEachStep, testing::ValuesIn(kSteps), [](const auto& row) { return row.param.name; });

TEST_F(DialSequenceTest, CancelDuringTheResetEndsItAtOnce)
{
    pump.After(3.5, [this] { sequence.Cancel(); });
    EXPECT_FALSE(sequence.Dial("5551234"));
    EXPECT_THAT(Elapsed(), Lt(3.6));
}

TEST_F(DialSequenceTest, CanBeTriedAgainAfterACancel)
{
    pump.After(0.5, [this] { sequence.Cancel(); });
    EXPECT_FALSE(sequence.Dial("5551234"));
    EXPECT_EQ(Heard(3), "AT\r");
    Connected();
    Module();
    EXPECT_TRUE(sequence.Dial("5551234"));
}

// --- Words ---------------------------------------------------------------------------------------------------------

TEST(ProperCase, BeginsEachWordWithACapital)
{
    EXPECT_EQ(ProperCase("CONNECT 57600"), "Connect 57600");
    EXPECT_EQ(ProperCase("connect at  57600/ARQ/V42"), "Connect At  57600/arq/v42");
    EXPECT_EQ(ProperCase(""), "");
    EXPECT_EQ(ProperCase(" x"), " X");
}

}  // namespace
}  // namespace fenrik
