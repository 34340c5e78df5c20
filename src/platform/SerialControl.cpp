#include "platform/SerialControl.h"

#include "platform/Error.h"

#include <QHash>
#include <QStringList>

#include <array>
#include <cerrno>
#include <linux/serial.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace fenrik {

namespace {

constexpr int kFramingCheckMs = 500;
constexpr qsizetype kInputLimit = 1 << 20;

/// Looks at a silent line before the device is asked to report again.
constexpr int kIdleLooks = 6;
/// What comes so soon after an output may be its answer, and is read byte by byte as it comes.
constexpr int kAnswerMs = 250;

struct LineParameters {
    qint32 baud = 0;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

std::optional<QSerialPort::Parity> ParityOf(const QString& letter)
{
    static const QHash<QString, QSerialPort::Parity> kParities{{QStringLiteral("n"), QSerialPort::NoParity},
                                                               {QStringLiteral("e"), QSerialPort::EvenParity},
                                                               {QStringLiteral("o"), QSerialPort::OddParity},
                                                               {QStringLiteral("m"), QSerialPort::MarkParity},
                                                               {QStringLiteral("s"), QSerialPort::SpaceParity}};
    const auto found = kParities.constFind(letter.toLower());
    return found == kParities.constEnd() ? std::nullopt : std::optional(*found);
}

std::optional<LineParameters> Parse(const QString& settings)
{
    const QStringList parts = settings.split(QLatin1Char(','));
    if (parts.size() != 4)
        return std::nullopt;
    const qint32 baud = parts[0].toInt();
    const auto parity = ParityOf(parts[1].trimmed());
    const int dataBits = parts[2].toInt();
    const QString stopBits = parts[3].trimmed();
    const bool oneStop = stopBits == QLatin1String("1");
    if (baud <= 0 || !parity || dataBits < 5 || dataBits > 8 || (!oneStop && stopBits != QLatin1String("2")))
        return std::nullopt;
    return LineParameters{baud, *parity, QSerialPort::DataBits(dataBits),
                          oneStop ? QSerialPort::OneStop : QSerialPort::TwoStop};
}

}  // namespace

SerialControl::SerialControl(const ComPorts& ports, QObject* parent, FramingErrorCount framingErrors)
    : QObject(parent), mPorts(ports), mFramingErrorCount(std::move(framingErrors))
{
    mFramingTimer.setInterval(kFramingCheckMs);
    connect(&mFramingTimer, &QTimer::timeout, this, &SerialControl::CheckFramingErrors);
    mGather.setSingleShot(true);
    mGather.setTimerType(Qt::PreciseTimer);
    connect(&mGather, &QTimer::timeout, this, &SerialControl::LookAgain);
    connect(&mPort, &QSerialPort::readyRead, this, [this] { Take(mPort.readAll()); });
    connect(&mPort, &QSerialPort::errorOccurred, this, &SerialControl::HandleError);
}

void SerialControl::setSettings(const QString& settings)
{
    mSettings = settings;
    if (PortOpen())
        ApplySettings();
}

void SerialControl::setPortOpen(bool open)
{
    if (!open)
        Close();
    else if (PortOpen())
        throw Error(ErrorNumber::kPortAlreadyOpen, QStringLiteral("Port already open"));
    else
        Open();
}

void SerialControl::Open()
{
    const auto path = mPorts.DevicePath(mCommPort);
    if (!path)
        throw Error(ErrorNumber::kPortNotFound, QStringLiteral("Invalid port number"));
    mPort.setPortName(*path);
    if (!mPort.open(QIODevice::ReadWrite)) {
        const auto error = mPort.error();
        if (error == QSerialPort::DeviceNotFoundError)
            throw Error(ErrorNumber::kPortNotFound, mPort.errorString());
        if (error == QSerialPort::PermissionError)
            throw Error(ErrorNumber::kPortAlreadyOpen, mPort.errorString());
        throw Error(ErrorNumber::kSetCommState, mPort.errorString());
    }
    try {
        LockExclusively();
        ApplySettings();
    } catch (...) {
        mPort.close();
        throw;
    }
    ClearInput();
    mAsked.invalidate();
    WatchDevice();
    const auto count = mFramingErrorCount(mPort.handle());
    mCountsFramingErrors = count.has_value();
    mFramingErrors = count.value_or(0);
    if (mCountsFramingErrors)
        mFramingTimer.start();
}

void SerialControl::Close()
{
    mFramingTimer.stop();
    mGather.stop();
    for (auto* notifier : {&mArrival, &mHangUp}) {
        if (!*notifier)
            continue;
        // It may be the one that is being delivered.
        (*notifier)->setEnabled(false);
        notifier->release()->deleteLater();
    }
    if (mPort.isOpen())
        mPort.close();
    ClearInput();
}

void SerialControl::LockExclusively()
{
    // The system's exclusive mode does not hold the administrator off, so a lock says the same to everybody.
    if (::flock(mPort.handle(), LOCK_EX | LOCK_NB) != 0)
        throw Error(ErrorNumber::kPortAlreadyOpen, QStringLiteral("Port already open"));
}

void SerialControl::WatchDevice()
{
    // QSerialPort reads whenever a byte arrives, which wakes the program for each byte of the line; it is kept from it
    // by switching off its notifier. Should it have none, or read all the same, its bytes are taken from it.
    for (QSocketNotifier* notifier : mPort.findChildren<QSocketNotifier*>())
        if (notifier->type() == QSocketNotifier::Read)
            notifier->setEnabled(false);
    mArrival = std::make_unique<QSocketNotifier>(mPort.handle(), QSocketNotifier::Read);
    connect(mArrival.get(), &QSocketNotifier::activated, this, &SerialControl::DataArrived);
    mHangUp = std::make_unique<QSocketNotifier>(mPort.handle(), QSocketNotifier::Exception);
    connect(mHangUp.get(), &QSocketNotifier::activated, this, &SerialControl::CheckHangUp);
}

void SerialControl::CheckHangUp()
{
    // A device that was pulled out reads as an endless end of file, like one without data.
    if (!PortOpen())
        return;
    pollfd device{mPort.handle(), 0, 0};
    if (::poll(&device, 1, 0) > 0)
        LosePort(QStringLiteral("The device was removed"));
}

void SerialControl::ApplySettings()
{
    const auto line = Parse(mSettings);
    if (!line || !mPort.setBaudRate(line->baud) || !mPort.setParity(line->parity) ||
        !mPort.setDataBits(line->dataBits) || !mPort.setStopBits(line->stopBits) ||
        !mPort.setFlowControl(QSerialPort::NoFlowControl))
        throw Error(ErrorNumber::kSetCommState, QStringLiteral("Error setting comm state"));
}

void SerialControl::Output(const QByteArray& bytes)
{
    if (!PortOpen())
        throw Error(ErrorNumber::kPortNotOpen, QStringLiteral("Operation valid only when the port is open"));
    mAsked.start();
    if (mGather.isActive()) {
        mGather.stop();
        mArrival->setEnabled(true);
        QueueDispatch();
    }
    mPort.write(bytes);
    // Not waiting for the next turn of the event loop: the frame is on the line when this returns.
    mPort.flush();
}

QByteArray SerialControl::Input()
{
    const qsizetype count = mInputLen == 0 ? InBufferCount() : qMin<qsizetype>(mInputLen, InBufferCount());
    QByteArray bytes = mInput.mid(mTaken, count);
    mTaken += count;
    return bytes;
}

std::uint8_t SerialControl::InputByte()
{
    return std::uint8_t(mInput.at(mTaken++));
}

void SerialControl::ClearInput()
{
    mInput.clear();
    mTaken = 0;
    mEventsDue = 0;
}

void SerialControl::setRTSEnable(bool on)
{
    // Not every device has the line; QSerialPort would make an error of it.
    if (!PortOpen())
        return;
    const QSignalBlocker quiet(mPort);
    mPort.setRequestToSend(on);
    mPort.clearError();
}

bool SerialControl::ReadDevice()
{
    std::array<char, 4096> bytes;
    const ssize_t count = ::read(mPort.handle(), bytes.data(), bytes.size());
    if (count > 0)
        Take(QByteArray(bytes.data(), qsizetype(count)));
    else if (count == 0 || (errno != EAGAIN && errno != EINTR))
        CheckHangUp();
    return count > 0;
}

void SerialControl::Take(QByteArray bytes)
{
    mInput.remove(0, mTaken);
    mTaken = 0;
    // Where nobody reads, the newest bytes are lost, as on a line whose buffer is full.
    bytes.truncate(kInputLimit - qMin(mInput.size(), kInputLimit));
    mInput.append(bytes);
    mEventsDue += int(bytes.size());
}

bool SerialControl::MayBeAnswered() const
{
    return mAsked.isValid() && !mAsked.hasExpired(kAnswerMs);
}

void SerialControl::DataArrived()
{
    const bool heard = ReadDevice();
    if (heard && !MayBeAnswered()) {
        mArrival->setEnabled(false);
        mSilentLooks = 0;
        mGather.start(mGatherMs);
    }
    Dispatch();
}

void SerialControl::LookAgain()
{
    if (!PortOpen())
        return;
    mSilentLooks = ReadDevice() ? 0 : mSilentLooks + 1;
    if (!PortOpen())
        return;
    // Started before anybody is told: a handler that waits is to hear the next bytes.
    if (mSilentLooks < kIdleLooks && !MayBeAnswered())
        mGather.start(mGatherMs);
    else
        mArrival->setEnabled(true);
    Dispatch();
}

void SerialControl::QueueDispatch()
{
    if (mDispatchQueued)
        return;
    mDispatchQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            mDispatchQueued = false;
            Dispatch();
        },
        Qt::QueuedConnection);
}

void SerialControl::Dispatch()
{
    if (mCountsFramingErrors)
        CheckFramingErrors();
    while (mEventsDue > 0 && InBufferCount() > 0) {
        --mEventsDue;
        // The handler may wait for the very bytes that came together with this one.
        if (mEventsDue > 0 && !mGather.isActive())
            QueueDispatch();
        mCommEvent = kEvReceive;
        Q_EMIT OnComm();
    }
    if (InBufferCount() == 0)
        mEventsDue = 0;
}

void SerialControl::CheckFramingErrors()
{
    if (!PortOpen())
        return;
    const std::uint32_t count = mFramingErrorCount(mPort.handle()).value_or(mFramingErrors);
    // The difference of a counter that wraps around is right still; one that was set back by its driver gives none.
    auto fresh = std::int32_t(count - mFramingErrors);
    mFramingErrors = count;
    for (; fresh > 0 && PortOpen(); --fresh) {
        mCommEvent = kFramingError;
        Q_EMIT OnComm();
    }
}

void SerialControl::HandleError(QSerialPort::SerialPortError error)
{
    if (error == QSerialPort::ResourceError && PortOpen())
        LosePort(mPort.errorString());
}

void SerialControl::LosePort(const QString& reason)
{
    Close();
    Q_EMIT PortLost(reason);
}

std::optional<std::uint32_t> SerialControl::DriverFramingErrors(int handle)
{
    serial_icounter_struct counters{};
    if (::ioctl(handle, TIOCGICOUNT, &counters) != 0)
        return std::nullopt;
    return std::uint32_t(counters.frame);
}

}  // namespace fenrik
