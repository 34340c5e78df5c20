#include "remote/PipeFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RemoteReceiverTest : public PipeFixture {};

std::string List(const std::vector<PipeUserRecord>& users)
{
    std::string body;
    for (const auto& user : users)
        body += user.Encode();
    return body;
}

TEST_F(RemoteReceiverTest, LogsOnAndAsksForTheUsers)
{
    session.mPipedTo = {QStringLiteral("Old"), QStringLiteral("3"), {}, {}};
    Receive(frameAuthenticated, PipeWelcome{7, "Hello Ann"}.Encode());
    EXPECT_EQ(session.mClientID, 7);
    EXPECT_TRUE(session.mPipedTo.IsNobody());
    EXPECT_EQ(session.RemoteState, RemoteStates::kLoggedOn);
    EXPECT_EQ(view.Message(), QStringLiteral("Hello Ann"));
    EXPECT_EQ(Sent(frameUserListRequest), "");
}

TEST_F(RemoteReceiverTest, KeepsTheFieldsOfAList)
{
    Receive(frameUserList, List({{7, "10.0.0.1", "Me", " "}, {8, "10.0.0.2", "  Bob  ", "+x"}}));
    ASSERT_EQ(session.remoteUsers.Count(), 2);
    const CUser* bob = session.remoteUsers.Find(8);
    ASSERT_TRUE(bob);
    EXPECT_EQ(bob->UserName, QStringLiteral("Bob"));
    EXPECT_EQ(bob->clientIP, QStringLiteral("10.0.0.2       "));
    EXPECT_TRUE(bob->isPiped());
    EXPECT_FALSE(session.remoteUsers.Find(7)->isPiped());
    EXPECT_THAT(windows.lists, ElementsAre(2));
    EXPECT_TRUE(session.userListReceived);
}

TEST_F(RemoteReceiverTest, TakesAnEmptyListForOneOfNobody)
{
    Receive(frameUserList, List({{7, "", "Me", ""}}));
    Receive(frameUserList);
    EXPECT_EQ(session.remoteUsers.Count(), 0);
    EXPECT_TRUE(session.userListReceived);
    EXPECT_THAT(windows.lists, ElementsAre(1, 0));
}

TEST_F(RemoteReceiverTest, DropsAListOfEightyBytesWhole)
{
    Receive(frameUserList, List({{7, "", "Me", ""}}));
    session.userListReceived = false;
    Receive(frameUserList, std::string(80, 'x'));
    EXPECT_EQ(session.remoteUsers.Count(), 0);
    EXPECT_TRUE(session.userListReceived);
    // The users window isn't told, and keeps what it shows.
    EXPECT_THAT(windows.lists, ElementsAre(1));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(RemoteReceiverTest, ReportsAUserWhoIsOnTheListTwiceAndGoesOn)
{
    Receive(frameUserList, List({{8, "", "Bob", ""}, {8, "", "Bob too", ""}}));
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("frmDiag.Winsock.DataArrival"));
    EXPECT_EQ(session.remoteUsers.Count(), 1);
}

TEST_F(RemoteReceiverTest, TakesNamesOfAnyBytes)
{
    const std::string zeros("a\0b\0", 4);
    Receive(frameUserList, List({{1, "", zeros, ""}, {2, "", std::string(50, '\xFF'), ""}, {3, "", "", ""}}));
    ASSERT_EQ(session.remoteUsers.Count(), 3);
    EXPECT_EQ(session.remoteUsers.Find(1)->UserName, QString(QStringLiteral("a%1b%1")).arg(QChar(0)));
    EXPECT_EQ(session.remoteUsers.Find(2)->UserName, QString(50, QChar(0xFF)));
    EXPECT_EQ(session.remoteUsers.Find(3)->UserName, QString());
}

TEST_F(RemoteReceiverTest, TakesThePipesUserFromTheList)
{
    Receive(frameUserList, List({{7, "", "Me", ""}, {8, "", "Bob", ""}}));
    session.mClientID = 7;
    session.mExpectingBreak = true;
    Receive(framePiped, Notice(8, "Robert"));
    EXPECT_EQ(session.mPipedTo.UserName, QStringLiteral("Bob"));
    EXPECT_EQ(session.RemoteState, RemoteStates::kWaiting);
    EXPECT_FALSE(session.mExpectingBreak);
    EXPECT_TRUE(chat.visible);
    EXPECT_EQ(chat.local->UserName, QStringLiteral("Me"));
    EXPECT_EQ(chat.remote->UserName, QStringLiteral("Bob"));
    EXPECT_EQ(chat.cleared, 1);
    EXPECT_EQ(host.panelResets, 1);
    EXPECT_GE(view.captions, 1);
}

TEST_F(RemoteReceiverTest, TakesAPipesUserWhoIsOnNoListFromTheFrame)
{
    Receive(framePiped, Notice(8, "  Robert "));
    EXPECT_EQ(session.mPipedTo.UserName, QStringLiteral("Robert"));
    EXPECT_EQ(session.mPipedTo.Id(), 8);
}

TEST_F(RemoteReceiverTest, KeepsTheChatWhenAPipeIsToldAgain)
{
    Receive(framePiped, Notice(8, "Bob"));
    Receive(frameBussAccessReply, "\1");
    Receive(framePiped, Notice(8, "Bob"));
    EXPECT_EQ(chat.cleared, 1);
    EXPECT_EQ(session.RemoteState, RemoteStates::kGranted);
    EXPECT_EQ(host.panelResets, 2);
}

TEST_F(RemoteReceiverTest, IgnoresTheEndOfAnotherPipe)
{
    Receive(framePiped, Notice(8, "Bob"));
    Receive(framePipeBroken, Notice(9, "Cid"));
    EXPECT_EQ(session.mPipedTo.Id(), 8);
    EXPECT_EQ(session.RemoteState, RemoteStates::kWaiting);
    EXPECT_EQ(disconnects, 0);
}

TEST_F(RemoteReceiverTest, DisconnectsWhenTheOtherEndBreaksThePipe)
{
    Receive(framePiped, Notice(8, "Bob"));
    host.mounted = true;
    Receive(framePipeBroken, Notice(8, " Bob "));
    EXPECT_TRUE(session.mPipedTo.IsNobody());
    EXPECT_FALSE(chat.remote);
    EXPECT_EQ(host.forgotten, 1);
    EXPECT_EQ(disconnects, 1);
    EXPECT_THAT(windows.timed, ElementsAre(std::pair(QStringLiteral("Bob has disconnected from you!"), 2000)));
}

TEST_F(RemoteReceiverTest, SaysNothingOfAPipeThatThisToolBreaks)
{
    Receive(framePiped, Notice(8, "Bob"));
    sender.sendBreakPipeRequest();
    EXPECT_EQ(ReadPipeNumber(Sent(frameBreakPipe)), 8);
    Receive(framePipeBroken, Notice(8, "Bob"));
    EXPECT_EQ(session.RemoteState, RemoteStates::kLoggedOn);
    EXPECT_EQ(disconnects, 0);
    EXPECT_THAT(windows.timed, IsEmpty());
    EXPECT_TRUE(session.mExpectingBreak);
}

TEST_F(RemoteReceiverTest, OpensTheChatForAMessage)
{
    session.mPipedTo = {QStringLiteral("Bob"), QStringLiteral("8"), {}, {}};
    Receive(frameChat, "h\xE9");
    EXPECT_TRUE(chat.visible);
    EXPECT_EQ(chat.remote->Id(), 8);
    EXPECT_THAT(chat.lines, ElementsAre(QStringLiteral("Bob: h\u00E9")));
}

TEST_F(RemoteReceiverTest, FetchesAListThatHasChanged)
{
    session.userListReceived = true;
    Receive(frameUserListChanged, "whatever");
    EXPECT_FALSE(session.userListReceived);
    EXPECT_EQ(Sent(frameUserListRequest), "");
}

TEST_F(RemoteReceiverTest, GivesNetworkMessagesToTheLinkEngine)
{
    // Command 921, data 5, in two frames of the pipe: the vehicle's frames may lie across them.
    const auto bytes = Frame{921, false, false, 5}.Encode();
    const std::string message(bytes.begin(), bytes.end());
    Receive(frameNetworkMessage, message.substr(0, 4));
    EXPECT_EQ(handler.ReceivedMessagesPending(), 0);
    Receive(frameNetworkMessage, message.substr(4));
    const auto received = handler.GetMessageReceived();
    ASSERT_TRUE(received);
    EXPECT_EQ(received->Command, 921);
    EXPECT_EQ(received->data, 5);
}

struct Access {
    const char* name;
    int before;
    char flag;
    int after;
};

class AccessReplies : public RemoteReceiverTest, public testing::WithParamInterface<Access> {};

TEST_P(AccessReplies, MoveTheState)
{
    GoTo(GetParam().before);
    Receive(frameBussAccessReply, std::string(1, GetParam().flag) + "text");
    EXPECT_EQ(session.RemoteState, GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(RemoteReceiver, AccessReplies,
                         testing::Values(Access{"GrantWhileWaiting", 4, 1, 6}, Access{"GrantAfterDenial", 5, 3, 6},
                                         Access{"GrantWithoutPipe", 3, 1, 3}, Access{"DenialWhileWaiting", 4, 0, 4},
                                         Access{"DenialAfterGrant", 6, 2, 5}, Access{"DenialAgain", 5, 0, 5}),
                         [](const auto& row) { return row.param.name; });

TEST_F(RemoteReceiverTest, ShowsTheServersErrors)
{
    Receive(frameServerError, "Full");
    Receive(frameFramingError, "ignored");
    ASSERT_THAT(boxes.boxes, SizeIs(2));
    EXPECT_EQ(boxes.boxes[0].text, QStringLiteral("Server Error: Full"));
    EXPECT_EQ(boxes.boxes[1].text, QStringLiteral("A framing error was received from the server."));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
    EXPECT_EQ(boxes.boxes[1].icon, QMessageBox::Critical);
    EXPECT_TRUE(socket.IsConnected());
}

class SilentTypes : public RemoteReceiverTest, public testing::WithParamInterface<int> {};

TEST_P(SilentTypes, AreDroppedWithTheirBodies)
{
    Receive(PipeFrameType(GetParam()), "body");
    Receive(PipeFrameType(GetParam()));
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(errors.reports, IsEmpty());
    EXPECT_THAT(windows.replies, SizeIs(2));
    EXPECT_EQ(session.RemoteState, 0);
}

INSTANTIATE_TEST_SUITE_P(RemoteReceiver, SilentTypes, testing::Values(51, 53, 91, 0, 1, 2, 5, 200, -1, 32767, -32768));

TEST_F(RemoteReceiverTest, PutsFramesTogetherThatWereCutAnywhere)
{
    const std::string frame = EncodePipeFrame(frameChat, "Hello");
    for (std::size_t cut = 1; cut < frame.size(); ++cut) {
        relay.SendBytes(frame.substr(0, cut));
        Turns(1);
        EXPECT_EQ(chat.lines.size(), cut - 1) << cut;
        Receive(frame.substr(cut));
        EXPECT_EQ(chat.lines.size(), cut);
    }
    EXPECT_THAT(errors.reports, IsEmpty());
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(RemoteReceiverTest, TellsABadPreambleAndReadsOnWithTheNextBytes)
{
    ReceiveBad(std::string("\xFF\xFF\x21\0\0\0", 6) + EncodePipeFrame(frameChat, "lost"));
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, QStringLiteral("Bad preamble value [-1]"));
    EXPECT_EQ(boxes.boxes[0].icon, QMessageBox::Critical);
    Receive(frameChat, "found");
    EXPECT_THAT(chat.lines, ElementsAre(QStringLiteral(": found")));
    EXPECT_TRUE(socket.IsConnected());
}

struct Bad {
    const char* name;
    int type;
    int length;
    int sent;  ///< bytes of the body
};

class BadLengths : public RemoteReceiverTest, public testing::WithParamInterface<Bad> {};

TEST_P(BadLengths, AreReportedAndLoseWhatIsBehindThem)
{
    std::string header = EncodePipeFrame(PipeFrameType(GetParam().type), {});
    header[4] = char(GetParam().length & 0xFF);
    header[5] = char(GetParam().length >> 8 & 0xFF);
    ReceiveBad(header + std::string(std::size_t(GetParam().sent), 'x') + EncodePipeFrame(frameChat, "lost"));
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, 5);
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("frmDiag.Winsock.DataArrival"));
    EXPECT_EQ(session.RemoteState, 0);
    Receive(frameChat, "found");
    EXPECT_THAT(chat.lines, ElementsAre(QStringLiteral(": found")));
    EXPECT_TRUE(socket.IsConnected());
}

INSTANTIATE_TEST_SUITE_P(RemoteReceiver, BadLengths,
                         testing::Values(Bad{"Minus1", 33, -1, 0}, Bad{"Least", 33, -32768, 0},
                                         Bad{"LogonWithoutAnId", 6, 3, 3}, Bad{"LogonOfNothing", 6, 0, 0},
                                         Bad{"PipedWithoutAName", 31, 53, 53}, Bad{"PipedOfNothing", 31, 0, 0},
                                         Bad{"BrokenWithoutAName", 32, 53, 53}, Bad{"AccessOfNothing", 52, 0, 0}),
                         [](const auto& row) { return row.param.name; });

TEST_F(RemoteReceiverTest, TakesTheLongestFrame)
{
    Receive(frameChat, std::string(PipeFrame::kLongestBody, 'x'));
    ASSERT_THAT(chat.lines, SizeIs(1));
    EXPECT_EQ(chat.lines[0].size(), 2 + int(PipeFrame::kLongestBody));
}

TEST_F(RemoteReceiverTest, HandlesFramesWhileABoxIsOpen)
{
    bool waited = false;
    boxes.whileOpen = [&] { waited = Until([this] { return !chat.lines.empty(); }); };
    // Both arrive at once: the box must not keep the second from being handled.
    Receive(EncodePipeFrame(frameServerError, "Full") + EncodePipeFrame(frameChat, "inside"));
    EXPECT_TRUE(waited);
}

TEST_F(RemoteReceiverTest, StacksOnlySoManyBoxes)
{
    int open = 0;
    int deepest = 0;
    boxes.whileOpen = [&] {
        deepest = std::max(deepest, ++open);
        Turns(3);
        --open;
    };
    std::string errorsOfServer;
    for (int i = 0; i < 100; ++i)
        errorsOfServer += EncodePipeFrame(frameServerError, "again");
    Receive(errorsOfServer);
    EXPECT_TRUE(Until([this] { return boxes.boxes.size() == 100; }));
    EXPECT_EQ(deepest, RemoteReceiver::kDeepest);
}

TEST_F(RemoteReceiverTest, KeepsUpWithAFlood)
{
    std::string flood;
    for (int i = 0; i < 50000; ++i)
        flood += EncodePipeFrame(frameServerInfo, "12345678");
    Receive(flood + EncodePipeFrame(frameChat, "last"));
    EXPECT_THAT(chat.lines, SizeIs(1));
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(RemoteReceiverTest, DropsWhatStandsBehindAFrameThatEndsTheConnection)
{
    boxes.whileOpen = [this] {
        socket.Close();
        receiver.Clear();
    };
    relay.SendBytes(EncodePipeFrame(frameFramingError, "") + EncodePipeFrame(frameChat, "late"));
    ASSERT_TRUE(Until([this] { return !boxes.boxes.empty(); }));
    Turns(5);
    EXPECT_THAT(chat.lines, IsEmpty());
}

}  // namespace
}  // namespace fenrik
