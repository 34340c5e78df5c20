#include "Session.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <poll.h>
#include <thread>
#include <xcb/xcb.h>

namespace fenrik {

namespace {

constexpr int kPatienceMs = 60'000;
constexpr int kLargeWidth = 700;
const QString kBin = QStringLiteral(FENRIK_BIN_FOLDER "/");

}  // namespace

void PrintFigure(const char* name, double value)
{
    std::printf("%s,%.9g\n", name, value);
    std::fflush(stdout);
}

int Report(const char* program, void (*measure)())
{
    try {
        measure();
    } catch (const NotMeasured& reason) {
        std::fprintf(stderr, "%s: %s\n", program, reason.what());
        return 1;
    }
    return 0;
}

Copy::Copy()
{
    for (const char* folder : {"bin", "config/fenrik-diagnostics", "data", "runtime"})
        QDir().mkpath(Path(folder));
    QFile::setPermissions(Path("runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const char* file : {"fenrik-diagnostics", "ncCommand.dav", "SpecialCommands.dav", "fxmaps.dav"})
        QFile::copy(kBin + QLatin1String(file), Path("bin/") + QLatin1String(file));
    WriteSettings("[Settings]\nCommPort=5\n");
}

void Copy::WriteSettings(const QByteArray& text) const
{
    QFile settings(Path("config/fenrik-diagnostics/settings.ini"));
    if (!settings.open(QIODevice::WriteOnly) || settings.write(text) != text.size())
        throw NotMeasured("the settings can't be written");
}

void Copy::Start(QProcess& process, const QString& program, const QStringList& arguments) const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), Path("config"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), Path("data"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), Path("runtime"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
}

qint64 Copy::LoggedFrames() const
{
    constexpr qint64 kHeadLines = 6;
    const QDir logs(Path("bin/diaglogs"));
    qint64 frames = 0;
    for (const QString& name : logs.entryList(QDir::Files)) {
        QFile file(logs.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            frames += file.readAll().count('\n') - kHeadLines;
    }
    return frames;
}

DisplayWatch::DisplayWatch() : mDisplay(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(mDisplay))
        throw NotMeasured("there is no X display");
    const std::uint32_t events[] = {XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(mDisplay)).data;
    xcb_change_window_attributes(mDisplay, screen->root, XCB_CW_EVENT_MASK, events);
    xcb_flush(mDisplay);
}

DisplayWatch::~DisplayWatch()
{
    xcb_disconnect(mDisplay);
}

std::uint32_t DisplayWatch::NextLargeWindow()
{
    pollfd handle{xcb_get_file_descriptor(mDisplay), POLLIN, 0};
    for (;;) {
        const std::unique_ptr<xcb_generic_event_t, void (*)(void*)> event(xcb_poll_for_event(mDisplay), std::free);
        if (!event) {
            if (::poll(&handle, 1, kPatienceMs) <= 0)
                throw NotMeasured("no window came up");
            continue;
        }
        if ((event->response_type & 0x7F) != XCB_MAP_NOTIFY)
            continue;
        const auto window = reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
        const std::unique_ptr<xcb_get_geometry_reply_t, void (*)(void*)> geometry(
            xcb_get_geometry_reply(mDisplay, xcb_get_geometry(mDisplay, window), nullptr), std::free);
        if (geometry && geometry->width >= kLargeWidth)
            return window;
    }
}

void DisplayWatch::Drain()
{
    while (auto* event = xcb_poll_for_event(mDisplay))
        std::free(event);
}

double ProcessorSeconds(qint64 processId)
{
    clockid_t clock{};
    timespec used{};
    if (::clock_getcpuclockid(pid_t(processId), &clock) != 0 || ::clock_gettime(clock, &used) != 0)
        throw NotMeasured("the process has ended");
    return double(used.tv_sec) + double(used.tv_nsec) / 1e9;
}

void End(QProcess& process)
{
    process.terminate();
    if (!process.waitForFinished(kPatienceMs))
        process.kill();
}

double UsedWhile(QProcess& process, std::chrono::duration<double> time)
{
    const double before = ProcessorSeconds(process.processId());
    std::this_thread::sleep_for(time);
    return ProcessorSeconds(process.processId()) - before;
}

void Press(std::uint32_t window, const char* keys)
{
    QProcess xdotool;
    xdotool.start(QStringLiteral("xdotool"), {"windowfocus", "--sync", QString::number(window), "key", keys});
    if (!xdotool.waitForFinished(kPatienceMs) || xdotool.exitCode() != 0)
        throw NotMeasured("xdotool can't press keys");
}

void WaitForVehicle(QProcess& vehicle)
{
    while (!vehicle.canReadLine() && vehicle.waitForReadyRead(kPatienceMs)) {
    }
    if (!vehicle.readLine().startsWith("ready"))
        throw NotMeasured("the simulated vehicle does not start");
}

void Control(QProcess& vehicle, const char* statement)
{
    vehicle.write(QByteArray(statement) + '\n');
    while (!vehicle.canReadLine() && vehicle.waitForReadyRead(kPatienceMs)) {
    }
    if (vehicle.readLine().trimmed() != "ok")
        throw NotMeasured("the simulated vehicle does not obey");
}

}  // namespace fenrik
