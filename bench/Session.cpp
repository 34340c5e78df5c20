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

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// What the display hands out, freed with it.
template <typename What>
using Reply = std::unique_ptr<What, Free>;

Reply<xcb_generic_event_t> NextEvent(xcb_connection_t* display)
{
    pollfd handle{xcb_get_file_descriptor(display), POLLIN, 0};
    for (;;) {
        if (Reply<xcb_generic_event_t> event{xcb_poll_for_event(display)})
            return event;
        if (::poll(&handle, 1, kPatienceMs) <= 0)
            throw NotMeasured("the window does not come up");
    }
}

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
    // The second one for answers to pings, which Qt sends to those who watch the root window itself.
    const std::uint32_t events[] = {XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(mDisplay)).data;
    mRoot = screen->root;
    xcb_change_window_attributes(mDisplay, mRoot, XCB_CW_EVENT_MASK, events);
    xcb_flush(mDisplay);
}

DisplayWatch::~DisplayWatch()
{
    xcb_disconnect(mDisplay);
}

std::uint32_t DisplayWatch::NextLargeWindow()
{
    for (;;) {
        const Reply<xcb_generic_event_t> event = NextEvent(mDisplay);
        if ((event->response_type & 0x7F) != XCB_MAP_NOTIFY)
            continue;
        const auto window = reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
        const Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(mDisplay, xcb_get_geometry(mDisplay, window), nullptr));
        if (geometry && geometry->width >= kLargeWidth)
            return window;
    }
}

void DisplayWatch::WaitUntilReady(std::uint32_t window)
{
    // The first answer comes from the turn of the event loop that reads that the window is to be painted, the second
    // one from a later turn.
    Ping(window);
    Ping(window);
}

std::uint32_t DisplayWatch::Atom(std::string_view name)
{
    const auto asked = xcb_intern_atom(mDisplay, 0, std::uint16_t(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(mDisplay, asked, nullptr));
    if (!reply)
        throw NotMeasured("the X display has gone");
    return reply->atom;
}

void DisplayWatch::Ping(std::uint32_t window)
{
    // What window managers ask a program with, to see whether it hangs; it sends the message on to the root window.
    xcb_client_message_event_t ping{};
    ping.response_type = XCB_CLIENT_MESSAGE;
    ping.format = 32;
    ping.window = window;
    ping.type = Atom("WM_PROTOCOLS");
    ping.data.data32[0] = Atom("_NET_WM_PING");
    ping.data.data32[2] = window;
    xcb_send_event(mDisplay, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&ping));
    xcb_flush(mDisplay);
    for (;;) {
        const Reply<xcb_generic_event_t> event = NextEvent(mDisplay);
        const auto* answer = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
        if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE && answer->window == mRoot &&
            answer->data.data32[0] == ping.data.data32[0] && answer->data.data32[2] == window)
            return;
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
