// The message log of a connection byte for byte, and scripts, against the vehicle.

#include "e2e/ToolTest.h"
#include "support/DatabaseFile.h"
#include "support/WhenShown.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class Logs : public ToolTest {
protected:
    Logs() { QLocale::setDefault(QLocale::c()); }
    ~Logs() override { QLocale::setDefault(QLocale::system()); }

    /// The one log there is, with all digits of times and dates as "0".
    [[nodiscard]] QString MaskedLog() const
    {
        const QDir folder(copy.ProgramFolder() + "/diaglogs");
        const QStringList names = folder.entryList(QDir::Files);
        EXPECT_THAT(names, SizeIs(1));
        QFile file(folder.filePath(names.value(0)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QString text = QString::fromUtf8(file.readAll());
        // An hour of one digit has a blank more behind it.
        text.replace(QRegularExpression("\\b\\d:\\d\\d:\\d\\d\\.00   "), "00:00:00.00  ");
        text.replace(QRegularExpression("\\b\\d\\d:\\d\\d:\\d\\d"), "00:00:00");
        text.replace(QRegularExpression("\\d{4}-\\d\\d-\\d\\d\\r"), "0000-00-00\r");
        return text.replace(QRegularExpression("Connected - \\d{1,2} \\w{3} \\d{4}"), "Connected - 1 Jan 0000");
    }
};

struct LoggedRow {
    const char* statement;
    const char* line;
};

// The vehicle says; the log tells.
constexpr LoggedRow kRows[] = {
    {"send 59 on false 100", "Front Door Is Open         100     1      0        242       0.A0.EE.0.64.F2   "},
    {"send 277 off true 7", "Electric Horn              7       0      1        0         0.A4.55.0.7.0     "},
    {"send 13 on true 65535", "Daytime Running Lamps      65535   1      1        213       0.A0.37.FF.FF.D5  "},
    {"send 983 on false 261", "Output Fault Report        261     1      0        19        0.AF.5E.1.5.13    "},
    {"send 1000 off false 2314", "Panel 3 Indicators         2314    0      0        98        0.AF.A0.9.A.62    "},
};

QString Head()
{
    const QString rule = QString(104, '-') + "\r\n";
    return rule + "Fenrik Diagnostics Log (v1.0.1)\r\nConnected - 1 Jan 0000 00:00:00\r\n" + rule +
           "Command                    Data   State  Extended  CheckSum  RAW               TimeStamp    DateStamp\r\n" +
           rule;
}

/// A connection that asks for no nodes, so that only what the vehicle says is logged.
class SilentLogs : public Logs {
protected:
    void SetUp() override
    {
        MakeFile(copy.ConfigFolder() + "/settings.ini", "[Settings]\nCommPort=5\nAutoDetect=False\n");
        Logs::SetUp();
    }
};

TEST_F(SilentLogs, OfAConnectionStandToTheCharacter)
{
    ASSERT_NO_FATAL_FAILURE(vehicle.Start("quiet\n"));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Click("Toolbar", "Connect");
    ASSERT_EQ(Text("txtStatus"), "Connected");
    // Hidden messages and syncs are not logged.
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 980 off true 1"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 1020 off false 0"));
    QString expected = Head();
    for (const LoggedRow& row : kRows) {
        ASSERT_NO_FATAL_FAILURE(vehicle.Control(row.statement));
        expected += QString(row.line) + "00:00:00.00  0000-00-00\r\n";
    }
    ASSERT_TRUE(Eventually([this] { return LineCount() == int(std::size(kRows)); })) << LineCount();
    EXPECT_EQ(MaskedLog(), expected);
}

TEST_F(Logs, OfABurstOfTenThousandMessagesLoseNone)
{
    constexpr int kBurst = 5'000;  // the vehicle keeps no more than some thousands waiting
    constexpr int kFrames = 2 * kBurst;
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    const int first = LineCount();
    for (int heard = kBurst; heard <= kFrames; heard += kBurst) {
        ASSERT_NO_FATAL_FAILURE(vehicle.Control("burst 5000 of frames"));
        ASSERT_TRUE(Eventually([&] { return LineCount() >= first + heard; })) << LineCount() - first;
    }
    const QStringList logged = copy.LoggedLines();
    ASSERT_EQ(logged.size(), first + kFrames);
    for (int i = 0; i < kFrames; ++i)
        ASSERT_EQ(logged[first + i].mid(27, 5).trimmed(), QString::number(i));
}

/// A debug build, which offers scripts and asks for the transceiver.
class Scripts : public Logs {
protected:
    void SetUp() override
    {
        const QString folder = copy.ProgramFolder();
        program = std::make_unique<MMain>(MMain::Environment{ProgramFolder(folder, folder, folder), copy.ConfigFolder(),
                                                             VersionInfo(1, 0, 1, "debug")});
        boxes.AnswerNext(QMessageBox::Yes);
    }

    void Run(const QByteArray& text)
    {
        MakeFile(path, text);
        Find<QAction>("mnuRunScript").trigger();
    }

    const QString path = copy.Path("test.fds");
    WhenShown chooser{"FileBox", [this](QDialog& box) { ChooseFile(box, path); }};
};

TEST_F(Scripts, OfTwoHundredLinesReachTheVehicleInOrderWithTheirPauses)
{
    constexpr int kSleeps = 40;
    constexpr int kSleepMs = 25;
    QByteArray text;
    std::vector<std::string> expected;
    for (int i = 0; i < kSleeps; ++i) {
        text += "sleep," + QByteArray::number(kSleepMs) + "\r\n";
        for (int j = 0; j < 4; ++j) {
            const int data = i * 4 + j;
            text += "59," + QByteArray::number(j % 2) + ",0,0x" + QByteArray::number(data, 16) + "\r\n";
            expected.push_back("59 state=" + std::to_string(j % 2) + " ext=0 data=" + std::to_string(data));
        }
    }
    ASSERT_EQ(text.count('\n'), 200);
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    const int first = LineCount();
    const auto before = vehicle.Meanings("RX").size();

    QElapsedTimer watch;
    watch.start();
    Run(text);
    EXPECT_GE(watch.elapsed(), kSleeps * kSleepMs);
    EXPECT_EQ(Text("txtMsg"), "Script ended after line 200");
    ASSERT_TRUE(Eventually([&] { return vehicle.Meanings("RX").size() >= before + expected.size(); }));
    auto heard = vehicle.Meanings("RX");
    heard.erase(heard.begin(), heard.begin() + std::ptrdiff_t(before));
    EXPECT_EQ(heard, expected);
    EXPECT_TRUE(Eventually([&] { return LineCount() == first + int(expected.size()); })) << LineCount();
    EXPECT_EQ(copy.LoggedLines().size(), LineCount()) << "each is echoed, and logged";
}

}  // namespace
}  // namespace fenrik
