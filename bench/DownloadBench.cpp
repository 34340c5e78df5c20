// How long a download takes beside the time that the line and the node need for it, on both of its roads, with the real
// window on the display and the simulated vehicle on its own terminal. Beside it how long the event loop stood still.
//
// What the tool sends reaches the vehicle at once, for only the vehicle's side of a terminal is paced. So there are two
// measures for the same download: the line's bytes of both directions, as on a wire, and the vehicle's bytes alone.

#include "Session.h"
#include "app/MMain.h"
#include "app/frmDiag.h"
#include "model/CNode.h"
#include "model/CSystem.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QTimer>
#include <QToolBar>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

namespace fenrik {
namespace {

using SteadyClock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr double kBytesPerSecond = 960;
constexpr double kAnswerDelay = 0.002;  // the vehicle's, where a scenario says nothing
constexpr int kQueryNode = 1;
constexpr int kMemoryNode = 8;
const QString kVehicle = QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle");

/// What went over the line, by a stretch of the vehicle's log.
struct Traffic {
    int toolBytes = 0;
    int vehicleBytes = 0;
    int answers = 0;  // frames in a row are one answer

    explicit Traffic(const QByteArray& log)
    {
        bool asked = false;
        for (const QByteArray& line : log.split('\n')) {
            const QByteArray entry = line.mid(9);  // behind the time
            const auto bytes = int(entry.left(entry.indexOf("  ")).count(' '));
            if (entry.startsWith("RX ")) {
                toolBytes += bytes;
                asked = true;
            } else if (entry.startsWith("TX ")) {
                vehicleBytes += bytes;
                answers += asked ? 1 : 0;
                asked = false;
            }
        }
    }

    [[nodiscard]] double Delays() const { return answers * kAnswerDelay; }
    [[nodiscard]] double VehicleSeconds() const { return vehicleBytes / kBytesPerSecond + Delays(); }
    [[nodiscard]] double LineSeconds() const { return (toolBytes + vehicleBytes) / kBytesPerSecond + Delays(); }
};

/// Finds out by how much a timer of 5 ms comes too late at worst.
class LoopWatch {
public:
    LoopWatch()
    {
        mTimer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&mTimer, &QTimer::timeout, &mTimer, [this] { Look(); });
        mTimer.start(kPeriod);
    }

    [[nodiscard]] double LongestMs()
    {
        Look();
        return std::max(0.0, std::chrono::duration<double, std::milli>(mLongest - kPeriod).count());
    }

private:
    void Look()
    {
        const auto now = SteadyClock::now();
        mLongest = std::max(mLongest, now - mLast);
        mLast = now;
    }

    static constexpr std::chrono::milliseconds kPeriod{5};
    QTimer mTimer;
    SteadyClock::time_point mLast = SteadyClock::now();
    SteadyClock::duration mLongest{};
};

/// The vehicle of the downloads, and what it logs.
class Vehicle {
public:
    explicit Vehicle(const Copy& copy) : mLog(copy.Path("vehicle.log"))
    {
        copy.Start(mProcess, kVehicle,
                   {"--port", "5", "--pace", "--log", mLog, "--scenario",
                    QStringLiteral(FENRIK_SCENARIO_FOLDER "/download.txt")});
        WaitForVehicle(mProcess);
    }
    ~Vehicle() { End(mProcess); }
    Vehicle(const Vehicle&) = delete;
    Vehicle& operator=(const Vehicle&) = delete;

    /// What was logged since the last call. The vehicle logs a frame right behind sending it.
    QByteArray NewLog()
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        QFile file(mLog);
        if (!file.open(QIODevice::ReadOnly) || !file.seek(mRead))
            throw NotMeasured("the vehicle's log can't be read");
        const QByteArray text = file.readAll();
        mRead += text.size();
        return text;
    }

private:
    QString mLog;
    QProcess mProcess;
    qint64 mRead = 0;
};

void Press(const frmDiag& window, const char* bar, const QString& key)
{
    const auto* toolBar = window.findChild<QToolBar*>(QLatin1String(bar));
    auto* action = toolBar ? toolBar->findChild<QAction*>(key) : nullptr;
    if (!action || !action->isEnabled())
        throw NotMeasured("the button " + key.toStdString() + " can't be pressed");
    action->trigger();
}

/// Downloads the mounted node; gives the seconds.
double Download(CNode& node)
{
    auto nodesInSystem = std::uint8_t(node.Parent()->NodesInSystem());
    const auto begin = SteadyClock::now();
    node.ReadNode(QString(), nodesInSystem, true);
    return Seconds(SteadyClock::now() - begin).count();
}

void MeasureRoad(frmDiag& window, Vehicle& vehicle, int number, const std::string& name)
{
    Press(window, "Nodebar", QStringLiteral("Node%1").arg(number));
    Press(window, "Nodebar", QStringLiteral("Mount"));
    CSystem& system = window.System();
    if (system.MountedNodeNumber() != number)
        throw NotMeasured("the node can't be mounted");
    CNode& node = *system.Nodes().Find(number);
    Download(node);  // the first one also finds out by waiting which questions the node does not answer
    (void)vehicle.NewLog();

    LoopWatch watch;
    const double seconds = Download(node);
    const double longest = watch.LongestMs();
    const Traffic traffic(vehicle.NewLog());
    if (node.COutputs().Count() == 0 || traffic.answers < 100)
        throw NotMeasured("the node was not downloaded");
    PrintFigure((name + "/Seconds").c_str(), seconds);
    PrintFigure((name + "/Line").c_str(), traffic.LineSeconds());
    PrintFigure((name + "/Vehicle").c_str(), traffic.VehicleSeconds());
    PrintFigure((name + "/Answers").c_str(), traffic.answers);
    PrintFigure((name + "/Gap").c_str(), longest);
    Press(window, "Nodebar", QStringLiteral("Unmount"));
}

void Measure()
{
    const Copy copy;
    copy.WriteSettings("[Settings]\nCommPort=5\nNodesInSystem=11\n");
    Vehicle vehicle(copy);
    const QString folder = copy.Path("bin");
    MMain program({ProgramFolder(folder, folder, folder), copy.Path("config/fenrik-diagnostics"),
                   VersionInfo(1, 0, 1, QString())});
    if (!program.Main())
        throw NotMeasured("the tool does not start");
    frmDiag& window = *program.Window();
    Press(window, "Toolbar", QStringLiteral("Connect"));
    MeasureRoad(window, vehicle, kQueryNode, "Download/Query");
    MeasureRoad(window, vehicle, kMemoryNode, "Download/Memory");
    // Closing asks whether to save what was learnt, and nobody is here to answer.
    window.System().Clear();
    window.close();
}

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return fenrik::Report("DownloadBench", fenrik::Measure);
}
