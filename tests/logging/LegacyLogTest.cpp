#include "LogFixture.h"
#include "logging/EventTrigger.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LegacyLog : public LogTest, public EventTriggerHost {
protected:
    void AddInfoRow(const QString& text) override { Note("Info: " + text.toStdString()); }
    void ShowDisconnected() override { Note("disconnected"); }
    void ClosePort() override { Note("closed"); }

    void Note(const std::string& what)
    {
        calls.push_back(what + (QFile::exists(log.Path()) ? " behind the file" : ""));
    }

    void RecordEvents(int number)
    {
        settings.LoggingBuffered = true;
        settings.LoggingEventTrigger = number;
    }

    /// One message of the older network, as its window handles it.
    void Arrive(int message)
    {
        log.LogEntry98(3, "Message", message, "");
        trigger.AfterMessage(message, false);
    }

    std::vector<std::string> calls;
    EventTrigger trigger{settings, log, errors, *this};
};

const QByteArray kRule85 = QByteArray(85, '-') + "\r\n";
const QByteArray kTitles98 =
    "Node      Name                               Data      Description         TimeStamp\r\n" + QByteArray(83, '-') +
    "\r\n";

TEST_F(LegacyLog, TheHeadStandsToTheCharacter)
{
    log.CreateLogFile("Connected - ");
    // The last rule is two hyphens short of the others, as it has always been.
    EXPECT_EQ(Text(), kRule85 + "FenrikII Diagnostics Log 98\r\n\r\nConnected - 3/14/2026 9:05:07 AM\r\n" + kRule85 +
                          kTitles98);
}

TEST_F(LegacyLog, TheHeadNamesTheTriggerBehindTwoBlanks)
{
    RecordEvents(77);
    log.CreateLogFile("Connected - ");
    EXPECT_EQ(Text(), kRule85 + "FenrikII Diagnostics Log 98\r\nTrigger =  77\r\nConnected - 3/14/2026 9:05:07 AM\r\n" +
                          kRule85 + kTitles98);
}

TEST_F(LegacyLog, AnEntryStandsToTheCharacter)
{
    log.LogEntry98(3, "Oil Pressure", 200, "Analog");
    EXPECT_EQ(Text(), " 3        Oil Pressure                        200      Analog               32707.25 \r\n");
}

TEST_F(LegacyLog, NamesOfTwoHundredCharactersAreCutToTheirColumns)
{
    log.LogEntry98(3, QString(200, 'N'), 5, QString(200, 'D'));
    EXPECT_EQ(Text(), " 3        " + QByteArray(35, 'N') + " 5        " + QByteArray(20, 'D') + " 32707.25 \r\n");
}

struct TimeRow {
    double seconds;
    const char* text;
};

TEST_F(LegacyLog, TheTimeIsAPlainNumberOfSinglePrecision)
{
    constexpr TimeRow kRows[] = {{0, " 0 "},
                                 {60, " 60 "},
                                 {0.5, " .5 "},
                                 {0.05, " .05 "},
                                 {1.5, " 1.5 "},
                                 {86399.99, " 86399.99 "},
                                 {32707.254, " 32707.25 "}};
    for (const TimeRow& row : kRows) {
        clock.SetTimer(row.seconds);
        log.LogEntry98(0, "", 0, "");
        EXPECT_EQ(Lines().constLast().mid(75), row.text);
    }
}

TEST_F(LegacyLog, UnbufferedEntriesAreWrittenAtOnceAndBufferedOnesNot)
{
    log.LogEntry98(1, "Brakes", 7, "");
    EXPECT_THAT(Lines(), SizeIs(1));
    settings.LoggingBuffered = true;
    log.LogEntry98(1, "Brakes", 8, "");
    EXPECT_THAT(Lines(), SizeIs(1));
    log.CommitBuffer();
    EXPECT_THAT(Lines(), SizeIs(2));
}

TEST_F(LegacyLog, AnEntryIsStampedWhenItComesAndNotWhenItIsWritten)
{
    settings.LoggingBuffered = true;
    log.LogEntry98(1, "Brakes", 7, "");
    clock.Advance(10);
    log.CommitBuffer();
    EXPECT_TRUE(Lines()[0].endsWith(" 32707.25 "));
}

struct LimitRow {
    int bufferMax;
    int kept;
};

class BufferLimit : public LegacyLog, public testing::WithParamInterface<LimitRow> {};

TEST_P(BufferLimit, IsTestedBeforeTheEntryJoinsSoThatOneMoreIsKept)
{
    settings.LoggingBuffered = true;
    settings.LoggingBufferMax = GetParam().bufferMax;
    for (int i = 1; i <= 100; ++i)
        log.LogMessage({1, "Brakes", i, "", 0});
    log.CommitBuffer();
    ASSERT_THAT(Lines(), SizeIs(GetParam().kept));
    EXPECT_EQ(Lines()[0].mid(46, 3).trimmed(), QByteArray::number(101 - GetParam().kept)) << "the oldest went first";
    EXPECT_EQ(Lines().constLast().mid(46, 3), "100");
}

INSTANTIATE_TEST_SUITE_P(Log, BufferLimit,
                         testing::Values(LimitRow{25, 26}, LimitRow{1, 2}, LimitRow{0, 1}, LimitRow{-5, 1},
                                         LimitRow{2147483647, 100}));

TEST_F(LegacyLog, ACommittedBufferIsEmpty)
{
    settings.LoggingBuffered = true;
    log.LogEntry98(1, "Brakes", 7, "");
    log.CommitBuffer();
    log.CommitBuffer();
    EXPECT_THAT(Lines(), SizeIs(1));
}

TEST_F(LegacyLog, WhatNoEventHasWrittenIsLostAtTheNextConnection)
{
    RecordEvents(77);
    log.LogEntry98(1, "Brakes", 7, "");
    log.CreateLogFile("Connected - ");
    log.CommitBuffer();
    EXPECT_THAT(Lines(), SizeIs(7));
}

// --- The event -----------------------------------------------------------------------------------------------------

TEST_F(LegacyLog, AnEventWritesWhatLedUpToItAndItselfLast)
{
    RecordEvents(77);
    for (int i = 1; i <= 40; ++i)
        Arrive(i);
    EXPECT_FALSE(QFile::exists(log.Path()));
    Arrive(77);
    const auto lines = Lines();
    ASSERT_THAT(lines, SizeIs(26));
    EXPECT_EQ(lines[0].mid(45, 4), " 17 ");
    EXPECT_EQ(lines[24].mid(10, 40).trimmed(), "Message                             77");
    EXPECT_EQ(lines[25], " 0        Event Trigger                       77                            32707.25 ");
    EXPECT_THAT(calls, ElementsAre("Info: Event 77 occured."));
}

TEST_F(LegacyLog, AnEventThatDisconnectsWritesThatToo)
{
    RecordEvents(77);
    settings.LoggingDisconnect = true;
    for (int i = 1; i <= 40; ++i)
        Arrive(i);
    Arrive(77);
    const auto lines = Lines();
    ASSERT_THAT(lines, SizeIs(26));
    EXPECT_TRUE(lines[24].startsWith(" 0        Event Trigger "));
    EXPECT_EQ(lines[25], " 0        Disconnected                        0                             32707.25 ");
    EXPECT_THAT(calls, ElementsAre("Info: Event 77 occured.", "disconnected", "closed"))
        << "before the file is written";
}

TEST_F(LegacyLog, AnEventWithAnEmptyBufferWritesItselfAlone)
{
    RecordEvents(77);
    trigger.AfterMessage(77, false);
    ASSERT_THAT(Lines(), SizeIs(1));
    EXPECT_TRUE(Lines()[0].startsWith(" 0        Event Trigger "));
}

TEST_F(LegacyLog, WhatComesAfterAnEventWaitsForTheNext)
{
    RecordEvents(77);
    Arrive(77);
    Arrive(5);
    EXPECT_THAT(Lines(), SizeIs(2));
    Arrive(77);
    EXPECT_THAT(Lines(), SizeIs(2 + 3));
}

struct QuietRow {
    const char* name;
    void (*change)(Settings&);
    int message = 77;
    bool pending = false;
};

class NoEvent : public LegacyLog, public testing::WithParamInterface<QuietRow> {};

TEST_P(NoEvent, WritesAndTellsNothing)
{
    RecordEvents(77);
    GetParam().change(settings);
    trigger.AfterMessage(GetParam().message, GetParam().pending);
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_FALSE(QFile::exists(log.Path()));
}

INSTANTIATE_TEST_SUITE_P(Log, NoEvent,
                         testing::Values(QuietRow{"LoggingOff", [](Settings& s) { s.LoggingOn = false; }},
                                         QuietRow{"Unbuffered", [](Settings& s) { s.LoggingBuffered = false; }},
                                         QuietRow{"AnotherMessage", [](Settings&) {}, 78},
                                         QuietRow{"HalfAMessage", [](Settings&) {}, 77, true}),
                         [](const auto& test) { return test.param.name; });

TEST_F(LegacyLog, AnEventWhoseFileCannotBeWrittenIsToldOnce)
{
    RecordEvents(77);
    run.DiagLogPath = "/no such folder";
    Arrive(77);
    Arrive(77);
    EXPECT_THAT(errors.reports, SizeIs(1));
    EXPECT_THAT(calls, SizeIs(2));
}

}  // namespace
}  // namespace fenrik
