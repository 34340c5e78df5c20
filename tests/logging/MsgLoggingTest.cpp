#include "logging/MsgLogging.h"

#include "link/CMessage.h"
#include "platform/Error.h"
#include "platform/VersionInfo.h"
#include "shared/CommandTable.h"
#include "shared/RunState.h"
#include "support/FakeClock.h"
#include "support/Printers.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::SizeIs;

class MsgLoggingTest : public testing::Test {
protected:
    MsgLoggingTest()
    {
        run.DiagLogPath = dir.path();
        commands[12].Name = "Rear Fog Lamps";
        log.NewFileName();
    }

    [[nodiscard]] QByteArray Text() const
    {
        QFile file(log.Path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] CMessage Message(int command, int data) const
    {
        CMessage message;
        message.Command = command;
        message.data = data;
        message.rawBytes = Frame{std::uint16_t(command), false, false, std::uint16_t(data)}.Encode();
        message.CheckSum = message.rawBytes.back();
        message.rawForm = CMessage::RawForm::Received;
        message.time = clock.Now();
        return message;
    }

    QTemporaryDir dir;
    FakeClock clock;
    RunState run;
    CommandTable commands;
    VersionInfo version{1, 0, 7, QString()};
    MsgLogging log{run, commands, clock, version};
};

TEST_F(MsgLoggingTest, TheFileIsNamedAfterDateAndTime)
{
    EXPECT_EQ(log.Path(), dir.path() + "/2026-03-14_09-05-07.txt");
    EXPECT_FALSE(QFile::exists(log.Path())) << "and made by the first line";
}

TEST_F(MsgLoggingTest, ANewNameIsANewFileAndOtherwiseTheFileGrows)
{
    log.LogToFile(Message(12, 1));
    log.LogToFile(Message(12, 2));
    EXPECT_THAT(Text().split('\n'), SizeIs(3));
    const QString first = log.Path();
    clock.Advance(1);
    EXPECT_EQ(log.Path(), first);
    log.NewFileName();
    log.LogToFile(Message(12, 3));
    EXPECT_NE(log.Path(), first);
    EXPECT_THAT(Text().split('\n'), SizeIs(2));
}

TEST_F(MsgLoggingTest, TheHeadStandsToTheCharacter)
{
    log.CreateLogHeader00("Connected - ");
    const QByteArray rule = QByteArray(104, '-') + "\r\n";
    const QByteArray now = QLocale().toString(clock.Now().DateTime(), QLocale::ShortFormat).toUtf8();
    EXPECT_EQ(Text(), rule + "Fenrik Diagnostics Log (v1.0.7)\r\n" + "Connected - " + now + "\r\n" + rule +
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
    commands[1023].Name = "A name of far more than twenty-seven characters";
    CMessage message = Message(1023, 65535);
    message.rawForm = CMessage::RawForm::Sent;
    clock.SetTimer(23 * 3600 + 59 * 60 + 59.99);
    message.time = clock.Now();
    log.LogToFile(message);
    const QByteArray line = Text();
    const std::vector<std::pair<int, const char*>> fields{
        {1, "A name of far more than twe"}, {28, "65535  "},       {35, " 0 "},           {42, " 0 "},
        {62, "00.AF.FC.FF.FF.A9"},          {80, "23:59:59.00  "}, {93, "2026-03-14\r\n"}};
    for (const auto& [column, text] : fields)
        EXPECT_EQ(line.mid(column - 1, qsizetype(qstrlen(text))), text) << "column " << column;
    EXPECT_EQ(line.mid(51, 10), QByteArray::number(message.CheckSum).leftJustified(10));
    EXPECT_EQ(line.size(), 104);
}

TEST_F(MsgLoggingTest, ANumberOutsideTheTableIsUnknown)
{
    log.LogToFile(Message(0, 0));
    EXPECT_TRUE(Text().startsWith("Unknown                    0      "));
}

TEST_F(MsgLoggingTest, AHeadIsAppendedToAnOlderOne)
{
    log.CreateLogHeader00("Connected - ");
    const auto size = Text().size();
    log.CreateLogHeader00("Connected - ");
    EXPECT_EQ(Text().size(), 2 * size);
}

TEST_F(MsgLoggingTest, AFolderThatCannotBeWrittenIsAnError)
{
    run.DiagLogPath = dir.path() + "/no such folder";
    for (const bool head : {true, false}) {
        try {
            if (head)
                log.CreateLogHeader00("Connected - ");
            else
                log.LogToFile(Message(12, 1));
            ADD_FAILURE() << "no error";
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::kPathFileAccess);
        }
    }
}

}  // namespace
}  // namespace fenrik
