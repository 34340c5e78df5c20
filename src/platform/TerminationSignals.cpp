#include "platform/TerminationSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace fenrik {

namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler gets no argument of its own, so the pipe that it writes to has to stand here: [0] is read on the UI
// thread, [1] is written by the handler.
std::array<int, 2> sPipe{-1, -1};

extern "C" void WriteToPipe(int)
{
    const int keptError = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(sPipe[1], &byte, 1);
    errno = keptError;
}

struct sigaction ActionOf(int signal)
{
    struct sigaction action = {};
    ::sigaction(signal, nullptr, &action);
    return action;
}

void CatchOnce(int signal)
{
    struct sigaction action = {};
    action.sa_handler = WriteToPipe;
    action.sa_flags = SA_RESTART | int(SA_RESETHAND);
    ::sigaction(signal, &action, nullptr);
}

int OpenPipe()
{
    if (::pipe2(sPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        sPipe = {-1, -1};
    return sPipe[0];
}

}  // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent), mNotifier(OpenPipe(), QSocketNotifier::Read)
{
    if (sPipe[1] < 0)
        return;  // out of handles: the signals keep their default effect
    connect(&mNotifier, &QSocketNotifier::activated, this, &TerminationSignals::Take);
    for (const int signal : kSignals) {
        // What is ignored stays so: nohup and shells' background jobs count on it.
        if (ActionOf(signal).sa_handler != SIG_IGN)
            CatchOnce(signal);
    }
}

TerminationSignals::~TerminationSignals()
{
    for (const int signal : kSignals) {
        if (ActionOf(signal).sa_handler == WriteToPipe)
            ::signal(signal, SIG_DFL);
    }
    mNotifier.setEnabled(false);
    for (int& end : sPipe) {
        ::close(end);
        end = -1;
    }
}

void TerminationSignals::Take()
{
    char byte = 0;
    while (::read(sPipe[0], &byte, 1) == 1) {
    }
    Q_EMIT Requested();
}

}  // namespace fenrik
