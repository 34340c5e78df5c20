// How fast the relay passes messages on, and what many users cost it. Prints lines "name,value" for bench/table.awk.
//
// Relay/RoundTrip/...    a network message to the other end of a pipe and one back, ms
// Loopback/RoundTrip/... the same over two plain connections without a relay, ms
// RelayLoad/...          1,000 users who fetch the list as it changes, 200 pipes with 160 messages a second each

#include "pipe/PipeBodies.h"
#include "pipe/PipeReader.h"
#include "relay/Address.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

namespace fenrik {
namespace {

using enum PipeFrameType;

constexpr int kUsers = 1000;
constexpr int kPipes = 200;
constexpr int kMessagesPerSecond = 160;
constexpr double kLoadSeconds = 10;
constexpr int kRounds = 5000;

double Seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void Print(const std::string& name, double value)
{
    std::cout << name << ',' << value << '\n';
}

void PrintTimes(const std::string& name, std::vector<double> seconds)
{
    std::ranges::sort(seconds);
    Print(name + "/Median", seconds[seconds.size() / 2] * 1e3);
    Print(name + "/P99", seconds[seconds.size() * 99 / 100] * 1e3);
}

/// The relay as a process of its own.
class RelayProcess {
public:
    RelayProcess()
    {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0)
            throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        std::vector<std::string> words{FENRIK_RELAY_PROGRAM, "--listen", "127.0.0.1:0", "--consent", "grant",
                                       "--max-per-address",  "2000"};
        std::vector<char*> line;
        for (auto& word : words)
            line.push_back(word.data());
        line.push_back(nullptr);
        if (::posix_spawn(&mId, line.front(), &actions, nullptr, line.data(), environ) != 0)
            throw std::runtime_error("the relay can't be started");
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        const Handle output(ends[0]);
        std::array<char, 200> text{};
        const auto got = ::read(output.Get(), text.data(), text.size());
        const std::string ready(text.data(), std::size_t(std::max<ssize_t>(got, 0)));
        mAddress = ready.substr(sizeof "ready" <= ready.size() ? sizeof "ready" : 0, ready.find('\n') - sizeof "ready");
    }
    ~RelayProcess()
    {
        ::kill(mId, SIGKILL);
        ::waitpid(mId, nullptr, 0);
    }

    [[nodiscard]] const std::string& Address() const { return mAddress; }

    [[nodiscard]] double ProcessorSeconds() const
    {
        std::ifstream stat("/proc/" + std::to_string(mId) + "/stat");
        std::string word;
        for (int i = 0; i < 13; ++i)
            stat >> word;
        double user = 0;
        double system = 0;
        stat >> user >> system;
        return (user + system) / double(::sysconf(_SC_CLK_TCK));
    }
    [[nodiscard]] double GreatestMegabytes() const
    {
        std::ifstream status("/proc/" + std::to_string(mId) + "/status");
        for (std::string word; status >> word;)
            if (double kilobytes = 0; word == "VmHWM:" && status >> kilobytes)
                return kilobytes / 1024;
        throw std::runtime_error("the relay's memory can't be told");
    }

private:
    pid_t mId = 0;
    std::string mAddress;
};

Handle ConnectTo(const std::string& text)
{
    const auto address = Address::Parse(text);
    Handle socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!address.Connect(socket))
        throw std::runtime_error("no connection to " + text);
    const int on = 1;
    ::setsockopt(socket.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return socket;
}

class Client {
public:
    explicit Client(const std::string& address) : mSocket(ConnectTo(address))
    {
        Send(frameAuthenticate, PipeLogon{"bench", "OEMClient", "Bench"}.Encode());
        mId = ReadPipeNumber(Wait(frameAuthenticated));
    }

    [[nodiscard]] int Socket() const { return mSocket.Get(); }
    [[nodiscard]] std::int32_t Id() const { return mId; }

    void Send(PipeFrameType type, std::string_view body)
    {
        const auto bytes = EncodePipeFrame(type, body);
        if (::send(mSocket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) != ssize_t(bytes.size()))
            throw std::runtime_error("the relay takes nothing");
    }

    /// The body of the next frame of that type; others are passed over.
    std::string Wait(PipeFrameType type)
    {
        PipeFrame frame;
        for (;;) {
            while (mReader.Next(frame) == PipeReader::Found::Frame)
                if (frame.type == type)
                    return frame.body;
            TakeIn();
        }
    }

    /// Calls `take` with the body of each network message that has come. Fetches a changed user list, as a tool does.
    template <typename Take>
    void Drain(Take take)
    {
        TakeIn();
        PipeFrame frame;
        while (mReader.Next(frame) == PipeReader::Found::Frame)
            if (frame.type == frameNetworkMessage)
                take(frame.body);
            else if (frame.type == frameUserListChanged)
                Send(frameUserListRequest, {});
    }

    void PipeTo(Client& other)
    {
        Send(framePipeTo, PipeNumber(other.Id()));
        Wait(frameBussAccessReply);
        other.Wait(framePiped);
    }

private:
    void TakeIn()
    {
        std::array<char, 16384> buffer;
        const auto got = ::recv(mSocket.Get(), buffer.data(), buffer.size(), 0);
        if (got <= 0)
            throw std::runtime_error("the relay has hung up");
        mReader.Append({buffer.data(), std::size_t(got)});
    }

    Handle mSocket;
    PipeReader mReader;
    std::int32_t mId = 0;
};

void MeasureRoundTrip()
{
    const RelayProcess relay;
    Client ada(relay.Address());
    Client bob(relay.Address());
    ada.PipeTo(bob);
    std::vector<double> times;
    for (int i = 0; i < kRounds; ++i) {
        const double start = Seconds();
        ada.Send(frameNetworkMessage, "123456");
        bob.Send(frameNetworkMessage, bob.Wait(frameNetworkMessage));
        (void)ada.Wait(frameNetworkMessage);
        times.push_back(Seconds() - start);
        // No faster than the relay lets one client send.
        if (i % 10 == 9)
            ::usleep(10000);
    }
    PrintTimes("Relay/RoundTrip", times);
}

void MeasureLoopback()
{
    const auto listener = Address::Parse("127.0.0.1:0").Listen();
    const auto near = ConnectTo(Address::OfSocket(listener).Text());
    pollfd waiting{listener.Get(), POLLIN, 0};
    ::poll(&waiting, 1, 1000);
    const Handle far(::accept(listener.Get(), nullptr, nullptr));
    std::array<char, 12> bytes{};
    const auto pass = [&](const Handle& from, const Handle& to) {
        if (::send(from.Get(), bytes.data(), bytes.size(), 0) != ssize_t(bytes.size()) ||
            ::recv(to.Get(), bytes.data(), bytes.size(), MSG_WAITALL) != ssize_t(bytes.size()))
            throw std::runtime_error("the loopback fails");
    };
    std::vector<double> times;
    for (int i = 0; i < kRounds; ++i) {
        const double start = Seconds();
        pass(near, far);
        pass(far, near);
        times.push_back(Seconds() - start);
    }
    PrintTimes("Loopback/RoundTrip", times);
}

/// 1,000 users, the first 400 of them in pipes, in which every second one sends.
class Load {
public:
    Load() : mPoll(::epoll_create1(EPOLL_CLOEXEC))
    {
        for (int i = 0; i < kUsers; ++i)
            mClients.emplace_back(mRelay.Address());
        for (int i = 0; i < kPipes; ++i)
            Opener(i).PipeTo(Sender(i));
        for (auto& client : mClients) {
            epoll_event event{};
            event.events = EPOLLIN;
            event.data.ptr = &client;
            ::epoll_ctl(mPoll.Get(), EPOLL_CTL_ADD, client.Socket(), &event);
        }
    }

    void Measure()
    {
        const double processor = mRelay.ProcessorSeconds();
        mStart = Seconds();
        long sent = 0;
        for (double now = mStart; now < mStart + kLoadSeconds; now = Seconds()) {
            // Spread over time as independent vehicles are, not in one volley.
            const auto due = long((now - mStart) * kPipes * kMessagesPerSecond);
            for (; sent < due; ++sent)
                Sender(int(sent % kPipes)).Send(frameNetworkMessage, Stamp());
            Receive(1);
        }
        const double share = (mRelay.ProcessorSeconds() - processor) / (Seconds() - mStart);
        while (long(mTimes.size()) < sent && Receive(1000)) {
        }
        Print("RelayLoad/Messages", double(mTimes.size()) / kLoadSeconds);
        Print("RelayLoad/Lost", double(sent - long(mTimes.size())));
        Print("RelayLoad/Processor", share * 100);
        Print("RelayLoad/Memory", mRelay.GreatestMegabytes());
        PrintTimes("RelayLoad/Delivery", mTimes);
    }

private:
    Client& Opener(int pipe) { return mClients[std::size_t(2 * pipe)]; }
    Client& Sender(int pipe) { return mClients[std::size_t(2 * pipe + 1)]; }

    // Microseconds since the start, in the four bytes that a message has for data and more.
    std::string Stamp() const { return PipeNumber(std::int32_t((Seconds() - mStart) * 1e6)) + "xx"; }

    bool Receive(int milliseconds)
    {
        std::array<epoll_event, 256> events;
        const int count = ::epoll_wait(mPoll.Get(), events.data(), int(events.size()), milliseconds);
        for (int i = 0; i < count; ++i)
            static_cast<Client*>(events[std::size_t(i)].data.ptr)->Drain([this](const std::string& body) {
                mTimes.push_back(Seconds() - mStart - ReadPipeNumber(body) / 1e6);
            });
        return count > 0;
    }

    RelayProcess mRelay;
    std::vector<Client> mClients;
    Handle mPoll;
    double mStart = 0;
    std::vector<double> mTimes;
};

void AllowManyHandles()
{
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace
}  // namespace fenrik

int main()
{
    try {
        fenrik::AllowManyHandles();
        fenrik::MeasureLoopback();
        fenrik::MeasureRoundTrip();
        fenrik::Load().Measure();
    } catch (const std::exception& failure) {
        std::cerr << "RelayBench: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
