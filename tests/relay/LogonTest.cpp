#include "relay/RelayFixture.h"

namespace fenrik {
namespace {

using enum PipeFrameType;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(RelayTest, GivesEachUserAnIdOfItsOwn)
{
    const auto ada = LogOn("Ada");
    const auto bob = LogOn("Bob");
    EXPECT_GT(ada.Id(), 0);
    EXPECT_GT(bob.Id(), 0);
    EXPECT_NE(ada.Id(), bob.Id());
    EXPECT_EQ(server->UsersLoggedOn(), 2u);
}

TEST_F(RelayTest, RefusesASecondLogonOfTheSameConnectionAndKeepsTheFirst)
{
    auto ada = LogOn("Ada");
    ada.Send(frameAuthenticate, PipeLogon{"eve", "OEMClient", "Eve"}.Encode());
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsFrame(frameServerError, "You are logged on already.")));
    EXPECT_EQ(server->UsersLoggedOn(), 1u);
    ada.Send(frameUserListRequest);
    const auto list = PipeUserRecord::DecodeList(ada.Read()->body);
    ASSERT_EQ(list->size(), 1u);
    EXPECT_EQ(list->front().clientID, ada.Id());
    EXPECT_EQ(list->front().userName, "Ada");
}

TEST_F(RelayTest, DoesNotLookAtTheFieldOfASecret)
{
    auto ada = Connect();
    ada.Send(frameAuthenticate, std::string(50, '\xFF') + PipeLogon{"ada", "Other", "Ada"}.Encode().substr(50));
    EXPECT_EQ(ada.Read()->type, frameAuthenticated);
}

TEST_F(RelayTest, LetsAUserLogOnTwiceOverTwoConnections)
{
    const auto first = LogOn("Ada");
    const auto second = LogOn("Ada");
    EXPECT_NE(first.Id(), second.Id());
}

TEST_F(RelayTest, LogsAUserOffAndHangsUp)
{
    auto ada = LogOn("Ada");
    ada.Send(frameLogoff, PipeNumber(ada.Id()));
    EXPECT_THAT(ada.ReadToEnd(), IsEmpty());
    EXPECT_EQ(server->UsersLoggedOn(), 0u);
}

TEST_F(RelayTest, LogsNobodyElseOff)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    ada.Send(frameLogoff, PipeNumber(bob.Id()));
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_EQ(server->UsersLoggedOn(), 2u);
}

TEST_F(RelayTest, ForgetsAUserWhoseConnectionBreaks)
{
    {
        auto ada = LogOn("Ada");
        ada.SendBytes("\x50\x53\x21");
    }
    TurnUntil([&] { return server->Connections() == 0; });
    EXPECT_EQ(server->UsersLoggedOn(), 0u);
    EXPECT_THAT(text.str(), HasSubstr("hung up"));
}

TEST_F(RelayTest, TurnsAwayWhoComesWhenTheServerIsFull)
{
    limits.users = 2;
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    auto eve = Connect();
    eve.Send(frameAuthenticate, PipeLogon{"eve", "OEMClient", "Eve"}.Encode());
    EXPECT_THAT(eve.ReadToEnd(), ElementsAre(IsFrame(frameServerError, "The server is full.")));
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    bob.Close();
    TurnUntil([&] { return server->UsersLoggedOn() == 1; });
    LogOn("Eve");
}

TEST_F(RelayTest, HoldsOnlySoManyConnectionsThatHaveNotLoggedOn)
{
    limits.users = 1;  // and 16 that may still log on
    limits.usersPerAddress = 1000;
    std::vector<RelayClient> clients;
    for (int i = 0; i < limits.Connections(); ++i)
        clients.push_back(Connect());
    TurnUntil([&] { return server->Connections() == std::size_t(limits.Connections()); });
    auto late = Connect();
    EXPECT_THAT(late.ReadToEnd(), IsEmpty());
    EXPECT_EQ(server->Connections(), std::size_t(limits.Connections()));
    EXPECT_THAT(text.str(), HasSubstr("too many connections"));
}

TEST_F(RelayTest, HoldsOnlySoManyConnectionsOfOneAddress)
{
    limits.usersPerAddress = 2;
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    auto eve = Connect();
    EXPECT_THAT(eve.ReadToEnd(),
                ElementsAre(IsFrame(frameServerError, "There are too many connections from your address.")));
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    ada.Close();
    eve.Close();
    TurnUntil([&] { return server->Connections() == 1; });
    LogOn("Eve");
}

TEST_F(RelayTest, SaysNothingToAnAddressThatGoesOnConnecting)
{
    limits.usersPerAddress = 1;
    auto ada = LogOn("Ada");
    std::vector<RelayClient> clients;
    for (int i = 0; i < 100; ++i)
        clients.push_back(Connect());
    EXPECT_THAT(clients.back().ReadToEnd(), IsEmpty());
    EXPECT_LT(server->Connections(), 20u);
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
}

TEST_F(RelayTest, TurnsAwayWhoIsSilentBeforeTheLogon)
{
    auto ada = LogOn("Ada");
    auto eve = Connect();
    TurnUntil([&] { return server->Connections() == 2; });
    now += limits.logonSeconds - 0.1;
    server->Turn(0);
    eve.SendBytes("\x50\x53");  // no frame yet
    now += 0.2;
    EXPECT_THAT(eve.ReadToEnd(), ElementsAre(IsFrame(frameServerError, "You did not log on in time.")));
    now += 3600;
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
}

class BeforeLogon : public RelayTest, public testing::WithParamInterface<std::pair<PipeFrameType, std::size_t>> {};

TEST_P(BeforeLogon, OtherFramesAreTurnedAway)
{
    auto ada = LogOn("Ada");
    auto eve = Connect();
    eve.Send(GetParam().first, std::string(GetParam().second, '\1'));
    EXPECT_THAT(eve.ReadToEnd(), ElementsAre(IsFrame(frameServerError, "You are not logged on.")));
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Relay, BeforeLogon,
                         testing::Values(std::pair(frameEchoServer, 5), std::pair(frameEchoClient, 5),
                                         std::pair(frameEchoReply, 5), std::pair(frameLogoff, 4),
                                         std::pair(frameUserListRequest, 0), std::pair(framePipeTo, 4),
                                         std::pair(frameBreakPipe, 4), std::pair(frameChat, 5),
                                         std::pair(frameNetworkMessage, 6), std::pair(frameBussAccessRequest, 4),
                                         std::pair(frameBussAccessReply, 1), std::pair(frameServerInfoRequest, 0)));

struct NameRow {
    const char* name;
    std::string logonID;
    std::string sent;
    std::string shown;
};

class Names : public RelayTest, public testing::WithParamInterface<NameRow> {};

TEST_P(Names, AreShownToOthersWithoutControlCharacters)
{
    auto ada = Connect();
    ada.Send(frameAuthenticate, PipeLogon{GetParam().logonID, "OEMClient", GetParam().sent}.Encode());
    ASSERT_EQ(ada.Read()->type, frameAuthenticated);
    ada.Send(frameUserListRequest);
    EXPECT_EQ(PipeUserRecord::DecodeList(ada.Read()->body)->front().userName, GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Relay, Names,
                         testing::Values(NameRow{"Plain", "ada", "Ada [Diag Client]", "Ada [Diag Client]"},
                                         NameRow{"Zeros", "ada", std::string("A\0da\0", 5), "A da"},
                                         NameRow{"LineEnds", "ada", "Ada\r\nBob", "Ada  Bob"},
                                         NameRow{"Blanks", "ada", "   Ada   ", "Ada"},
                                         NameRow{"TopOfTheCodePage", "ada", "\xFF\xE9", "\xFF\xE9"},
                                         NameRow{"FullWidth", "ada", std::string(50, 'n'), std::string(50, 'n')},
                                         NameRow{"Empty", "ada", "", "ada"},
                                         NameRow{"NothingButZeros", "", std::string(50, '\0'), "User 1"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(RelayTest, NamesCannotForgeALineOfTheLog)
{
    auto ada = Connect();
    ada.Send(frameAuthenticate, PipeLogon{"x\nuser 9 \"Eve\" logged on", "\x1B[2J", "Ada\nEve"}.Encode());
    ASSERT_EQ(ada.Read()->type, frameAuthenticated);
    EXPECT_EQ(std::ranges::count(text.str(), '\n'), 1);
    EXPECT_EQ(text.str().find('\x1B'), std::string::npos);
}

TEST_F(RelayTest, NamesInTheReasonsOfTheLogCannotSteerATerminal)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob\x9B\xE9\"");
    auto eve = LogOn("Eve");
    Pipe(ada, bob);
    eve.Send(framePipeTo, PipeNumber(bob.Id()));
    ASSERT_EQ(eve.Read()->type, frameServerError);
    EXPECT_THAT(text.str(), HasSubstr("got no pipe: Bob\\x9B\xC3\xA9\\x22 is already piped"));
    EXPECT_EQ(text.str().find('\x9B'), std::string::npos);
}

TEST_F(RelayTest, TellsOfItself)
{
    auto ada = LogOn("Ada");
    ada.Send(frameServerInfoRequest);
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsFrame(frameServerInfo, "fenrik-relay " FENRIK_VERSION
                                                                    "; users: 1; pipes: 0; access is granted by the "
                                                                    "piped user")));
}

TEST_F(RelayTest, AnswersAnEchoToTheServerItself)
{
    auto ada = LogOn("Ada");
    for (const auto& body : {std::string("12345678901234567890123456789012"), std::string(), std::string(4096, '\0')}) {
        ada.Send(frameEchoServer, body);
        EXPECT_EQ(*ada.Read(), (PipeFrame{frameEchoReply, body}));
    }
}

}  // namespace
}  // namespace fenrik
