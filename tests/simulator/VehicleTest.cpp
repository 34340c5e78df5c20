#include "simulator/Vehicle.h"
#include "simulator/BusCommands.h"
#include "simulator/Fixtures.h"

#include <gmock/gmock.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Node 1 pushes, 2 is polled, 3 pings anonymously, 4 and 5 know the old type questions only.
std::vector<NodeSetup> TestNodes()
{
    return {{1, 9, "pushes", true},
            {2, 5, "polled"},
            {3, 6, "anonymous", false, true},
            {4, 0, "old", false, false, true},
            {5, 1, "old display", false, false, true}};
}

struct Exchange {
    const char* name;
    Frame question;
    std::vector<Frame> answers;
};

class Exchanges : public testing::TestWithParam<Exchange> {};

TEST_P(Exchanges, AreAnswered)
{
    Vehicle vehicle(TestNodes());
    EXPECT_EQ(vehicle.Answer(GetParam().question), GetParam().answers);
}

INSTANTIATE_TEST_SUITE_P(
    Vehicle, Exchanges,
    testing::Values(Exchange{"Ping", {901, false, false, 2}, {{902, false, false, 2}}},
                    Exchange{"AnonymousPing", {901, false, false, 3}, {{902, false, false, 12345}}},
                    Exchange{"PingOfNobody", {901, false, false, 9}, {}},
                    Exchange{"PingOfZero", {901, false, false, 0}, {}},
                    Exchange{"Mount", {905, true, false, 2}, {{903, true, false, 2}}},
                    Exchange{"MountOfNobody", {905, true, false, 9}, {}},
                    Exchange{"UnmountOfAnUnmountedNode", {905, false, false, 2}, {{903, true, false, 2}}},
                    Exchange{"Type", {979, false, false, 2}, {{979, false, false, 5}}},
                    Exchange{"TypeOfAnOldBody", {979, false, false, 4}, {}},
                    Exchange{"OldQuestionToAnOldBody", {977, false, false, 4}, {{976, false, false, 4}}},
                    Exchange{"OldQuestionToANewNode", {977, false, false, 1}, {}},
                    Exchange{"TypeOfAnOldDisplay", {979, false, false, 5}, {{978, false, false, 5}}},
                    Exchange{"InputsWithNothingMounted", {921, false, false, 0}, {}},
                    Exchange{"OutputsWithNothingMounted", {922, false, false, 0}, {}},
                    Exchange{"CollisionsWithNothingMounted", {926, false, false, 0}, {}},
                    Exchange{"UnknownCommand", {333, true, false, 1}, {}}),
    [](const auto& row) { return row.param.name; });

class VehicleTest : public testing::Test {
protected:
    void Mount(int node) { (void)vehicle.Answer({905, true, false, std::uint16_t(node)}); }

    Vehicle vehicle{TestNodes()};
    const Frame askPushing{921, false, true, 0};
};

TEST_F(VehicleTest, MountingAnotherNodeMovesTheMount)
{
    Mount(1);
    EXPECT_EQ(vehicle.MountedNode(), 1);
    Mount(2);
    EXPECT_EQ(vehicle.MountedNode(), 2);
}

TEST_F(VehicleTest, UnmountingAnotherNodeKeepsTheMount)
{
    Mount(1);
    (void)vehicle.Answer({905, false, false, 2});
    EXPECT_EQ(vehicle.MountedNode(), 1);
    (void)vehicle.Answer({905, false, false, 1});
    EXPECT_EQ(vehicle.MountedNode(), 0);
}

TEST_F(VehicleTest, TheMountedNodeAnswersForItsInputWords)
{
    Mount(2);
    (void)vehicle.MoveInput(2, 1, true);
    (void)vehicle.MoveInput(2, 10, true);
    EXPECT_THAT(vehicle.Answer({921, false, false, 0}), ElementsAre(Frame{950, false, false, 1}));
    EXPECT_THAT(vehicle.Answer({921, true, false, 0}), ElementsAre(Frame{950, false, false, 2 << 2}));
}

TEST_F(VehicleTest, TheMountedNodeAnswersForItsOutputWords)
{
    Mount(1);
    for (int output = 1; output <= 26; ++output)
        vehicle.Node(1)->SetOutput(output, false);
    vehicle.Node(1)->SetOutput(2, true);
    vehicle.Node(1)->SetOutput(17, true);
    EXPECT_THAT(vehicle.Answer({922, false, false, 0}), ElementsAre(Frame{950, false, false, 2}));
    EXPECT_THAT(vehicle.Answer({922, true, false, 0}), ElementsAre(Frame{950, false, false, 1}));
}

TEST_F(VehicleTest, ANodeThatPushesSaysSoAndSendsItsWords)
{
    Mount(1);
    EXPECT_THAT(vehicle.ChangedWords(), IsEmpty());
    EXPECT_THAT(vehicle.Answer(askPushing), ElementsAre(Frame{903, true, true, 0}));
    EXPECT_THAT(vehicle.ChangedWords(), SizeIs(3));
    (void)vehicle.MoveInput(1, 3, true);
    EXPECT_THAT(vehicle.ChangedWords(), testing::Contains(Frame{921, false, false, 4}));
}

TEST_F(VehicleTest, PushingEndsWithTheMount)
{
    Mount(1);
    (void)vehicle.Answer(askPushing);
    (void)vehicle.ChangedWords();
    Mount(2);
    Mount(1);
    (void)vehicle.MoveInput(1, 3, true);
    EXPECT_THAT(vehicle.ChangedWords(), IsEmpty());
}

TEST_F(VehicleTest, ANodeThatIsPolledDeniesPushing)
{
    Mount(2);
    EXPECT_THAT(vehicle.Answer(askPushing), ElementsAre(Frame{903, true, false, 0}));
    EXPECT_THAT(vehicle.ChangedWords(), IsEmpty());
}

TEST_F(VehicleTest, TheMountedNodeTellsItsCollisions)
{
    Mount(2);
    vehicle.CountCollisions();
    vehicle.CountCollisions();
    EXPECT_THAT(vehicle.Answer({926, false, false, 0}), ElementsAre(Frame{950, false, false, 2}));
}

TEST_F(VehicleTest, ASilentNodeAnswersNothing)
{
    Mount(2);
    vehicle.Node(2)->SetSilent(true);
    EXPECT_THAT(vehicle.Answer({901, false, false, 2}), IsEmpty());
    EXPECT_THAT(vehicle.Answer({905, true, false, 2}), IsEmpty());
    EXPECT_THAT(vehicle.Answer({926, false, false, 0}), IsEmpty());
}

TEST_F(VehicleTest, ANodeThatRestartsAnnouncesItselfAndLosesItsMount)
{
    Mount(2);
    const auto announcement = vehicle.Restart(2);
    ASSERT_THAT(announcement, SizeIs(1));
    EXPECT_EQ(announcement[0].command, 988);
    EXPECT_EQ(announcement[0].data, 2);
    EXPECT_EQ(vehicle.MountedNode(), 0);
    EXPECT_THAT(vehicle.Restart(9), IsEmpty());
}

TEST_F(VehicleTest, AnInputSendsItsCommandAndOutputsFollow)
{
    const auto sent = vehicle.MoveInput(1, 1, true);
    ASSERT_THAT(sent, SizeIs(1));
    EXPECT_EQ(sent[0].command, PlainCommands()[0].number);
    EXPECT_TRUE(sent[0].state);
    EXPECT_TRUE(vehicle.Node(1)->Output(1));
    (void)vehicle.MoveInput(1, 1, false);
    EXPECT_FALSE(vehicle.Node(1)->Output(1));
}

TEST_F(VehicleTest, OutputsFollowACommandOfTheToolAndInputsDoNot)
{
    const auto command = std::uint16_t(PlainCommands()[0].number);
    EXPECT_THAT(vehicle.Answer({command, true, false, 0}), IsEmpty());
    EXPECT_TRUE(vehicle.Node(1)->Output(1));
    EXPECT_FALSE(vehicle.Node(1)->Input(1));
}

TEST(DefaultVehicle, HasNodesOfTheUsualModelsWithNames)
{
    std::vector<int> types;
    for (const auto& node : Vehicle::DefaultNodes()) {
        EXPECT_FALSE(node.name.empty());
        types.push_back(node.type);
    }
    EXPECT_THAT(types, testing::UnorderedElementsAre(0, 1, 2, 5, 6, 9, 10, 16));
}

}  // namespace
}  // namespace fenrik
