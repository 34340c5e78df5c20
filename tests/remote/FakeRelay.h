#pragma once

#include "pipe/PipeBodies.h"
#include "pipe/PipeReader.h"

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <functional>
#include <linux/tcp.h>
#include <map>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace fenrik {

using enum PipeFrameType;

/// Takes the system's socket away below the connection that this process has to a port of this machine: what comes of
/// it is an error, and no end. The connection's handle is left with a socket that was never connected.
inline void BreakConnectionTo(int port)
{
    constexpr int kMostHandles = 1024;
    for (int handle = 3; handle < kMostHandles; ++handle) {
        sockaddr_in peer{};
        socklen_t size = sizeof peer;
        if (::getpeername(handle, reinterpret_cast<sockaddr*>(&peer), &size) != 0 || ntohs(peer.sin_port) != port)
            continue;
        const int other = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        ::dup2(other, handle);
        ::close(other);
    }
}

/// A relay on a port of this machine that answers each type of frame as a test says, and by default not at all.
class FakeRelay {
public:
    using Answer = std::function<void(const std::string& body)>;
    explicit FakeRelay(const QHostAddress& address = QHostAddress::LocalHost)
    {
        mServer.listen(address);
        QObject::connect(&mServer, &QTcpServer::newConnection, &mServer, [this] { Accept(); });
    }

    [[nodiscard]] bool Listening() const { return mServer.isListening(); }
    [[nodiscard]] int Port() const { return mServer.serverPort(); }
    [[nodiscard]] bool HasClient() const { return mClient && mClient->state() == QAbstractSocket::ConnectedState; }

    void Send(PipeFrameType type, const std::string& body = {}) { SendBytes(EncodePipeFrame(type, body)); }
    void SendBytes(const std::string& bytes)
    {
        if (!mClient)
            return;
        mClient->write(bytes.data(), qint64(bytes.size()));
        mClient->flush();
    }
    /// Nobody listens on the port any more.
    void Close() { mServer.close(); }
    void Hang()
    {
        if (mClient)
            mClient->disconnectFromHost();
    }

    void On(PipeFrameType type, Answer answer) { mAnswers[type] = std::move(answer); }

    /// Answers as a relay does with this tool as user 7 and with `others`.
    void Behave(const std::vector<PipeUserRecord>& others)
    {
        On(frameAuthenticate, [this](auto&) { Send(frameAuthenticated, PipeWelcome{7, "Welcome"}.Encode()); });
        On(frameUserListRequest, [this, others](auto&) {
            std::string list = PipeUserRecord{7, "127.0.0.1", "Me", " "}.Encode();
            for (const auto& user : others)
                list += user.Encode();
            Send(frameUserList, list);
        });
        On(framePipeTo, [this](auto& body) { Pipe(ReadPipeNumber(body), "Bob"); });
        On(frameBreakPipe, [this](auto& body) {
            Send(framePipeBroken, PipeNotice{ReadPipeNumber(body), "Bob", "gone"}.Encode());
        });
    }
    void Pipe(int id, const std::string& name) { Send(framePiped, PipeNotice{id, name, "piped"}.Encode()); }

    [[nodiscard]] std::size_t BytesIn() const { return mBytesIn; }

    /// Segments with data that this end of the connection has received.
    [[nodiscard]] unsigned SegmentsIn() const
    {
        tcp_info info{};
        socklen_t size = sizeof info;
        ::getsockopt(int(mClient->socketDescriptor()), IPPROTO_TCP, TCP_INFO, &info, &size);
        return info.tcpi_data_segs_in;
    }

    [[nodiscard]] int Count(PipeFrameType type) const
    {
        return int(std::count_if(frames.begin(), frames.end(), [&](auto& frame) { return frame.type == type; }));
    }

    std::vector<PipeFrame> frames;  ///< received, in order
    bool reads = true;
    std::function<void()> onAccept = [] {};
    std::function<void()> onGone = [] {};

private:
    void Accept()
    {
        mClient = mServer.nextPendingConnection();
        mReader.Clear();
        if (!reads)
            mClient->setReadBufferSize(1);
        QObject::connect(mClient, &QTcpSocket::readyRead, mClient, [this, client = mClient.data()] { Read(*client); });
        QObject::connect(mClient, &QTcpSocket::disconnected, &mServer, [this] { onGone(); });
        onAccept();
    }
    void Read(QTcpSocket& client)
    {
        if (!reads)
            return;
        const std::string bytes = client.readAll().toStdString();
        mBytesIn += bytes.size();
        mReader.Append(bytes);
        PipeFrame frame;
        while (mReader.Next(frame) == PipeReader::Found::Frame) {
            frames.push_back(frame);
            if (const auto answer = mAnswers.find(frame.type); answer != mAnswers.end())
                answer->second(frame.body);
        }
    }

    QTcpServer mServer;
    std::size_t mBytesIn = 0;
    QPointer<QTcpSocket> mClient;
    PipeReader mReader;
    std::map<PipeFrameType, Answer> mAnswers;
};

}  // namespace fenrik
