#pragma once

#include "pipe/PipeBodies.h"
#include "pipe/PipeReader.h"

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace fenrik {

using enum PipeFrameType;

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
        mReader.Append(client.readAll().toStdString());
        PipeFrame frame;
        while (mReader.Next(frame) == PipeReader::Found::Frame) {
            frames.push_back(frame);
            if (const auto answer = mAnswers.find(frame.type); answer != mAnswers.end())
                answer->second(frame.body);
        }
    }

    QTcpServer mServer;
    QPointer<QTcpSocket> mClient;
    PipeReader mReader;
    std::map<PipeFrameType, Answer> mAnswers;
};

}  // namespace fenrik
