#include "modem/frmModemAutoDetect.h"

#include "platform/Boxes.h"
#include "platform/ComPorts.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "widgets/WaitCursor.h"

#include "ui_frmModemAutoDetect.h"

#include <QListWidget>
#include <QPushButton>
#include <QScopeGuard>

namespace fenrik {

frmModemAutoDetect::frmModemAutoDetect(const ComPorts& ports, RunState& run, EventPump& pump, Boxes& boxes,
                                       ErrorReporter& errors, QWidget* parent)
    : QDialog(parent), mPump(pump), mBoxes(boxes), mErrors(errors), mPort(ports), mModem(mPort, pump, run),
      mUi(std::make_unique<Ui::frmModemAutoDetect>())
{
    mUi->setupUi(this);
    connect(mUi->cmdDetect, &QPushButton::clicked, this, &frmModemAutoDetect::Detect);
    connect(mUi->cmdOk, &QPushButton::clicked, this, &frmModemAutoDetect::Choose);
    connect(mUi->cmdCancel, &QPushButton::clicked, this, &frmModemAutoDetect::reject);
    connect(mUi->lstModems, &QListWidget::itemDoubleClicked, this, &frmModemAutoDetect::Choose);
    connect(mUi->lstModems, &QListWidget::itemSelectionChanged, this, [this] {
        if (SelectedPort() != 0 && !mScanning)
            mUi->cmdOk->setEnabled(true);
    });
}

frmModemAutoDetect::~frmModemAutoDetect() = default;

int frmModemAutoDetect::SelectedPort() const
{
    const auto selected = mUi->lstModems->selectedItems();
    return selected.isEmpty() ? 0 : selected.constFirst()->data(Qt::UserRole).toInt();
}

void frmModemAutoDetect::Detect()
{
    mUi->lstModems->clear();
    mUi->cmdDetect->setEnabled(false);
    mUi->cmdOk->setEnabled(false);
    Guarded(mErrors, "frmModemAutoDetect.cmdDetect.Click", [this] { Scan(); });
    mUi->cmdDetect->setEnabled(true);
    mUi->cmdOk->setEnabled(SelectedPort() != 0);
}

void frmModemAutoDetect::Scan()
{
    const WaitCursor hourglass;
    const auto done = qScopeGuard([this] {
        mScanning = false;
        mModem.Close();
    });
    mScanning = true;
    mModem.Resume();
    for (int number = ComPorts::kFirst; number <= ComPorts::kLast && mScanning && !mPump.Stopped(); ++number)
        CheckPort(number);
    ShowCount();
}

void frmModemAutoDetect::CheckPort(int number)
{
    mUi->lblStatus->setText(QStringLiteral("Checking communications port %1 ...").arg(number));
    mPump.Once();
    QString text;
    if (mScanning && mModem.DetectModem(number, text))
        AddModem(number, text);
    mModem.Close();
}

void frmModemAutoDetect::AddModem(int number, const QString& text)
{
    auto* row = new QListWidgetItem(QStringLiteral("COM%1 - %2").arg(number).arg(text), mUi->lstModems);
    row->setData(Qt::UserRole, number);
    row->setToolTip(row->text());
}

void frmModemAutoDetect::ShowCount()
{
    const int count = mUi->lstModems->count();
    if (count == 0)
        mUi->lblStatus->setText(QStringLiteral("No modems detected"));
    else
        mUi->lblStatus->setText(QStringLiteral("%1 %2 detected")
                                    .arg(count)
                                    .arg(count == 1 ? QStringLiteral("modem") : QStringLiteral("modems")));
}

void frmModemAutoDetect::Choose()
{
    if (mScanning)
        return;
    if (SelectedPort() == 0) {
        mBoxes.MsgBox(QStringLiteral("Select a modem to continue!"), QMessageBox::Warning);
        return;
    }
    mCanceled = false;
    accept();
}

void frmModemAutoDetect::reject()
{
    mScanning = false;
    mModem.Interrupt();
    QDialog::reject();
}

}  // namespace fenrik
