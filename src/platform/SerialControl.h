#pragma once

#include "platform/ComPorts.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QSerialPort>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace fenrik {

/// The serial port under the operation names that the link uses.
///
/// OnComm is raised from the event loop, never from inside Output or Input, once for each received byte (a handler
/// that takes all bytes at once gets no further events for them) and once for each framing error. Bytes that arrive
/// while a handler waits in the event pump are delivered to that wait.
///
/// What streams by unasked is looked at every 4 ms or as setGatherTime says, so that a full line doesn't wake the
/// program a thousand times a second; what follows an output within a quarter of a second is read as it comes.
///
/// When the device goes away the port closes itself and PortLost tells it. A line that the device lacks (RTS on a
/// pseudo-terminal) is no error.
class SerialControl : public QObject {
    Q_OBJECT

public:
    /// Codes of CommEvent.
    static constexpr int kEvReceive = 2;
    static constexpr int kFramingError = 1004;

    /// The driver's count of framing errors on an open device's handle, or nothing if it keeps none.
    using FramingErrorCount = std::function<std::optional<std::uint32_t>(int handle)>;

    explicit SerialControl(const ComPorts& ports, QObject* parent = nullptr,
                           FramingErrorCount framingErrors = DriverFramingErrors);

    [[nodiscard]] int CommPort() const { return mCommPort; }
    void setCommPort(int number) { mCommPort = number; }

    /// Line parameters as "9600,n,8,1". Taken at once if the port is open. Throws Error kSetCommState.
    [[nodiscard]] QString Settings() const { return mSettings; }
    void setSettings(const QString& settings);

    [[nodiscard]] bool PortOpen() const { return mPort.isOpen(); }

    /// Opens or closes. Throws Error kPortNotFound, kPortAlreadyOpen (the device can't be had exclusively, or this
    /// port is open already) or kSetCommState.
    void setPortOpen(bool open);

    /// Sends bytes without waiting for the line. Throws Error kPortNotOpen.
    void Output(const QByteArray& bytes);

    /// The oldest InputLen received bytes, or all with InputLen 0; fewer if fewer are there.
    [[nodiscard]] QByteArray Input();

    /// The oldest received byte, without the array. There must be one.
    [[nodiscard]] std::uint8_t InputByte();

    [[nodiscard]] int InBufferCount() const { return int(mInput.size() - mTaken); }
    void ClearInput();

    [[nodiscard]] int InputLen() const { return mInputLen; }
    void setInputLen(int count) { mInputLen = count; }

    /// Milliseconds from one look at a streaming line to the next, 1 to 100.
    void setGatherTime(int milliseconds) { mGatherMs = milliseconds; }

    void setRTSEnable(bool on);

    /// What the present event is about: kEvReceive or kFramingError.
    [[nodiscard]] int CommEvent() const { return mCommEvent; }

    [[nodiscard]] static std::optional<std::uint32_t> DriverFramingErrors(int handle);

Q_SIGNALS:
    void OnComm();
    void PortLost(const QString& reason);

private:
    void Open();
    void Close();
    void LockExclusively();
    void WatchDevice();
    void CheckHangUp();
    void ApplySettings();
    bool ReadDevice();
    void Take(QByteArray bytes);
    [[nodiscard]] bool MayBeAnswered() const;
    void DataArrived();
    void LookAgain();
    void QueueDispatch();
    void Dispatch();
    void CheckFramingErrors();
    void HandleError(QSerialPort::SerialPortError error);
    void LosePort(const QString& reason);

    const ComPorts& mPorts;
    FramingErrorCount mFramingErrorCount;
    QSerialPort mPort;
    std::unique_ptr<QSocketNotifier> mArrival;
    std::unique_ptr<QSocketNotifier> mHangUp;
    QTimer mFramingTimer;
    int mGatherMs = 4;  // four bytes at 9600 baud
    QTimer mGather;     // until the next look at a line that streams
    int mSilentLooks = 0;
    QElapsedTimer mAsked;  // since the last output
    int mCommPort = 1;
    QString mSettings = QStringLiteral("9600,n,8,1");
    int mInputLen = 0;
    int mCommEvent = 0;
    QByteArray mInput;
    qsizetype mTaken = 0;  // bytes at the front of mInput that were read
    int mEventsDue = 0;    // received bytes that have raised no event yet
    bool mDispatchQueued = false;
    std::uint32_t mFramingErrors = 0;
    bool mCountsFramingErrors = false;
};

}  // namespace fenrik
