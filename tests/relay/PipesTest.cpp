#include "relay/RelayFixture.h"

namespace fenrik {
namespace {

using enum PipeFrameType;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kGranted = "\x01";
const std::string kDenied(1, '\0');

TEST_F(RelayTest, TellsBothEndsOfAPipeWhoIsAtTheOther)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    ada.Send(framePipeTo, PipeNumber(bob.Id()));
    const auto toAda = PipeNotice::Decode(ada.ReadAll().front().body);
    EXPECT_EQ(toAda->clientID, bob.Id());
    EXPECT_EQ(toAda->name, "Bob");
    EXPECT_EQ(toAda->text, "Piped to Bob");
    const auto atBob = bob.ReadAll();
    EXPECT_THAT(atBob, ElementsAre(IsNotice(framePiped, ada.Id()), IsFrame(frameBussAccessRequest, "")));
    EXPECT_EQ(PipeNotice::Decode(atBob.front().body)->name, "Ada");
}

TEST_F(RelayTest, TellsAnEndThatAsksAgainForItsPipeAndNobodyElse)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    PipeWithAccess(ada, bob);
    for (auto* end : {&ada, &bob})
        end->Send(framePipeTo, PipeNumber(end == &ada ? bob.Id() : ada.Id()));
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsNotice(framePiped, bob.Id())));
    EXPECT_THAT(bob.ReadAll(), ElementsAre(IsNotice(framePiped, ada.Id())));
    // The end that was piped is still the one with the network.
    bob.Send(frameNetworkMessage, "123456");
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsFrame(frameNetworkMessage, "123456")));
}

TEST_F(RelayTest, GivesNoPipeToNobodyToOneselfOrToAPipedUser)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    auto eve = LogOn("Eve");
    Pipe(ada, bob);
    const std::pair<std::int32_t, const char*> rows[] = {
        {0, "This user is not logged on."},
        {-1, "This user is not logged on."},
        {99, "This user is not logged on."},
        {eve.Id(), "You can't be piped to yourself."},
        {ada.Id(), "Ada is already piped to another user."},
        {bob.Id(), "Bob is already piped to another user."},
    };
    for (const auto& [id, objection] : rows) {
        eve.Send(framePipeTo, PipeNumber(id));
        EXPECT_THAT(eve.ReadAll(), ElementsAre(IsFrame(frameServerError, objection)));
    }
    ada.Send(framePipeTo, PipeNumber(eve.Id()));
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsFrame(frameServerError, "You are piped to Bob already.")));
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_THAT(eve.ReadAll(), IsEmpty());
}

TEST_F(RelayTest, BreaksAPipeForBothEnds)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    Pipe(ada, bob);
    ada.Send(frameBreakPipe, PipeNumber(bob.Id()));
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsNotice(framePipeBroken, bob.Id())));
    const auto atBob = bob.ReadAll();
    ASSERT_THAT(atBob, ElementsAre(IsNotice(framePipeBroken, ada.Id())));
    EXPECT_EQ(PipeNotice::Decode(atBob.front().body)->name, "Ada");
    Pipe(bob, ada);
}

TEST_F(RelayTest, BreaksNoPipeOfOthers)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    auto eve = LogOn("Eve");
    auto dan = LogOn("Dan");
    Pipe(ada, bob);
    for (const auto id : {ada.Id(), bob.Id(), eve.Id(), 0}) {
        eve.Send(frameBreakPipe, PipeNumber(id));
        EXPECT_THAT(eve.ReadAll(), IsEmpty());
    }
    Pipe(eve, dan);
    eve.Send(frameBreakPipe, PipeNumber(ada.Id()));
    for (auto* client : {&ada, &bob, &eve, &dan})
        EXPECT_THAT(client->ReadAll(), IsEmpty());
}

TEST_F(RelayTest, BreaksThePipeOfAUserWhoLeaves)
{
    const auto leave = [&](RelayClient& client, int way) {
        if (way == 0)
            client.Send(frameLogoff, PipeNumber(client.Id()));
        else if (way == 1)
            client.SendBytes("nonsense");
        else
            client.Close();
    };
    for (int way = 0; way < 3; ++way) {
        auto ada = LogOn("Ada");
        auto bob = LogOn("Bob");
        Pipe(ada, bob);
        leave(ada, way);
        const auto broken = bob.Read();
        ASSERT_TRUE(broken);
        EXPECT_THAT(*broken, IsNotice(framePipeBroken, ada.Id())) << way;
        EXPECT_THAT(bob.ReadAll(), IsEmpty());
        auto eve = LogOn("Eve");
        Pipe(bob, eve);
    }
}

TEST_F(RelayTest, PassesChatAndEchoesOn)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    Pipe(ada, bob);
    const std::string body("Gr\xFC\xDF Gott\0!", 11);
    for (const auto type : {frameChat, frameEchoClient, frameEchoReply}) {
        ada.Send(type, body);
        EXPECT_THAT(ada.ReadAll(), IsEmpty());
        EXPECT_THAT(bob.ReadAll(), ElementsAre(IsFrame(type, body)));
        bob.Send(type, "");
        EXPECT_THAT(bob.ReadAll(), IsEmpty());
        EXPECT_THAT(ada.ReadAll(), ElementsAre(IsFrame(type, "")));
    }
}

TEST_F(RelayTest, DropsWhatIsMeantForAPartnerThatIsNotThere)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    for (const auto type : {frameChat, frameEchoClient, frameEchoReply, frameNetworkMessage}) {
        ada.Send(type, "123456");
        EXPECT_THAT(ada.ReadAll(), IsEmpty());
    }
    ada.Send(frameBussAccessRequest, PipeNumber(bob.Id()));
    ada.Send(frameBussAccessReply, kGranted);
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_THAT(text.str(), HasSubstr("sent frameChat without a pipe"));
}

TEST_F(RelayTest, LetsTheOpenerWatchAtOnceAndSendWhenItMay)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    Pipe(ada, bob);
    const auto send = [](RelayClient& from, RelayClient& to) {
        from.Send(frameNetworkMessage, "123456");
        EXPECT_THAT(from.ReadAll(), IsEmpty());
        return to.ReadAll();
    };
    const auto message = IsFrame(frameNetworkMessage, "123456");
    EXPECT_THAT(send(bob, ada), ElementsAre(message));
    EXPECT_THAT(send(ada, bob), IsEmpty());

    bob.Send(frameBussAccessReply, kGranted + "Please");
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsFrame(frameBussAccessReply, kGranted + "Please")));
    EXPECT_THAT(send(ada, bob), ElementsAre(message));

    bob.Send(frameBussAccessReply, kDenied);
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsFrame(frameBussAccessReply, kDenied)));
    EXPECT_THAT(send(ada, bob), IsEmpty());
    EXPECT_THAT(send(bob, ada), ElementsAre(message));
}

TEST_F(RelayTest, ForgetsAccessWithThePipe)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    PipeWithAccess(ada, bob);
    ada.Send(frameBreakPipe, PipeNumber(bob.Id()));
    EXPECT_THAT(ada.ReadAll(), ElementsAre(HasType(framePipeBroken)));
    EXPECT_THAT(bob.ReadAll(), ElementsAre(HasType(framePipeBroken)));
    Pipe(ada, bob);
    ada.Send(frameNetworkMessage, "123456");
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
}

TEST_F(RelayTest, LetsNobodyGrantItselfAccess)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    Pipe(ada, bob);
    ada.Send(frameBussAccessReply, kGranted);
    ada.Send(frameNetworkMessage, "123456");
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
}

TEST_F(RelayTest, PassesARequestForAccessOnWithoutABody)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    Pipe(ada, bob);
    ada.Send(frameBussAccessRequest, PipeNumber(bob.Id()));
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), ElementsAre(IsFrame(frameBussAccessRequest, "")));
    ada.Send(frameBussAccessRequest, PipeNumber(ada.Id()));
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
}

TEST_F(RelayTest, GrantsAccessItselfIfItIsToldTo)
{
    consent = Consent::Grant;
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    ada.Send(framePipeTo, PipeNumber(bob.Id()));
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsNotice(framePiped, bob.Id()),
                                           IsFrame(frameBussAccessReply, kGranted + "The server decides on access.")));
    EXPECT_THAT(bob.ReadAll(), ElementsAre(IsNotice(framePiped, ada.Id())));
    ada.Send(frameNetworkMessage, "123456");
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), ElementsAre(IsFrame(frameNetworkMessage, "123456")));
    bob.Send(frameBussAccessReply, kDenied);
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsFrame(frameBussAccessReply, kDenied)));
}

TEST_F(RelayTest, DeniesAccessWhateverThePipedUserSaysIfItIsToldTo)
{
    consent = Consent::Deny;
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    ada.Send(framePipeTo, PipeNumber(bob.Id()));
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsNotice(framePiped, bob.Id()),
                                           IsFrame(frameBussAccessReply, kDenied + "The server decides on access.")));
    EXPECT_THAT(bob.ReadAll(), ElementsAre(IsNotice(framePiped, ada.Id())));
    bob.Send(frameBussAccessReply, kGranted);
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    ada.Send(frameNetworkMessage, "123456");
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
}

TEST_F(RelayTest, NeverMixesTwoPipes)
{
    std::vector<RelayClient> clients;
    for (const char* name : {"Ada", "Bob", "Eve", "Dan"})
        clients.push_back(LogOn(name));
    PipeWithAccess(clients[0], clients[1]);
    PipeWithAccess(clients[3], clients[2]);
    constexpr int kRounds = 200;
    for (int round = 0; round < kRounds; ++round)
        for (std::size_t i = 0; i < clients.size(); ++i) {
            clients[i].Send(frameNetworkMessage, "from " + std::to_string(i));
            clients[i].Send(frameChat, "from " + std::to_string(i));
        }
    std::vector<int> counts(clients.size());
    for (const int pass : {1, 2})  // after the first, all that was sent has been handled
        for (std::size_t i = 0; i < clients.size(); ++i)
            for (const auto& frame : clients[i].ReadAll()) {
                EXPECT_EQ(frame.body, "from " + std::to_string(i ^ 1)) << pass;
                ++counts[i];
            }
    EXPECT_THAT(counts, Each(2 * kRounds));
}

}  // namespace
}  // namespace fenrik
