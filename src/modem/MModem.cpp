#include "modem/MModem.h"

#include "platform/Error.h"
#include "platform/SerialControl.h"
#include "shared/EventPump.h"
#include "shared/RunState.h"

#include <QScopedValueRollback>

namespace fenrik {

namespace {

constexpr int kCommandBaud = 9600;
constexpr int kReplyMs = 1000;
constexpr int kTries = 3;
constexpr int kGuardSeconds = 1;
constexpr double kSilenceSeconds = 0.3;
constexpr int kLongestDropRounds = 5;

}  // namespace

MModem::MModem(SerialControl& port, EventPump& pump, RunState& run) : mPort(port), mPump(pump), mRun(run) {}

void MModem::Open(int port, int baud)
{
    mPort.setCommPort(port);
    mPort.setSettings(QStringLiteral("%1,n,8,1").arg(baud));
    mPort.setInputLen(1);
    mPort.setPortOpen(true);
    mPort.setRTSEnable(true);
}

void MModem::Close()
{
    if (!mPort.PortOpen())
        return;
    mPort.setRTSEnable(false);
    mPort.setPortOpen(false);
}

void MModem::Write(const QByteArray& bytes)
{
    mPort.Output(bytes);
}

bool MModem::DetectModem(int port, QString& text)
{
    try {
        Close();
        Open(port, kCommandBaud);
        if (AsksWell(text))
            return true;
        text = QStringLiteral("No modem detected on COM%1").arg(port);
    } catch (const Error& error) {
        text = QStringLiteral("Error %1 detecting modem").arg(error.Number());
    }
    return false;
}

bool MModem::AsksWell(QString& text)
{
    if (SendCommandGetReply("AT\r", kReplyMs) != QLatin1String("OK"))
        return false;
    text = SendCommandGetReply("ATI3\r", kReplyMs);
    Close();
    return true;
}

QString MModem::SendCommandGetReply(const QByteArray& command, int timeoutMs)
{
    Write(command);
    QString line;
    for (int tries = 0; tries < kTries && line.isEmpty(); ++tries) {
        line = ReadModemLine(timeoutMs);
        if (!line.isEmpty() && command.contains(line.toLatin1()))
            line = ReadModemLine(timeoutMs);
    }
    return line;
}

QString MModem::ReadModemLine(int timeoutMs)
{
    QByteArray line;
    mPump.WaitFor([this, &line] { return TakeLine(line) || WaitIsOver(); }, timeoutMs / 1000.0);
    return QString::fromLatin1(line);
}

/// True when the line is complete.
bool MModem::TakeLine(QByteArray& line)
{
    while (mPort.InBufferCount() > 0) {
        const char byte = char(mPort.InputByte());
        if (byte == '\n')
            return true;
        if (byte != '\r' && line.size() < kLongestLine)
            line.append(byte);
    }
    return false;
}

bool MModem::WaitIsOver() const
{
    return mInterrupted || !mPort.PortOpen();
}

void MModem::Delay(int seconds)
{
    mPump.WaitFor([this] { return WaitIsOver(); }, seconds);
}

void MModem::DropInput()
{
    for (int round = 0; round < kLongestDropRounds && !WaitIsOver(); ++round) {
        mPort.ClearInput();
        mPump.WaitFor([this] { return WaitIsOver(); }, kSilenceSeconds);
        if (mPort.InBufferCount() == 0)
            return;
    }
    mPort.ClearInput();
}

/// For what is said while the port may go away at any word.
void MModem::WriteIfOpen(const QByteArray& bytes)
{
    if (mPort.PortOpen())
        Write(bytes);
}

/// From the call back to commands. False if the guard time could not be kept, and the modem heard nothing of it.
bool MModem::EscapeToCommands()
{
    Delay(kGuardSeconds);
    if (WaitIsOver())
        return false;
    Write("+++");
    Delay(kGuardSeconds);
    return !WaitIsOver();
}

void MModem::HangUpModem()
{
    if (!mPort.PortOpen())
        return;
    if (EscapeToCommands()) {
        Write("ATH0\r");
        WriteIfOpen("ATZ\r");
    }
    if (!mInterrupted)
        mRun.ModemActive = false;
}

void MModem::CloseModemLink()
{
    // The modem reports the end of the call, and that report must not end it again.
    if (mClosing || !mPort.PortOpen())
        return;
    const QScopedValueRollback closing(mClosing, true);
    Write("\\P");
    WriteIfOpen("\\h");
    if (EscapeToCommands())
        Write("ATZ\r");
    Close();
}

}  // namespace fenrik
