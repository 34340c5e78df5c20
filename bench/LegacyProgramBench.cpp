// The tool on the older network as a process on an X display: how much of the processor it uses while the line is full.

#include "Session.h"

#include <QCoreApplication>
#include <QFile>

#include <chrono>
#include <thread>

namespace fenrik {
namespace {

constexpr std::chrono::duration<double> kSettling{3};
constexpr std::chrono::duration<double> kWatched{20};
constexpr double kLineRate = 960;       // bytes a second
constexpr double kListedOfFour = 0.75;  // three messages to each token
constexpr double kLeast = 0.95 * kLineRate * kListedOfFour;

void UseTheOlderNetwork(const Copy& copy)
{
    const QString database = copy.Path("bin/Demo.dav");
    if (!QFile::copy(QStringLiteral(FENRIK_BIN_FOLDER "/legacy/Demonstration Bus 98.dav"), database))
        throw NotMeasured("the copy can't be made");
    copy.WriteSettings("[Settings]\nCommPort=5\nProtocol=Fenrik 98\nListAllMsgs=True\n[Database]\nPath=" +
                       copy.Path("bin").toUtf8() + "\nName=Demo.dav\n");
}

void Measure(const char* name, const Copy& copy, QProcess& tool, QProcess& vehicle)
{
    Control(vehicle, "flood");
    std::this_thread::sleep_for(kSettling);
    const qint64 before = copy.LoggedFrames();
    const std::string figure = std::string("Legacy/") + name;
    PrintFigure((figure + "/Tool").c_str(), UsedWhile(tool, kWatched) / kWatched.count() * 100);
    const double rate = double(copy.LoggedFrames() - before) / kWatched.count();
    PrintFigure((figure + "/Messages").c_str(), rate);
    if (rate < kLeast)
        throw NotMeasured("the line was not full");
}

void MeasureFullLine()
{
    const Copy copy;
    UseTheOlderNetwork(copy);
    DisplayWatch display;
    QProcess vehicle;
    copy.Start(vehicle, QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle"),
               {"--legacy", "--port", "5", "--pace", "--control"});
    WaitForVehicle(vehicle);
    QProcess tool;
    display.Drain();
    copy.Start(tool, copy.Tool());
    const std::uint32_t window = display.NextLargeWindow();
    std::this_thread::sleep_for(kSettling);
    Press(window, "ctrl+k");
    std::this_thread::sleep_for(kSettling);
    Measure("FullRate", copy, tool, vehicle);
    End(tool);
    End(vehicle);
}

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return fenrik::Report("LegacyProgramBench", fenrik::MeasureFullLine);
}
