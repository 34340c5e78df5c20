#include "relay/RelayProgram.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <system_error>

namespace fenrik {

namespace {

constexpr int kLongestWait = 60000;     // milliseconds
constexpr rlim_t kHandlesBesides = 64;  // listeners, log, libraries

double SteadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The journal stamps lines itself.
RelayLog::Stamp StampFor(const RelayOptions& options)
{
    return options.log.empty() && std::getenv("JOURNAL_STREAM") ? RelayLog::Stamp::None : RelayLog::Stamp::Time;
}

}  // namespace

RelayProgram::RelayProgram(const RelayOptions& options)
    : mOptions(options), mLog(options.log.empty() ? std::clog : mLogFile, StampFor(options))
{
    CatchSignals();
    OpenLog();
    RaiseHandleLimit();
    std::vector<Address> addresses;
    for (const auto& text : options.listen)
        addresses.push_back(Address::Parse(text));
    mServer.emplace(addresses, options.limits, options.consent, mLog, SteadySeconds);
    mServer->Watch(mSignals.Get(), [this] { TakeSignal(); });
}

void RelayProgram::CatchSignals()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        ::sigaddset(&signals, signal);
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
    mSignals = Handle(::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!mSignals.Valid())
        throw std::system_error(errno, std::generic_category(), "signals can't be caught");
}

void RelayProgram::OpenLog()
{
    if (mOptions.log.empty())
        return;
    std::ofstream file(mOptions.log, std::ios::app);
    if (!file)
        throw std::system_error(errno, std::generic_category(), mOptions.log);
    mLogFile = std::move(file);
}

void RelayProgram::RenewLog()
{
    try {
        OpenLog();
    } catch (const std::exception& failure) {
        mLog.Always(std::string("the log goes on in the old file: ") + failure.what());
    }
}

void RelayProgram::RaiseHandleLimit()
{
    const auto wanted = rlim_t(mOptions.limits.Connections()) + kHandlesBesides;
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_cur >= wanted)
        return;
    limit.rlim_cur = std::min(wanted, limit.rlim_max);
    ::setrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_cur < wanted)
        mLog.Always("the system allows " + std::to_string(limit.rlim_cur) + " open files; " + std::to_string(wanted) +
                    " are needed for all users");
}

void RelayProgram::TakeSignal()
{
    signalfd_siginfo info{};
    if (::read(mSignals.Get(), &info, sizeof info) != ssize_t(sizeof info))
        return;
    if (info.ssi_signo == SIGHUP && !mOptions.log.empty())
        return RenewLog();
    if (++mStops == 1)
        mLog.Always("asked to end with " + std::to_string(mServer->UsersLoggedOn()) + " users logged on");
    mServer->Stop();
}

void RelayProgram::Run()
{
    for (const auto& address : mServer->Listening()) {
        mLog.Always("fenrik-relay " FENRIK_VERSION " listens at " + address.Text());
        std::cout << "ready " << address.Text() << std::endl;
    }
    while (!mServer->Finished() && mStops < 2)
        mServer->Turn(kLongestWait);
    mLog.Always("ended");
}

}  // namespace fenrik
