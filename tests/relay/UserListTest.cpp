#include "relay/RelayFixture.h"

#include <sys/resource.h>

namespace fenrik {
namespace {

using enum PipeFrameType;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::SizeIs;
using testing::UnorderedElementsAre;

std::vector<PipeUserRecord> FetchList(RelayClient& client)
{
    client.Send(frameUserListRequest);
    const auto frames = client.ReadAll();
    EXPECT_THAT(frames, Contains(HasType(frameUserList)).Times(1));
    return PipeUserRecord::DecodeList(frames.back().body).value();
}

std::vector<std::int32_t> Ids(const std::vector<PipeUserRecord>& list)
{
    std::vector<std::int32_t> ids;
    for (const auto& record : list)
        ids.push_back(record.clientID);
    return ids;
}

TEST_F(RelayTest, ListsAllUsersTheAskingOneAmongThem)
{
    auto ada = LogOn("Ada");
    const auto bob = LogOn("Bob");
    const auto silent = Connect();
    const auto list = FetchList(ada);
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].clientID, ada.Id());
    EXPECT_EQ(list[0].clientIP, "127.0.0.1      ");
    EXPECT_EQ(list[0].userName, "Ada");
    EXPECT_EQ(list[0].userFlags, "          ");
    EXPECT_EQ(list[1].clientID, bob.Id());
}

TEST_F(RelayTest, MarksPipedUsersInTheList)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    auto eve = LogOn("Eve");
    Pipe(ada, bob);
    const auto list = FetchList(eve);
    ASSERT_THAT(list, SizeIs(3));
    EXPECT_EQ(list[0].userFlags, "+         ");
    EXPECT_EQ(list[1].userFlags, "+         ");
    EXPECT_EQ(list[2].userFlags, "          ");
}

class Announcements : public RelayTest {
protected:
    void SetUp() override
    {
        watcher.emplace(LogOn("Watcher"));
        watcher->keepsAnnouncements = true;
        Fetch();
    }
    void Pause()
    {
        now += 10;
        server->Turn(0);
    }
    void Fetch()
    {
        Pause();
        (void)FetchList(*watcher);
    }
    auto Announced()
    {
        Pause();
        return watcher->ReadAll();
    }
    std::optional<RelayClient> watcher;
};

TEST_F(Announcements, ComeWhenAUserComesAndGoes)
{
    EXPECT_THAT(Announced(), IsEmpty());
    auto ada = LogOn("Ada");
    EXPECT_THAT(Announced(), ElementsAre(IsFrame(frameUserListChanged, "")));
    EXPECT_THAT(FetchList(*watcher), SizeIs(2));
    EXPECT_THAT(Announced(), IsEmpty());
    ada.Send(frameLogoff, PipeNumber(ada.Id()));
    EXPECT_THAT(ada.ReadToEnd(), IsEmpty());
    EXPECT_THAT(Announced(), ElementsAre(HasType(frameUserListChanged)));
    EXPECT_THAT(FetchList(*watcher), SizeIs(1));
}

TEST_F(Announcements, ComeWhenAPipeIsMadeAndBroken)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    Fetch();
    Pipe(ada, bob);
    EXPECT_THAT(Announced(), ElementsAre(HasType(frameUserListChanged)));
    Fetch();
    ada.Send(frameBreakPipe, PipeNumber(bob.Id()));
    EXPECT_THAT(ada.ReadAll(), ElementsAre(HasType(framePipeBroken)));
    EXPECT_THAT(Announced(), ElementsAre(HasType(frameUserListChanged)));
}

TEST_F(Announcements, AreOneForManyChangesUntilTheListIsFetched)
{
    std::vector<RelayClient> clients;
    for (int i = 0; i < 10; ++i) {
        clients.push_back(LogOn("User"));
        now += 1;
    }
    EXPECT_THAT(Announced(), ElementsAre(HasType(frameUserListChanged)));
    EXPECT_THAT(FetchList(*watcher), SizeIs(11));
}

TEST_F(Announcements, KeepAPauseBetweenThem)
{
    Pause();
    const auto ada = LogOn("Ada");
    EXPECT_THAT(watcher->ReadAll(), ElementsAre(HasType(frameUserListChanged)));
    (void)FetchList(*watcher);
    const auto bob = LogOn("Bob");
    now += 0.15;
    server->Turn(0);
    EXPECT_THAT(watcher->ReadAll(), IsEmpty());
    now += 0.15;
    server->Turn(0);
    EXPECT_THAT(watcher->ReadAll(), ElementsAre(HasType(frameUserListChanged)));
}

TEST_F(Announcements, AreNotSentToTheUserThatCame)
{
    auto ada = Connect();
    ada.keepsAnnouncements = true;
    ada.LogOn("Ada");
    now += 10;
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
}

TEST_F(RelayTest, HoldsAThousandUsersAndListsThoseOfUse)
{
    rlimit handles{};
    ::getrlimit(RLIMIT_NOFILE, &handles);
    handles.rlim_cur = std::min<rlim_t>(handles.rlim_max, 4096);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &handles), 0);
    ASSERT_GE(handles.rlim_cur, 2100u);

    limits.usersPerAddress = 2000;
    std::vector<RelayClient> clients;
    for (int i = 0; i < limits.users; ++i) {
        clients.push_back(LogOn("User " + std::to_string(i)));
        now += 0.01;
    }
    EXPECT_EQ(server->UsersLoggedOn(), 1000u);
    auto late = Connect();
    late.Send(frameAuthenticate, PipeLogon{"late", "OEMClient", "Late"}.Encode());
    EXPECT_THAT(late.ReadToEnd(), ElementsAre(IsFrame(frameServerError, "The server is full.")));

    for (std::size_t i = 800; i < 1000; i += 2)
        PipeWithAccess(clients[i], clients[i + 1]);
    now += 10;
    const auto free = Ids(FetchList(clients[0]));
    EXPECT_THAT(free, SizeIs(414));
    EXPECT_TRUE(std::ranges::is_sorted(free));
    EXPECT_THAT(free, IsSupersetOf({clients[0].Id(), clients[799].Id(), clients[400].Id()}));
    EXPECT_THAT(free, Not(Contains(clients[900].Id())));
    const auto piped = Ids(FetchList(clients[900]));
    EXPECT_THAT(piped, IsSupersetOf({clients[900].Id(), clients[901].Id()}));
    EXPECT_THAT(piped, Not(Contains(clients[902].Id())));

    clients[900].Send(frameNetworkMessage, "123456");
    EXPECT_THAT(clients[900].ReadAll(), IsEmpty());
    EXPECT_THAT(clients[901].ReadAll(), ElementsAre(IsFrame(frameNetworkMessage, "123456")));
    EXPECT_THAT(clients[903].ReadAll(), IsEmpty());
}

TEST_F(RelayTest, TellsItsUsersWhenItStops)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    auto eve = LogOn("Eve");
    auto silent = Connect();
    TurnUntil([&] { return server->Connections() == 4; });
    Pipe(ada, bob);
    server->Stop();
    const auto told = IsFrame(frameServerError, "The server is being shut down.");
    EXPECT_THAT(ada.ReadToEnd(), ElementsAre(told, IsNotice(framePipeBroken, bob.Id())));
    EXPECT_THAT(bob.ReadToEnd(), ElementsAre(told, IsNotice(framePipeBroken, ada.Id())));
    EXPECT_THAT(eve.ReadToEnd(), ElementsAre(told));
    EXPECT_THAT(silent.ReadToEnd(), ElementsAre(told));
    for (auto* client : {&ada, &bob, &eve})
        client->Close();
    EXPECT_FALSE(server->Finished());
    now += limits.farewellSeconds + 1;
    TurnUntil([&] { return server->Finished(); });
}

}  // namespace
}  // namespace fenrik
