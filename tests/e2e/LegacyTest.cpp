// The tool on the simulated vehicle of the older network.

#include "e2e/ToolTest.h"
#include "legacy/FrmDiag98.h"
#include "logging/FrmMsgLogging.h"
#include "support/DatabaseFile.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QTest>

namespace fenrik {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

class Legacy : public ToolTest {
protected:
    Legacy() { QLocale::setDefault(QLocale::c()); }
    ~Legacy() override { QLocale::setDefault(QLocale::system()); }

    void SetUp() override
    {
        QFile::copy(FENRIK_BIN_FOLDER "/legacy/Demonstration Bus 98.dav", copy.Path("bin/Demo.dav"));
        Configure("On=False\n");
    }

    /// Before the start: the settings of the log, and more of the others.
    void Configure(const QByteArray& logging, const QByteArray& more = {})
    {
        program.reset();
        MakeFile(copy.ConfigFolder() + "/settings.ini",
                 "[Settings]\nCommPort=5\nProtocol=Fenrik 98\n" + more + "[Logging]\n" + logging +
                     "[Database]\nPath=" + copy.ProgramFolder().toUtf8() +
                     "\nName=Demo.dav\nSystemName=Demonstration Bus 98\nCreated=14 March 1998\n");
        ToolTest::SetUp();
    }

    void StartAndListen(const char* scenario = "quiet\n")
    {
        ASSERT_NO_FATAL_FAILURE(vehicle.Start(scenario, {"--legacy"}));
        ASSERT_NO_FATAL_FAILURE(StartTool());
        Click("Toolbar", "Connect");
        ASSERT_EQ(Text("txtStatus"), "Connected");
    }

    /// The lines of ListView98 without their times, as "3|Horn On|30|Body".
    [[nodiscard]] std::vector<std::string> Lines() const
    {
        const auto& list = *Find<QAbstractItemView>("ListView98").model();
        std::vector<std::string> lines;
        for (int row = 0; row < list.rowCount(); ++row) {
            QStringList fields;
            for (int column = 0; column < 4; ++column)
                fields.append(list.index(row, column).data().toString());
            lines.push_back(fields.join('|').toStdString());
        }
        return lines;
    }

    [[nodiscard]] bool HasLine(const std::string& line) const { return std::ranges::count(Lines(), line) > 0; }

    [[nodiscard]] QStringList LogFiles() const
    {
        const QDir folder(copy.ProgramFolder() + "/diaglogs");
        return folder.entryList(QDir::Files, QDir::Name);
    }

    /// The one log there is, with the digits of its times as "0".
    [[nodiscard]] QString MaskedLog() const
    {
        EXPECT_THAT(LogFiles(), SizeIs(1));
        QFile file(copy.ProgramFolder() + "/diaglogs/" + LogFiles().value(0));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QString text = QString::fromUtf8(file.readAll());
        text.replace(QRegularExpression("Connected - \\d{1,2} \\w{3} \\d{4} [\\d:]+"), "Connected - then");
        return text.replace(QRegularExpression(" [\\d.]+ \\r\\n"), " 0 \r\n");
    }
};

QString Head(const QString& trigger)
{
    const QString rule = QString(85, '-') + "\r\n";
    return rule + "FenrikII Diagnostics Log 98\r\n" + trigger + "\r\nConnected - then\r\n" + rule +
           "Node      Name                               Data      Description         TimeStamp\r\n" +
           QString(83, '-') + "\r\n";
}

QString Entry(int node, const char* name, int data, const char* description)
{
    return QStringLiteral(" %1 ").arg(node).leftJustified(10) + QString(name).leftJustified(35) +
           QStringLiteral(" %1 ").arg(data).leftJustified(10) + QString(description).leftJustified(20) + " 0 \r\n";
}

TEST_F(Legacy, MessagesAreListedWithTheirNames)
{
    ASSERT_NO_FATAL_FAILURE(StartAndListen());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 6 30"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 3 16"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 2 200"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 4 1"));  // ignored
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 1 50 128"));
    ASSERT_TRUE(Eventually([this] { return Face("PicAnalogFace").starts_with("Battery Voltage         12.8"); }));
    ASSERT_TRUE(Eventually([this] { return Lines().size() == 3; }));
    EXPECT_THAT(Lines(), testing::UnorderedElementsAre("6|Horn On|30|Body", "3|Headlamps On|16|Body",
                                                       "2|Spare 200|200|Not assigned"));
}

TEST_F(Legacy, TheWholeVehicleIsAlive)
{
    Configure("On=False\n", "ListAllMsgs=True\n");
    ASSERT_NO_FATAL_FAILURE(StartAndListen(""));
    ASSERT_TRUE(Eventually([this] { return HasLine("1|Ignition On|10|Body"); }));
    ASSERT_TRUE(Eventually([this] { return Face("PicAnalogFace").find("Fuel Level") != std::string::npos; }));
    EXPECT_FALSE(HasLine("1|Node Alive|1|Network"));
    EXPECT_EQ(Face("PicMiscFace").substr(0, 17), "*123456*\nMT 00000") << "no token is ever missed";
    EXPECT_EQ(Face("PicMiscFace", "dimText").substr(0, 8).find_first_not_of("*123456 "), std::string::npos);
}

TEST_F(Legacy, ADroppedTokenIsCountedAndMarked)
{
    Configure("On=True\nUnique=False\n", "ListAllMsgs=True\n");
    ASSERT_NO_FATAL_FAILURE(StartAndListen());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("miss 3"));
    ASSERT_TRUE(Eventually([this] { return HasLine("Error|Missed Token|103|"); }));
    EXPECT_EQ(Face("PicMiscFace").substr(9, 8), "MT 00001");
    EXPECT_EQ(Face("PicMiscFace", "dimText")[0], ' ') << "the star is lit";
    ASSERT_TRUE(Eventually([this] { return Face("PicMiscFace", "dimText")[0] == '*'; }));
    EXPECT_EQ(MaskedLog(), Head("") + Entry(104, "Missed Token", 103, ""));
}

TEST_F(Legacy, LoadShedStandsOnThePanel)
{
    ASSERT_NO_FATAL_FAILURE(StartAndListen());
    const auto row7 = [this](const char* property) { return Face("PicMiscFace", property).substr(6 * 9, 8); };
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("shed 3 on"));
    ASSERT_TRUE(Eventually([&] { return row7("text") == "LS3   ON"; }));
    EXPECT_EQ(row7("dimText"), "        ");
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("shed 3 off"));
    ASSERT_TRUE(Eventually([&] { return row7("dimText") == "LS3  OFF"; }));
}

TEST_F(Legacy, ACollidedMessageComesARoundLater)
{
    ASSERT_NO_FATAL_FAILURE(StartAndListen());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("collide"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 6 30"));
    ASSERT_TRUE(Eventually([this] { return HasLine("6|Horn On|30|Body"); }));
    EXPECT_THAT(Lines(), SizeIs(1));
    EXPECT_THAT(vehicle.Meanings("LOST"), ElementsAre("collision"));
}

TEST_F(Legacy, TheEventWritesExactlyWhatLedUpToIt)
{
    Configure("On=True\nUnique=True\nBuffered=True\nBufferMax=4\nEventTrigger=40\n", "ListAllMsgs=True\n");
    ASSERT_NO_FATAL_FAILURE(StartAndListen());
    // Told by one node, so that their order is that of the statements.
    for (const char* statement : {"message 5 26", "message 5 27", "message 5 28", "message 5 57 70", "message 5 74",
                                  "message 5 1", "message 5 29", "message 5 40", "message 5 30"})
        ASSERT_NO_FATAL_FAILURE(vehicle.Control(statement));
    ASSERT_TRUE(Eventually([this] { return HasLine("5|Horn On|30|Body"); }));
    EXPECT_TRUE(HasLine("Info|Event 40 occured.||"));
    // At most one entry more than four are kept; the event's own is the last of them. What came later waits.
    EXPECT_EQ(MaskedLog(), Head("Trigger =  40") + Entry(5, "Inside Temperature", 70, "Analog") +
                               Entry(5, "Load Shed Level 3 ON", 74, "LoadShed") +
                               Entry(5, "Dome Lamps Off", 29, "Body") + Entry(5, "Fire Alarm", 40, "Body") +
                               Entry(0, "Event Trigger", 40, ""));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 5 40"));
    ASSERT_TRUE(Eventually([this] { return MaskedLog().count("Event Trigger") == 2; }));
    EXPECT_TRUE(MaskedLog().endsWith(Entry(5, "Horn On", 30, "Body") + Entry(5, "Fire Alarm", 40, "Body") +
                                     Entry(0, "Event Trigger", 40, "")));
}

TEST_F(Legacy, AnEventCanEndTheConnection)
{
    Configure("On=True\nBuffered=True\nBufferMax=25\nEventTrigger=50\nDisconnect=True\n");
    ASSERT_NO_FATAL_FAILURE(StartAndListen());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 5 26"));
    ASSERT_TRUE(Eventually([this] { return HasLine("5|Wipers On|26|Body"); }));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 5 50 120"));
    ASSERT_TRUE(Eventually([this] { return Text("txtStatus") == "Disconnected"; }));
    EXPECT_TRUE(IsEnabled("Toolbar", "Connect"));
    EXPECT_FALSE(IsEnabled("Toolbar", "Disconnect"));
    ASSERT_TRUE(Eventually([this] { return vehicle.HasNote("port closed"); }));
    EXPECT_EQ(MaskedLog(), Head("Trigger =  50") + Entry(5, "Wipers On", 26, "Body") +
                               Entry(0, "Event Trigger", 50, "") + Entry(0, "Disconnected", 0, ""));
}

TEST_F(Legacy, TheEventIsSetInTheDialogOfTheLog)
{
    Configure("On=True\n");
    ASSERT_NO_FATAL_FAILURE(vehicle.Start("quiet\n", {"--legacy"}));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    boxes.WorkNext("FrmMsgLogging", [](QDialog& dialog) {
        dialog.findChild<QCheckBox*>("ChkEvent")->click();
        auto& trigger = *dialog.findChild<QLineEdit*>("TxtTrigger");
        trigger.selectAll();
        QTest::keyClicks(&trigger, "30");
        dialog.close();
    });
    Click("Toolbar", "Log");
    Click("Toolbar", "Connect");
    ASSERT_EQ(Text("txtStatus"), "Connected");
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 6 30"));
    ASSERT_TRUE(Eventually([this] { return HasLine("Info|Event 30 occured.||"); }));
    EXPECT_EQ(MaskedLog(), Head("Trigger =  30") + Entry(6, "Horn On", 30, "Body") + Entry(0, "Event Trigger", 30, ""));
}

TEST_F(Legacy, ASilentTransceiverIsNoError)
{
    ASSERT_NO_FATAL_FAILURE(StartAndListen("no-transceiver\nquiet\n"));
    EXPECT_THAT(vehicle.Meanings("RX"), ElementsAre("wake", "wake", "wake"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 6 30"));
    EXPECT_TRUE(Eventually([this] { return HasLine("6|Horn On|30|Body"); }));
}

TEST_F(Legacy, APortThatVanishesCanBeConnectedAgainWhenItIsBack)
{
    ASSERT_NO_FATAL_FAILURE(StartAndListen());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("unplug"));
    ASSERT_TRUE(Eventually([this] { return Text("txtStatus") == "Disconnected"; }));
    EXPECT_THAT(Text("txtMsg"), StartsWith("Comm Port 5 has gone away"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("plug"));
    Click("Toolbar", "Connect");
    ASSERT_EQ(Text("txtStatus"), "Connected");
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 6 30"));
    EXPECT_TRUE(Eventually([this] { return HasLine("6|Horn On|30|Body"); }));
}

TEST_F(Legacy, AFullLineLosesNothing)
{
    ASSERT_NO_FATAL_FAILURE(vehicle.Start("quiet\n", {"--legacy", "--pace"}));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Click("Toolbar", "Connect");
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("flood"));
    ASSERT_TRUE(Eventually([this] { return Lines().size() > 1500; }));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("flood off"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("message 6 31"));
    ASSERT_TRUE(Eventually([this] { return HasLine("6|Horn Off|31|Body"); }));
    EXPECT_EQ(Lines().size(), std::ranges::count(vehicle.Meanings("TX"), "message"));
    EXPECT_EQ(Face("PicMiscFace").substr(9, 8), "MT 00000");
}

TEST_F(Legacy, TheSystemInformationIsTheDatabases)
{
    ASSERT_NO_FATAL_FAILURE(StartAndListen());
    Click("Toolbar", "Info");
    EXPECT_THAT(Face("PicAnalogFace"), HasSubstr("Name    : Demonstration Bus 98"));
    CloseTool();
    EXPECT_THAT(copy.StoredSettings().toStdString(),
                AllOf(HasSubstr("Protocol=Fenrik 98"), HasSubstr("Name=Demo.dav")));
}

}  // namespace
}  // namespace fenrik
