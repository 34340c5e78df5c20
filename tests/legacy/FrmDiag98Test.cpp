// The window of the older network, worked by clicks.

#include "legacy/LegacyWindowFixture.h"
#include "support/WhenShown.h"

#include <QListWidget>
#include <QScrollBar>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Opening and closing
// ----------------------------------------------------------------------------------------------

TEST_F(LegacyWindow, BeginsDisconnectedWithADarkPanel)
{
    Open();
    EXPECT_EQ(window->objectName(), "FrmDiag98");
    EXPECT_EQ(window->windowTitle(), "FenrikII Diagnostics");
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_EQ(Misc(1), "*123456*");
    EXPECT_EQ(Misc(4), "->    <-");
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_EQ(Text("txtMsg"), "Database: Bus.dav");
    EXPECT_EQ(LineCount(), 0);
}

TEST_F(LegacyWindow, GreetsWhenItIsFirstActivated)
{
    Open();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Analog(6) == "        Version   1.0.7         "; }, 3000));
    EXPECT_EQ(Analog(2), "    Harnwick Technologies Inc.  ");
    Click("Clear");
    QEvent again(QEvent::WindowActivate);
    QApplication::sendEvent(window.get(), &again);
    QCoreApplication::processEvents();
    EXPECT_EQ(Analog(2), std::string(32, ' '));
}

TEST_F(LegacyWindow, ClosingSavesAndEndsTheProgram)
{
    OpenAndConnect();
    window->close();
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THAT(host.calls, ElementsAre("end"));
}

TEST_F(LegacyWindow, CanBeClosedWhileTheTransceiverIsWoken)
{
    Open();
    host.onCall = [this](const char* call) {
        host.calls.emplace_back(call);
        pump.Stop();
    };
    onWake = [this] { window->close(); };
    Click("Connect");
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THAT(host.calls, ElementsAre("end"));
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_THAT(errors.reports, IsEmpty());
}

// --- Listening
// --------------------------------------------------------------------------------------------------------

TEST_F(LegacyWindow, MessagesAreListed)
{
    OpenAndConnect();
    Hear("\x67\x0A", [this] { return LineCount() == 1; });
    EXPECT_THAT(LinesOf(window->Messages())[0], testing::StartsWith("3|M10|10|Body|"));
    EXPECT_EQ(Row(Find<CharacterFace>("PicMiscFace").DimText(), 1), "*12 456*");
}

TEST_F(LegacyWindow, TheAnalogAndTheInformationButtonSwitchTheWidePanel)
{
    OpenAndConnect();
    Click("Info");
    EXPECT_EQ(Analog(2), "          System Info           ");
    EXPECT_EQ(Analog(4), "Name    : Bus 12                ");
    EXPECT_EQ(window->Link().Monitor().Panel(), Panel98::SystemInformation);
    Click("Analog");
    EXPECT_EQ(Analog(4), std::string(32, ' '));
    EXPECT_EQ(window->Link().Monitor().Panel(), Panel98::Analog);
}

TEST_F(LegacyWindow, ClearEmptiesTheListAndTheWidePanel)
{
    OpenAndConnect();
    Hear("\x67\x0A", [this] { return LineCount() == 1; });
    Click("Info");
    Click("Clear");
    EXPECT_EQ(LineCount(), 0);
    EXPECT_EQ(Analog(4), std::string(32, ' '));
    EXPECT_EQ(Misc(1), "*123456*");
}

TEST_F(LegacyWindow, AnEventCanDisconnect)
{
    settings.LoggingOn = settings.LoggingBuffered = settings.LoggingDisconnect = true;
    settings.LoggingBufferMax = 25;
    settings.LoggingEventTrigger = 10;
    OpenAndConnect();
    Hear("\x67\x0A\x0B\x0C", [this] { return !port.PortOpen(); });
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_EQ(LineCount(), 2) << "the message and the event";
    EXPECT_EQ(Logged().count("\r\n"), 7 + 3);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(LegacyWindow, APortThatGoesAwayEndsTheConnection)
{
    OpenAndConnect();
    notifier.setEnabled(false);
    terminal->Unplug();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Text("txtStatus") == "Disconnected"; }, 5000));
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_THAT(Text("txtMsg"), testing::StartsWith("Comm Port 5 has gone away"));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(LegacyWindow, APortThatGoesAwayWhileItIsWokenEndsTheConnection)
{
    Open();
    onWake = [this] {
        notifier.setEnabled(false);
        terminal->Unplug();
    };
    Click("Connect");
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_THAT(Text("txtMsg"), testing::StartsWith("Comm Port 5 has gone away"));
    EXPECT_THAT(errors.reports, IsEmpty());
}

// --- The other buttons
// ------------------------------------------------------------------------------------------------

TEST_F(LegacyWindow, OptionsAndAboutAreTheProgramsMatter)
{
    Open();
    host.onCall = [this](const char* call) {
        host.calls.emplace_back(call);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor) << call;
        EXPECT_FALSE(Find<QToolBar>("Toolbar").isEnabled()) << call;
    };
    for (const char* key : {"Port", "Harnwick", "About"})
        Click(key);
    EXPECT_THAT(host.calls, ElementsAre("port", "harnwick", "about"));
    host.onCall = [](const char*) {};
}

TEST_F(LegacyWindow, AnErrorOfAButtonIsReportedAndTheToolbarComesBack)
{
    Open();
    host.onCall = [](const char*) { throw Error(75, "no room"); };
    Click("Port");
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, "frmmain98:Toolbar:ButtonClick");
    EXPECT_TRUE(Find<QToolBar>("Toolbar").isEnabled());
}

TEST_F(LegacyWindow, LogOpensTheOptionsOfTheLogWithTheEvent)
{
    settings.Protocol = Settings::kLegacyProtocol;
    Open();
    bool showsEvent = false;
    WhenShown user{"FrmMsgLogging", [&](QDialog& dialog) {
                       showsEvent = dialog.findChild<QWidget*>("ChkEvent")->isVisible();
                       dialog.close();
                   }};
    Click("Log");
    EXPECT_EQ(user.Times(), 1);
    EXPECT_TRUE(showsEvent);
}

TEST_F(LegacyWindow, TheDatabaseIsChosenInItsDialog)
{
    MakeFile(dir.filePath("Other.dav"), "no database");
    MakeLegacyDatabase(dir.filePath("New.dav"), 3);
    Open();
    WhenShown user{"FrmFileDialog", [](QDialog& dialog) {
                       auto& files = *dialog.findChild<QListWidget*>("File1");
                       for (const char* name : {"Other.dav", "New.dav"}) {
                           auto* item = files.findItems(name, Qt::MatchExactly).constFirst();
                           QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, files.visualItemRect(item).center());
                       }
                       dialog.close();
                   }};
    Click("DB");
    EXPECT_EQ(user.Times(), 1);
    EXPECT_EQ(settings.DatabaseName, "New.dav");
    EXPECT_EQ(settings.DatabaseBy, "Miller");
    EXPECT_EQ(Text("txtMsg"), "Database: New.dav");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_THAT(boxes.boxes[0].text.toStdString(), testing::StartsWith("An error occured loading the database : "));
}

TEST_F(LegacyWindow, IsWorkedByKeysToo)
{
    Open();
    QTest::keyClick(window.get(), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(Enabled(), kConnected);
    QTest::keyClick(window.get(), Qt::Key_F6);
    EXPECT_EQ(Analog(2), "          System Info           ");
    QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(Enabled(), kIdle);
    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_THAT(host.calls, ElementsAre("end"));
}

TEST_F(LegacyWindow, TheBarMovesTheWidePanelUpByItsValue)
{
    Open();
    auto& bar = Find<QScrollBar>("VScrlanalogFace");
    auto& face = Find<CharacterFace>("PicAnalogFace");
    ASSERT_GT(bar.maximum(), 0);
    for (const int value : {0, 100, bar.maximum()}) {
        bar.setValue(value);
        EXPECT_EQ(face.y(), -value);
    }
    const int bottomOfRow25 = 24 * Glass::kCellHeight + Glass::kMargin + Glass::kGlyphHeight;
    EXPECT_LE(bottomOfRow25 + face.y(), face.parentWidget()->height());
}

TEST_F(LegacyWindow, AllOfTheNarrowPanelIsSeenInASmallWindow)
{
    Open();
    window->resize(1, 1);
    QCoreApplication::processEvents();
    EXPECT_GE(Find<QWidget>("PicMiscDisplay").height(), 142 + Glass::kGlyphHeight);
    EXPECT_GE(Find<QWidget>("PicMiscDisplay").width(), 148);
    EXPECT_GT(Find<QWidget>("ListView98").height(), 30);
}

}  // namespace
}  // namespace fenrik
