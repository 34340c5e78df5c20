#include "modem/frmDialer.h"

#include "DialFixture.h"
#include "modem/PhoneNumberEdit.h"
#include "modem/PhoneNumbers.h"
#include "platform/SettingsStore.h"
#include "support/BoxRecorder.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class OptionsRecorder : public DialerHost {
public:
    void OpenNetworkOptions() override
    {
        ++opened;
        onOpen();
    }

    int opened = 0;
    std::function<void()> onOpen = [] {};
};

/// The dialler in its own event loop, worked by `Work`.
class Dialer : public DialTest {
protected:
    Dialer() { settings.LastPhoneNumber = "555-1234"; }

    /// Shows the dialler and works it; true if it ends connected. A dialler that is left open is closed.
    bool Show(const std::function<void()>& work)
    {
        frmDialer window(DialerParts{settings, run, pump, boxes, errors, numbers, options});
        dialer = &window;
        bool connected = true;
        QTimer::singleShot(0, &window, [&] {
            work();
            if (window.isVisible())
                window.reject();
            EXPECT_FALSE(window.isVisible());
        });
        window.ShowDialer(nullptr, port, connected);
        dialer = nullptr;
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        return connected;
    }

    template <typename Widget>
    [[nodiscard]] Widget& Find(const char* name) const
    {
        return *dialer->findChild<Widget*>(name);
    }
    [[nodiscard]] QString Status() const { return Find<QLabel>("lblStatus").text(); }
    [[nodiscard]] PhoneNumberEdit& Number() const { return Find<PhoneNumberEdit>("tbPhoneNumber"); }
    [[nodiscard]] bool IsEnabled(const char* name) const { return Find<QWidget>(name).isEnabled(); }
    void Click(const char* name) const { QTest::mouseClick(&Find<QWidget>(name), Qt::LeftButton); }

    /// Which of the controls can be used: "tbPhoneNumber cmdDial".
    [[nodiscard]] std::string Enabled() const
    {
        std::string names;
        for (const char* name : {"tbPhoneNumber", "cmdSettings", "cmdDial", "cmdClose", "cmdCancel"})
            names += IsEnabled(name) ? std::string(names.empty() ? "" : " ") + name : std::string();
        return names;
    }

    QTemporaryDir dir;
    SettingsStore store{dir.filePath("window.ini")};
    PhoneNumbers numbers{store};
    BoxRecorder boxes;
    OptionsRecorder options;
    frmDialer* dialer = nullptr;
};

const char* const kReady = "tbPhoneNumber cmdSettings cmdDial cmdCancel";

TEST_F(Dialer, BeginsWithTheLastNumber)
{
    numbers.Add("555-0001");
    EXPECT_FALSE(Show([this] {
        EXPECT_EQ(dialer->windowTitle(), "Dial Remote Fenrik System");
        EXPECT_TRUE(dialer->isModal());
        EXPECT_EQ(Status(), "Enter the phone number and click 'Dial'...");
        EXPECT_EQ(Number().text(), "555-1234");
        EXPECT_TRUE(Number().actions().constFirst()->isVisible());
        EXPECT_EQ(Find<QCheckBox>("cbAutoClose").text(), "&Automatically close this window once connected");
        EXPECT_EQ(Enabled(), kReady);
    }));
}

TEST_F(Dialer, HidesItselfOnceConnected)
{
    Connected();
    pump.After(0.0, [this] {
        EXPECT_EQ(Enabled(), "cmdCancel");
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        EXPECT_EQ(Status(), "Connect 57600");
    });
    Module();
    EXPECT_TRUE(Show([this] {
        Click("cmdDial");
        EXPECT_FALSE(dialer->isVisible());
    }));
    EXPECT_TRUE(port.PortOpen());
    EXPECT_TRUE(run.ModemActive);
    EXPECT_THAT(numbers.All(), ElementsAre("555-1234"));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(Dialer, StaysOpenIfItIsNotToCloseItself)
{
    Connected();
    Module();
    EXPECT_TRUE(Show([this] {
        Find<QCheckBox>("cbAutoClose").setChecked(false);
        Click("cmdDial");
        EXPECT_EQ(Enabled(), "cmdClose");
        EXPECT_EQ(Status(), "Fenrik Modem Module v1.4");
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        Click("cmdClose");
        EXPECT_FALSE(dialer->isVisible());
    }));
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(Dialer, EscapeKeepsAConnectionThatStands)
{
    Connected();
    Module();
    EXPECT_TRUE(Show([this] {
        Find<QCheckBox>("cbAutoClose").setChecked(false);
        Click("cmdDial");
        QTest::keyClick(dialer, Qt::Key_Escape);
    }));
}

TEST_F(Dialer, AConnectionWhosePortGoesAwayMeanwhileDoesNotStand)
{
    Connected();
    Module();
    EXPECT_FALSE(Show([this] {
        Find<QCheckBox>("cbAutoClose").setChecked(false);
        Click("cmdDial");
        terminal.Unplug();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !port.PortOpen(); }));
    }));
}

TEST_F(Dialer, StoresTheNumberTrimmed)
{
    Show([this] {
        Number().setText("  (55) ");
        Click("cmdDial");
        EXPECT_EQ(Number().text(), "(55)");
    });
    EXPECT_EQ(settings.LastPhoneNumber, "(55)");
}

// --- Failures ------------------------------------------------------------------------------------------------------

TEST_F(Dialer, AsksForANumber)
{
    Show([this] {
        Number().setText("1-2");
        Find<QPushButton>("cmdDial").setFocus();
        Click("cmdDial");
        ASSERT_THAT(boxes.boxes, SizeIs(1));
        EXPECT_EQ(boxes.boxes[0].text, "Please enter a phone number to dial.");
        EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
        EXPECT_EQ(dialer->focusWidget(), &Number());
        EXPECT_EQ(Status(), "");
        EXPECT_EQ(Enabled(), kReady);
    });
}

TEST_F(Dialer, TellsThatThereIsNoModem)
{
    settings.ModemCommPort = 7;
    Show([this] {
        Click("cmdDial");
        ASSERT_THAT(boxes.boxes, SizeIs(1));
        EXPECT_EQ(boxes.boxes[0].text, "No modem detected, please check the modem settings!");
        EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
        EXPECT_EQ(Status(), "");
        EXPECT_EQ(Enabled(), kReady);
    });
}

TEST_F(Dialer, TellsTheReplyOfACallThatFailed)
{
    Detected();
    Dialled("NO CARRIER");
    Show([this] {
        Click("cmdDial");
        EXPECT_EQ(Status(), "Unable to connect, NO CARRIER.");
        EXPECT_EQ(Enabled(), kReady);
        EXPECT_TRUE(port.PortOpen());
    });
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(Dialer, AVeryLongReplyDoesNotWidenTheWindow)
{
    Detected();
    Dialled(QByteArray(10'000, 'W'));
    Show([this] {
        const int width = dialer->width();
        Click("cmdDial");
        EXPECT_EQ(Status().size(), 10'000 + 20);
        QCoreApplication::processEvents();
        EXPECT_EQ(dialer->width(), width);
        EXPECT_LE(dialer->sizeHint().width(), width);
    });
}

TEST_F(Dialer, TellsThatTheModuleDidNotRespond)
{
    Connected();
    Module("1.4\r\n", "");
    Show([this] {
        Click("cmdDial");
        ASSERT_THAT(boxes.boxes, SizeIs(1));
        EXPECT_EQ(boxes.boxes[0].text,
                  "The modem module did not respond as expected while attempting to enter pass through mode.");
        EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
        EXPECT_TRUE(port.PortOpen());
    });
}

TEST_F(Dialer, TellsAnInvalidPort)
{
    Talk(0.1, "AT\r", "OK\r\n");
    pump.After(0.1, [this] { QFile::remove(folder.Path() + "/com6"); });
    Show([this] {
        Click("cmdDial");
        ASSERT_THAT(boxes.boxes, SizeIs(1));
        EXPECT_EQ(boxes.boxes[0].text, "Invalid comm port, please check the modem settings!");
        EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
    });
}

TEST_F(Dialer, ReportsAnyOtherError)
{
    Connected();
    UnplugAfter(1.0);
    Show([this] {
        Click("cmdDial");
        EXPECT_EQ(Enabled(), kReady);
        EXPECT_EQ(Status(), "");
    });
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, "frmDialer.cmdDial.Click");
    EXPECT_EQ(errors.reports[0].number, 8018);
}

TEST_F(Dialer, DialsAgainAfterAFailure)
{
    Detected();
    Dialled("BUSY");
    EXPECT_TRUE(Show([this] {
        Click("cmdDial");
        Connected();
        Module();
        Click("cmdDial");
    }));
}

// --- Cancel --------------------------------------------------------------------------------------------------------

TEST_F(Dialer, CancelBeforeADialClosesAtOnce)
{
    EXPECT_FALSE(Show([this] {
        Click("cmdCancel");
        EXPECT_FALSE(dialer->isVisible());
    }));
    EXPECT_EQ(Elapsed(), 0.0);
}

TEST_F(Dialer, CancelWhileDialingHangsUp)
{
    Detected();
    Talk(0.7, "ATDT5551234\r", "");
    double canceled = 0;
    pump.After(10.0, [&] {
        canceled = Elapsed();
        Click("cmdCancel");
        EXPECT_EQ(Status(), "Canceling...");
        EXPECT_EQ(Enabled(), "");
    });
    pump.After(1.5, [this] {
        EXPECT_EQ(Status(), "Canceling...");
        EXPECT_TRUE(dialer->isVisible());
        dialer->reject();  // a second time changes nothing
    });
    EXPECT_FALSE(Show([this] { Click("cmdDial"); }));
    EXPECT_EQ(Heard(12), "+++ATH0\rATZ\r");
    EXPECT_FALSE(port.PortOpen());
    EXPECT_FALSE(run.ModemActive);
    EXPECT_NEAR(Elapsed() - canceled, 2.0, 0.1);
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(Dialer, EscapeWhileDialingCancels)
{
    pump.After(0.5, [this] { QTest::keyClick(dialer, Qt::Key_Escape); });
    EXPECT_FALSE(Show([this] { Click("cmdDial"); }));
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(Dialer, CancelAfterAFailureHangsUpToo)
{
    Detected();
    Dialled("BUSY");
    EXPECT_FALSE(Show([this] {
        Click("cmdDial");
        Click("cmdCancel");
    }));
    EXPECT_EQ(Heard(12), "+++ATH0\rATZ\r");
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(Dialer, TheEndOfTheProgramClosesItWithoutABox)
{
    Detected();
    Talk(0.7, "ATDT5551234\r", "");
    pump.After(5.0, [this] {
        port.setPortOpen(false);
        pump.Stop();
    });
    EXPECT_FALSE(Show([this] { Click("cmdDial"); }));
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

// --- Settings ------------------------------------------------------------------------------------------------------

TEST_F(Dialer, TakesWhatTheOptionsChangeForTheNextDial)
{
    settings.ModemCommPort = 7;
    options.onOpen = [this] { settings.ModemCommPort = 6; };
    Connected();
    Module();
    EXPECT_TRUE(Show([this] {
        Click("cmdSettings");
        EXPECT_EQ(options.opened, 1);
        Click("cmdDial");
    }));
}

}  // namespace
}  // namespace fenrik
