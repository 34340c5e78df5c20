#include "options/PortScan.h"

#include "platform/Error.h"
#include "support/PortFolder.h"
#include "support/Printers.h"
#include "support/PseudoTerminal.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kFree = 0;

/// A machine whose ports answer an attempt to open them as told; a port that isn't told of does not exist.
std::function<void(int)> Machine(std::map<int, int> answers)
{
    return [answers = std::move(answers)](int number) {
        const auto found = answers.find(number);
        const int error = found == answers.end() ? ErrorNumber::kPortNotFound : found->second;
        if (error != kFree)
            throw Error(error, "No");
    };
}

QStringList Texts(const std::vector<PortRow>& rows)
{
    QStringList texts;
    for (const PortRow& row : rows)
        texts.append(row.text);
    return texts;
}

TEST(PortScan, APortThatOpensIsListedUnderItsNumber)
{
    const auto rows = PortRows(ScanPorts(Machine({{1, kFree}, {12, kFree}})));
    EXPECT_THAT(Texts(rows), ElementsAre("Communications Port 01 (COM1)", "Communications Port 12 (COM12)"));
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows[0].number, 1);
    EXPECT_EQ(rows[1].number, 12);
}

TEST(PortScan, APortThatSomebodyHasIsMarked)
{
    EXPECT_THAT(Texts(PortRows(ScanPorts(Machine({{5, ErrorNumber::kPortAlreadyOpen}})))),
                ElementsAre("Communications Port 05 (COM5) - In Use"));
}

TEST(PortScan, APortThatFailsInAnyOtherWayIsLeftOut)
{
    EXPECT_THAT(PortRows(ScanPorts(Machine({{2, ErrorNumber::kSetCommState}, {3, ErrorNumber::kOverflow}}))),
                IsEmpty());
}

TEST(PortScan, SixteenPortsInUseGiveSixteenRowsAndNoOther)
{
    const auto rows = PortRows(ScanPorts([](int) { throw Error(ErrorNumber::kPortAlreadyOpen, "In use"); }));
    ASSERT_THAT(rows, SizeIs(16));
    for (const PortRow& row : rows)
        EXPECT_TRUE(row.text.endsWith(" - In Use")) << row.text.toStdString();
}

TEST(PortScan, AMachineWithoutPortsGivesNoRows)
{
    EXPECT_THAT(PortRows(ScanPorts(Machine({}))), IsEmpty());
}

TEST(PortScan, EachPortIsTriedOnceInOrder)
{
    std::vector<int> tried;
    (void)ScanPorts([&tried](int number) { tried.push_back(number); });
    EXPECT_THAT(tried, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16));
}

TEST(PortScan, TheTransceiverOnUsbHasARowOfItsOwn)
{
    EXPECT_EQ(UsbTransceiverRow(ScanPorts(Machine({{5, kFree}})), 5).text, "USB Transceiver");
    EXPECT_EQ(UsbTransceiverRow(ScanPorts(Machine({{5, kFree}})), 5).number, 5);
    EXPECT_EQ(UsbTransceiverRow(ScanPorts(Machine({{5, ErrorNumber::kPortAlreadyOpen}})), 5).text,
              "USB Transceiver - In Use");
    EXPECT_EQ(UsbTransceiverRow(ScanPorts(Machine({})), 5).text, "USB Transceiver");
}

class PortProbeTest : public testing::Test {
protected:
    PortProbeTest() { folder.Link(5, terminal.Path()); }

    [[nodiscard]] QStringList Rows()
    {
        return Texts(PortRows(ScanPorts([this](int number) { probe.Try(number); })));
    }

    PseudoTerminal terminal;
    PortFolder folder;
    ComPorts ports = folder.Ports();
    SerialControl own{ports};
    PortProbe probe{ports, own};
};

TEST_F(PortProbeTest, APortIsClosedAgainAtOnce)
{
    EXPECT_THAT(Rows(), ElementsAre("Communications Port 05 (COM5)"));
    own.setCommPort(5);
    own.setPortOpen(true);
    EXPECT_TRUE(own.PortOpen());
}

TEST_F(PortProbeTest, TheProgramsOwnOpenPortIsNotTouched)
{
    own.setCommPort(5);
    own.setPortOpen(true);
    terminal.Write("abc");
    for (int turn = 0; turn < 100 && own.InBufferCount() < 3; ++turn)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    folder.Link(6, terminal.Path());

    EXPECT_THAT(Rows(),
                ElementsAre("Communications Port 05 (COM5) - In Use", "Communications Port 06 (COM6) - In Use"));
    EXPECT_TRUE(own.PortOpen());
    EXPECT_EQ(own.Input(), "abc");
}

TEST_F(PortProbeTest, APortOfAnotherProgramIsInUse)
{
    SerialControl other(ports);
    other.setCommPort(5);
    other.setPortOpen(true);
    EXPECT_THAT(Rows(), ElementsAre("Communications Port 05 (COM5) - In Use"));
}

TEST_F(PortProbeTest, APortMayAppearAndVanishDuringTheScan)
{
    PseudoTerminal second;
    const auto found = ScanPorts([this, &second](int number) {
        if (number == 7)
            folder.Link(9, second.Path());
        if (number == 3)
            folder.Link(5, folder.Path() + QStringLiteral("/gone"));
        probe.Try(number);
    });
    EXPECT_THAT(Texts(PortRows(found)), ElementsAre("Communications Port 09 (COM9)"));
}

}  // namespace
}  // namespace fenrik
