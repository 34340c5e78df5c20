// The tool as a process on an X display, beside a bare window: how long it takes to start, and how much of the
// processor it uses while nothing happens, on a quiet network, and at all that the line carries.

#include "Session.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace fenrik {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr int kStarts = 21;
constexpr Seconds kSettling{3};
constexpr Seconds kWatched{20};
constexpr double kLineRate = 160;  // frames a second
constexpr double kLeastRate = 0.95 * kLineRate;
const QString kBareWindow = QStringLiteral(FENRIK_BENCH_FOLDER "/BareWindow");
const QString kVehicle = QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle");

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Milliseconds from the start of a program's process.
struct Phases {
    double mapped = 0;  ///< its main window is on the screen
    double ready = 0;   ///< the window is painted and answers
};

Phases Start(const Copy& copy, DisplayWatch& display, const QString& program, const QStringList& arguments = {})
{
    display.Drain();
    QProcess process;
    const auto begin = std::chrono::steady_clock::now();
    const auto since = [begin] { return Seconds(std::chrono::steady_clock::now() - begin).count() * 1000; };
    Phases taken;
    copy.Start(process, program, arguments);
    const std::uint32_t window = display.NextLargeWindow();
    taken.mapped = since();
    display.WaitUntilReady(window);
    taken.ready = since();
    // The tool is let come to rest, or the next start would run beside the end of this one.
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    End(process);
    return taken;
}

/// Starts of one program.
struct Starts {
    void Add(Phases taken)
    {
        mapped.push_back(taken.mapped);
        ready.push_back(taken.ready);
    }

    void Print(const std::string& name) const
    {
        PrintFigure(("Start/" + name).c_str(), Median(mapped));
        PrintFigure(("Start/" + name + "/Ready").c_str(), Median(ready));
    }

    std::vector<double> mapped;
    std::vector<double> ready;
};

/// All in turn, so that whatever else the machine does meets all.
void MeasureStart(const Copy& copy, DisplayWatch& display)
{
    Starts tool;
    Starts bare;
    Starts text;
    for (int i = 0; i <= kStarts; ++i) {
        const Phases toolTakes = Start(copy, display, copy.Tool());
        const Phases bareTakes = Start(copy, display, kBareWindow);
        const Phases textTakes = Start(copy, display, kBareWindow, {QStringLiteral("Hello")});
        if (i == 0)
            continue;  // from here on everything is in memory
        tool.Add(toolTakes);
        bare.Add(bareTakes);
        text.Add(textTakes);
    }
    tool.Print("Tool");
    bare.Print("Bare");
    text.Print("Text");
}

void MeasureIdle(QProcess& tool, DisplayWatch& display, const Copy& copy)
{
    display.Drain();
    QProcess bare;
    copy.Start(bare, kBareWindow);
    display.NextLargeWindow();
    std::this_thread::sleep_for(kSettling);
    const double bareBefore = ProcessorSeconds(bare.processId());
    PrintFigure("Idle/Tool", UsedWhile(tool, kWatched) * 1000);
    PrintFigure("Idle/Bare", (ProcessorSeconds(bare.processId()) - bareBefore) * 1000);
    End(bare);
}

void StartVehicle(QProcess& vehicle, const Copy& copy)
{
    const QString scenario = copy.Path("scenario.txt");
    QFile file(scenario);
    if (!file.open(QIODevice::WriteOnly) || file.write("quiet\n") < 0)
        throw NotMeasured("the scenario can't be written");
    file.close();
    copy.Start(vehicle, kVehicle, {"--port", "5", "--pace", "--control", "--scenario", scenario});
    WaitForVehicle(vehicle);
}

void Connect(std::uint32_t window, const Copy& copy)
{
    constexpr qint64 kDetectionFrames = 16;
    Press(window, "ctrl+k");
    std::this_thread::sleep_for(kSettling);
    if (copy.LoggedFrames() < kDetectionFrames)
        throw NotMeasured("the tool does not connect");
}

void MeasureTraffic(QProcess& tool, QProcess& vehicle, const Copy& copy, const std::string& name)
{
    Control(vehicle, "flood");
    std::this_thread::sleep_for(kSettling);
    const qint64 before = copy.LoggedFrames();
    PrintFigure((name + "/Tool").c_str(), UsedWhile(tool, kWatched) / kWatched.count() * 100);
    const double rate = double(copy.LoggedFrames() - before) / kWatched.count();
    PrintFigure((name + "/Frames").c_str(), rate);
    if (rate < kLeastRate)
        throw NotMeasured("the line was not full");
    Control(vehicle, "flood off");
}

/// Mounts node 1, which sends its states by itself, and opens their view.
void OpenStates(std::uint32_t window)
{
    Press(window, "ctrl+e");
    std::this_thread::sleep_for(kSettling);
    Press(window, "F8");
    std::this_thread::sleep_for(kSettling);
}

void Measure()
{
    const Copy copy;
    DisplayWatch display;
    MeasureStart(copy, display);

    QProcess vehicle;
    StartVehicle(vehicle, copy);
    QProcess tool;
    display.Drain();
    copy.Start(tool, copy.Tool());
    const std::uint32_t window = display.NextLargeWindow();
    MeasureIdle(tool, display, copy);
    Connect(window, copy);
    PrintFigure("Quiet/Tool", UsedWhile(tool, kWatched) / kWatched.count() * 100);
    MeasureTraffic(tool, vehicle, copy, "FullRate");
    OpenStates(window);
    MeasureTraffic(tool, vehicle, copy, "States");
    End(tool);
    End(vehicle);
}

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return fenrik::Report("ProgramBench", fenrik::Measure);
}
