#include "platform/ComPorts.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>
#include <map>
#include <utility>

namespace fenrik {

namespace {

constexpr int kTransceiverVendor = 0x0403;
constexpr int kTransceiverProduct = 0x6001;

/// A device's name and the number at its end: "ttyUSB10" comes after "ttyUSB9".
std::pair<QString, int> OrderOf(const QString& path)
{
    qsizetype digits = path.size();
    while (digits > 0 && path[digits - 1].isDigit())
        --digits;
    return {path.left(digits), path.mid(digits).toInt()};
}

/// The numbers that the system's devices get before any link is looked at.
std::map<int, SerialDevice> Numbered(QList<SerialDevice> devices)
{
    std::sort(devices.begin(), devices.end(), [](const SerialDevice& left, const SerialDevice& right) {
        return OrderOf(left.path) < OrderOf(right.path);
    });

    std::map<int, SerialDevice> numbered;
    const auto place = [&numbered](const SerialDevice& device, int first) {
        int number = first;
        while (numbered.contains(number))
            ++number;
        numbered.emplace(number, device);
    };
    for (const SerialDevice& device : devices) {
        if (device.vendor == 0)
            place(device, ComPorts::kFirst);
    }
    for (const SerialDevice& device : devices) {
        if (device.vendor != 0)
            place(device, ComPorts::kFirstUsb);
    }
    return numbered;
}

}  // namespace

ComPorts::ComPorts(const QString& linkFolder) : ComPorts(linkFolder, SystemDevices)
{
    mUsbMayBeThere = [] { return UsbSerialMayBeThere(); };
}

ComPorts::ComPorts(const QString& linkFolder, DeviceList devices)
    : mLinkFolder(linkFolder), mDevices(std::move(devices))
{
}

ComPorts ComPorts::Snapshot() const
{
    return ComPorts(mLinkFolder, [devices = mDevices()] { return devices; });
}

QList<SerialDevice> ComPorts::SystemDevices()
{
    QList<SerialDevice> devices;
    const auto ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : ports)
        devices.append({port.systemLocation(), port.description(), port.vendorIdentifier(), port.productIdentifier()});
    return devices;
}

bool ComPorts::UsbSerialMayBeThere(const QString& busFolder)
{
    const QDir devices(busFolder + QStringLiteral("/usb-serial/devices"));
    return !QDir(busFolder).exists() || !devices.isEmpty(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

QString ComPorts::LinkTarget(int number) const
{
    const QFileInfo link(QStringLiteral("%1/com%2").arg(mLinkFolder).arg(number));
    return link.isSymLink() ? link.symLinkTarget() : QString();
}

std::optional<SerialDevice> ComPorts::Device(int number) const
{
    if (number < kFirst)
        return std::nullopt;
    const QList<SerialDevice> devices = mDevices();
    if (const QString target = LinkTarget(number); !target.isEmpty()) {
        // A link whose device is unplugged still owns its number.
        if (!QFileInfo::exists(target))
            return std::nullopt;
        const QString real = QFileInfo(target).canonicalFilePath();
        for (const SerialDevice& device : devices) {
            if (device.path == real)
                return device;
        }
        return SerialDevice{real, QString(), 0, 0};
    }
    const auto numbered = Numbered(devices);
    const auto found = numbered.find(number);
    return found == numbered.end() ? std::nullopt : std::optional(found->second);
}

std::optional<QString> ComPorts::DevicePath(int number) const
{
    const auto device = Device(number);
    return device ? std::optional(device->path) : std::nullopt;
}

QString ComPorts::Description(int number) const
{
    const auto device = Device(number);
    if (!device)
        return {};
    return device->description.isEmpty() ? device->path
                                         : QStringLiteral("%1, %2").arg(device->path, device->description);
}

int ComPorts::FindUsbTransceiver() const
{
    // Most machines have none, and the program's start waits for the answer: the list of all devices takes as long to
    // make as the main window.
    if (!mUsbMayBeThere())
        return 0;
    const QList<SerialDevice> devices = mDevices();
    const auto isTransceiver = [](const SerialDevice& device) {
        return device.vendor == kTransceiverVendor && device.product == kTransceiverProduct;
    };
    if (std::none_of(devices.cbegin(), devices.cend(), isTransceiver))
        return 0;
    for (int number = kFirst; number <= kLast; ++number) {
        const auto device = Device(number);
        if (device && isTransceiver(*device))
            return number;
    }
    return 0;
}

}  // namespace fenrik
