// Connecting to the older network by the toolbar, and what keeps the tool from it.

#include "legacy/LegacyWindowFixture.h"
#include "link/ConnectAdvice.h"

namespace fenrik {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Connecting = LegacyWindow;

// --- Connecting
// -------------------------------------------------------------------------------------------------------

TEST_F(Connecting, ConnectingSetsTheButtonsAndDisconnectingSetsThemBack)
{
    OpenAndConnect();
    EXPECT_EQ(Enabled(), kConnected);
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(port.Settings(), "9600,n,8,1");
    EXPECT_EQ(Misc(2), "MT 00000");
    EXPECT_EQ(Misc(5), "BC 00000");
    Click("Disconnect");
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(Connecting, TheToolbarIsOffAndTheHourglassOnWhileItConnects)
{
    Open();
    bool toolbarOn = true;
    Qt::CursorShape pointer = Qt::ArrowCursor;
    onWake = [&] {
        toolbarOn = Find<QToolBar>("Toolbar").isEnabled();
        pointer = QGuiApplication::overrideCursor() ? QGuiApplication::overrideCursor()->shape() : Qt::ArrowCursor;
        EXPECT_EQ(Text("txtStatus"), "Initializing Transceiver...");
        terminal->Write("\x8A");
    };
    Click("Connect");
    EXPECT_FALSE(toolbarOn);
    EXPECT_EQ(pointer, Qt::WaitCursor);
    EXPECT_TRUE(Find<QToolBar>("Toolbar").isEnabled());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Connecting, WithoutADatabaseTheUserIsToldWhereToChooseOne)
{
    settings.DatabaseName.clear();
    Open();
    Click("Connect");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "A system database has not been selected.\n"
                                   "Use the database icon to select a system database.");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Information);
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(Connecting, WithoutTheDatabasesFileTheUserIsTold)
{
    QFile::remove(dir.filePath("Bus.dav"));
    Open();
    Click("Connect");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Bus.dav\nhas been moved or deleted. The Diagnostic tool cannot connect "
                                   "to the Fenrik system. Please select a new system Database.");
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Warning);
    EXPECT_EQ(Enabled(), kIdle);
}

TEST_F(Connecting, ADatabaseThatCannotBeReadKeepsItFromConnecting)
{
    settings.LoggingOn = true;
    MakeFile(dir.filePath("Bus.dav"), "no database");
    Open();
    Click("Connect");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_THAT(boxes.boxes[0].text.toStdString(), HasSubstr("will not be able to connect"));
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_EQ(Logged(), "") << "nothing was begun";
}

TEST_F(Connecting, AShortTableIsWarnedOfAndItConnects)
{
    MakeLegacyDatabase(dir.filePath("Bus.dav"), 254);
    OpenAndConnect();
    EXPECT_THAT(boxes.boxes, SizeIs(1));
}

TEST_F(Connecting, APortThatIsNotThereIsToldAndTheHeadOfTheLogStays)
{
    settings.LoggingOn = true;
    settings.CommPort = 6;
    Open();
    Click("Connect");
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "Comm Port 6 does not exist." + ConnectAdvice::NoPort());
    EXPECT_EQ(Enabled(), kIdle);
    EXPECT_THAT(Logged().toStdString(), HasSubstr("FenrikII Diagnostics Log 98\r\n\r\nConnected - "));
}

TEST_F(Connecting, APortInUseCanBeTriedAgain)
{
    SerialControl other(ports);
    other.setCommPort(5);
    other.setPortOpen(true);
    boxes.answers = {QMessageBox::Retry, QMessageBox::Cancel};
    Open();
    Click("Connect");
    EXPECT_THAT(boxes.boxes, SizeIs(2));
    EXPECT_EQ(Enabled(), kIdle);
    other.setPortOpen(false);
    Click("Connect");
    EXPECT_EQ(Enabled(), kConnected);
}

TEST_F(Connecting, WithUniqueLogsEachConnectionHasItsFile)
{
    settings.LoggingOn = true;
    settings.LoggingUnique = true;
    OpenAndConnect();
    const QString first = log.Path();
    Click("Disconnect");
    ASSERT_TRUE(QTest::qWaitFor([&] {
        log.NewFileName();
        return log.Path() != first;
    }));
    Click("Connect");
    EXPECT_NE(log.Path(), first);
    EXPECT_EQ(Logged().count("Connected - "), 1);
}

TEST_F(Connecting, WithoutUniqueLogsConnectionsShareAFile)
{
    settings.LoggingOn = true;
    OpenAndConnect();
    Click("Disconnect");
    Click("Connect");
    EXPECT_EQ(Logged().count("Connected - "), 2);
}

TEST_F(Connecting, AConnectionBeginsWithEmptyPanelsAndCounts)
{
    settings.DatabaseName = "Analog.dav";
    MakeDatabase(dir.filePath("Analog.dav"),
                 {kInfoTable, kSystemTable, "INSERT INTO System VALUES (50, 'Volts', 'Analog', 0, 10)",
                  "INSERT INTO System VALUES (51, 'Amps', 'Analog', 0, 1)"});
    OpenAndConnect();
    Hear("\x65\x67\x32\x80", [this] { return Analog(1).starts_with("Volts"); });
    EXPECT_EQ(Misc(2), "MT 00001");
    Click("Info");
    Click("Disconnect");
    Click("Connect");
    EXPECT_EQ(Misc(2), "MT 00000");
    EXPECT_EQ(Analog(2), std::string(32, ' '));
    Hear("\x6A\x33\x05", [this] { return Analog(1).starts_with("Amps"); });
    EXPECT_EQ(Misc(2), "MT 00000") << "the first token is not missed";
}

}  // namespace
}  // namespace fenrik
