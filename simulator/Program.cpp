#include "simulator/Program.h"

#include "simulator/LegacyBus.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <iostream>
#include <poll.h>
#include <sys/signalfd.h>
#include <system_error>

namespace fenrik {

namespace {

constexpr int kLongestWait = 1000;  // milliseconds

}  // namespace

Program::Program(const Options& options, const Scenario& scenario)
    : mOptions(options), mNodes(scenario.nodes), mLog(mTime, options.log.empty() ? nullptr : &mLogFile),
      mSimulation(MakeNetwork(scenario)), mControlOpen(options.Controlled())
{
    CatchSignals();
    OpenLog();
    Begin();
}

std::unique_ptr<Simulated> Program::MakeNetwork(const Scenario& scenario)
{
    const Simulation::Settings settings{mOptions.paced, mOptions.seed};
    SimulatorLine& line = *this;
    SimulationHost& host = *this;
    if (mOptions.legacy)
        return std::make_unique<LegacyBus>(scenario, settings, mTime, line, mLog, host);
    return std::make_unique<Simulation>(scenario, settings, mTime, line, mLog, host);
}

void Program::Begin()
{
    if (mOptions.modem) {
        DialInHost& host = *this;
        mDialIn = std::make_unique<DialIn>(Simulation::Settings{mOptions.paced, mOptions.seed}, mTime, mLog, host);
    }
    if (mOptions.relay.empty())
        return Plug();
    mRelay = std::make_unique<RelaySocket>(mOptions.relay);
    mColleague = std::make_unique<Colleague>(mOptions.name, mOptions.access, mTime, mLog, *this);
    mColleague->LogOn();
}

void Program::CatchSignals()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        ::sigaddset(&signals, signal);
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
    mSignals = FileHandle(::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!mSignals.Valid())
        throw std::system_error(errno, std::generic_category(), "signals can't be caught");
}

void Program::OpenLog()
{
    if (mOptions.log.empty())
        return;
    mLogFile.open(mOptions.log);
    if (!mLogFile)
        throw std::system_error(errno, std::generic_category(), mOptions.log.string());
}

void Program::Plug()
{
    if (mTerminal || mRelay)
        return;
    auto terminal = std::make_unique<Terminal>();
    mLink = std::make_unique<PortLink>(mOptions.LinkPath(), terminal->Device());
    mTerminal = std::move(terminal);
    mLog.Note("ready " + mOptions.PortName() + " " + mTerminal->Device());
    std::cout << "ready " << mOptions.PortName() << " " << mTerminal->Device() << std::endl;
}

void Program::Unplug()
{
    mLink.reset();
    mTerminal.reset();
    if (mDialIn)
        mDialIn->Modem().Abandon();
    mLog.Note("unplugged");
}

const SimulatorLine* Program::Line() const
{
    if (mColleague)
        return mColleague.get();
    if (mDialIn)
        return mDialIn.get();
    return mTerminal.get();
}

std::size_t Program::Write(std::span<const std::uint8_t> bytes)
{
    if (mColleague)
        return mColleague->Write(bytes);
    return mDialIn ? mDialIn->Write(bytes) : WriteToTerminal(bytes);
}

std::size_t Program::WriteToTerminal(std::span<const std::uint8_t> bytes)
{
    return mTerminal ? mTerminal->Write(bytes) : bytes.size();
}

void Program::OrderModem(const ModemOrder& order)
{
    if (mDialIn)
        mDialIn->Modem().Obey(order);
}

void Program::MessageForVehicle(std::string_view bytes)
{
    mSimulation->Receive({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

void Program::Tell(const std::string& line)
{
    std::cout << line << std::endl;
}

void Program::Run()
{
    while (mRunning) {
        if (mDialIn)
            mDialIn->Step();
        mSimulation->Step();
        if (mOptions.duration && mTime.Seconds() >= *mOptions.duration)
            break;
        if (mRunning)
            Wait();
    }
    if (mColleague)
        mColleague->LogOff();
}

void Program::Wait()
{
    const int data = mTerminal ? mTerminal->DataHandle() : -1;
    const bool isBlocked = mDialIn ? mDialIn->Modem().Blocked() : mSimulation->Blocked();
    const short room = isBlocked ? POLLOUT : 0;
    const short relayRoom = mRelay && mRelay->Unsent() ? POLLOUT : 0;
    // poll passes over the handles that are -1.
    std::array<pollfd, 5> handles{{{mSignals.Get(), POLLIN, 0},
                                   {mTerminal ? mTerminal->UsersHandle() : -1, POLLIN, 0},
                                   {data, short(POLLIN | room), 0},
                                   {mControlOpen ? STDIN_FILENO : -1, POLLIN, 0},
                                   {mRelay ? mRelay->Handle() : -1, short(POLLIN | relayRoom), 0}}};
    if (::poll(handles.data(), handles.size(), WaitMilliseconds()) > 0)
        HandleEvents(handles);
}

void Program::HandleEvents(std::span<const pollfd> handles)
{
    if (handles[0].revents != 0)
        Quit();
    if (handles[1].revents != 0)
        NoteUsers();
    if ((handles[2].revents & POLLIN) != 0)
        ReadTerminal();
    if (handles[3].revents != 0)
        ReadControl();
    if (handles[4].revents != 0)
        ReadRelay();
}

void Program::ReadRelay()
{
    mRelay->Flush();
    mColleague->Receive(mRelay->Read());
}

int Program::WaitMilliseconds() const
{
    double due = mSimulation->NextDue();
    if (mDialIn)
        due = std::min(due, mDialIn->NextDue());
    if (mOptions.duration)
        due = std::min(due, *mOptions.duration);
    const double milliseconds = std::ceil((due - mTime.Seconds()) * 1000);
    return int(std::clamp(milliseconds, 0.0, double(kLongestWait)));
}

void Program::NoteUsers()
{
    if (!mTerminal->NoteUsers())
        return;
    mLog.Note(mTerminal->Heard() ? "port opened" : "port closed");
    if (mDialIn && !mTerminal->Heard())
        mDialIn->Modem().Abandon();
}

void Program::ReadTerminal()
{
    // The opening may have been reported after the look at it and before the first byte.
    NoteUsers();
    std::array<std::uint8_t, 4096> buffer{};
    const auto got = std::span(buffer).first(mTerminal->Read(buffer));
    if (mDialIn)
        mDialIn->Modem().Receive(got);
    else
        mSimulation->Receive(got);
}

void Program::ReadControl()
{
    std::array<char, 4096> buffer{};
    const auto got = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (got <= 0) {
        mControlOpen = false;
        return;
    }
    mControlText.append(buffer.data(), std::size_t(got));
    for (auto end = mControlText.find('\n'); end != std::string::npos; end = mControlText.find('\n')) {
        Control(mControlText.substr(0, end));
        mControlText.erase(0, end + 1);
    }
}

void Program::Control(const std::string& line)
{
    try {
        if (mColleague && mColleague->Control(line)) {
            std::cout << "ok" << std::endl;
        } else if (const auto action = ParseAction(line, mNodes, mOptions.NetworkKind())) {
            mLog.Note("control: " + line);
            mSimulation->Carry(*action);
            std::cout << "ok" << std::endl;
        }
    } catch (const std::exception& bad) {
        std::cout << "error: " << bad.what() << std::endl;
    }
}

}  // namespace fenrik
