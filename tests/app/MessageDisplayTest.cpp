#include "app/MessageDisplay.h"

#include "AppFixture.h"
#include "app/messages/MessageListModel.h"
#include "messages/Messages.h"
#include "model/CSystem.h"

#include <QFile>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ViewsRecorder : public LiveViews {
public:
    void UpdateAnalog(int command) override { Note("analog", command); }
    void HandlePingResponse(int pingNode, int data) override
    {
        Note("ping", pingNode * 100000 + data);
        onPing();
    }
    void UpdateLoadShed(int data) override { Note("load shed", data); }
    void UpdateDiagnostics(const CMessage& message) override { Note("fault", message.data); }
    void LightSync() override { calls.push_back("sync"); }
    void RefreshCurrentFrame(bool getNewInfo) override { calls.push_back(getNewInfo ? "refresh anew" : "refresh"); }

    std::vector<std::string> calls;
    std::function<void()> onPing = [] {};

private:
    void Note(const char* what, int number) { calls.push_back(what + (' ' + std::to_string(number))); }
};

class MessageDisplayTest : public AppTest {
protected:
    MessageDisplayTest()
    {
        commands[12].Name = "Rear Fog Lamps";
        commands[300].Name = "Battery Voltage";
        commands.SetAnalogCommand(300, true);
        settings.LoggingOn = true;
        system.LoadSystem({}, {}, false);
    }

    int Show(CMessage message)
    {
        display.DisplayMessage(message);
        list.Flush();
        return message.Command;
    }

    [[nodiscard]] QString Cell(int column, int row = 0) const { return list.index(row, column).data().toString(); }
    [[nodiscard]] QString Icon(int row = 0) const
    {
        return list.index(row, 0).data(MessageListModel::IconRole).toString();
    }

    [[nodiscard]] QStringList LogLines() const
    {
        QFile file(log.Path());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split("\r\n", Qt::SkipEmptyParts)
                                              : QStringList();
    }

    CSystem system{settings, dir.path()};
    MessageListModel list;
    ViewsRecorder views;
    MessageDisplay display{services, system, list, views};
};

TEST_F(MessageDisplayTest, AMessageBecomesALineAndALogEntry)
{
    for (int i = 0; i < 7; ++i)
        commands.CountUp(12);
    Show(Received(12, 258, true, false));
    ASSERT_EQ(list.rowCount(), 1);
    const QStringList cells{"Rear Fog Lamps", "On", "False", "258"};
    for (int column = 0; column < cells.size(); ++column)
        EXPECT_EQ(Cell(column), cells[column]);
    EXPECT_EQ(Cell(MessageListModel::Raw), "0.A0.32.1.2.D5");
    EXPECT_EQ(Cell(MessageListModel::CS), "213");
    EXPECT_EQ(Cell(MessageListModel::TimeStamp), "9:05:07.25");
    EXPECT_EQ(Cell(MessageListModel::Count), "7");
    EXPECT_EQ(list.index(0, 0).data(MessageListModel::TagRole).toInt(), 12);
    ASSERT_THAT(LogLines(), SizeIs(1));
    EXPECT_TRUE(LogLines()[0].startsWith("Rear Fog Lamps  ")) << LogLines()[0].toStdString();
    EXPECT_THAT(views.calls, IsEmpty());
}

TEST_F(MessageDisplayTest, WithLoggingOffNothingIsLogged)
{
    settings.LoggingOn = false;
    Show(Received(12));
    EXPECT_EQ(list.rowCount(), 1);
    EXPECT_FALSE(QFile::exists(log.Path()));
}

// --- What is hidden ------------------------------------------------------------------------------------------------

struct HiddenRow {
    const char* name;
    int command;
    int data;
    bool hidden;
    std::vector<std::string> views;
};

class RoutedMessages : public MessageDisplayTest, public testing::WithParamInterface<HiddenRow> {};

TEST_P(RoutedMessages, GoToTheirViewsFirst)
{
    Show(Received(GetParam().command, GetParam().data));
    EXPECT_EQ(list.rowCount(), GetParam().hidden ? 0 : 1);
    EXPECT_THAT(LogLines(), SizeIs(GetParam().hidden ? 0 : 1)) << "what is not listed is not logged";
    EXPECT_EQ(views.calls, GetParam().views);
}

TEST_P(RoutedMessages, AreAllListedAndLoggedWithTheOption)
{
    settings.ListAllMsgs = true;
    Show(Received(GetParam().command, GetParam().data));
    EXPECT_EQ(list.rowCount(), 1);
    EXPECT_THAT(LogLines(), SizeIs(1));
    EXPECT_EQ(views.calls, GetParam().views);
}

INSTANTIATE_TEST_SUITE_P(MessageDisplay, RoutedMessages,
                         testing::Values(HiddenRow{"AnAnalogValue", 300, 77, true, {"analog 300"}},
                                         HiddenRow{"APingReply", 902, 3, false, {"ping 3", "refresh"}},
                                         HiddenRow{"LoadShed", 981, 0x0102, true, {"load shed 258"}},
                                         HiddenRow{"AFault", 983, 9, false, {"fault 9", "refresh"}},
                                         HiddenRow{"AFaultOfZero", 983, 0, false, {}},
                                         HiddenRow{"ATypeQuestion", 979, 4, true, {}},
                                         HiddenRow{"ATypeQuestionOfZero", 979, 0, false, {}},
                                         HiddenRow{"BeforeTheInternal", 1014, 0, false, {}},
                                         HiddenRow{"TheFirstInternal", 1015, 0, true, {}},
                                         HiddenRow{"TheLastInternal", 1023, 0, true, {}},
                                         HiddenRow{"InputStatesWithoutAMonitor", 921, 1, false, {}}),
                         [](const auto& test) { return test.param.name; });

TEST_F(MessageDisplayTest, AnAnalogValueIsRemembered)
{
    Show(Received(300, 77));
    EXPECT_EQ(commands[300].LastValue, 77);
    Show(Received(12, 5));
    EXPECT_EQ(commands[12].LastValue, 0);
}

TEST_F(MessageDisplayTest, ACommandThatTheCatalogueCallsAnalogKeepsItsOtherMeaning)
{
    commands.SetAnalogCommand(981, true);
    Show(Received(981, 258));
    EXPECT_THAT(views.calls, ElementsAre("analog 981", "load shed 258"));
}

TEST_F(MessageDisplayTest, TheSyncHasItsLampAndNeverALineOrALogEntry)
{
    for (const bool all : {false, true}) {
        settings.ListAllMsgs = all;
        views.calls.clear();
        Show(Received(980, 1));
        EXPECT_EQ(list.rowCount(), 0);
        EXPECT_FALSE(QFile::exists(log.Path()));
        EXPECT_THAT(views.calls, ElementsAre("sync"));
    }
}

// --- Sub-commands --------------------------------------------------------------------------------------------------

TEST_F(MessageDisplayTest, ACarrierLeavesAsItsSubCommand)
{
    commands[1029].Name = "Panel 2 Brightness";
    EXPECT_EQ(Show(Received(1000, 0x0537)), 1029);
    EXPECT_EQ(Cell(0), "Panel 2 Brightness");
    EXPECT_EQ(Cell(MessageListModel::Data), "1335") << "the data stays";
    EXPECT_EQ(list.index(0, 0).data(MessageListModel::TagRole).toInt(), 1029);
    EXPECT_TRUE(LogLines().value(0).startsWith("Panel 2 Brightness"));
}

TEST_F(MessageDisplayTest, TheLastSubCommandIsTheTablesEnd)
{
    EXPECT_EQ(Show(Received(1000, 0xFF00)), 1279);
    EXPECT_EQ(list.rowCount(), 1);
    EXPECT_THAT(errors.reports, IsEmpty());
}

// --- Icons ---------------------------------------------------------------------------------------------------------

struct IconRow {
    int command;
    bool state;
    const char* icon;
};

class Icons : public MessageDisplayTest, public testing::WithParamInterface<IconRow> {};

TEST_P(Icons, TellTheKindOfMessage)
{
    settings.ListAllMsgs = true;
    Show(Received(GetParam().command, 0, GetParam().state));
    EXPECT_EQ(Icon(), GetParam().icon);
}

INSTANTIATE_TEST_SUITE_P(MessageDisplay, Icons,
                         testing::Values(IconRow{12, true, "On"}, IconRow{12, false, "Off"}, IconRow{899, true, "On"},
                                         IconRow{900, true, "Command"}, IconRow{999, false, "Command"},
                                         IconRow{1001, false, "Off"}, IconRow{1015, true, "On"},
                                         IconRow{1016, true, "Command"}, IconRow{1023, false, "Command"},
                                         IconRow{1000, true, "Command"}, IconRow{300, true, "Analog"}));

// --- Special commands ----------------------------------------------------------------------------------------------

struct SpecialRow {
    const char* name;
    int command;
    int data;
    const char* text;
    const char* icon;
};

class SpecialMessages : public MessageDisplayTest, public testing::WithParamInterface<SpecialRow> {
protected:
    SpecialMessages()
    {
        LoadSpecialCommands();
        commands[969].Name = "Node Control";
    }
};

TEST_P(SpecialMessages, AreDecoded)
{
    Show(Received(GetParam().command, GetParam().data));
    EXPECT_EQ(Cell(0), GetParam().text);
    EXPECT_EQ(Icon(), GetParam().icon);
}

INSTANTIATE_TEST_SUITE_P(MessageDisplay, SpecialMessages,
                         testing::Values(SpecialRow{"WithANode", 969, 0x0203, "Restart (Node 3)", "Node"},
                                         SpecialRow{"WithTheLastNode", 969, 0x0208, "Restart (Node 8)", "Node"},
                                         SpecialRow{"WithANodeBeyondTheSystem", 969, 0x0209,
                                                    "Restart (Node 9 - Unknown)", "Node"},
                                         SpecialRow{"WithNodeZero", 969, 0x0200, "Restart (Node 0 - Unknown)", "Node"},
                                         SpecialRow{"OfAnUnknownCode", 969, 0x6302, "Node Control (Node 2)", "Info"},
                                         SpecialRow{"WithoutANode", 930, 1, "Wake Up", "Sleep"}),
                         [](const auto& test) { return test.param.name; });

// --- The compact list ----------------------------------------------------------------------------------------------

TEST_F(MessageDisplayTest, TheCompactListHasOneLineForEachCommand)
{
    list.SetCompactList(true);
    Show(Received(12, 1));
    Show(Received(13, 1));
    Show(Received(12, 2));
    EXPECT_EQ(list.rowCount(), 2);
    EXPECT_EQ(Cell(MessageListModel::Data), "2");
    EXPECT_EQ(list.index(0, 0).data(MessageListModel::LineKeyRole).toString(), "12VMRear Fog Lamps");
}

TEST_F(MessageDisplayTest, TheCompactListHasOneLineForEachDataOfTheNetworksOwnCommands)
{
    list.SetCompactList(true);
    for (const int data : {5, 6, 5})
        Show(Received(901, data));
    EXPECT_EQ(list.rowCount(), 2);
    EXPECT_EQ(list.index(0, 0).data(MessageListModel::LineKeyRole).toString(), "901D5");
}

// --- Failures ------------------------------------------------------------------------------------------------------

TEST_F(MessageDisplayTest, AnErrorGoesToTheErrorRoutine)
{
    views.onPing = [] { throw Error(ErrorNumber::kTypeMismatch, "Type mismatch"); };
    Show(Received(902, 1));
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, 13);
    EXPECT_EQ(list.rowCount(), 0);
}

TEST_F(MessageDisplayTest, ALogThatCannotBeWrittenIsToldOnceAndTheTrafficGoesOn)
{
    run.DiagLogPath = dir.path() + "/no such folder";
    Show(Received(12));
    Show(Received(12));
    EXPECT_EQ(list.rowCount(), 2);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, ErrorNumber::kPathFileAccess);

    run.DiagLogPath = dir.path();
    Show(Received(12));
    run.DiagLogPath = dir.path() + "/no such folder";
    Show(Received(12));
    EXPECT_THAT(errors.reports, SizeIs(2)) << "a new failure after a good line is told again";
}

}  // namespace
}  // namespace fenrik
