#include "NodeDownloadFixture.h"

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Sent = ScriptedNode::Sent;

class QueryRoadTest : public NodeDownloadTest {
protected:
    QueryRoadTest()
    {
        Node().setTypeID(2);
        Answer(0x0001, {0x10, 0, 0xFF, 0xFF, 2, 0, 2});
        Answer(0x0A10, {' ', 'F', 'r', 'o', 'n', 't', ' '});
        for (int i = 0; i < 4; ++i)
            Answer(0x0200 + i, {0xFF, 0xFF, 0xFF, 0xFF, 0, 1, 0, std::uint8_t(40 + i), 0, 0, 0, 0, 0, 0});
        for (int i = 0; i < 12; ++i)
            Answer(0x0300 + i, {0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 50, 120, 2, 0, 3, 0, 0xFF, 0xFF});
    }
    void Answer(int data, const ByteList& bytes) { peer.answers[data].bytes = bytes; }
};

TEST_F(QueryRoadTest, FillsNodeAndPoints)
{
    Answer(0x0300, {0x20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x2C, 0x01, 50, 120, 2, 0, 3, 0, 1, 0});
    Answer(0x0B2C, {' ', 254, 0, 40});
    Answer(0x0A20, {'H', 'o', 'r', 'n'});
    Answer(0x0201, {0x30, 0, 0xFF, 0xFF, 0, 1, 0, 41, 0, 0, 0, 0, 0, 0});
    Answer(0x0A30, {' ', ' ', ' '});
    Read();
    EXPECT_EQ(Node().Name(), QStringLiteral("Front"));
    EXPECT_EQ(Node().iProtocol(), CNode::kProtocolQueries);
    EXPECT_EQ(Input(1).InCommand(), 40);
    EXPECT_EQ(Input(2).Name(), QStringLiteral("Input 2"));
    EXPECT_EQ(Output(1).Name(), QStringLiteral("Horn"));
    EXPECT_EQ(Output(1).UsageCode(), 1);
    EXPECT_EQ(Output(1).RPN(), QByteArray("\xFE\x00\x28\xFF", 4));
    EXPECT_EQ(Output(1).Loadshed(), Fixed4::Whole(12));
    EXPECT_EQ(Output(1).DelayOff(), Fixed4::FromTenThousandths(15000));
    EXPECT_EQ(Output(2).UsageCode(), 0);
    EXPECT_EQ(Output(2).Name(), QStringLiteral("Output 2"));
    EXPECT_EQ(window.LastStatus(), kQueriesDone);
    EXPECT_THAT(window.statuses, Contains(QStringLiteral("Retrieving Name for Output 1 - Horn")));
    EXPECT_EQ(window.total, 4 * 5 + 32 + 12 * 30 + 16 * 32);
    EXPECT_EQ(window.done, window.total);
    EXPECT_TRUE(system.Dirty());
    EXPECT_THAT(window.calls, ElementsAre("pbProgressEnd"));
    EXPECT_THAT(boxes.boxes, IsEmpty());
    ExpectEnded();
}

TEST_F(QueryRoadTest, LeavesTheNamesOfPointsAloneUnlessAskedForThem)
{
    Read(false);
    EXPECT_EQ(window.total, 4 * 5 + 32 + 12 * 30);
    EXPECT_EQ(window.done, window.total);
}

TEST_F(QueryRoadTest, NamesANodeWithoutNameByItsNumber)
{
    Answer(0x0001, {0xFF, 0xFF, 0xFF, 0xFF, 2, 0, 2});
    Read(false);
    EXPECT_EQ(Node().Name(), QStringLiteral("Node 2"));
}

TEST_F(QueryRoadTest, IsKeptByANodeThatWasReadByItOnce)
{
    Node().setIProtocol(CNode::kProtocolQueries);
    peer.silent = true;
    Read(false);
    EXPECT_EQ(Node().iProtocol(), CNode::kProtocolQueries);
    EXPECT_THAT(peer.Data(923), IsEmpty());
    ExpectFailure();
}

TEST_F(QueryRoadTest, TakesARefusalForNoError)
{
    peer.answers[0x0203].granted = false;
    Read(false);
    EXPECT_EQ(window.LastStatus(), kQueriesDone);
    EXPECT_EQ(Input(4).InCommand(), 0);
}

TEST_F(QueryRoadTest, FailsAtItsEndIfAnAnswerWasLost)
{
    peer.answers.erase(0x0301);
    Read(false);
    EXPECT_EQ(Node().iProtocol(), CNode::kProtocolQueries);
    ExpectFailure();
}

TEST_F(QueryRoadTest, KeepsWhatItReadWhenTheUserBreaksItOff)
{
    window.onStep = [this] { window.cancelled = window.done >= 32 + 2 * 5; };
    Read();
    EXPECT_EQ(window.LastStatus(), kCancelled);
    EXPECT_EQ(Input(2).InCommand(), 41);
    EXPECT_EQ(Input(3).InCommand(), 0);
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_TRUE(system.Dirty());
    ExpectEnded();
}

TEST_F(QueryRoadTest, ForgetsAnEarlierCancel)
{
    window.cancelled = true;
    Read(false);
    EXPECT_EQ(window.LastStatus(), kQueriesDone);
}

TEST_F(QueryRoadTest, MountsTheNodeForItsTimeIfItMust)
{
    system.UnmountNode();
    Read(false);
    EXPECT_THAT(window.calls, ElementsAre("MountNode 2", "UnmountNode 2", "pbProgressEnd"));
}

TEST_F(QueryRoadTest, AsksNothingOfANodeThatCannotBeMounted)
{
    system.UnmountNode();
    window.mounts = false;
    Read(false);
    EXPECT_EQ(window.LastStatus(), QStringLiteral("Unable to Mount Selected Node."));
    EXPECT_THAT(peer.sent, IsEmpty());
    EXPECT_FALSE(system.Dirty());
}

// The port goes away after each of the first frames in turn; the download ends soon and names stay what they were.
TEST_F(QueryRoadTest, EndsWhenThePortGoesAwayAtAnyFrame)
{
    for (std::size_t last = 1; last < 45; ++last) {
        window.statuses.clear();
        boxes.boxes.clear();
        peer.sent.clear();
        host.open = true;
        Input(1).setName(QStringLiteral("Door"));
        Node().setIProtocol(CNode::kProtocolQueries);
        peer.onFrame = [this, last](const Sent&) {
            // No answer any more: it would still be under way in the next round.
            peer.silent = peer.sent.size() >= last;
            if (peer.sent.size() == last)
                pump.After(0.005, [this] { host.open = false; });
        };
        Read();
        if (peer.sent.size() < last)
            break;  // the download has fewer frames
        EXPECT_EQ(window.LastStatus(), kFailed) << last;
        EXPECT_EQ(peer.sent.size(), last);
        EXPECT_EQ(Input(1).Name(), QStringLiteral("Door"));
        EXPECT_EQ(window.cursors, 0);
    }
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(QueryRoadTest, ShowsNothingMoreWhenTheProgramEnds)
{
    peer.onFrame = [this](const Sent& frame) {
        if (frame.data == 0x0202)
            pump.Stop();
    };
    Read();
    EXPECT_THAT(boxes.boxes, IsEmpty());
    EXPECT_THAT(window.statuses, Not(Contains(kFailed)));
    EXPECT_EQ(peer.sent.back().data, 0x0202);
    ExpectEnded();
}

}  // namespace
}  // namespace fenrik
