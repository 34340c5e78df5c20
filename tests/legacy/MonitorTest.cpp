// What the window does with each byte that it hears.

#include "legacy/LegacyFixture.h"

#include <QTest>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Monitor = MonitorTest;

// --- Tokens ---------------------------------------------------------------------------------------------------------

TEST_F(Monitor, ATokenLightsItsNodeAlone)
{
    Hear({103});
    EXPECT_EQ(Misc(1), "*123456*");
    EXPECT_EQ(DimMisc(1), "*12 456*");
    Hear({104});
    EXPECT_EQ(DimMisc(1), "*123 56*");
}

struct RoundRow {
    const char* name;
    std::vector<int> tokens;
    std::vector<std::string> missed;  ///< token|expected
};

class Rounds : public MonitorTest, public testing::WithParamInterface<RoundRow> {};

TEST_P(Rounds, TellEachMissedToken)
{
    settings.ListAllMsgs = true;
    Hear(GetParam().tokens);
    std::vector<std::string> lines;
    for (const std::string& expected : GetParam().missed)
        lines.push_back("Error|Missed Token|" + expected + "||32707.25|Error");
    EXPECT_EQ(Lines(), lines);
    char count[16];
    std::snprintf(count, sizeof count, "MT %05d", int(GetParam().missed.size()));
    if (!lines.empty()) {
        EXPECT_EQ(Misc(2), count);
    }
}

INSTANTIATE_TEST_SUITE_P(Monitor, Rounds,
                         testing::Values(RoundRow{"TheFirstIsNeverMissed", {104}, {}},
                                         RoundRow{"AWholeRound", {101, 102, 103, 104, 105, 106, 101, 102}, {}},
                                         RoundRow{"OneLeftOut", {101, 103, 104}, {"102"}},
                                         RoundRow{"TheLastLeftOut", {105, 101, 102}, {"106"}},
                                         RoundRow{"TheFirstLeftOut", {106, 102}, {"101"}},
                                         RoundRow{"TwoLeftOutAreOne", {101, 104, 105}, {"102"}},
                                         RoundRow{"TheSameTwice", {101, 101}, {"102"}},
                                         RoundRow{"MessagesBetweenChangeNothing", {101, 11, 102, 11, 103}, {}},
                                         RoundRow{"TwoInARow", {101, 103, 105}, {"102", "104"}}),
                         [](const auto& test) { return test.param.name; });

TEST_F(Monitor, AMissedTokenIsMarkedForTwoSeconds)
{
    marks.Reset();
    Hear({101});
    EXPECT_EQ(DimMisc(1), "* 23456*");
    EXPECT_EQ(DimMisc(2), "MT 00000");
    Hear({103});
    EXPECT_EQ(DimMisc(1), " 12 456 ");
    EXPECT_EQ(Misc(2), "MT 00001");
    EXPECT_EQ(DimMisc(2).find_first_not_of(' '), std::string::npos);
    EXPECT_EQ(Timer("TTokenMissed").interval(), 2000);
    Fire(Timer("TTokenMissed"));
    EXPECT_EQ(DimMisc(1), "*12 456*");
    EXPECT_FALSE(Timer("TTokenMissed").isActive());
}

TEST_F(Monitor, AMissedTokenIsListedAndLoggedOnlyWithAllMessages)
{
    settings.LoggingOn = true;
    Hear({101, 103});
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(Logged(), IsEmpty());
    settings.ListAllMsgs = true;
    Hear({105});
    EXPECT_THAT(Lines(), ElementsAre("Error|Missed Token|104||32707.25|Error"));
    EXPECT_THAT(Logged(), ElementsAre("105|Missed Token|104|"));
    EXPECT_EQ(Misc(2), "MT 00002") << "both are counted";
}

// --- Messages -------------------------------------------------------------------------------------------------------

struct MessageRow {
    const char* name;
    bool listAll;
    std::vector<int> bytes;
    std::vector<std::string> lines;
    std::vector<std::string> logged;
};

class Messages : public MonitorTest, public testing::WithParamInterface<MessageRow> {};

TEST_P(Messages, AreListedAndLogged)
{
    settings.LoggingOn = true;
    settings.ListAllMsgs = GetParam().listAll;
    Hear(GetParam().bytes);
    EXPECT_EQ(Lines(), GetParam().lines);
    EXPECT_EQ(Logged(), GetParam().logged);
}

const std::vector<std::string> kNone;

INSTANTIATE_TEST_SUITE_P(
    Monitor, Messages,
    testing::Values(
        MessageRow{"Plain", false, {103, 10}, {"3|Horn|10|Body|32707.25|Command"}, {"3|Horn|10|Body"}},
        MessageRow{
            "PlainOfTheLastHolder", false, {106, 101, 10}, {"1|Horn|10|Body|32707.25|Command"}, {"1|Horn|10|Body"}},
        // The stream may be in its middle when the port opens: there is no holder, and 0 less 100 is what is left.
        MessageRow{"BeforeTheFirstToken", false, {10}, {"-100|Horn|10|Body|32707.25|Command"}, {"-100|Horn|10|Body"}},
        MessageRow{"UnknownToTheDatabase", false, {101, 200}, {"1||200||32707.25|Command"}, {"1||200|"}},
        MessageRow{"TheLowest", false, {101, 0}, {"1||0||32707.25|Command"}, {"1||0|"}},
        MessageRow{"TheHighest", false, {101, 255}, {"1||255||32707.25|Command"}, {"1||255|"}},
        MessageRow{"BesideTheTokens",
                   false,
                   {101, 100, 107},
                   {"1||100||32707.25|Command", "1||107||32707.25|Command"},
                   {"1||100|", "1||107|"}},
        MessageRow{"Ignored", true, {101, 11}, kNone, kNone},
        MessageRow{"LoadShed",
                   false,
                   {102, 70},
                   {"2|Load Shed 3 ON|70|LoadShed|32707.25|Command"},
                   {"2|Load Shed 3 ON|70|LoadShed"}},
        MessageRow{"AnalogOnlyWithAllMessages", false, {102, 50, 128}, kNone, kNone},
        MessageRow{"Analog", true, {102, 50, 128}, {"2|Voltage|128|Analog|32707.25|Command"}, {"2|Voltage|128|Analog"}},
        MessageRow{"AnalogValueOfAMessagesNumber",
                   true,
                   {102, 50, 10},
                   {"2|Voltage|10|Analog|32707.25|Command"},
                   {"2|Voltage|10|Analog"}},
        // A value that looks like a token is taken for one: nothing in the stream tells them apart.
        MessageRow{"AnalogValueLikeAToken",
                   true,
                   {102, 50, 103, 128},
                   {"2|Voltage|128|Analog|32707.25|Command"},
                   {"2|Voltage|128|Analog"}},
        MessageRow{"AnalogTwice",
                   true,
                   {102, 50, 50, 51, 51},
                   {"2|Voltage|50|Analog|32707.25|Command", "2|Pressure|51|ANALOG|32707.25|Command"},
                   {"2|Voltage|50|Analog", "2|Pressure|51|ANALOG"}},
        // Whether it is ignored is looked at before its kind.
        MessageRow{"IgnoredAnalogLeavesItsValueAsAMessage",
                   true,
                   {102, 52, 10},
                   {"2|Horn|10|Body|32707.25|Command"},
                   {"2|Horn|10|Body"}}),
    [](const auto& test) { return test.param.name; });

TEST_F(Monitor, NothingIsLoggedWhileLoggingIsOff)
{
    settings.ListAllMsgs = true;
    Hear({101, 10, 50, 128, 103});
    EXPECT_THAT(Lines(), SizeIs(3));
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Monitor, AnAnalogValueIsDrawnOnlyOnItsPanel)
{
    Hear({101, 50, 128});
    EXPECT_EQ(Analog(1), "Voltage                 12.8    ");
    graphics.ClearFace();
    monitor.setPanel(Panel98::SystemInformation);
    Hear({50, 130});
    EXPECT_TRUE(AnalogIsBlank());
}

TEST_F(Monitor, ALoadShedMessageIsDrawnUnlessItIsIgnored)
{
    Hear({101, 70});
    EXPECT_EQ(Misc(7), "LS3   ON");
    Hear({71});
    EXPECT_EQ(Misc(7), "LS3   ON");
}

TEST_F(Monitor, AStreamMayBeCutAnywhere)
{
    settings.ListAllMsgs = true;
    for (const int byte : {102, 50, 128, 10})
        Hear({byte});
    EXPECT_THAT(Lines(), ElementsAre("2|Voltage|128|Analog|32707.25|Command", "2|Horn|10|Body|32707.25|Command"));
}

TEST_F(Monitor, AConnectionBeginsWithNothingHeard)
{
    settings.ListAllMsgs = true;
    Hear({102, 50});
    monitor.setPanel(Panel98::SystemInformation);
    monitor.Start();
    EXPECT_EQ(monitor.Panel(), Panel98::Analog);
    Hear({10, 105});
    EXPECT_THAT(Lines(), ElementsAre("-100|Horn|10|Body|32707.25|Command")) << "no value, and no missed token";
}

// --- Collisions -----------------------------------------------------------------------------------------------------

TEST_F(Monitor, ACollisionIsCountedAndMarkedForTwoSeconds)
{
    marks.Reset();
    EXPECT_EQ(DimMisc(5), "BC 00000");
    EXPECT_EQ(DimMisc(4), "->    <-");
    monitor.ProcessCommEvent98(SerialControl::kFramingError);
    EXPECT_EQ(Misc(4), "<- BC ->");
    EXPECT_EQ(Misc(5), "BC 00001");
    EXPECT_EQ(DimMisc(4).find_first_not_of(' '), std::string::npos);
    EXPECT_EQ(Timer("TCol").interval(), 2000);
    Fire(Timer("TCol"));
    EXPECT_EQ(DimMisc(4), "->    <-");
    EXPECT_FALSE(Timer("TCol").isActive());
    EXPECT_EQ(Misc(5), "BC 00001");
}

TEST_F(Monitor, ACollisionIsListedAndLoggedOnlyWithAllMessages)
{
    settings.LoggingOn = true;
    monitor.ProcessCommEvent98(SerialControl::kFramingError);
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(Logged(), IsEmpty());
    settings.ListAllMsgs = true;
    monitor.ProcessCommEvent98(SerialControl::kFramingError);
    EXPECT_THAT(Lines(), ElementsAre("Error|Bus Collision|2||32707.25|Error"));
    EXPECT_THAT(Logged(), ElementsAre("0|Bus Collision|2|"));
}

TEST_F(Monitor, EventsOfOtherKindsDoNothing)
{
    for (const int event : {0, 1, 3, 1008})
        monitor.ProcessCommEvent98(event);
    EXPECT_THAT(errors.reports, IsEmpty());
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(Monitor, APortsFramingErrorsAreCollisions)
{
    QObject::connect(&port, &SerialControl::OnComm, &port, [this] { monitor.ProcessCommEvent98(port.CommEvent()); });
    portFolder.Link(1, terminal.Path());
    port.setCommPort(1);
    port.setPortOpen(true);
    framingErrors = 2;
    terminal.Write("\x66\x0A");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Lines().empty(); }));
    EXPECT_EQ(Misc(5), "BC 00002");
    EXPECT_THAT(Lines(), ElementsAre("2|Horn|10|Body|32707.25|Command"));
}

// --- Events ---------------------------------------------------------------------------------------------------------

TEST_F(Monitor, AnEventIsListedBehindItsMessageAndEndsTheFile)
{
    RecordEvents(10);
    Hear({101, 200, 10});
    EXPECT_THAT(Lines(), ElementsAre("1||200||32707.25|Command", "1|Horn|10|Body|32707.25|Command",
                                     "Info|Event 10 occured.||||Info"));
    EXPECT_THAT(Logged(), ElementsAre("1||200|", "1|Horn|10|Body", "0|Event Trigger|10|"));
}

TEST_F(Monitor, AnAnalogMessageIsAnEventWhenItsValueComes)
{
    settings.ListAllMsgs = true;
    RecordEvents(50);
    Hear({101, 50});
    EXPECT_THAT(Logged(), IsEmpty());
    Hear({128});
    EXPECT_THAT(Logged(), ElementsAre("1|Voltage|128|Analog", "0|Event Trigger|50|"));
}

TEST_F(Monitor, TheFirstByteOfAnAnalogMessageIsNotTheEventZero)
{
    RecordEvents(0);
    Hear({101, 50});
    EXPECT_THAT(Lines(), IsEmpty());
    Hear({128});
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(Monitor, AValueOfTheEventsNumberIsNoEvent)
{
    RecordEvents(10);
    Hear({101, 50, 10});
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Monitor, AnIgnoredMessageIsAnEventAllTheSame)
{
    RecordEvents(11);
    Hear({101, 11});
    EXPECT_THAT(Logged(), ElementsAre("0|Event Trigger|11|")) << "with nothing before it";
    EXPECT_THAT(Lines(), ElementsAre("Info|Event 11 occured.||||Info"));
}

TEST_F(Monitor, ATokenIsNoEvent)
{
    RecordEvents(103);
    Hear({103});
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Monitor, AnEventThatDisconnectsEndsTheListening)
{
    RecordEvents(10);
    settings.LoggingDisconnect = true;
    Hear({101, 10, 200, 201});
    EXPECT_EQ(disconnects, 1);
    EXPECT_EQ(closes, 1);
    EXPECT_THAT(Logged(), ElementsAre("1|Horn|10|Body", "0|Event Trigger|10|", "0|Disconnected|0|"));
    EXPECT_THAT(Lines(), SizeIs(2)) << "what came in the same piece is told no more";
    Hear({10});
    EXPECT_THAT(Lines(), SizeIs(2));
}

// --- Failures -------------------------------------------------------------------------------------------------------

TEST_F(Monitor, ALogThatCannotBeWrittenIsReportedOnceAndTheListGoesOn)
{
    settings.LoggingOn = true;
    run.DiagLogPath = "/no such folder";
    Hear({101, 10, 10, 10});
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, "frmmain:DisplayMessage");
    EXPECT_THAT(Lines(), SizeIs(3));
}

/// Bytes come in while the user looks at the box of an error.
class ErrorsInTheMiddle : public ErrorReporter {
public:
    void ShowError(int, const QString&, const QString&, const QString&) override { onError(); }
    std::function<void()> onError;
};

TEST_F(Monitor, BytesThatComeInsideAnErrorsBoxAreToldAfterThoseBeforeThem)
{
    ErrorsInTheMiddle boxes;
    Traffic98 failing{list, log, settings, clock, boxes};
    Monitor98 other{{port, messages, settings, panels, marks, failing, trigger, boxes}};
    boxes.onError = [&other] { other.ProcessCommData("\x67\x0A"); };
    settings.LoggingOn = true;
    run.DiagLogPath = "/no such folder";
    other.Start();
    other.ProcessCommData("\x65\x0A\xC8\x66\xC9");
    EXPECT_THAT(Lines(), ElementsAre("1|Horn|10|Body|32707.25|Command", "1||200||32707.25|Command",
                                     "2||201||32707.25|Command", "3|Horn|10|Body|32707.25|Command"));
}

}  // namespace
}  // namespace fenrik
