#include "app/messages/MessageListModel.h"
#include "e2e/ToolTest.h"
#include "soak/Heartbeat.h"
#include "soak/SentFrames.h"

#include <QAction>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <cstdio>
#include <fstream>
#include <map>
#include <random>
#include <unistd.h>

namespace fenrik {
namespace {

constexpr double kLongestGapMs = 100;
constexpr int kFirstInternal = 900;
constexpr qint64 kBytesPerLine = 26;       // 24 and what goes with a block of them
constexpr qint64 kOtherMemory = 24 << 20;  // caches, fonts, windows that were opened for the first time

double Minutes()
{
    const QByteArray minutes = qgetenv("FENRIK_SOAK_MINUTES");
    return minutes.isEmpty() ? 1.0 : minutes.toDouble();
}

qint64 ResidentBytes()
{
    std::ifstream file("/proc/self/statm");
    qint64 size = 0;
    qint64 resident = 0;
    file >> size >> resident;
    return resident * ::sysconf(_SC_PAGESIZE);
}

/// The tool at full line rate for as long as is asked, while it is made to do all that a technician does, with a cable
/// that is pulled now and then.
class Soak : public ToolTest {
protected:
    void SetUp() override
    {
        QFile settings(copy.ConfigFolder() + QStringLiteral("/settings.ini"));
        ASSERT_TRUE(settings.open(QIODevice::Append));
        settings.write("\n[Settings]\nListAllMsgs=True\nShowFenrikInternal=True\nAutoDetect=False\n");
        settings.close();
        ToolTest::SetUp();
    }

    /// Presses a button if it can be pressed, as often in a soak something is not to be had just then.
    void Try(const char* bar, const char* key)
    {
        heart.Say(std::string(bar) + "." + key);
        auto* action = Find<QWidget>(bar).findChild<QAction*>(QLatin1String(key));
        if (action != nullptr && action->isEnabled())
            action->trigger();
        Rest(300);
    }

    /// As the program itself runs: QTest's wait sleeps between events, which makes the tool fall behind the line.
    void Rest(int milliseconds)
    {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    }

    void Connect()
    {
        Try("Toolbar", "Connect");
        EXPECT_TRUE(Eventually([this] { return Text("txtStatus") == "Connected"; }));
    }

    void Disconnect()
    {
        Tell("flood off");
        Rest(700);  // until all that was sent has arrived
        Try("Toolbar", "Disconnect");
        EXPECT_TRUE(Eventually([this] { return Text("txtStatus") == "Disconnected"; }));
    }

    /// One session under full load. What was sent in it has to be in the list.
    void Session(std::mt19937& chance)
    {
        Connect();
        Tell("flood");
        Try("Toolbar", "DetectNodes");
        for (int i = 0; i < 6; ++i)
            Act(chance);
        if (chance() % 3 == 0)
            PullCable();
        else
            Disconnect();
        heart.Without([this] { CompareList(); });
    }

    /// The simulator's answer is waited for without events.
    void Tell(const char* statement)
    {
        heart.Without([this, statement] { vehicle.Control(statement); });
    }

    void Act(std::mt19937& chance)
    {
        static constexpr std::array kViews{"Analog", "States", "OutputDiagnostics", "InputDiagnostics", "FlashInfo"};
        switch (chance() % 6) {
        case 0:
            Tell("noise 40");
            break;
        case 1:
            Try("Nodebar", ("Node" + std::to_string(1 + chance() % 3)).c_str());
            Try("Nodebar", "Mount");
            break;
        case 2:
            boxes.AnswerNext(QMessageBox::No);  // the names take minutes on a full line
            Try("Toolbar", "Refresh");
            break;
        case 3:
            Try("Toolbar", kViews[chance() % kViews.size()]);
            break;
        case 4:
            Try("tbOutputs", "5");
            Try("tbOutputs", "Release");
            break;
        default:
            Try("Nodebar", "Unmount");
            break;
        }
        Rest(500);
    }

    void PullCable()
    {
        heart.Say("pulled cable");
        Tell("unplug");
        EXPECT_TRUE(Eventually([this] { return Text("txtStatus") == "Disconnected"; }));
        Tell("flood off");
        Tell("plug");
        Rest(300);
    }

    /// Looks for what was sent among the lines of the session. Their order may differ: what comes while a view asks the
    /// node is listed before the message that made it ask.
    void CompareList()
    {
        const MessageListModel& list = program->Window()->Messages();
        std::map<std::pair<int, std::int32_t>, int> lines;
        for (; seen < list.rowCount(); ++seen)
            ++lines[{list.Line(seen).command, list.Line(seen).data}];
        const std::vector<SentFrame> sent = frames.Next();
        std::vector<double> lost;
        for (const SentFrame& frame : sent) {
            const auto line = lines.find({frame.command, frame.data});
            if (line != lines.end() && line->second-- > 0)
                ++found;
            else if (frame.disturbed)
                ++disturbed;
            else
                lost.push_back(frame.seconds);
        }
        missing += int(lost.size());
        if (!lost.empty())
            std::printf("missing %zu of %zu, sent at %.3f to %.3f s in a session of %.3f to %.3f s, the last act: %s\n",
                        lost.size(), sent.size(), lost.front(), lost.back(), sent.front().seconds, sent.back().seconds,
                        heart.Doing().c_str());
    }

    Heartbeat heart;
    SentFrames frames{copy.Path("vehicle.log")};
    int seen = 0;  // lines of the list that were compared
    int found = 0;
    int missing = 0;
    int disturbed = 0;
};

TEST_F(Soak, LosesNothingGrowsByItsListAloneAndStaysAlive)
{
    ASSERT_NO_FATAL_FAILURE(vehicle.Start("quiet\n"));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    std::mt19937 chance(20'26);
    Session(chance);  // everything is in memory now
    const qint64 bytesBefore = ResidentBytes();
    const int linesBefore = LineCount();

    QElapsedTimer time;
    time.start();
    while (double(time.elapsed()) < Minutes() * 60e3)
        Session(chance);

    const qint64 grown = ResidentBytes() - bytesBefore;
    const int lines = LineCount() - linesBefore;
    const auto logged = copy.LoggedLines().size();
    std::printf("minutes %.1f, lines %d, logged %lld, frames found %d, missing %d, disturbed %d, grown %.1f MB, "
                "longest gap %.1f ms (%s)\n",
                double(time.elapsed()) / 60e3, LineCount(), static_cast<long long>(logged), found, missing, disturbed,
                double(grown) / (1 << 20), heart.LongestGapMs(), heart.LongestWhile().c_str());
    EXPECT_GT(found, 1000);
    EXPECT_EQ(missing, 0);
    EXPECT_EQ(logged, LineCount());
    EXPECT_LT(grown, lines * kBytesPerLine + kOtherMemory);
    EXPECT_LT(heart.LongestGapMs(), kLongestGapMs) << heart.LongestWhile();
    for (const QString& text : boxes.Take())
        std::printf("box: %s\n", qPrintable(text));
    boxes.AnswerNext(QMessageBox::No);  // whether to save what was learnt
    CloseTool();
}

}  // namespace
}  // namespace fenrik
