#include "remote/RemoteSocket.h"

#include "platform/Error.h"

#include <QNetworkProxy>

#include <algorithm>

namespace fenrik {

namespace {

constexpr qint64 kReadBuffer = 1 << 16;
constexpr int kNetworkDown = 10050;

struct ErrorRow {
    QAbstractSocket::SocketError error;
    int number;
};

/// The numbers that people and papers know.
constexpr ErrorRow kErrors[] = {
    {QAbstractSocket::ConnectionRefusedError, RemoteSocket::kRefused},
    {QAbstractSocket::HostNotFoundError, RemoteSocket::kHostNotFound},
    {QAbstractSocket::SocketAccessError, 10013},
    {QAbstractSocket::SocketResourceError, RemoteSocket::kNoBufferSpace},
    {QAbstractSocket::SocketTimeoutError, 10060},
    {QAbstractSocket::NetworkError, 10051},
    {QAbstractSocket::UnsupportedSocketOperationError, 10045},
};

int NumberOf(QAbstractSocket::SocketError error)
{
    const auto* row = std::ranges::find(kErrors, error, &ErrorRow::error);
    return row == std::end(kErrors) ? kNetworkDown : row->number;
}

}  // namespace

RemoteSocket::RemoteSocket(QObject* parent) : QObject(parent) {}

RemoteSocket::~RemoteSocket()
{
    Close();
}

void RemoteSocket::Connect(const QString& host, int port)
{
    Close();
    mSocket = new QTcpSocket(this);
    mSocket->setProxy(QNetworkProxy::NoProxy);
    mSocket->setReadBufferSize(kReadBuffer);
    Watch();
    mSocket->connectToHost(host, quint16(std::clamp(port, 0, 65535)));
}

template <typename Event>
void RemoteSocket::Queue(Event event)
{
    const auto ifStillThere = [this, event, connection = mConnection] {
        if (mSocket && connection == mConnection)
            event();
    };
    QMetaObject::invokeMethod(this, ifStillThere, Qt::QueuedConnection);
}

void RemoteSocket::Watch()
{
    connect(mSocket, &QTcpSocket::connected, this, [this] {
        // Frames are small and somebody waits for each.
        mSocket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        Queue([this] { Q_EMIT Connected(); });
    });
    connect(mSocket, &QTcpSocket::readyRead, this, &RemoteSocket::QueueDataArrival);
    connect(mSocket, &QTcpSocket::errorOccurred, this, [this](QAbstractSocket::SocketError error) {
        // `disconnected` tells that one.
        if (error == QAbstractSocket::RemoteHostClosedError)
            return;
        Queue([this, number = NumberOf(error), text = mSocket->errorString()] { Q_EMIT Failed(number, text); });
    });
    connect(mSocket, &QTcpSocket::disconnected, this, [this] { Queue([this] { Q_EMIT Closed(); }); });
}

void RemoteSocket::Close()
{
    ++mConnection;
    mArrivalQueued = false;
    if (!mSocket)
        return;
    QTcpSocket* const socket = mSocket;
    mSocket = nullptr;
    socket->disconnect(this);
    socket->flush();
    socket->abort();
    socket->deleteLater();
}

bool RemoteSocket::IsConnected() const
{
    return mSocket && mSocket->state() == QAbstractSocket::ConnectedState;
}

void RemoteSocket::SendData(std::initializer_list<std::string_view> parts)
{
    if (!IsConnected())
        throw Error(kNotConnected, QStringLiteral("Wrong protocol or connection state for the requested transaction"));
    qint64 unsent = mSocket->bytesToWrite();
    for (const auto part : parts)
        unsent += qint64(part.size());
    if (unsent > kMostUnsent)
        throw Error(kNoBufferSpace, QStringLiteral("No buffer space is available"));
    for (const auto part : parts)
        mSocket->write(part.data(), qint64(part.size()));
    // Not waiting for the next turn of the event loop.
    mSocket->flush();
}

std::string RemoteSocket::GetData(std::size_t most)
{
    if (!mSocket)
        return {};
    std::string bytes(std::min(most, BytesReceived()), '\0');
    const qint64 count = mSocket->read(bytes.data(), qint64(bytes.size()));
    bytes.resize(std::size_t(std::max<qint64>(count, 0)));
    return bytes;
}

std::size_t RemoteSocket::BytesReceived() const
{
    return mSocket ? std::size_t(mSocket->bytesAvailable()) : 0;
}

void RemoteSocket::QueueDataArrival()
{
    if (mArrivalQueued || !mSocket)
        return;
    mArrivalQueued = true;
    Queue([this] {
        mArrivalQueued = false;
        Q_EMIT DataArrival();
    });
}

}  // namespace fenrik
