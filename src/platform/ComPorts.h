#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace fenrik {

/// One serial device of the system.
struct SerialDevice {
    QString path;  ///< "/dev/ttyUSB0"
    QString description;
    int vendor = 0;  ///< USB vendor number, 0 for a port that is no USB device
    int product = 0;
};

/// The numbers 1 to 16 under which the program knows serial ports ("COM5").
///
/// A symbolic link `com<n>` in `linkFolder`, made by the user or by the simulator, decides what COM<n> is. Numbers
/// without a link belong to the system's devices in a stable order: on-board ports from 1, USB ports from 5.
class ComPorts {
public:
    static constexpr int kFirst = 1;
    static constexpr int kLast = 16;
    static constexpr int kFirstUsb = 5;

    using DeviceList = std::function<QList<SerialDevice>()>;

    /// The real devices of the system.
    explicit ComPorts(const QString& linkFolder);

    /// `devices` lists what the system has at each call.
    ComPorts(const QString& linkFolder, DeviceList devices);

    /// The ports as they are now: the system's devices are listed once and not at each question.
    [[nodiscard]] ComPorts Snapshot() const;

    /// The device file of COM`number`, or nothing if there is no such port now.
    [[nodiscard]] std::optional<QString> DevicePath(int number) const;

    /// True if COM`number` stands for a device that is there.
    [[nodiscard]] bool PortExists(int number) const { return DevicePath(number).has_value(); }

    /// What the dialogs show beside the number: the device's file and its own description.
    [[nodiscard]] QString Description(int number) const;

    /// Number of the first transceiver on USB (vendor 0403, product 6001) that has a number and exists; 0 if none.
    [[nodiscard]] int FindUsbTransceiver() const;

    [[nodiscard]] static QList<SerialDevice> SystemDevices();

    /// False if no serial device hangs on USB now; costs next to nothing. `busFolder` is where the kernel lists its
    /// buses; true if it does not.
    [[nodiscard]] static bool UsbSerialMayBeThere(const QString& busFolder = QStringLiteral("/sys/bus"));

private:
    [[nodiscard]] std::optional<SerialDevice> Device(int number) const;
    [[nodiscard]] QString LinkTarget(int number) const;

    QString mLinkFolder;
    DeviceList mDevices;
    std::function<bool()> mUsbMayBeThere = [] { return true; };
};

}  // namespace fenrik
