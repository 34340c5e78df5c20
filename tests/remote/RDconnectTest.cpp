#include "remote/RemoteConnection.h"
#include "remote/RemoteFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RDconnect : public RemoteFixture {
protected:
    RDconnect()
    {
        host.profile =
            RemoteLogon{QStringLiteral("Ann"), QStringLiteral("ann1"), QStringLiteral("127.0.0.1"), relay.Port()};
        windows.choose = [] { return RemoteWindows::Choice{8, QStringLiteral("Bob")}; };
    }

    void Behave(const char* flags = " ") { relay.Behave({{8, "127.0.0.1", "Bob", flags}}); }

    void TimePassesOnce(const std::function<bool()>& condition) { pump.timePasses = condition; }
    void TimePassesAfter(PipeFrameType type)
    {
        TimePassesOnce([this, type] { return relay.Count(type) > 0; });
    }

    /// Nothing is left of the connection, on both sides.
    void ExpectTornDown()
    {
        EXPECT_EQ(handler.TargetPort(), Transport::kNone);
        EXPECT_LE(connection.RemoteState(), RemoteStates::kDisconnected);
        EXPECT_FALSE(view.waitCursor);
        EXPECT_TRUE(Until([this] { return !relay.HasClient(); }));
        EXPECT_THAT(errors.reports, IsEmpty());
    }
    void ExpectBox(const QString& text, QMessageBox::Icon icon)
    {
        ASSERT_FALSE(boxes.boxes.empty());
        EXPECT_EQ(boxes.boxes.back().text, text);
        EXPECT_EQ(boxes.boxes.back().icon, icon);
    }
    static QString Cannot(const char* why)
    {
        return QStringLiteral("Cannot connect to Remote Diagnostics:\n") + QLatin1String(why);
    }

    FakeRelay relay;
    RemoteConnection connection{Parts()};
};

TEST_F(RDconnect, EndsWithAPipeToTheChosenUser)
{
    Behave();
    connection.RDconnect();

    EXPECT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
    EXPECT_EQ(handler.TargetPort(), Transport::kRemote);
    EXPECT_TRUE(connection.Session().IsRemotePiped());
    EXPECT_FALSE(connection.Session().IsRemoteGranted());
    EXPECT_EQ(connection.Session().PipeCaption(), QStringLiteral(" [Piped to Bob]"));
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_FALSE(view.waitCursor);
    EXPECT_TRUE(windows.usersWindow);
    EXPECT_TRUE(chat.visible);
    EXPECT_EQ(chat.remote->UserName, QStringLiteral("Bob"));
    EXPECT_EQ(chat.local->UserName, QStringLiteral("Me"));
    EXPECT_EQ(windows.excluded, 7);
    EXPECT_THAT(host.uiStates, ElementsAre(1));
    EXPECT_THAT(view.messages,
                ElementsAre(QStringLiteral("Connecting to 127.0.0.1 ..."), QStringLiteral("Connected to Server"),
                            QStringLiteral("Authenticating ..."), QStringLiteral("Authenticated by Server"),
                            QStringLiteral("Welcome"), QStringLiteral("Piped to Bob")));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(RDconnect, LogsOnWithTheProfile)
{
    Behave();
    connection.RDconnect();
    ASSERT_FALSE(relay.frames.empty());
    EXPECT_EQ(relay.frames[0].type, frameAuthenticate);
    const auto logon = PipeLogon::Decode(relay.frames[0].body);
    ASSERT_TRUE(logon);
    EXPECT_EQ(logon->logonID, "ann1");
    EXPECT_EQ(logon->kind, "OEMClient");
    EXPECT_EQ(logon->userName, "Ann [Diag Client]");
}

TEST_F(RDconnect, WorksOverIPv6)
{
    FakeRelay six(QHostAddress::LocalHostIPv6);
    if (!six.Listening())
        GTEST_SKIP() << "no IPv6 here";
    six.Behave({{8, "::1", "Bob", " "}});
    host.profile->ServerName = QStringLiteral("::1");
    host.profile->ServerPort = six.Port();
    connection.RDconnect();
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
}

TEST_F(RDconnect, AsksForAProfileAndNoLeavesTheToolUntouched)
{
    host.profile.reset();
    boxes.answers = {QMessageBox::No};
    connection.RDconnect();
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_TRUE(boxes.boxes[0].text.startsWith(
        QStringLiteral("You have not selected a Remote Diagnostics User Profile.  On the Network Options screen, ")));
    EXPECT_TRUE(boxes.boxes[0].text.endsWith(QStringLiteral(".\n\nWould you like to choose a User Profile now?")));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Information);
    EXPECT_EQ(boxes.boxes[0].buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_THAT(host.uiStates, IsEmpty());
    EXPECT_THAT(view.messages, IsEmpty());
    EXPECT_EQ(connection.RemoteState(), 0);
}

TEST_F(RDconnect, GoesOnWithTheProfileThatWasChosenJustNow)
{
    Behave();
    const auto profile = host.profile;
    host.profile.reset();
    host.onPortOptions = [&] { host.profile = profile; };
    boxes.answers = {QMessageBox::Yes};
    connection.RDconnect();
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
}

TEST_F(RDconnect, TimesOutWithARelayThatAcceptsAndIsSilent)
{
    TimePassesAfter(frameAuthenticate);
    const double start = clock.Timer();
    connection.RDconnect();
    ExpectBox(Cannot("Authentication has timed out."), QMessageBox::Warning);
    // Limits are whole seconds: the clock started at a quarter past one.
    EXPECT_GE(clock.Timer() - start, 1.0);
    EXPECT_LE(clock.Timer() - start, 2.0);
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kDisconnected);
    ExpectTornDown();
    EXPECT_EQ(relay.Count(frameLogoff), 1);
    EXPECT_THAT(host.uiStates, ElementsAre(1, 2));
}

TEST_F(RDconnect, TimesOutWithoutAList)
{
    Behave();
    relay.On(frameUserListRequest, [](auto&) {});
    TimePassesAfter(frameUserListRequest);
    connection.RDconnect();
    ExpectBox(Cannot("No list of Users is available.  Please try connecting again."), QMessageBox::Warning);
    ExpectTornDown();
}

TEST_F(RDconnect, LogsOffIfNobodyElseIsThere)
{
    relay.Behave({});
    connection.RDconnect();
    ExpectBox(QStringLiteral("There are currently no other Users logged on to the Remote Diagnostics network.\n\n"
                             "Please contact the User to whom you are trying to connect, and make sure they have "
                             "successfully connected and logged on to the Remote Diagnostics network."),
              QMessageBox::Information);
    EXPECT_EQ(windows.choices, 0);
    ExpectTornDown();
    ASSERT_EQ(relay.frames.back().type, frameLogoff);
    EXPECT_EQ(ReadPipeNumber(relay.frames.back().body), 7);
}

TEST_F(RDconnect, TakesAListOfEightyBytesForOneOfNobody)
{
    Behave();
    relay.On(frameUserListRequest, [this](auto&) { relay.Send(frameUserList, std::string(80, ' ')); });
    connection.RDconnect();
    EXPECT_TRUE(boxes.boxes.at(0).text.startsWith(QStringLiteral("There are currently no other Users")));
    ExpectTornDown();
}

TEST_F(RDconnect, LogsOffWhenTheUserCancels)
{
    Behave();
    windows.choose = [] { return RemoteWindows::Choice{}; };
    connection.RDconnect();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(relay.Count(framePipeTo), 0);
    ExpectTornDown();
    EXPECT_EQ(relay.Count(frameLogoff), 1);
}

TEST_F(RDconnect, LogsOffIfTheChosenUserHasLeft)
{
    Behave();
    windows.choose = [] { return RemoteWindows::Choice{9, QStringLiteral("Cid")}; };
    connection.RDconnect();
    EXPECT_EQ(relay.Count(framePipeTo), 0);
    ExpectTornDown();
}

TEST_F(RDconnect, OffersTheListAgainIfTheChosenUserIsPiped)
{
    Behave("+");
    windows.choose = [this] {
        return windows.choices == 1 ? RemoteWindows::Choice{8, QStringLiteral("Bob")} : RemoteWindows::Choice{};
    };
    connection.RDconnect();
    EXPECT_EQ(windows.choices, 2);
    ExpectBox(QStringLiteral("Bob is already piped to another client!"), QMessageBox::Information);
    ExpectTornDown();
}

TEST_F(RDconnect, TimesOutWithoutAPipe)
{
    Behave();
    relay.On(framePipeTo, [](auto&) {});
    TimePassesAfter(framePipeTo);
    connection.RDconnect();
    ExpectBox(Cannot("Pipe to Bob has timed out."), QMessageBox::Warning);
    ExpectTornDown();
}

TEST_F(RDconnect, EndsWellIfSomebodyPipesToThisToolMeanwhile)
{
    Behave();
    relay.On(frameAuthenticate, [this](auto&) {
        relay.Send(frameAuthenticated, PipeWelcome{7, "Welcome"}.Encode());
        relay.Pipe(9, "Cid");
    });
    connection.RDconnect();
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
    EXPECT_EQ(connection.Session().mPipedTo.UserName, QStringLiteral("Cid"));
    EXPECT_EQ(windows.choices, 0);
    EXPECT_EQ(relay.Count(framePipeTo), 0);
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(RDconnect, EndsWellWithAPipeThatComesWhileTheUsersWindowIsOpen)
{
    Behave();
    windows.choose = [this] {
        relay.Pipe(9, "Cid");
        Until([this] { return connection.IsRemotePiped(); });
        return RemoteWindows::Choice{};
    };
    connection.RDconnect();
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
    EXPECT_EQ(handler.TargetPort(), Transport::kRemote);
}

TEST_F(RDconnect, EndsWellWithAPipeThatComesWhileTheBoxOfNobodyIsOpen)
{
    relay.Behave({});
    boxes.whileOpen = [this] {
        relay.Pipe(9, "Cid");
        Until([this] { return connection.IsRemotePiped(); });
    };
    connection.RDconnect();
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
    EXPECT_THAT(boxes.boxes, SizeIs(1));
}

TEST_F(RDconnect, TellsARefusedConnectionFirstAndThenTheEndOfTheWait)
{
    QTcpServer nobody;
    ASSERT_TRUE(nobody.listen(QHostAddress::LocalHost));
    host.profile->ServerPort = nobody.serverPort();
    nobody.close();
    TimePassesOnce([this] { return !boxes.boxes.empty(); });
    connection.RDconnect();
    ASSERT_THAT(boxes.boxes, SizeIs(2));
    EXPECT_TRUE(boxes.boxes[0].text.startsWith(
        QStringLiteral("Remote Diagnostics communications error [%1]\n\n").arg(RemoteSocket::kRefused)));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
    EXPECT_EQ(boxes.boxes[1].text, Cannot("Authentication has timed out."));
    ExpectTornDown();
}

TEST_F(RDconnect, EndsEarlyAndSilentlyWhenTheProgramCloses)
{
    pump.onTurn = [this] { pump.Stop(); };
    connection.RDconnect();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_EQ(handler.TargetPort(), Transport::kNone);
    EXPECT_FALSE(view.waitCursor);
}

TEST_F(RDconnect, DoesNothingWhileAnotherOneRuns)
{
    Behave();
    windows.choose = [this] {
        connection.RDconnect();
        return RemoteWindows::Choice{};
    };
    connection.RDconnect();
    EXPECT_EQ(windows.choices, 1);
    EXPECT_EQ(relay.Count(frameAuthenticate), 1);
}

TEST_F(RDconnect, LeavesNothingOfANameThatDoesNotResolve)
{
    host.profile->ServerName = QStringLiteral("relay.invalid");
    int turns = 0;
    pump.onTurn = [&] { ++turns; };
    TimePassesOnce([&] { return turns > 3; });
    connection.RDconnect();
    // The window lives while the name is looked up.
    EXPECT_GT(turns, 3);
    ExpectBox(Cannot("Authentication has timed out."), QMessageBox::Warning);
    ExpectTornDown();
    const auto told = boxes.boxes.size();
    Turns(20);
    EXPECT_EQ(boxes.boxes.size(), told);
}

struct Step {
    const char* name;
    PipeFrameType hangsAt;
};

class RelayThatHangs : public RDconnect, public testing::WithParamInterface<Step> {};

TEST_P(RelayThatHangs, LeavesTheToolDisconnected)
{
    Behave();
    relay.On(GetParam().hangsAt, [this](auto&) { relay.Hang(); });
    TimePassesOnce([this] { return connection.RemoteState() == RemoteStates::kDisconnected; });
    connection.RDconnect();
    EXPECT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kDisconnected);
    EXPECT_EQ(relay.Count(frameLogoff), 0);
    ExpectTornDown();
}

INSTANTIATE_TEST_SUITE_P(RDconnect, RelayThatHangs,
                         testing::Values(Step{"AtLogon", PipeFrameType::frameAuthenticate},
                                         Step{"AtTheList", PipeFrameType::frameUserListRequest},
                                         Step{"AtThePipe", PipeFrameType::framePipeTo}),
                         [](const auto& row) { return row.param.name; });

class RDdisconnect : public RDconnect {
protected:
    void Connect()
    {
        Behave();
        connection.RDconnect();
        ASSERT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
        host.uiStates.clear();
    }
};

TEST_F(RDdisconnect, BreaksThePipeLogsOffAndCloses)
{
    Connect();
    host.mounted = true;
    connection.RDdisconnect();
    EXPECT_EQ(host.unmounted, 1);
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kDisconnected);
    EXPECT_THAT(host.uiStates, ElementsAre(2));
    EXPECT_FALSE(chat.exists);
    ExpectTornDown();
    EXPECT_EQ(relay.Count(frameBreakPipe), 1);
    EXPECT_EQ(relay.frames.back().type, frameLogoff);
    EXPECT_THAT(windows.timed, IsEmpty());
}

TEST_F(RDdisconnect, WithoutAConnectionOnlyTidiesUp)
{
    handler.setTargetPort(Transport::kRemote);
    connection.RDdisconnect();
    EXPECT_EQ(handler.TargetPort(), Transport::kNone);
    EXPECT_THAT(host.uiStates, ElementsAre(2));
}

TEST_F(RDdisconnect, LeavesAnOpenSerialPortAlone)
{
    handler.setTargetPort(Transport::kTransceiver);
    host.openForRx = true;
    connection.RDdisconnect();
    EXPECT_EQ(handler.TargetPort(), Transport::kTransceiver);
    EXPECT_THAT(host.uiStates, IsEmpty());
}

TEST_F(RDdisconnect, SendsNoMoreIfTheRelayGoesWhileThePipeIsBroken)
{
    Connect();
    relay.On(frameBreakPipe, [this](auto&) { relay.Hang(); });
    pump.onTurn = [this] { Until([this] { return connection.RemoteState() == RemoteStates::kDisconnected; }); };
    connection.RDdisconnect();
    EXPECT_EQ(relay.Count(frameLogoff), 0);
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(RDdisconnect, FollowsAPipeThatTheOtherEndBroke)
{
    Connect();
    host.mounted = true;
    relay.Send(framePipeBroken, PipeNotice{8, "Bob", "gone"}.Encode());
    ASSERT_TRUE(Until([this] { return !windows.timed.empty(); }));
    EXPECT_THAT(windows.timed, ElementsAre(std::pair(QStringLiteral("Bob has disconnected from you!"), 2000)));
    EXPECT_EQ(host.forgotten, 1);
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kDisconnected);
    ExpectTornDown();
    EXPECT_EQ(relay.Count(frameBreakPipe), 0);
}

TEST_F(RDdisconnect, IsNotNeededAfterTheRelayCloses)
{
    Connect();
    relay.Hang();
    ASSERT_TRUE(Until([this] { return connection.RemoteState() == RemoteStates::kDisconnected; }));
    EXPECT_EQ(handler.TargetPort(), Transport::kNone);
    EXPECT_THAT(host.uiStates, ElementsAre(2));
    EXPECT_EQ(view.Message(), QStringLiteral("Disconnected from Server"));
}

TEST_F(RDdisconnect, IsNotNeededAfterAnErrorOfTheSocket)
{
    Connect();
    host.mounted = true;
    BreakConnectionTo(relay.Port());
    relay.Send(frameServerInfo);
    ASSERT_TRUE(Until([this] { return connection.RemoteState() == RemoteStates::kDisconnected; }));
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_TRUE(boxes.boxes[0].text.startsWith(QStringLiteral("Remote Diagnostics communications error [10051]\n\n")));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
    EXPECT_EQ(handler.TargetPort(), Transport::kNone);
    EXPECT_EQ(host.forgotten, 1);
    EXPECT_THAT(host.uiStates, ElementsAre(2));
    EXPECT_THAT(errors.reports, IsEmpty());
    // The text of the error is what the state's own has replaced.
    EXPECT_EQ(view.messages.end()[-2], boxes.boxes[0].text.section(QLatin1Char('\n'), 2));
    EXPECT_EQ(view.Message(), QStringLiteral("Disconnected from Server"));
}

TEST_F(RDdisconnect, AndConnectAgainWork)
{
    Connect();
    connection.RDdisconnect();
    connection.RDconnect();
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
    // A third one closes the connection that stands first.
    connection.RDconnect();
    EXPECT_EQ(connection.RemoteState(), RemoteStates::kWaiting);
    EXPECT_EQ(relay.Count(frameAuthenticate), 3);
}

TEST_F(RDdisconnect, LeavesNobodyToTalkTo)
{
    connection.sendChatMessage(QStringLiteral("before"));
    Connect();
    connection.sendChatMessage(QStringLiteral("during"));
    connection.sendFrame(50, "123456");
    ASSERT_TRUE(Until([this] { return relay.Count(frameNetworkMessage) == 1; }));
    EXPECT_EQ(relay.frames.back().body, "123456");
    EXPECT_EQ(relay.Count(frameChat), 1);
    connection.RDdisconnect();
    connection.sendEchoServer(QStringLiteral("after"));
    connection.sendEchoClient(QStringLiteral("after"));
    ExpectTornDown();
    EXPECT_EQ(relay.Count(frameEchoServer) + relay.Count(frameEchoClient), 0);
}

}  // namespace
}  // namespace fenrik
