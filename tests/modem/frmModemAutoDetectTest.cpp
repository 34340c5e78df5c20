#include "modem/frmModemAutoDetect.h"

#include "ModemFixture.h"
#include "platform/Boxes.h"
#include "support/BoxRecorder.h"

#include <QGuiApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include <map>
#include <memory>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A machine with several ports; each modem answers each command it hears.
class ModemAutoDetect : public testing::Test {
protected:
    void SetUp() override { window.show(); }

    /// COM`number` has a modem of that name; an empty name is a device that says nothing.
    void Plug(int number, const QByteArray& name)
    {
        auto& device = devices[number];
        device.name = name;
        folder.Link(number, device.terminal.Path());
    }

    /// Starts the scan. While it waits, the modems answer; with none left to answer, time passes.
    void Detect() { QTest::mouseClick(&Button("cmdDetect"), Qt::LeftButton); }

    [[nodiscard]] QPushButton& Button(const char* name) { return *window.findChild<QPushButton*>(name); }
    [[nodiscard]] QListWidget& List() { return *window.findChild<QListWidget*>("lstModems"); }
    [[nodiscard]] QString Status() { return window.findChild<QLabel*>("lblStatus")->text(); }
    [[nodiscard]] QStringList Rows()
    {
        QStringList texts;
        for (int row = 0; row < List().count(); ++row)
            texts.append(List().item(row)->text());
        return texts;
    }

    struct Device {
        PseudoTerminal terminal;
        QByteArray name;
    };

    /// Lets the modems hear and answer in each turn; a turn in which none does lets the whole wait pass.
    class AnsweringPump : public EventPump {
    public:
        AnsweringPump(FakeClock& clock, std::map<int, Device>& devices)
            : EventPump(clock), mClock(clock), mDevices(devices)
        {
        }
        std::function<void()> onTurn = [] {};

    protected:
        void Pump(double seconds) override
        {
            onTurn();
            bool heard = false;
            for (auto& [number, device] : mDevices)
                heard = Answer(device) || heard;
            QCoreApplication::processEvents();
            if (!heard)
                mClock.Advance(seconds + 0.001);
        }

    private:
        static bool Answer(Device& device)
        {
            const QByteArray command = device.terminal.Read(1, 10);
            if (device.name.isEmpty() || command.isEmpty())
                return false;
            device.terminal.Write(command + "\r\n" + (command.startsWith("ATI3") ? device.name : "OK") + "\r\n");
            return true;
        }

        FakeClock& mClock;
        std::map<int, Device>& mDevices;
    };

    std::map<int, Device> devices;
    FakeClock clock;
    AnsweringPump pump{clock, devices};
    ErrorRecorder errors;
    BoxRecorder boxes;
    RunState run;
    PortFolder folder;
    ComPorts ports = folder.Ports();
    frmModemAutoDetect window{ports, run, pump, boxes, errors};
};

TEST_F(ModemAutoDetect, BeginsWithNothingChosen)
{
    EXPECT_EQ(window.windowTitle(), "Modem Auto Detect");
    EXPECT_TRUE(window.Canceled());
    EXPECT_EQ(window.SelectedPort(), 0);
    EXPECT_FALSE(Button("cmdOk").isEnabled());
}

TEST_F(ModemAutoDetect, ListsThePortsThatHaveAModem)
{
    Plug(2, "Tel 56k");
    Plug(3, "");
    Plug(16, "Cellular");
    QStringList told;
    pump.onTurn = [&] {
        if (told.isEmpty() || told.constLast() != Status())
            told.append(Status());
        EXPECT_FALSE(Button("cmdDetect").isEnabled());
        EXPECT_FALSE(Button("cmdOk").isEnabled());
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    };
    Detect();
    EXPECT_THAT(Rows(), ElementsAre("COM2 - Tel 56k", "COM16 - Cellular"));
    EXPECT_EQ(List().item(1)->data(Qt::UserRole).toInt(), 16);
    EXPECT_EQ(Status(), "2 modems detected");
    ASSERT_THAT(told, SizeIs(16));
    EXPECT_EQ(told.constFirst(), "Checking communications port 1 ...");
    EXPECT_EQ(told.constLast(), "Checking communications port 16 ...");
    EXPECT_TRUE(Button("cmdDetect").isEnabled());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(ModemAutoDetect, TellsOneAndNone)
{
    Detect();
    EXPECT_EQ(Status(), "No modems detected");
    Plug(5, "Tel");
    Detect();
    EXPECT_EQ(Status(), "1 modem detected");
    Detect();
    EXPECT_THAT(Rows(), SizeIs(1)) << "a new search begins with an empty list";
}

TEST_F(ModemAutoDetect, ClosesEachPortAlsoThoseWithoutAModem)
{
    Plug(3, "");
    Plug(4, "Tel");
    Detect();
    for (const int number : {3, 4}) {
        SerialControl other(ports);
        other.setCommPort(number);
        EXPECT_NO_THROW(other.setPortOpen(true)) << number;
    }
}

TEST_F(ModemAutoDetect, LeavesTheProgramsOwnPortAlone)
{
    Plug(6, "Tel");
    SerialControl own(ports);
    own.setCommPort(6);
    own.setPortOpen(true);
    Detect();
    EXPECT_TRUE(own.PortOpen());
    EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(ModemAutoDetect, OkGivesTheSelectedPort)
{
    Plug(7, "Tel");
    Detect();
    EXPECT_FALSE(Button("cmdOk").isEnabled());
    List().setCurrentRow(0);
    EXPECT_TRUE(Button("cmdOk").isEnabled());
    QTest::mouseClick(&Button("cmdOk"), Qt::LeftButton);
    EXPECT_FALSE(window.Canceled());
    EXPECT_EQ(window.SelectedPort(), 7);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ModemAutoDetect, OkAsksForARowWhenItWasUnselected)
{
    Plug(7, "Tel");
    Detect();
    List().setCurrentRow(0);
    List().clearSelection();
    QTest::mouseClick(&Button("cmdOk"), Qt::LeftButton);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Select a modem to continue!");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
    EXPECT_TRUE(window.Canceled());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ModemAutoDetect, ClosingTheWindowEndsTheSearchAtOnce)
{
    Plug(1, "");
    Plug(9, "Tel");
    int turns = 0;
    pump.onTurn = [&] {
        if (++turns == 3)
            window.close();
    };
    Detect();
    EXPECT_EQ(turns, 3);
    EXPECT_TRUE(window.Canceled());
    EXPECT_THAT(Rows(), IsEmpty());
    SerialControl other(ports);
    other.setCommPort(1);
    EXPECT_NO_THROW(other.setPortOpen(true));
}

TEST_F(ModemAutoDetect, TheEndOfTheProgramEndsTheSearch)
{
    Plug(1, "");
    pump.onTurn = [&] { pump.Stop(); };
    Detect();
    EXPECT_EQ(Status(), "No modems detected");
}

}  // namespace
}  // namespace fenrik
