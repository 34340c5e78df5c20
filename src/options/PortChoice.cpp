#include "options/PortChoice.h"

#include "options/FieldChecks.h"
#include "options/PortList.h"
#include "shared/ErrorReporter.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

#include <QLineEdit>
#include <QSignalBlocker>

namespace fenrik {

PortChoice::PortChoice(const Controls& controls, Settings& settings, RunState& run, QObject* parent)
    : QObject(parent), mControls(controls), mSettings(settings), mRun(run)
{
    connect(&mControls.list, &QListWidget::itemSelectionChanged, this, &PortChoice::TakeRow);
    connect(&mControls.number, &QLineEdit::textEdited, this, &PortChoice::SelectRowOf);
}

void PortChoice::Show(const PortConditions& ports, const std::function<QString(int)>& device, int open)
{
    std::vector<PortRow> rows = PortRows(ports);
    if (mRun.USBTransceiverPort != 0)
        rows.insert(rows.begin(), UsbTransceiverRow(ports, mRun.USBTransceiverPort));

    const QSignalBlocker loading(mControls.list);
    mControls.list.Fill(rows, device);
    const int shown = open != 0 ? open : mSettings.CommPort;
    if (mRun.USBTransceiverSelected && shown == mRun.USBTransceiverPort)
        mControls.list.setCurrentRow(0);
    else
        mControls.list.SelectPort(shown);
    mControls.number.setText(QString::number(shown));
}

void PortChoice::TakeRow()
{
    const int port = mControls.list.SelectedPort();
    if (port == 0)
        return;
    mSettings.CommPort = std::int16_t(port);
    mControls.number.setText(QString::number(port));
    if (mRun.USBTransceiverPort != 0)
        mRun.USBTransceiverSelected = mControls.list.SelectedRow() == 0;
}

void PortChoice::SelectRowOf(const QString& number)
{
    const QSignalBlocker quiet(mControls.list);
    mControls.list.SelectPort(number.trimmed().toInt());
}

bool PortChoice::Check(Boxes& boxes, ErrorReporter& errors)
{
    if (!mControls.number.isModified())
        return true;
    bool good = false;
    Guarded(errors, "CommSetup.validateNumericField", [this, &boxes, &good] {
        good = FieldChecks(boxes)
                   .validateNumericField(QStringLiteral("Port number"), mControls.number.text(), ComPorts::kFirst,
                                         kHighest)
                   .has_value();
    });
    if (!good)
        mControls.number.setFocus();
    return good;
}

void PortChoice::Apply()
{
    const int number = mControls.number.text().trimmed().toInt();
    if (!mControls.number.isModified() || number < ComPorts::kFirst || number > kHighest)
        return;
    mSettings.CommPort = std::int16_t(number);
    mRun.USBTransceiverSelected = false;
}

}  // namespace fenrik
