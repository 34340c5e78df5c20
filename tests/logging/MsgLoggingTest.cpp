#include "LogFixture.h"
#include "logging/LogLayout.h"

namespace fenrik {
namespace {

using testing::SizeIs;

class MsgLoggingTest : public LogTest {};

TEST_F(MsgLoggingTest, TheFileIsNamedAfterDateAndTime)
{
    EXPECT_EQ(log.Path(), dir.path() + "/2026-03-14_09-05-07.txt");
    EXPECT_FALSE(QFile::exists(log.Path())) << "and made by the first line";
}

TEST_F(MsgLoggingTest, EachConnectionGetsAFileOfItsOwnOnlyWithUniqueOn)
{
    const QString first = log.Path();
    clock.Advance(1);
    settings.LoggingUnique = false;
    log.BeginConnection();
    EXPECT_EQ(log.Path(), first);
    settings.LoggingUnique = true;
    log.BeginConnection();
    EXPECT_EQ(log.Path(), dir.path() + "/2026-03-14_09-05-08.txt");
}

TEST_F(MsgLoggingTest, AClockThatWasSetBackAppendsToTheFileOfThatTime)
{
    log.LogToFile(Message(12, 1));
    clock.Advance(3600);
    log.BeginConnection();
    log.LogToFile(Message(12, 2));
    clock.Advance(-3600);
    log.BeginConnection();
    log.CreateLogHeader00("Connected - ");
    log.LogToFile(Message(12, 3));
    EXPECT_THAT(Lines(), SizeIs(1 + 6 + 1)) << "nothing of what was there is lost";
    EXPECT_TRUE(Text().startsWith("Rear Fog Lamps             1 "));
    EXPECT_TRUE(Text().contains("\nRear Fog Lamps             3 "));
}

TEST_F(MsgLoggingTest, TheHeadStandsToTheCharacter)
{
    log.CreateLogHeader00("Connected - ");
    const QByteArray rule = QByteArray(104, '-') + "\r\n";
    EXPECT_EQ(Text(), rule + "Fenrik Diagnostics Log (v1.0.7)\r\nConnected - 3/14/2026 9:05:07 AM\r\n" + rule +
                          "Command                    Data   State  Extended  CheckSum  RAW               TimeStamp    "
                          "DateStamp\r\n" +
                          rule);
}

TEST_F(MsgLoggingTest, ALineStandsToTheCharacter)
{
    CMessage message = Message(12, 258);
    message.State = 1;
    log.LogToFile(message);
    // The time is printed in whole seconds: its ".00" is no place for hundredths.
    EXPECT_EQ(Text(), "Rear Fog Lamps             258     1      0        211       0.A0.30.1.2.D3    9:05:07.00   "
                      "2026-03-14\r\n");
}

TEST_F(MsgLoggingTest, EachFieldStartsAtItsColumn)
{
    CMessage message = Message(1023, 65535);
    message.rawForm = CMessage::RawForm::Sent;
    clock.SetTimer(23 * 3600 + 59 * 60 + 59.996);
    message.time = clock.Now();
    log.LogToFile(message);
    const QByteArray line = Text();
    const std::vector<std::pair<int, const char*>> fields{
        {1, "<Undefined message 1023>   "}, {28, "65535  "},       {35, " 0 "},           {42, " 0 "},
        {62, "00.AF.FC.FF.FF.A9"},          {80, "23:59:59.00  "}, {93, "2026-03-14\r\n"}};
    for (const auto& [column, text] : fields)
        EXPECT_EQ(line.mid(column - 1, qsizetype(qstrlen(text))), text) << "column " << column;
    EXPECT_EQ(line.mid(51, 10), QByteArray::number(message.CheckSum).leftJustified(10));
    EXPECT_EQ(line.size(), 104);
}

TEST_F(MsgLoggingTest, ANameOfTwoHundredCharactersIsCutToItsColumn)
{
    commands[12].Name = QString(200, 'N');
    log.LogToFile(Message(12, 65535));
    EXPECT_TRUE(Text().startsWith(QByteArray(27, 'N') + "65535   0  "));
    EXPECT_EQ(Text().size(), 104);
}

TEST_F(MsgLoggingTest, ANumberOutsideTheTableIsUnknown)
{
    log.LogToFile(Message(0, 0));
    EXPECT_TRUE(Text().startsWith("Unknown                    0      "));
}

TEST_F(MsgLoggingTest, AMessageThatWasNeverOnTheWireHasNoTimes)
{
    CMessage message;
    message.Command = 12;
    log.LogToFile(message);
    EXPECT_EQ(Text().trimmed(), "Rear Fog Lamps             0       0      0        0");
    EXPECT_EQ(Text().size(), 92 + 2);
}

TEST_F(MsgLoggingTest, AHeadIsAppendedToAnOlderOne)
{
    log.CreateLogHeader00("Connected - ");
    const auto size = Text().size();
    log.CreateLogHeader00("Connected - ");
    EXPECT_EQ(Text().size(), 2 * size);
}

TEST_F(MsgLoggingTest, ABurstOfTenThousandMessagesIsInTheFileWholeAndInOrder)
{
    constexpr int kMessages = 10'000;
    for (int i = 0; i < kMessages; ++i)
        log.LogToFile(Message(12, i));
    const auto lines = Lines();
    ASSERT_THAT(lines, SizeIs(kMessages));
    for (int i = 0; i < kMessages; ++i)
        ASSERT_EQ(lines[i].mid(27, 5).trimmed(), QByteArray::number(i));
}

// --- The date of the head ------------------------------------------------------------------------------------------

struct DateRow {
    const char* locale;
    const char* text;
};

class GeneralDate : public testing::TestWithParam<DateRow> {};

TEST_P(GeneralDate, HasAllDigitsOfTheYearAndTheSeconds)
{
    EXPECT_EQ(LogLayout::GeneralDate(FakeClock().Now(), QLocale(GetParam().locale)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(LogLayout, GeneralDate,
                         testing::Values(DateRow{"C", "14 Mar 2026 09:05:07"}, DateRow{"en_US", "3/14/2026 9:05:07 AM"},
                                         DateRow{"en_GB", "14/03/2026 09:05:07"},
                                         DateRow{"de_DE", "14.03.2026 09:05:07"},
                                         DateRow{"fi_FI", "14.3.2026 9.05.07"}),
                         [](const auto& test) { return test.param.locale; });

}  // namespace
}  // namespace fenrik
