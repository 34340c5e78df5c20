#include "relay/RelayClient.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace fenrik {

namespace {

using namespace std::chrono_literals;
constexpr auto kPatience = 10s;

bool Again()
{
    return errno == EAGAIN || errno == EWOULDBLOCK;
}

}  // namespace

RelayClient::RelayClient(const std::string& address, Turn turn, int receiveBuffer) : mTurn(std::move(turn))
{
    const auto parsed = Address::Parse(address);
    mSocket = Handle(::socket(parsed.Family(), SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (receiveBuffer > 0)
        ::setsockopt(mSocket.Get(), SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    EXPECT_TRUE(parsed.Connect(mSocket)) << address;
    const int on = 1;
    ::setsockopt(mSocket.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

void RelayClient::SendBytes(std::string_view bytes)
{
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!bytes.empty() && std::chrono::steady_clock::now() < deadline) {
        const auto sent = ::send(mSocket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && !Again())
            return;
        if (sent > 0)
            bytes.remove_prefix(std::size_t(sent));
        if (!bytes.empty())
            mTurn();
    }
}

void RelayClient::LogOn(std::string_view name)
{
    Send(PipeFrameType::frameAuthenticate, PipeLogon{std::string(name), "OEMClient", std::string(name)}.Encode());
    const auto answer = Read();
    ASSERT_TRUE(answer);
    ASSERT_EQ(answer->type, PipeFrameType::frameAuthenticated) << answer->body;
    mId = PipeWelcome::Decode(answer->body)->clientID;
}

std::optional<PipeFrame> RelayClient::Read()
{
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    PipeFrame frame;
    while (std::chrono::steady_clock::now() < deadline) {
        const auto found = mReader.Next(frame);
        EXPECT_TRUE(found == PipeReader::Found::Frame || found == PipeReader::Found::Nothing);
        if (found == PipeReader::Found::Nothing && !TakeIn())
            return std::nullopt;
        if (found == PipeReader::Found::Frame && Wanted(frame))
            return frame;
    }
    ADD_FAILURE() << "nothing came";
    return std::nullopt;
}

bool RelayClient::TakeIn()
{
    mTurn();
    std::array<char, 65536> buffer;
    const auto got = ::recv(mSocket.Get(), buffer.data(), std::min(buffer.size(), mReader.Room()), MSG_DONTWAIT);
    if (got > 0)
        mReader.Append({buffer.data(), std::size_t(got)});
    mEnded = got == 0 || (got < 0 && !Again());
    return !mEnded;
}

std::vector<PipeFrame> RelayClient::ReadAll()
{
    const auto mark = "mark " + std::to_string(++mEchoes);
    Send(PipeFrameType::frameEchoServer, mark);
    std::vector<PipeFrame> frames;
    while (auto frame = Read()) {
        if (frame->type == PipeFrameType::frameEchoReply && frame->body == mark)
            return frames;
        frames.push_back(*frame);
    }
    ADD_FAILURE() << "the connection ended";
    return frames;
}

std::vector<PipeFrame> RelayClient::ReadArrived()
{
    std::vector<PipeFrame> frames;
    PipeFrame frame;
    std::size_t held = 0;
    do {
        held = mReader.Held();
        (void)TakeIn();
        while (mReader.Next(frame) == PipeReader::Found::Frame)
            if (Wanted(frame))
                frames.push_back(frame);
    } while (mReader.Held() != held);
    return frames;
}

std::vector<PipeFrame> RelayClient::ReadToEnd()
{
    std::vector<PipeFrame> frames;
    while (auto frame = Read())
        frames.push_back(*frame);
    EXPECT_TRUE(mEnded);
    return frames;
}

}  // namespace fenrik
