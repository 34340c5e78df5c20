#include "simulator/Terminal.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>

namespace fenrik {

namespace {

[[noreturn]] void Fail(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

Terminal::Terminal() : mOwn(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    if (!mOwn.Valid() || ::grantpt(mOwn.Get()) != 0 || ::unlockpt(mOwn.Get()) != 0)
        Fail("no pseudo-terminal to be had");
    char name[PATH_MAX];
    if (::ptsname_r(mOwn.Get(), name, sizeof name) != 0)
        Fail("the pseudo-terminal has no name");
    mDevice = name;
    mKept = FileHandle(::open(name, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!mKept.Valid())
        Fail(name);
    MakeRaw();
    WatchUsers();
}

void Terminal::MakeRaw() const
{
    termios line{};
    if (::tcgetattr(mKept.Get(), &line) != 0)
        Fail("the terminal's settings can't be read");
    ::cfmakeraw(&line);
    ::cfsetspeed(&line, B9600);
    if (::tcsetattr(mKept.Get(), TCSANOW, &line) != 0)
        Fail("the terminal can't be made raw");
}

// Without the watch, which the system may refuse when too many are in use, the device counts as always open.
void Terminal::WatchUsers()
{
    FileHandle watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (watch.Valid() && ::inotify_add_watch(watch.Get(), mDevice.c_str(), IN_OPEN | IN_CLOSE) >= 0)
        mWatch = std::move(watch);
}

bool Terminal::NoteUsers()
{
    const bool before = Heard();
    alignas(inotify_event) char buffer[4096];
    ssize_t got = 0;
    while (mWatch.Valid() && (got = ::read(mWatch.Get(), buffer, sizeof buffer)) > 0) {
        for (const char* at = buffer; at < buffer + got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(at);
            mUsers += (event->mask & IN_OPEN) ? 1 : 0;
            mUsers -= (event->mask & IN_CLOSE) ? 1 : 0;
            at += sizeof *event + event->len;
        }
    }
    if (before && !Heard()) {
        ::tcflush(mKept.Get(), TCIFLUSH);
        ::ioctl(mKept.Get(), TIOCNXCL);
    }
    return Heard() != before;
}

// Somebody may have opened the device since NoteUsers.
bool Terminal::UsersMayHaveChanged() const
{
    pollfd news{mWatch.Get(), POLLIN, 0};
    return ::poll(&news, 1, 0) > 0;
}

std::size_t Terminal::Write(std::span<const std::uint8_t> bytes)
{
    // The descriptor that is kept would have it wait for the next program that opens the device.
    if (!Heard() && !UsersMayHaveChanged())
        return bytes.size();
    const auto taken = ::write(mOwn.Get(), bytes.data(), bytes.size());
    return taken > 0 ? std::size_t(taken) : 0;
}

std::size_t Terminal::Read(std::span<std::uint8_t> buffer)
{
    const auto got = ::read(mOwn.Get(), buffer.data(), buffer.size());
    return got > 0 ? std::size_t(got) : 0;
}

}  // namespace fenrik
