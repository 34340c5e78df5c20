#pragma once

#include "remote/RemoteStream.h"

#include <QObject>
#include <QString>
#include <QTcpSocket>

namespace fenrik {

/// The one socket. Its events come from the event loop and never from inside a call, and they go on coming while a
/// handler of one of them waits: bytes that arrive meanwhile are delivered to the wait.
class RemoteSocket : public QObject, public RemoteStream {
    Q_OBJECT

public:
    /// Numbers of the Error event and of thrown errors that somebody looks at.
    static constexpr int kNotConnected = 40006;
    static constexpr int kNoBufferSpace = 10055;
    static constexpr int kRefused = 10061;
    static constexpr int kHostNotFound = 11001;

    /// What a peer that never reads can make this end hold.
    static constexpr qint64 kMostUnsent = 1 << 20;

    explicit RemoteSocket(QObject* parent = nullptr);
    ~RemoteSocket() override;

    /// Begins to connect; Connected or Failed tells the end. A connection that stands is closed first.
    void Connect(const QString& host, int port);

    /// At once and without an event. What was sent before still leaves as far as the system takes it.
    void Close();

    /// From the call of Connect on.
    [[nodiscard]] bool IsOpen() const { return mSocket != nullptr; }
    [[nodiscard]] bool IsConnected() const;

    /// Throws Error kNotConnected, or kNoBufferSpace if the peer doesn't read.
    void SendData(std::initializer_list<std::string_view> parts) override;

    [[nodiscard]] std::string GetData(std::size_t most) override;
    [[nodiscard]] std::size_t BytesReceived() const override;
    void QueueDataArrival() override;

Q_SIGNALS:
    void Connected();
    void DataArrival();
    void Closed();  ///< by the peer, after the last of its bytes was announced
    void Failed(int number, const QString& description);

private:
    void Watch();
    template <typename Event>
    void Queue(Event event);

    QTcpSocket* mSocket = nullptr;
    bool mArrivalQueued = false;
    int mConnection = 0;  // counted, so that a queued event of an earlier one is known
};

}  // namespace fenrik
