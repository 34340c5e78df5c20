#include "modem/frmDialer.h"

#include "modem/MModem.h"
#include "modem/PhoneNumbers.h"
#include "platform/Boxes.h"
#include "platform/Error.h"
#include "platform/SerialControl.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"
#include "widgets/WaitCursor.h"

#include "ui_frmDialer.h"

#include <QPushButton>
#include <QScopedValueRollback>

namespace fenrik {

namespace {

constexpr int kStatusCharacters = 58;  // the longest step

}  // namespace

frmDialer::frmDialer(const DialerParts& parts, QWidget* parent)
    : QDialog(parent), mParts(parts), mUi(std::make_unique<Ui::frmDialer>())
{
    mUi->setupUi(this);
    mUi->lblStatus->setMinimumWidth(kStatusCharacters * fontMetrics().averageCharWidth());
    mUi->tbPhoneNumber->setText(mParts.settings.LastPhoneNumber);
    mUi->tbPhoneNumber->setHistory(mParts.numbers.All());
    mUi->tbPhoneNumber->selectAll();
    connect(mUi->cmdDial, &QPushButton::clicked, this, &frmDialer::Dial);
    connect(mUi->cmdCancel, &QPushButton::clicked, this, &frmDialer::Cancel);
    connect(mUi->cmdClose, &QPushButton::clicked, this, &frmDialer::reject);
    connect(mUi->cmdSettings, &QPushButton::clicked, this, &frmDialer::OpenSettings);
}

frmDialer::~frmDialer() = default;

void frmDialer::ShowDialer(QWidget* owner, SerialControl& port, bool& connected)
{
    if (owner != parentWidget())
        setParent(owner, windowFlags());
    mModem = std::make_unique<MModem>(port, mParts.pump, mParts.run);
    DialView& view = *this;
    mSequence = std::make_unique<DialSequence>(*mModem, mParts.pump, mParts.settings, mParts.run, view);
    mConnected = false;
    exec();
    // It may have gone away while the window was left open.
    connected = mConnected && port.PortOpen();
}

void frmDialer::ShowStatus(const QString& text)
{
    // "Canceling..." stays until the window goes.
    if (!mCanceling)
        mUi->lblStatus->setText(text);
}

void frmDialer::SetInputEnabled(bool enabled)
{
    mUi->tbPhoneNumber->setEnabled(enabled);
    mUi->cmdSettings->setEnabled(enabled);
    mUi->cmdDial->setEnabled(enabled);
}

void frmDialer::Dial()
{
    if (mDialing || mCanceling || mConnected)
        return;
    SetInputEnabled(false);
    mUi->cmdClose->setEnabled(false);
    Guarded(mParts.errors, "frmDialer.cmdDial.Click", [this] {
        const QString number = mUi->tbPhoneNumber->text().trimmed();
        mUi->tbPhoneNumber->setText(number);
        Remember(number);
        EndDial(TryDial(number));
    });
}

void frmDialer::Remember(const QString& number)
{
    mParts.settings.LastPhoneNumber = number;
    if (FilteredTelephoneNumber(number).isEmpty())
        return;
    mParts.numbers.Add(number);
    mUi->tbPhoneNumber->setHistory(mParts.numbers.All());
}

std::optional<Error> frmDialer::TryDial(const QString& number)
{
    const WaitCursor hourglass;
    const QScopedValueRollback dialing(mDialing, true);
    try {
        mConnected = mSequence->Dial(number);
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

void frmDialer::EndDial(const std::optional<Error>& failure)
{
    if (mParts.pump.Stopped())
        QDialog::reject();  // the program ends, and has hung up
    else if (mCanceling)
        HangUpAndHide();
    else if (failure)
        TellFailure(*failure);
    else
        BeConnected();
}

void frmDialer::TellFailure(const Error& failure)
{
    SetInputEnabled(true);
    ShowStatus(QString());
    Boxes& boxes = mParts.boxes;
    switch (failure.Number()) {
    case DialError::kNoNumber:
        boxes.MsgBox(QStringLiteral("Please enter a phone number to dial."), QMessageBox::Warning);
        mUi->tbPhoneNumber->setFocus();
        break;
    case DialError::kNoModem:
        boxes.MsgBox(QStringLiteral("No modem detected, please check the modem settings!"), QMessageBox::Critical);
        break;
    case DialError::kNotConnected:
        ShowStatus(QStringLiteral("Unable to connect, ") + failure.Description() + QLatin1Char('.'));
        break;
    case DialError::kNoPassThrough:
        boxes.MsgBox(QStringLiteral("The modem module did not respond as expected while attempting to enter pass "
                                    "through mode."),
                     QMessageBox::Critical);
        break;
    case ErrorNumber::kPortNotFound:
        boxes.MsgBox(QStringLiteral("Invalid comm port, please check the modem settings!"), QMessageBox::Critical);
        break;
    default:
        throw failure;
    }
}

void frmDialer::BeConnected()
{
    if (mUi->cbAutoClose->isChecked()) {
        accept();
        return;
    }
    mUi->cmdCancel->setEnabled(false);
    mUi->cmdClose->setEnabled(true);
    mUi->cmdClose->setFocus();
}

void frmDialer::Cancel()
{
    if (mCanceling)
        return;
    ShowStatus(QStringLiteral("Canceling..."));
    mCanceling = true;
    mUi->cmdCancel->setEnabled(false);
    SetInputEnabled(false);
    if (mDialing)
        mSequence->Cancel();  // the dial hangs up when it has come to its end
    else
        HangUpAndHide();
}

void frmDialer::HangUpAndHide()
{
    Guarded(mParts.errors, "frmDialer.cmdCancel.Click", [this] {
        mModem->Resume();
        mModem->HangUpModem();
        mModem->Close();
    });
    mConnected = false;
    QDialog::reject();
}

void frmDialer::OpenSettings()
{
    Guarded(mParts.errors, "frmDialer.cmdSettings.Click", [this] { mParts.host.OpenNetworkOptions(); });
}

/// Escape, and the window's own way to close it.
void frmDialer::reject()
{
    if (mConnected)
        accept();
    else
        Cancel();
}

}  // namespace fenrik
