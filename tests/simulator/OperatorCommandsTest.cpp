// What the nodes answer to the commands of an operator: states of items, and special commands.

#include "simulator/SimulationFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OperatorCommands : public testing::Test {
protected:
    std::vector<Frame> Ask(int command, bool state, bool extended, int data)
    {
        return vehicle.Answer({std::uint16_t(command), state, extended, std::uint16_t(data)});
    }
    void Mount(int node) { (void)Ask(905, true, false, node); }

    Vehicle vehicle{Vehicle::DefaultNodes()};
};

// --- States of items -----------------------------------------------------------------------------------------------

TEST_F(OperatorCommands, TheMountedNodeTellsWhetherACommandIsOn)
{
    Mount(3);
    EXPECT_THAT(Ask(920, true, false, 277), ElementsAre(Frame{950, false, false, 0}));
    (void)Ask(277, true, false, 0);
    EXPECT_THAT(Ask(920, true, false, 277), ElementsAre(Frame{950, false, false, 1}));
    (void)Ask(277, false, false, 0);
    EXPECT_THAT(Ask(920, true, false, 277), ElementsAre(Frame{950, false, false, 0}));
}

TEST_F(OperatorCommands, AStateIsToldByAMountedNodeOnlyAndToTheQuestionOnly)
{
    EXPECT_THAT(Ask(920, true, false, 277), IsEmpty());
    Mount(3);
    EXPECT_THAT(Ask(920, false, false, 277), IsEmpty());
    vehicle.Node(3)->SetSilent(true);
    EXPECT_THAT(Ask(920, true, false, 277), IsEmpty());
}

// --- Special commands ----------------------------------------------------------------------------------------------

struct OrderRow {
    const char* name;
    Frame order;
    std::vector<Frame> answers;
};

class SpecialOrders : public OperatorCommands, public testing::WithParamInterface<OrderRow> {};

TEST_P(SpecialOrders, AreAnsweredByTheMountedNode)
{
    Mount(3);
    EXPECT_EQ(vehicle.Answer(GetParam().order), GetParam().answers);
}

TEST_P(SpecialOrders, AreNotHeardByAnUnmountedNode)
{
    EXPECT_THAT(vehicle.Answer(GetParam().order), IsEmpty());
    Mount(2);
    EXPECT_THAT(vehicle.Answer(GetParam().order), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Vehicle, SpecialOrders,
    testing::Values(OrderRow{"Assign", {969, false, true, 0x2803}, {{969, true, true, 0x2803}}},
                    OrderRow{"Swap", {969, false, true, 0x2903}, {{969, true, true, 0x2A03}}},
                    OrderRow{"Clear", {969, false, true, 0x2703}, {}},
                    OrderRow{"AConfirmation", {969, true, true, 0x2803}, {}},
                    OrderRow{"WithoutTheFlag", {969, false, false, 0x2803}, {}},
                    OrderRow{"Calibrate", {973, false, true, 0x0103}, {{973, false, true, 0x1003}}},
                    OrderRow{"TheLastSender", {973, false, true, 0x0503}, {{973, false, true, 0x1003}}},
                    OrderRow{"NoSender", {973, false, true, 0x0603}, {{973, false, true, 0x1103}}},
                    OrderRow{"FactoryValues", {973, false, true, 0x0F03}, {{973, false, true, 0x1003}}},
                    OrderRow{"NodeZero", {969, false, true, 0x2800}, {}}),
    [](const auto& row) { return row.param.name; });

// --- Refusals ------------------------------------------------------------------------------------------------------

class Refusals : public SimulationTest {
protected:
    /// The answers to the question, as "903 1 3".
    std::vector<std::string> Ask(int command, bool state, int data, bool extended = false)
    {
        (void)line.TakeFrames();
        Receive({std::uint16_t(command), state, extended, std::uint16_t(data)});
        RunTo(time.now + 1);
        std::vector<std::string> answers;
        for (const Frame& frame : line.TakeFrames())
            answers.push_back(std::to_string(frame.command) + (frame.state ? " 1 " : " 0 ") +
                              std::to_string(frame.data));
        return answers;
    }
};

TEST_F(Refusals, ANodeIsDeafToOneStepAndHearsTheOthers)
{
    Begin("quiet\nignore 3 mount\n");
    EXPECT_THAT(Ask(901, false, 3), ElementsAre("902 0 3"));
    EXPECT_THAT(Ask(905, true, 3), IsEmpty());
    EXPECT_THAT(Ask(905, false, 3), ElementsAre("903 1 3"));
    EXPECT_THAT(Ask(905, true, 2), ElementsAre("903 1 2"));
    Control("ignore 3 off");
    EXPECT_THAT(Ask(905, true, 3), ElementsAre("903 1 3"));
}

TEST_F(Refusals, ANodeThatIgnoresItsReleaseStaysMounted)
{
    Begin("quiet\nignore 3 unmount\n");
    (void)Ask(905, true, 3);
    EXPECT_THAT(Ask(905, false, 3), IsEmpty());
    EXPECT_THAT(Ask(920, true, 277), ElementsAre("950 0 0"));
}

TEST_F(Refusals, ANodeIsDeafToAll)
{
    Begin("quiet\n");
    (void)Ask(905, true, 3);
    Control("ignore 3 all");
    EXPECT_THAT(Ask(901, false, 3), IsEmpty());
    EXPECT_THAT(Ask(920, true, 277), IsEmpty());
    EXPECT_THAT(Ask(969, false, 0x2803, true), IsEmpty());
    EXPECT_THAT(Ask(905, false, 3), IsEmpty());
}

TEST_F(Refusals, ANodeDeclinesAMountAndAnAddress)
{
    Begin("quiet\ndeny 3\n");
    EXPECT_THAT(Ask(905, true, 3), ElementsAre("903 0 3"));
    EXPECT_THAT(Ask(920, true, 277), IsEmpty());
    Control("deny 3 off");
    (void)Ask(905, true, 3);
    Control("deny 3");
    EXPECT_THAT(Ask(969, false, 0x2803, true), ElementsAre("969 1 11011"));
}

TEST_F(Refusals, ANodeTellsAStateThatIsNone)
{
    Begin("quiet\nstate-as 3 2\n");
    (void)Ask(905, true, 3);
    EXPECT_THAT(Ask(920, true, 277), ElementsAre("950 0 2"));
    Control("state-as 3 off");
    EXPECT_THAT(Ask(920, true, 277), ElementsAre("950 0 0"));
}

}  // namespace
}  // namespace fenrik
