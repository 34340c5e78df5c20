#include "platform/Error.h"
#include "remote/PipeFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RemoteStateTest : public PipeFixture {};

struct Texts {
    int state;
    const char* status;
    const char* message;
    const char* image;
};

class RemoteStateTexts : public RemoteStateTest, public testing::WithParamInterface<Texts> {};

TEST_P(RemoteStateTexts, AreShownOnceAndTheButtonsEachTime)
{
    const Texts& row = GetParam();
    GoTo(row.state);
    EXPECT_THAT(view.statuses, ElementsAre(QString::fromLatin1(row.status)));
    EXPECT_THAT(view.messages, ElementsAre(QString::fromLatin1(row.message)));
    EXPECT_EQ(view.actions, 1);

    view.chatImage.clear();
    view.chatEnabled = view.pingEnabled = false;
    GoTo(row.state);
    EXPECT_THAT(view.messages, SizeIs(1));
    EXPECT_EQ(view.chatImage, row.image);
    EXPECT_EQ(view.chatEnabled, row.state >= 4);
    EXPECT_EQ(view.pingEnabled, row.state >= 2);
    EXPECT_EQ(view.actions, 1);
    EXPECT_EQ(view.captions, row.state >= 4 ? 1 : 0);
    EXPECT_EQ(view.timers, row.state >= 4 ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    RemoteState, RemoteStateTexts,
    testing::Values(Texts{1, "Disconnected", "Disconnected from Server", "RDChat"},
                    Texts{2, "Connected", "Connected to Server", "RDChat"},
                    Texts{3, "Logged On", "Authenticated by Server", "RDChat"},
                    Texts{4, "Piped", "Piped to Bob", "RDChat"}, Texts{5, "Piped", "Piped to Bob", "RDChatDenied"},
                    Texts{6, "Piped", "Bob has granted access to remote network", "RDChatGranted"}));

TEST_F(RemoteStateTest, OpensThePortStepByStep)
{
    const auto opened = [this] {
        return std::tuple(session.IsRemoteConnected(), session.IsRemotePiped(), session.IsRemoteGranted());
    };
    for (const int state : {0, 1, 2, 3, 4, 5, 6}) {
        session.RemoteState = state;
        EXPECT_EQ(opened(), std::tuple(state >= 2, state >= 4, state >= 6)) << state;
    }
    handler.setTargetPort(Transport::kTransceiver);
    EXPECT_EQ(opened(), std::tuple(false, false, false));
}

TEST_F(RemoteStateTest, ShowsTheChatWhileWaitingAndHidesItWhenGranted)
{
    GoTo(4);
    EXPECT_TRUE(chat.visible);
    chat.visible = false;
    GoTo(4);
    EXPECT_FALSE(chat.visible) << "what the user closed stays closed in the same state";
    GoTo(5);
    EXPECT_TRUE(chat.visible);
    GoTo(6);
    EXPECT_FALSE(chat.visible);
    EXPECT_TRUE(chat.exists);
    GoTo(1);
    EXPECT_FALSE(chat.exists);
    EXPECT_EQ(windows.usersHidden, 1);
    EXPECT_EQ(windows.latencyHidden, 1);
}

TEST_F(RemoteStateTest, ChangesTheCaptionWhenAPipeEndsToo)
{
    GoTo(4);
    const int captions = view.captions;
    GoTo(3);
    EXPECT_EQ(view.captions, captions + 1);
    GoTo(2);
    EXPECT_EQ(view.captions, captions + 1);
}

TEST_F(RemoteStateTest, NamesTheOtherEndInTheCaption)
{
    EXPECT_EQ(session.PipeCaption(), QString());
    GoTo(4);
    EXPECT_EQ(session.PipeCaption(), QStringLiteral(" [Piped to Bob]"));
    session.mPipedTo = {};
    EXPECT_EQ(session.PipeCaption(), QStringLiteral(" [Piped]"));
}

class Follower : public IRemoteStateable {
public:
    void setState(std::int32_t state) override
    {
        states.push_back(state);
        onState();
    }
    std::vector<int> states;
    std::function<void()> onState = [] {};
};

TEST_F(RemoteStateTest, IsToldToEachWindowAfterTheMainOne)
{
    Follower window;
    int seen = 0;
    window.onState = [&] { seen = session.RemoteState; };
    followers.Add(window);
    followers.setRemoteState(3);
    EXPECT_THAT(window.states, ElementsAre(3));
    EXPECT_EQ(seen, 3);
    followers.Remove(window);
    followers.setRemoteState(4);
    EXPECT_THAT(window.states, SizeIs(1));
}

TEST_F(RemoteStateTest, IsNotToldToAWindowThatCloses)
{
    Follower first;
    Follower second;
    followers.Add(first);
    followers.Add(second);
    first.onState = [&] {
        followers.Remove(first);
        followers.Remove(second);
    };
    followers.setRemoteState(1);
    EXPECT_THAT(first.states, SizeIs(1));
    EXPECT_THAT(second.states, IsEmpty());
}

TEST_F(RemoteStateTest, ReportsAWindowThatFails)
{
    Follower window;
    window.onState = [] { throw Error(9, QStringLiteral("Subscript out of range")); };
    followers.Add(window);
    followers.setRemoteState(2);
    ASSERT_THAT(errors.reports, SizeIs(1));
    EXPECT_EQ(errors.reports[0].where, QStringLiteral("RDMain.setRemoteState"));
}

}  // namespace
}  // namespace fenrik
