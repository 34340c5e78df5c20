#include "modem/DialSequence.h"

#include "modem/MModem.h"
#include "modem/PhoneNumbers.h"
#include "platform/Error.h"
#include "shared/EventPump.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

namespace fenrik {

namespace {

constexpr int kFewestDigits = 3;
constexpr int kDialMs = 60000;
constexpr int kModuleReplyMs = 3000;
constexpr int kModulePauseSeconds = 2;
// Always so, and modems that are set up here are known to work with it. What a slower one answers is dropped before
// the number is dialled.
constexpr int kInitializeMs = 1;

}  // namespace

DialSequence::DialSequence(MModem& modem, EventPump& pump, const Settings& settings, RunState& run, DialView& view)
    : mModem(modem), mPump(pump), mSettings(settings), mRun(run), mView(view)
{
}

bool DialSequence::Ended() const
{
    return mCanceled || mPump.Stopped();
}

void DialSequence::Cancel()
{
    mCanceled = true;
    mModem.Interrupt();
}

bool DialSequence::Dial(const QString& phoneNumber)
{
    mCanceled = false;
    mModem.Resume();
    const QString digits = FilteredTelephoneNumber(phoneNumber);
    if (digits.size() < kFewestDigits)
        throw Error(DialError::kNoNumber, QStringLiteral("No phone number"));
    return FindModem() && OpenLine() && Initialize() && Call(digits) && AskVersion() && EnterPassThrough();
}

bool DialSequence::FindModem()
{
    const int port = mSettings.ModemCommPort;
    mView.ShowStatus(QStringLiteral("Looking for the modem on COM%1...").arg(port));
    QString text;
    if (mModem.DetectModem(port, text) || Ended())
        return !Ended();
    mView.ShowStatus(QStringLiteral("Modem in use or not available, attempting to reset..."));
    mModem.HangUpModem();
    mModem.Close();
    if (!Ended() && !mModem.DetectModem(port, text) && !Ended())
        throw Error(DialError::kNoModem, text);
    return !Ended();
}

bool DialSequence::OpenLine()
{
    mModem.Open(mSettings.ModemCommPort, mSettings.ModemBaudRate);
    mRun.ModemActive = true;
    // The modem may still speak of itself, and that is not its answer to the dial.
    mModem.DropInput();
    return !Ended();
}

bool DialSequence::Initialize()
{
    if (mSettings.ModemInitString.isEmpty())
        return true;
    mView.ShowStatus(QStringLiteral("Initializing modem..."));
    mModem.SendCommandGetReply(mSettings.ModemInitString.toLatin1() + '\r', kInitializeMs);
    mModem.DropInput();
    return !Ended();
}

bool DialSequence::Call(const QString& digits)
{
    mView.ShowStatus(QStringLiteral("Dialing %1...").arg(digits));
    const QString reply = mModem.SendCommandGetReply("ATDT" + digits.toLatin1() + '\r', kDialMs);
    if (Ended())
        return false;
    if (!reply.contains(QLatin1String("CONNECT")))
        throw Error(DialError::kNotConnected, reply);
    mView.ShowStatus(ProperCase(reply));
    return true;
}

bool DialSequence::AskVersion()
{
    mModem.Delay(kModulePauseSeconds);
    if (Ended())
        return false;
    mModem.Write("\\v");
    const QString version = mModem.ReadModemLine(kModuleReplyMs);
    if (Ended())
        return false;
    mView.ShowStatus(QStringLiteral("Fenrik Modem Module v") + version);
    return true;
}

bool DialSequence::EnterPassThrough()
{
    mModem.Delay(kModulePauseSeconds);
    if (Ended())
        return false;
    mModem.Write("\\p");
    const QString reply = mModem.ReadModemLine(kModuleReplyMs);
    if (Ended())
        return false;
    if (reply != QLatin1String("ACK"))
        throw Error(DialError::kNoPassThrough, reply);
    return true;
}

QString ProperCase(const QString& text)
{
    QString proper = text.toLower();
    bool first = true;
    for (QChar& character : proper) {
        if (first)
            character = character.toUpper();
        first = character.isSpace();
    }
    return proper;
}

}  // namespace fenrik
