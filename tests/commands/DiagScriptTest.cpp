#include "commands/DiagScript.h"

#include "platform/Error.h"
#include "support/DatabaseFile.h"
#include "support/FakeClock.h"
#include "support/Printers.h"
#include "support/ScriptedPump.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A composer that takes every command, and notes it as "128 On True 16".
class HostRecorder : public DiagScriptHost {
public:
    void ShowScriptLine(int number) override
    {
        lines.push_back(number);
        onLine(number);
    }

    void SendScriptCommand(const DiagScriptCommand& command) override
    {
        sent.push_back(std::to_string(command.command) + (command.on ? " On" : " Off") +
                       (command.extended ? " True " : " False ") + command.data.toStdString());
        onSend();
    }

    std::vector<int> lines;
    std::vector<std::string> sent;
    std::function<void(int)> onLine = [](int) {};
    std::function<void()> onSend = [] {};
};

class DiagScriptTest : public testing::Test {
protected:
    bool Run(const QByteArray& text)
    {
        MakeFile(path, text);
        return script.Run(path);
    }

    /// The error that ends the script.
    [[nodiscard]] Error ErrorOf(const QByteArray& text)
    {
        try {
            Run(text);
        } catch (const Error& error) {
            return error;
        }
        ADD_FAILURE() << "no error";
        return {0, {}};
    }

    QTemporaryDir dir;
    const QString path = dir.filePath("test.fds");
    FakeClock clock;
    ScriptedPump pump{clock};
    HostRecorder host;
    DiagScript script{pump, host};
};

// --- Statements ----------------------------------------------------------------------------------------------------

struct CommandRow {
    const char* line;
    const char* sent;
};

class ScriptCommand : public DiagScriptTest, public testing::WithParamInterface<CommandRow> {};

TEST_P(ScriptCommand, IsSentWithItsFields)
{
    EXPECT_TRUE(Run(GetParam().line));
    EXPECT_THAT(host.sent, ElementsAre(GetParam().sent));
}

INSTANTIATE_TEST_SUITE_P(
    DiagScript, ScriptCommand,
    testing::Values(CommandRow{"128,1,0,0x00FF", "128 On False 255"}, CommandRow{"128,0,0,0", "128 Off False 0"},
                    CommandRow{"128,0,1,0x10", "128 Off True 16"}, CommandRow{"128,0,0,16", "128 Off False 16"},
                    CommandRow{"128,2,0,0", "128 Off False 0"},     // exactly 1 is "On", anything else is "Off"
                    CommandRow{"128,-1,1.5,0", "128 Off False 0"},  //
                    CommandRow{"128,1.0,01,0", "128 On True 0"},    //
                    CommandRow{"0,0,0,0", "0 Off False 0"},         //
                    CommandRow{"1279,0,0,0", "1279 Off False 0"},   //
                    CommandRow{"128,1,0,0,more,fields", "128 On False 0"},
                    CommandRow{"128,1,0,", "128 On False "},      // an empty text counts as 0
                    CommandRow{"128,1,0,1F", "128 On False 1F"},  // the composer reads the 1
                    CommandRow{"128,1,0,0xabcd", "128 On False 43981"},
                    CommandRow{"128,1,0,0xFFFFFFFF", "128 On False -1"},
                    CommandRow{"128,1,0,0x7FFFFFFF", "128 On False 2147483647"},
                    CommandRow{"128,1,0,00000016", "128 On False 00000016"}));

struct ErrorRow {
    const char* line;
    int number;
};

class ScriptError : public DiagScriptTest, public testing::WithParamInterface<ErrorRow> {};

TEST_P(ScriptError, EndsTheScriptAtItsLineAndWhatWasSentStaysSent)
{
    const Error error = ErrorOf(QByteArray("1,1,0,5\n") + GetParam().line + "\n2,1,0,5\n");
    EXPECT_EQ(error.Number(), GetParam().number) << error.what();
    EXPECT_TRUE(error.Description().endsWith(QString(". Script line 2: ") + GetParam().line)) << error.what();
    EXPECT_THAT(host.sent, ElementsAre("1 On False 5"));
    EXPECT_EQ(script.Line(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    DiagScript, ScriptError,
    testing::Values(
        ErrorRow{"", ErrorNumber::kSubscriptOutOfRange},  // one field, which is not "sleep"
        ErrorRow{"128", ErrorNumber::kSubscriptOutOfRange}, ErrorRow{"128,1,0", ErrorNumber::kSubscriptOutOfRange},
        ErrorRow{"sleep", ErrorNumber::kSubscriptOutOfRange}, ErrorRow{"1280,1,0,0", ErrorNumber::kSubscriptOutOfRange},
        ErrorRow{"-1,1,0,0", ErrorNumber::kSubscriptOutOfRange}, ErrorRow{"horn,1,0,0", ErrorNumber::kTypeMismatch},
        ErrorRow{"0x80,1,0,0", ErrorNumber::kTypeMismatch}, ErrorRow{",1,0,0", ErrorNumber::kTypeMismatch},
        ErrorRow{"nan,1,0,0", ErrorNumber::kTypeMismatch}, ErrorRow{"128,On,0,0", ErrorNumber::kTypeMismatch},
        ErrorRow{"128,1,,0", ErrorNumber::kTypeMismatch},
        ErrorRow{"%1,%2,%3,5", ErrorNumber::kTypeMismatch},    // no places for other texts
        ErrorRow{"128,1,0,0X10", ErrorNumber::kTypeMismatch},  // only a small x makes it hexadecimal
        ErrorRow{"128,1,0,0x", ErrorNumber::kTypeMismatch}, ErrorRow{"128,1,0,-5", ErrorNumber::kTypeMismatch},
        ErrorRow{"128,1,0, 16", ErrorNumber::kTypeMismatch},  // nothing is trimmed
        ErrorRow{"128,1,0,12G", ErrorNumber::kTypeMismatch},
        ErrorRow{"128,1,0,123456789", ErrorNumber::kOverflow},  // more digits than hexadecimal allows
        ErrorRow{"128,1,0,0x123456789", ErrorNumber::kOverflow}, ErrorRow{"99999999999,1,0,0", ErrorNumber::kOverflow},
        ErrorRow{"sleep,soon", ErrorNumber::kTypeMismatch}, ErrorRow{"sleep,", ErrorNumber::kTypeMismatch},
        ErrorRow{"sleep,-1", ErrorNumber::kOverflow}, ErrorRow{"sleep,99999999999", ErrorNumber::kOverflow},
        ErrorRow{" sleep,5", ErrorNumber::kSubscriptOutOfRange}));

TEST_F(DiagScriptTest, SleepBlocksInAnyCaseOfLetters)
{
    const double start = clock.Timer();
    std::vector<double> times;
    host.onSend = [&] { times.push_back(clock.Timer() - start); };
    EXPECT_TRUE(Run("sleep,500\n1,1,0,0\nSleep,1500\n1,1,0,0\nSLEEP,60000,more\n1,1,0,0\n"));
    ASSERT_THAT(times, SizeIs(3));
    EXPECT_NEAR(times[0], 0.5, 0.01);
    EXPECT_NEAR(times[1], 2.0, 0.01);
    EXPECT_NEAR(times[2], 62.0, 0.02);
}

TEST_F(DiagScriptTest, NothingIsDeliveredDuringASleep)
{
    std::vector<std::string> order;
    pump.After(0.1, [&] { order.push_back("event"); });
    host.onLine = [&](int number) { order.push_back(std::to_string(number)); };
    Run("sleep,5000\n1,1,0,0\n");
    EXPECT_FALSE(pump.ScriptDone()) << "a pump that is asked for nothing delivers nothing";
    EXPECT_THAT(order, ElementsAre("1", "2"));
}

// --- Files ---------------------------------------------------------------------------------------------------------

struct FileRow {
    const char* name;
    QByteArray text;
};

class ScriptFile : public DiagScriptTest, public testing::WithParamInterface<FileRow> {};

TEST_P(ScriptFile, IsReadLineByLine)
{
    EXPECT_TRUE(Run(GetParam().text));
    EXPECT_THAT(host.sent, ElementsAre("1 On False 5", "2 Off False 6"));
    EXPECT_THAT(host.lines, ElementsAre(1, 2));
}

INSTANTIATE_TEST_SUITE_P(DiagScript, ScriptFile,
                         testing::Values(FileRow{"UnixLineEnds", "1,1,0,5\n2,0,0,6\n"},
                                         FileRow{"WindowsLineEnds", "1,1,0,5\r\n2,0,0,6\r\n"},
                                         FileRow{"NoLastLineEnd", "1,1,0,5\n2,0,0,6"},
                                         FileRow{"NoLastWindowsLineEnd", "1,1,0,5\r\n2,0,0,6"},
                                         FileRow{"AByteOrderMark", "\xEF\xBB\xBF"
                                                                   "1,1,0,5\n2,0,0,6\n"}),
                         [](const auto& test) { return test.param.name; });

TEST_F(DiagScriptTest, AnEmptyFileIsAScriptThatIsOver)
{
    EXPECT_TRUE(Run(""));
    EXPECT_THAT(host.lines, IsEmpty());
    EXPECT_EQ(script.Line(), 0);
}

TEST_F(DiagScriptTest, AnEmptyLineAtTheEndIsAnErrorTooButALastLineEndIsNone)
{
    EXPECT_EQ(ErrorOf("1,1,0,5\n\n").Number(), ErrorNumber::kSubscriptOutOfRange);
    EXPECT_EQ(script.Line(), 2);
}

TEST_F(DiagScriptTest, AHundredThousandLinesAreAllSent)
{
    QByteArray text;
    for (int i = 0; i < 100'000; ++i)
        text += "1,1,0," + QByteArray::number(i % 65536) + '\n';
    EXPECT_TRUE(Run(text));
    ASSERT_THAT(host.sent, SizeIs(100'000));
    EXPECT_EQ(host.sent.back(), "1 On False 34463");
}

TEST_F(DiagScriptTest, ABinaryFileEndsInItsFirstLineWithATextThatCanBeShown)
{
    QByteArray bytes;
    for (int i = 0; i < 100'000; ++i)
        bytes.append(char(i * 7919 >> 3));
    bytes.replace('\n', '\0').replace(',', '\1');
    const Error error = ErrorOf(bytes);
    EXPECT_EQ(script.Line(), 1);
    EXPECT_LT(error.Description().size(), 200);
    for (const QChar character : error.Description())
        EXPECT_TRUE(character.isPrint()) << int(character.unicode());
    EXPECT_THAT(host.sent, IsEmpty());
}

TEST_F(DiagScriptTest, AFileThatIsNotThereIsNotFound)
{
    try {
        script.Run(dir.filePath("none.fds"));
        ADD_FAILURE() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kFileNotFound);
    }
}

TEST_F(DiagScriptTest, AFolderCannotBeRead)
{
    try {
        script.Run(dir.path());
        ADD_FAILURE() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kPathFileAccess);
    }
}

// --- Stopping ------------------------------------------------------------------------------------------------------

TEST_F(DiagScriptTest, AStopTakesEffectBetweenTwoLines)
{
    host.onSend = [this] { script.RequestStop(); };
    EXPECT_FALSE(Run("1,1,0,5\n2,1,0,5\n"));
    EXPECT_THAT(host.sent, ElementsAre("1 On False 5"));
    EXPECT_EQ(script.Line(), 1);
}

TEST_F(DiagScriptTest, AKeyOfASleepIsSeenBehindIt)
{
    // The key waits for the turn of the pump that begins the next line.
    host.onLine = [this](int number) {
        if (number == 2)
            pump.After(0, [this] { script.RequestStop(); });
    };
    EXPECT_FALSE(Run("sleep,1000\n1,1,0,5\n"));
    EXPECT_THAT(host.sent, IsEmpty());
    EXPECT_EQ(script.Line(), 1);
}

TEST_F(DiagScriptTest, AStopOfAnEarlierScriptIsForgotten)
{
    script.RequestStop();
    EXPECT_TRUE(Run("1,1,0,5\n"));
}

TEST_F(DiagScriptTest, TheEndOfTheProgramEndsTheScript)
{
    host.onSend = [this] { pump.Stop(); };
    EXPECT_FALSE(Run("1,1,0,5\nsleep,60000\n2,1,0,5\n"));
    EXPECT_THAT(host.sent, SizeIs(1));
}

TEST_F(DiagScriptTest, TheTextOfAnErrorIsToldAsItStands)
{
    EXPECT_EQ(ErrorOf("%1,1,0,5\n").Description(), "Type mismatch: \"%1\" is no number. Script line 1: %1,1,0,5");
}

TEST_F(DiagScriptTest, AnErrorOfTheComposerEndsTheScriptToo)
{
    host.onSend = [] { throw Error(ErrorNumber::kSubscriptOutOfRange, "It is not listed"); };
    EXPECT_EQ(ErrorOf("1,1,0,5\n2,1,0,5\n").Description(), "It is not listed. Script line 1: 1,1,0,5");
}

}  // namespace
}  // namespace fenrik
