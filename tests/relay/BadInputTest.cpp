#include "relay/RelayFixture.h"

#include <sys/socket.h>

namespace fenrik {
namespace {

using enum PipeFrameType;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

std::string Header(int preamble, int type, int length)
{
    const auto both = [](int value) { return PipeNumber(value).substr(0, 2); };
    return both(preamble) + both(type) + both(length);
}

struct BadRow {
    const char* name;
    std::string bytes;
};

std::string Typed(PipeFrameType type, std::size_t length)
{
    return EncodePipeFrame(type, std::string(length, '\0'));
}

const BadRow kBadRows[] = {
    {"PreambleTurned", Header(0x5053, 33, 0)},
    {"PreambleZero", Header(0, 33, 0)},
    {"HalfAPreamble", "\x50\x50"},
    {"AnotherProtocol", "GET / HTTP/1.1\r\n\r\n"},
    {"LengthMinusOne", Header(21328, 33, -1)},
    {"LengthLeast", Header(21328, 33, -32768)},
    {"LengthAboveTheLimit", Header(21328, 33, 4097)},
    {"LengthGreatest", Header(21328, 33, 32767)},
    {"TypeUnknown", Typed(PipeFrameType(200), 0)},
    {"TypeNegative", Typed(PipeFrameType(-33), 0)},
    {"TypeZero", Typed(PipeFrameType(0), 0)},
    {"TypeOfTheServer", Typed(frameUserList, 0)},
    {"TypeOfTheServerPiped", EncodePipeFrame(framePiped, std::string(54, 'x'))},
    {"TypeOfTheServerBroken", EncodePipeFrame(framePipeBroken, std::string(54, 'x'))},
    {"TypeOfTheServerError", Typed(frameServerError, 5)},
    {"Reserved", Typed(frameReserved53, 0)},
    {"ShortLogon", Typed(frameAuthenticate, 164)},
    {"LongLogon", Typed(frameAuthenticate, 166)},
    {"EmptyLogoff", Typed(frameLogoff, 0)},
    {"ListWithABody", Typed(frameUserListRequest, 1)},
    {"EmptyPipeTo", Typed(framePipeTo, 0)},
    {"LongPipeTo", Typed(framePipeTo, 5)},
    {"ShortBreak", Typed(frameBreakPipe, 3)},
    {"ShortMessage", Typed(frameNetworkMessage, 5)},
    {"LongMessage", Typed(frameNetworkMessage, 7)},
    {"TwoMessages", Typed(frameNetworkMessage, 12)},
    {"EmptyAccessRequest", Typed(frameBussAccessRequest, 0)},
    {"EmptyAccessReply", Typed(frameBussAccessReply, 0)},
    {"InfoWithABody", Typed(frameServerInfoRequest, 1)},
};

void PrintTo(const BadRow& row, std::ostream* out)
{
    *out << row.name;
}

class BadFrames : public RelayTest, public testing::WithParamInterface<BadRow> {};

TEST_P(BadFrames, EndTheirSenderAloneWithAFramingError)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    auto eve = LogOn("Eve");
    Pipe(ada, bob);
    eve.SendBytes(GetParam().bytes);
    EXPECT_THAT(eve.ReadToEnd(), ElementsAre(HasType(frameFramingError)));
    EXPECT_THAT(ada.ReadAll(), IsEmpty());
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_EQ(server->UsersLoggedOn(), 2u);
}

TEST_P(BadFrames, EndAnEndOfAPipeAndTheOtherHearsOnlyThatItBroke)
{
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    PipeWithAccess(ada, bob);
    ada.SendBytes(EncodePipeFrame(frameChat, "last words") + GetParam().bytes + EncodePipeFrame(frameChat, "more"));
    EXPECT_THAT(ada.ReadToEnd(), ElementsAre(HasType(frameFramingError)));
    EXPECT_THAT(bob.ReadAll(), ElementsAre(IsFrame(frameChat, "last words"), IsNotice(framePipeBroken, ada.Id())));
}

TEST_P(BadFrames, EndAClientThatHasNotLoggedOn)
{
    auto eve = Connect();
    eve.SendBytes(GetParam().bytes);
    EXPECT_THAT(eve.ReadToEnd(), ElementsAre(HasType(frameFramingError)));
    EXPECT_EQ(server->UsersLoggedOn(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Relay, BadFrames, testing::ValuesIn(kBadRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(RelayTest, TakesFramesThatAreCutAtAnyByte)
{
    limits.framesPerSecond = 1e6;
    auto bob = LogOn("Bob");
    const auto logon = EncodePipeFrame(frameAuthenticate, PipeLogon{"ada", "OEMClient", "Ada"}.Encode());
    const auto rest = EncodePipeFrame(framePipeTo, PipeNumber(bob.Id())) + EncodePipeFrame(frameChat, "Hello");
    const auto all = logon + rest;
    for (std::size_t cut = 1; cut < all.size(); ++cut) {
        auto ada = Connect();
        ada.SendBytes(all.substr(0, cut));
        server->Turn(10);
        ada.SendBytes(all.substr(cut));
        EXPECT_THAT(ada.ReadAll(), ElementsAre(HasType(frameAuthenticated), HasType(framePiped))) << cut;
        EXPECT_THAT(bob.ReadAll(),
                    ElementsAre(HasType(framePiped), HasType(frameBussAccessRequest), IsFrame(frameChat, "Hello")))
            << cut;
        ada.Close();
        EXPECT_THAT(*bob.Read(), HasType(framePipeBroken));
        now += 1;
    }
}

TEST_F(RelayTest, ForgetsAClientThatLeavesInTheMiddleOfAFrame)
{
    const auto bytes = EncodePipeFrame(frameAuthenticate, PipeLogon{"ada", "OEMClient", "Ada"}.Encode());
    for (std::size_t cut = 0; cut <= bytes.size(); cut += 19) {
        auto ada = Connect();
        ada.SendBytes(bytes.substr(0, cut));
        ada.Close();
        TurnUntil([&] { return server->Connections() == 0; });
        now += 1;
    }
    EXPECT_EQ(server->UsersLoggedOn(), 0u);
}

TEST_F(RelayTest, LetsAFloodWaitAndServesTheOthersMeanwhile)
{
    limits.framesPerSecond = 100;
    auto ada = LogOn("Ada");
    auto bob = LogOn("Bob");
    now += 10;
    constexpr int kFlood = 5000;
    std::string flood;
    for (int i = 0; i < kFlood; ++i)
        AppendPipeFrame(flood, frameEchoServer, "x");
    ada.SendBytes(flood);
    // Time stands still, so no more than the burst is answered.
    for (int i = 0; i < 10; ++i)
        EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_THAT(ada.ReadArrived(), SizeIs(200));
    EXPECT_THAT(ada.ReadArrived(), IsEmpty());
    now += 1;
    EXPECT_THAT(bob.ReadAll(), IsEmpty());
    EXPECT_THAT(ada.ReadArrived(), SizeIs(100));
    std::size_t answered = 300;
    for (int i = 0; i < kFlood && answered < kFlood; ++i) {
        now += 0.1;
        answered += ada.ReadArrived().size();
    }
    EXPECT_EQ(answered, std::size_t(kFlood));
}

TEST_F(RelayTest, CutsOffAnEndThatReadsNothingOfWhatTheOtherSends)
{
    limits.framesPerSecond = 1e6;
    auto ada = LogOn("Ada");
    auto slow = Connect(4096);
    slow.LogOn("Slow");
    Pipe(slow, ada);
    const auto chat = EncodePipeFrame(frameChat, std::string(4000, 'x'));
    for (int i = 0; i < 1000 && server->UsersLoggedOn() == 2; ++i) {
        ada.SendBytes(chat);
        server->Turn(0);
        now += 0.01;
    }
    EXPECT_EQ(server->UsersLoggedOn(), 1u);
    EXPECT_THAT(text.str(), HasSubstr("reads too slowly"));
    EXPECT_THAT(ada.ReadAll(), ElementsAre(IsNotice(framePipeBroken, slow.Id())));
}

TEST_F(RelayTest, LetsTheRequestsOfAClientWaitThatReadsNoAnswersAndCutsItOffInTheEnd)
{
    limits.framesPerSecond = 1e6;
    auto slow = Connect(4096);
    slow.LogOn("Slow");
    const auto echo = EncodePipeFrame(frameEchoServer, std::string(4000, 'x'));
    std::string flood;
    for (int i = 0; i < 400; ++i)
        flood += echo;
    // As much as gets into the sockets; the relay must not take the rest into its memory.
    while (!flood.empty()) {
        const auto sent = ::send(slow.Socket(), flood.data(), flood.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        for (int i = 0; i < 20; ++i)
            server->Turn(0);
        if (sent <= 0)
            break;
        flood.erase(0, std::size_t(sent));
    }
    now += 1;
    server->Turn(0);
    EXPECT_EQ(server->UsersLoggedOn(), 1u) << text.str();
    now += limits.stallSeconds + 1;
    TurnUntil([&] { return server->UsersLoggedOn() == 0; });
    EXPECT_THAT(text.str(), HasSubstr("reads nothing"));
}

TEST_F(RelayTest, WaitsForASlowReaderThatGoesOnReading)
{
    limits.framesPerSecond = 1e6;
    auto slow = Connect(4096);
    slow.LogOn("Slow");
    const auto echo = EncodePipeFrame(frameEchoServer, std::string(4000, 'x'));
    for (int round = 0; round < 6; ++round) {
        for (int i = 0; i < 20; ++i)
            slow.SendBytes(echo);
        now += limits.stallSeconds / 2;
        for (int i = 0; i < 20; ++i)
            ASSERT_EQ(slow.Read()->type, frameEchoReply);
    }
    EXPECT_EQ(server->UsersLoggedOn(), 1u);
}

TEST_F(RelayTest, EndsClientsThatDoNotHangUpThemselves)
{
    auto eve = LogOn("Eve");
    eve.SendBytes("nonsense");
    EXPECT_THAT(eve.ReadToEnd(), SizeIs(1));
    server->Turn(0);
    EXPECT_EQ(server->Connections(), 1u);  // our side is closed, and Eve's is not
    now += limits.farewellSeconds + 1;
    TurnUntil([&] { return server->Connections() == 0; });
}

TEST_F(RelayTest, DropsWhatAnEndedClientGoesOnSending)
{
    auto eve = LogOn("Eve");
    eve.SendBytes("nonsense");
    const auto logon = EncodePipeFrame(frameAuthenticate, PipeLogon{"eve", "OEMClient", "Eve"}.Encode());
    for (int i = 0; i < 100; ++i) {
        eve.SendBytes(logon);
        server->Turn(0);
    }
    EXPECT_THAT(eve.ReadToEnd(), ElementsAre(HasType(frameFramingError)));
    EXPECT_EQ(server->UsersLoggedOn(), 0u);
}

}  // namespace
}  // namespace fenrik
