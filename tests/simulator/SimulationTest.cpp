#include "simulator/Simulation.h"
#include "simulator/SimulationFixture.h"

#include <gmock/gmock.h>
#include <set>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(SimulationTest, TheWakeByteIsAnsweredAfterAMoment)
{
    Begin("quiet\n");
    simulation->Receive(ByteList{158});
    simulation->Step();
    EXPECT_THAT(line.bytes, IsEmpty());
    RunTo(0.03);
    EXPECT_THAT(line.bytes, ElementsAre(138));
    EXPECT_THAT(text.str(), HasSubstr("   0.000 RX 9E  wake\n"));
    EXPECT_THAT(text.str(), HasSubstr("TX 8A  awake\n"));
}

TEST_F(SimulationTest, WithoutATransceiverTheWakeByteIsNotAnswered)
{
    Begin("quiet\nno-transceiver\n");
    simulation->Receive(ByteList{158});
    RunTo(1);
    EXPECT_THAT(line.bytes, IsEmpty());
}

TEST_F(SimulationTest, APingIsAnsweredAfterTheAnswerDelay)
{
    Begin("quiet\nanswer-delay 20\n");
    Receive({901, false, false, 3});
    RunTo(0.0199);
    EXPECT_THAT(line.bytes, IsEmpty());
    RunTo(0.0201);
    EXPECT_THAT(line.TakeFrames(), ElementsAre(Frame{902, false, false, 3}));
}

TEST_F(SimulationTest, AnswersKeepTheirOrderWhateverTheirDelays)
{
    Begin("quiet\nanswer-delay 1 500\n");
    std::vector<Frame> expected;
    for (std::uint16_t i = 0; i < 24; ++i) {
        Receive({901, false, false, std::uint16_t(i % 8 + 1)});
        expected.push_back({902, false, false, std::uint16_t(i % 8 + 1)});
    }
    RunTo(1);
    EXPECT_EQ(line.TakeFrames(), expected);
}

TEST_F(SimulationTest, EveryThirdAnswerIsLostAndLogged)
{
    Begin("quiet\nlose every 3\n");
    for (std::uint16_t node = 1; node <= 6; ++node)
        Receive({901, false, false, node});
    RunTo(1);
    std::vector<int> answered;
    for (const auto& frame : line.TakeFrames())
        answered.push_back(frame.data);
    EXPECT_THAT(answered, ElementsAre(1, 2, 4, 5));
    EXPECT_THAT(text.str(), HasSubstr("LOST 00 AE 18 00 03 C9  902 state=0 ext=0 data=3\n"));
}

TEST_F(SimulationTest, LosingEndsWhenItIsSwitchedOff)
{
    Begin("quiet\nlose every 1\n");
    Control("lose off");
    Receive({901, false, false, 1});
    RunTo(1);
    EXPECT_THAT(line.TakeFrames(), SizeIs(1));
}

TEST_F(SimulationTest, PushedWordsFollowTheAcknowledge)
{
    Begin("quiet\nanswer-delay 50\nnode 1 type 9 \"body\" push\n");
    Receive({905, true, false, 1});
    Receive({921, false, true, 0});
    simulation->Step();
    RunTo(1);
    const auto frames = line.TakeFrames();
    ASSERT_THAT(frames, SizeIs(5));
    EXPECT_EQ(frames[0], (Frame{903, true, false, 1}));
    EXPECT_EQ(frames[1], (Frame{903, true, true, 0}));
    EXPECT_EQ(frames[2].command, 921);
    EXPECT_EQ(frames[4].command, 922);
}

TEST_F(SimulationTest, AScenarioSendsAtItsTimes)
{
    Begin("quiet\nat 1 send 12 on false 100\nevery 0.5 send 13 off\n");
    RunTo(1.2);
    EXPECT_THAT(line.TakeFrames(),
                ElementsAre(Frame{13, false, false, 0}, Frame{12, true, false, 100}, Frame{13, false, false, 0}));
}

TEST_F(SimulationTest, ABurstCountsInItsData)
{
    Begin("quiet\nburst 1000 of frames\n");
    const auto frames = line.TakeFrames();
    ASSERT_THAT(frames, SizeIs(1000));
    for (std::size_t i = 0; i < frames.size(); ++i)
        ASSERT_EQ(frames[i].data, i);
    EXPECT_NE(frames[0].command, frames[1].command);
}

TEST_F(SimulationTest, NoiseHoldsNoFrameAndCountsAsCollision)
{
    Begin("quiet\nnoise 5000\n");
    EXPECT_THAT(line.bytes, SizeIs(5000));
    EXPECT_THAT(line.bytes, testing::Each(testing::AllOf(testing::Ne(0), testing::Ne(138))));
    line.bytes.clear();
    Receive({905, true, false, 1});
    Receive({926, false, false, 0});
    RunTo(1);
    EXPECT_THAT(line.TakeFrames(), testing::Contains(Frame{950, false, false, 1}));
}

TEST_F(SimulationTest, AFloodSendsWhatTheLineCarries)
{
    Begin("quiet\nflood\n");
    RunTo(2);
    EXPECT_NEAR(double(line.TakeFrames().size()), 320, 2);
    Control("flood off");
    line.bytes.clear();
    RunTo(4);
    EXPECT_THAT(line.bytes, IsEmpty());
}

TEST_F(SimulationTest, APacedFloodFillsTheLineAndLetsAnswersThrough)
{
    Begin("quiet\nflood 1000\n", true);
    RunTo(1);
    EXPECT_NEAR(double(line.bytes.size()), 960, 2);
    line.bytes.clear();
    Receive({901, false, false, 3});
    RunTo(1.2);
    EXPECT_THAT(line.TakeFrames(), testing::Contains(Frame{902, false, false, 3}));
}

TEST_F(SimulationTest, AQuietVehicleSendsNothing)
{
    Begin("quiet\n");
    RunTo(60);
    EXPECT_THAT(line.bytes, IsEmpty());
}

TEST_F(SimulationTest, TrafficGoesOnWhereItWasWhenQuietEnds)
{
    Begin("quiet\n");
    RunTo(60);
    Control("quiet off");
    EXPECT_THAT(line.TakeFrames().size(), testing::Lt(40u));
    RunTo(63);
    EXPECT_THAT(line.TakeFrames(), testing::Contains(Frame{980, false, true, 1}));
}

TEST_F(SimulationTest, ReportsAreSentWhenAsked)
{
    Begin("quiet\nfault 3 5\nshed 3 2\nrestart 3\n");
    std::vector<std::pair<int, int>> found;
    for (const auto& frame : line.TakeFrames())
        found.emplace_back(frame.command, frame.data);
    EXPECT_THAT(found, ElementsAre(std::pair(983, 0x0305), std::pair(981, 0x0302), std::pair(988, 3)));
}

TEST_F(SimulationTest, AnInputThatIsMovedSendsItsCommand)
{
    Begin("quiet\n");
    Control("input 1 2 on");
    const auto frames = line.TakeFrames();
    ASSERT_THAT(frames, SizeIs(1));
    EXPECT_TRUE(frames[0].state);
}

TEST_F(SimulationTest, ASilentNodeComesBack)
{
    Begin("quiet\nsilent node 3\n");
    Receive({901, false, false, 3});
    RunTo(1);
    EXPECT_THAT(line.bytes, IsEmpty());
    Control("silent node 3 off");
    Receive({901, false, false, 3});
    RunTo(2);
    EXPECT_THAT(line.TakeFrames(), SizeIs(1));
}

TEST_F(SimulationTest, HeldVoltageMakesNodesShedAndRecover)
{
    Begin("voltage 10.0\n");
    RunTo(1.5);
    std::set<int> shed;
    for (const auto& frame : line.TakeFrames())
        if (frame.command == 981 && (frame.data & 0xFF) == 3)
            shed.insert(frame.data >> 8);
    EXPECT_THAT(shed, ElementsAre(1, 2, 3, 5, 6, 7));
    Control("voltage auto");
    RunTo(5);
    EXPECT_THAT(line.TakeFrames(), testing::Contains(Frame{981, true, false, 0x0100}));
}

TEST_F(SimulationTest, TheProgramIsToldToPlugAndQuit)
{
    Begin("quiet\nat 1 unplug\nat 2 plug\nat 3 quit\n");
    RunTo(4);
    EXPECT_THAT(host.calls, ElementsAre("unplug", "plug", "quit"));
}

TEST_F(SimulationTest, UnparsedBytesAreLogged)
{
    Begin("quiet\n");
    simulation->Receive(ByteList{0x12, 0x34});
    EXPECT_THAT(text.str(), HasSubstr("RX 12 34  unparsed\n"));
}

}  // namespace
}  // namespace fenrik
