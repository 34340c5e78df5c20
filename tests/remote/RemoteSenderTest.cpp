#include "remote/PipeFixture.h"

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class RemoteSenderTest : public PipeFixture {};

TEST_F(RemoteSenderTest, PadsCutsAndLeavesAlone)
{
    EXPECT_EQ(sender.padTo("ab", 4), QByteArray("ab  "));
    EXPECT_EQ(sender.padTo("abcdef", 4), QByteArray("abcd"));
    EXPECT_EQ(sender.padTo("abcd", 4), QByteArray("abcd"));
    EXPECT_EQ(sender.padTo("", 0), QByteArray());
    EXPECT_THAT(errors.reports, IsEmpty());
    EXPECT_EQ(sender.padTo("ab", -1), QByteArray());
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("frmDiag.padTo"));
}

TEST_F(RemoteSenderTest, SendsAFrameWithoutABody)
{
    sender.sendUserListRequest();
    sender.sendServerInformationRequest();
    EXPECT_EQ(Sent(frameUserListRequest), "");
    EXPECT_EQ(Sent(frameServerInfoRequest), "");
}

TEST_F(RemoteSenderTest, SendsNumbersLowByteFirst)
{
    sender.sendFenrikBussAccessRequest(0x01020304);
    EXPECT_EQ(Sent(frameBussAccessRequest), std::string("\4\3\2\1"));
}

TEST_F(RemoteSenderTest, SendsTextsInTheCodePage)
{
    sender.sendChatMessage(QStringLiteral("5 \u20AC"));
    sender.sendEchoServer(QStringLiteral("s"));
    sender.sendEchoClient(QStringLiteral("c"));
    EXPECT_EQ(Sent(frameChat), "5 \x80");
    EXPECT_EQ(Sent(frameEchoServer), "s");
    EXPECT_EQ(Sent(frameEchoClient), "c");
}

TEST_F(RemoteSenderTest, CutsALongNameWithItsAddition)
{
    sender.sendAuthentication({QString(40, QLatin1Char('n')), QStringLiteral("id"), {}, 0});
    const std::string body = Sent(frameAuthenticate);
    ASSERT_EQ(body.size(), 165U);
    EXPECT_EQ(body.substr(0, 50), std::string(50, '\0'));
    EXPECT_EQ(body.substr(50, 50), "id" + std::string(48, ' '));
    EXPECT_EQ(body.substr(100, 15), "OEMClient      ");
    EXPECT_EQ(body.substr(115), std::string(40, 'n') + " [Diag Cli");
    EXPECT_EQ(view.Message(), QStringLiteral("Authenticating ..."));
}

TEST_F(RemoteSenderTest, SendsTheLongestBodyAndNoLongerOne)
{
    sender.sendFrame(frameChat, QByteArray(32768, 'x'));
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].number, 6);
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("frmDiag.SendFrame"));
    sender.sendFrame(frameChat, QByteArray(32767, 'x'));
    EXPECT_EQ(Sent(frameChat).size(), 32767U);
    EXPECT_EQ(relay.frames.size(), 1U);
}

TEST_F(RemoteSenderTest, AsksForNoPipeWhileOneToSomebodyElseStands)
{
    session.mPipedTo = {QStringLiteral("Cid"), QStringLiteral("9"), {}, {}};
    sender.sendPipeToRequest(8, QStringLiteral("Bob"));
    EXPECT_EQ(session.mPipedTo.Id(), 9);
    sender.sendPipeToRequest(9, QStringLiteral("Cid again"));
    EXPECT_EQ(ReadPipeNumber(Sent(framePipeTo)), 9);
    EXPECT_EQ(session.mPipedTo.UserName, QStringLiteral("Cid again"));
}

TEST_F(RemoteSenderTest, SetsThePipesUserBeforeTheAnswer)
{
    sender.sendPipeToRequest(8, QStringLiteral("Bob"));
    EXPECT_EQ(session.mPipedTo.UserName, QStringLiteral("Bob"));
    EXPECT_EQ(session.mPipedTo.Id(), 8);
}

TEST_F(RemoteSenderTest, ReportsWhatCannotBeSent)
{
    socket.Close();
    sender.sendChatMessage(QStringLiteral("x"));
    sender.sendLogoff();
    ASSERT_THAT(errors.reports, SizeIs(2));
    EXPECT_EQ(errors.reports[0].number, RemoteSocket::kNotConnected);
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("frmDiag.SendFrame"));
    EXPECT_EQ(errors.reports[1].where, QStringLiteral("frmDiag.sendFrameLng"));
}

}  // namespace
}  // namespace fenrik
