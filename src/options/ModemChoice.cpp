#include "options/ModemChoice.h"

#include "options/PortList.h"
#include "shared/Settings.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

namespace fenrik {

namespace {

constexpr std::int32_t kBaudRates[] = {9600, 14400, 19200, 28800, 38400, 57600};

}  // namespace

ModemChoice::ModemChoice(const Controls& controls, Settings& settings, QObject* parent)
    : QObject(parent), mControls(controls), mSettings(settings)
{
    for (const std::int32_t rate : kBaudRates)
        mControls.baudRate.addItem(QString::number(rate), rate);
    connect(&mControls.ports, &QListWidget::itemSelectionChanged, this, &ModemChoice::TakePort);
    connect(&mControls.baudRate, &QComboBox::activated, this,
            [this] { mSettings.ModemBaudRate = mControls.baudRate.currentData().toInt(); });
}

void ModemChoice::Show(const PortConditions& ports, const std::function<QString(int)>& device)
{
    const QSignalBlocker loading(mControls.ports);
    mControls.ports.Fill(PortRows(ports), device);
    mControls.ports.SelectPort(mSettings.ModemCommPort);
    // A speed that isn't offered stays as it is, unless another is chosen.
    mControls.baudRate.setCurrentIndex(mControls.baudRate.findData(mSettings.ModemBaudRate));
    mControls.initString.setText(mSettings.ModemInitString);
}

void ModemChoice::SelectPort(int number)
{
    mControls.ports.SelectPort(number);
}

void ModemChoice::TakePort()
{
    if (const int port = mControls.ports.SelectedPort(); port != 0)
        mSettings.ModemCommPort = std::int16_t(port);
}

void ModemChoice::Apply()
{
    mSettings.ModemInitString = mControls.initString.text();
}

}  // namespace fenrik
