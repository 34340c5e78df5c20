#include "platform/ComPorts.h"

#include "support/PortFolder.h"
#include "support/Printers.h"

#include <QDir>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::Optional;

SerialDevice OnBoard(int number)
{
    return {QStringLiteral("/dev/ttyS%1").arg(number), QString(), 0, 0};
}

SerialDevice Usb(int number, int vendor = 0x067B, int product = 0x2303)
{
    return {QStringLiteral("/dev/ttyUSB%1").arg(number), QStringLiteral("Adapter"), vendor, product};
}

SerialDevice UsbTransceiver(int number)
{
    return Usb(number, 0x0403, 0x6001);
}

/// A file that stands for a device: what counts for a link is that its target is there.
class ComPortsTest : public testing::Test {
protected:
    QString MakeDevice(const QString& name)
    {
        QFile file(devices.path() + QLatin1Char('/') + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }

    static auto Path(const QString& path) { return Optional(path); }

    PortFolder folder;
    QTemporaryDir devices;
};

TEST_F(ComPortsTest, OnBoardPortsCountFromOneAndUsbPortsFromFive)
{
    const ComPorts ports = folder.Ports({Usb(0), OnBoard(0), Usb(1), OnBoard(1)});
    EXPECT_THAT(ports.DevicePath(1), Path("/dev/ttyS0"));
    EXPECT_THAT(ports.DevicePath(2), Path("/dev/ttyS1"));
    EXPECT_EQ(ports.DevicePath(3), std::nullopt);
    EXPECT_EQ(ports.DevicePath(4), std::nullopt);
    EXPECT_THAT(ports.DevicePath(5), Path("/dev/ttyUSB0"));
    EXPECT_THAT(ports.DevicePath(6), Path("/dev/ttyUSB1"));
    EXPECT_EQ(ports.DevicePath(7), std::nullopt);
    EXPECT_TRUE(ports.PortExists(5));
    EXPECT_FALSE(ports.PortExists(7));
}

TEST_F(ComPortsTest, TheOrderDoesNotDependOnHowTheSystemListsThem)
{
    const ComPorts ports = folder.Ports({Usb(10), Usb(9), OnBoard(1), Usb(2), OnBoard(0)});
    EXPECT_THAT(ports.DevicePath(1), Path("/dev/ttyS0"));
    EXPECT_THAT(ports.DevicePath(5), Path("/dev/ttyUSB2"));
    EXPECT_THAT(ports.DevicePath(6), Path("/dev/ttyUSB9"));
    EXPECT_THAT(ports.DevicePath(7), Path("/dev/ttyUSB10"));
}

TEST_F(ComPortsTest, MoreThanFourOnBoardPortsPushTheUsbPortsBack)
{
    const ComPorts ports =
        folder.Ports({OnBoard(0), OnBoard(1), OnBoard(2), OnBoard(3), OnBoard(4), OnBoard(5), Usb(0), Usb(1)});
    EXPECT_THAT(ports.DevicePath(5), Path("/dev/ttyS4"));
    EXPECT_THAT(ports.DevicePath(6), Path("/dev/ttyS5"));
    EXPECT_THAT(ports.DevicePath(7), Path("/dev/ttyUSB0"));
    EXPECT_THAT(ports.DevicePath(8), Path("/dev/ttyUSB1"));
}

TEST_F(ComPortsTest, ANumberAboveSixteenCanBeEnteredByHand)
{
    QList<SerialDevice> many;
    for (int i = 0; i < 14; ++i)
        many.append(Usb(i));
    const ComPorts ports = folder.Ports(many);
    EXPECT_THAT(ports.DevicePath(16), Path("/dev/ttyUSB11"));
    EXPECT_THAT(ports.DevicePath(18), Path("/dev/ttyUSB13"));
    const QString device = MakeDevice("modem");
    folder.Link(40, device);
    EXPECT_THAT(ports.DevicePath(40), Path(device));
}

TEST_F(ComPortsTest, ASnapshotListsTheDevicesOnce)
{
    int listed = 0;
    const ComPorts ports(folder.Path(), [&listed] {
        ++listed;
        return QList<SerialDevice>{OnBoard(0), Usb(0)};
    });
    const ComPorts snapshot = ports.Snapshot();
    EXPECT_THAT(snapshot.DevicePath(1), Path("/dev/ttyS0"));
    EXPECT_THAT(snapshot.DevicePath(5), Path("/dev/ttyUSB0"));
    EXPECT_EQ(listed, 1);
    folder.Link(3, MakeDevice("modem"));
    EXPECT_TRUE(snapshot.PortExists(3));
}

TEST_F(ComPortsTest, NumbersBelowOneDoNotExist)
{
    folder.Link(0, MakeDevice("zero"));
    const ComPorts ports = folder.Ports({OnBoard(0)});
    EXPECT_EQ(ports.DevicePath(0), std::nullopt);
    EXPECT_EQ(ports.DevicePath(-1), std::nullopt);
}

TEST_F(ComPortsTest, ALinkWinsOverTheSystemsDevice)
{
    const QString device = MakeDevice("mine");
    folder.Link(5, device);
    const ComPorts ports = folder.Ports({Usb(0), Usb(1)});
    EXPECT_THAT(ports.DevicePath(5), Path(device));
    EXPECT_THAT(ports.DevicePath(6), Path("/dev/ttyUSB1"));  // the others keep their numbers
}

TEST_F(ComPortsTest, ALinkWhoseDeviceIsGoneStillOwnsItsNumber)
{
    folder.Link(5, QStringLiteral("/dev/no-such-device"));
    const ComPorts ports = folder.Ports({Usb(0), Usb(1)});
    EXPECT_EQ(ports.DevicePath(5), std::nullopt);
    EXPECT_FALSE(ports.PortExists(5));
    EXPECT_EQ(ports.Description(5), QString());
    EXPECT_THAT(ports.DevicePath(6), Path("/dev/ttyUSB1"));
}

TEST_F(ComPortsTest, ALinkMayLeadThroughOtherLinks)
{
    const QString device = MakeDevice("real");
    const QString byName = devices.path() + QStringLiteral("/by-name");
    QFile::link(device, byName);
    folder.Link(2, byName);
    EXPECT_THAT(folder.Ports().DevicePath(2), Path(device));
}

TEST_F(ComPortsTest, AFileThatIsNoLinkDecidesNothing)
{
    QFile file(folder.Path() + QStringLiteral("/com1"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(folder.Ports().DevicePath(1), std::nullopt);
    EXPECT_THAT(folder.Ports({OnBoard(0)}).DevicePath(1), Path("/dev/ttyS0"));
}

TEST_F(ComPortsTest, AnUnpluggedDeviceLeavesItsNumber)
{
    QList<SerialDevice> present{Usb(0)};
    const ComPorts ports(folder.Path(), [&present] { return present; });
    EXPECT_TRUE(ports.PortExists(5));
    present.clear();
    EXPECT_FALSE(ports.PortExists(5));
}

TEST_F(ComPortsTest, TheDescriptionNamesTheFileAndTheDevice)
{
    const QString device = MakeDevice("mine");
    folder.Link(3, device);
    const ComPorts ports = folder.Ports({OnBoard(0), Usb(0)});
    EXPECT_EQ(ports.Description(1), QStringLiteral("/dev/ttyS0"));
    EXPECT_EQ(ports.Description(5), QStringLiteral("/dev/ttyUSB0, Adapter"));
    EXPECT_EQ(ports.Description(3), device);
    EXPECT_EQ(ports.Description(9), QString());
}

TEST_F(ComPortsTest, FindsTheUsbTransceiverByVendorAndProduct)
{
    EXPECT_EQ(folder.Ports({}).FindUsbTransceiver(), 0);
    EXPECT_EQ(folder.Ports({OnBoard(0), Usb(0)}).FindUsbTransceiver(), 0);
    EXPECT_EQ(folder.Ports({Usb(0, 0x0403, 0x6010)}).FindUsbTransceiver(), 0);
    EXPECT_EQ(folder.Ports({Usb(0, 0x1234, 0x6001)}).FindUsbTransceiver(), 0);
    EXPECT_EQ(folder.Ports({UsbTransceiver(0)}).FindUsbTransceiver(), 5);
    EXPECT_EQ(folder.Ports({OnBoard(0), Usb(0), UsbTransceiver(1)}).FindUsbTransceiver(), 6);
}

TEST_F(ComPortsTest, FindsTheFirstOfSeveralUsbTransceivers)
{
    EXPECT_EQ(folder.Ports({UsbTransceiver(3), UsbTransceiver(1), Usb(0)}).FindUsbTransceiver(), 6);
}

TEST_F(ComPortsTest, AUsbTransceiverAboveSixteenIsNotSelected)
{
    QList<SerialDevice> many;
    for (int i = 0; i < 12; ++i)
        many.append(Usb(i));
    many.append(UsbTransceiver(12));
    const ComPorts ports = folder.Ports(many);
    EXPECT_TRUE(ports.PortExists(17));
    EXPECT_EQ(ports.FindUsbTransceiver(), 0);

    const SerialDevice linked{MakeDevice("transceiver"), QString(), 0x0403, 0x6001};
    folder.Link(2, linked.path);  // a link gives it a number that can be selected
    many.append(linked);
    EXPECT_EQ(folder.Ports(many).FindUsbTransceiver(), 2);
}

TEST_F(ComPortsTest, AUsbTransceiverWhoseNumberALinkHasTakenIsNotSelected)
{
    folder.Link(5, QStringLiteral("/dev/no-such-device"));
    EXPECT_EQ(folder.Ports({UsbTransceiver(0)}).FindUsbTransceiver(), 0);
}

TEST_F(ComPortsTest, TheSystemsOwnListHasDeviceFiles)
{
    for (const SerialDevice& device : ComPorts::SystemDevices())
        EXPECT_TRUE(device.path.startsWith(QLatin1String("/dev/"))) << device.path.toStdString();
}

struct BusFolder {
    const char* name;
    const char* made;  ///< the folder that is there, below the test's own
    bool mayBeThere;
};

class UsbSerial : public testing::TestWithParam<BusFolder> {};

TEST_P(UsbSerial, IsLookedForWhereTheKernelListsIt)
{
    const QTemporaryDir folder;
    QDir(folder.path()).mkpath(QLatin1String(GetParam().made));
    EXPECT_EQ(ComPorts::UsbSerialMayBeThere(folder.filePath("bus")), GetParam().mayBeThere);
}

INSTANTIATE_TEST_SUITE_P(Platform, UsbSerial,
                         testing::Values(BusFolder{"NoDriver", "bus/platform", false},
                                         BusFolder{"NoDevice", "bus/usb-serial/devices", false},
                                         BusFolder{"Device", "bus/usb-serial/devices/ttyUSB0", true},
                                         BusFolder{"NoListAtAll", "elsewhere", true}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
