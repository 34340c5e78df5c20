#include "options/PortScan.h"

#include "platform/Error.h"

namespace fenrik {

namespace {

PortCondition ConditionOf(const std::function<void(int)>& tryPort, int number)
{
    try {
        tryPort(number);
        return PortCondition::Free;
    } catch (const Error& error) {
        return error.Number() == ErrorNumber::kPortAlreadyOpen ? PortCondition::InUse : PortCondition::Absent;
    }
}

QString WithCondition(const QString& text, PortCondition condition)
{
    return condition == PortCondition::InUse ? text + QStringLiteral(" - In Use") : text;
}

}  // namespace

PortConditions ScanPorts(const std::function<void(int number)>& tryPort)
{
    PortConditions ports{};
    for (int number = ComPorts::kFirst; number <= ComPorts::kLast; ++number)
        ports[std::size_t(number)] = ConditionOf(tryPort, number);
    return ports;
}

std::vector<PortRow> PortRows(const PortConditions& ports)
{
    std::vector<PortRow> rows;
    for (int number = ComPorts::kFirst; number <= ComPorts::kLast; ++number) {
        const PortCondition condition = ports[std::size_t(number)];
        if (condition == PortCondition::Absent)
            continue;
        const QString text =
            QStringLiteral("Communications Port %1 (COM%2)").arg(number, 2, 10, QLatin1Char('0')).arg(number);
        rows.push_back({WithCondition(text, condition), number});
    }
    return rows;
}

PortRow UsbTransceiverRow(const PortConditions& ports, int number)
{
    return {WithCondition(QStringLiteral("USB Transceiver"), ports[std::size_t(number)]), number};
}

void PortProbe::Try(int number)
{
    // Asked by the device and not by the number: two numbers may stand for one device.
    if (mOwn.PortOpen() && mPorts.DevicePath(number) == mPorts.DevicePath(mOwn.CommPort()))
        throw Error(ErrorNumber::kPortAlreadyOpen, QStringLiteral("Port already open"));
    mProbe.setCommPort(number);
    mProbe.setPortOpen(true);
    mProbe.setPortOpen(false);
}

}  // namespace fenrik
