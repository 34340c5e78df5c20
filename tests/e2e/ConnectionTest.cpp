// Connecting and what ends a connection.

#include "e2e/ToolTest.h"
#include "link/ConnectAdvice.h"

#include <QElapsedTimer>

namespace fenrik {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

using Connection = ToolTest;

TEST_F(Connection, WakesTheTransceiverAndPingsEachNode)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    EXPECT_THAT(vehicle.Meanings("RX"),
                ElementsAre("wake", "901 state=0 ext=0 data=1", "901 state=0 ext=0 data=2", "901 state=0 ext=0 data=3",
                            "901 state=0 ext=0 data=4", "901 state=0 ext=0 data=5", "901 state=0 ext=0 data=6",
                            "901 state=0 ext=0 data=7", "901 state=0 ext=0 data=8"));
    for (const char* node : {"Node1", "Node8"})
        EXPECT_TRUE(IsEnabled("Nodebar", node)) << node;
    EXPECT_FALSE(IsVisible("Nodebar", "Node9"));
    EXPECT_FALSE(IsEnabled("Toolbar", "Connect"));
    EXPECT_TRUE(IsEnabled("Toolbar", "Disconnect"));
}

TEST_F(Connection, LeavesTheButtonOfASilentNodeDisabled)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected("quiet\nsilent node 3\n"));
    EXPECT_TRUE(IsEnabled("Nodebar", "Node2"));
    EXPECT_FALSE(IsEnabled("Nodebar", "Node3"));
}

TEST_F(Connection, EndsWithDisconnectAndCanBeMadeAgain)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    Click("Toolbar", "Disconnect");
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_EQ(Text("txtMsg"), "");
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("port closed"); }));

    Click("Toolbar", "Connect");
    EXPECT_EQ(Text("txtStatus"), "Connected");
}

TEST_F(Connection, IsLostWithTheCableAndMadeAgainWhenItIsBack)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("unplug"));
    ASSERT_TRUE(Eventually([this] { return Text("txtStatus") == "Disconnected"; }));
    EXPECT_THAT(Text("txtMsg"), HasSubstr("Comm Port 5 has gone away"));
    EXPECT_TRUE(IsEnabled("Toolbar", "Connect"));
    EXPECT_FALSE(IsEnabled("Toolbar", "Disconnect"));

    ASSERT_NO_FATAL_FAILURE(vehicle.Control("plug"));
    Click("Toolbar", "Connect");
    EXPECT_EQ(Text("txtStatus"), "Connected");
    EXPECT_EQ(Text("txtMsg"), "Nodes Detected");
}

TEST_F(Connection, ToAPortThatDoesNotExistIsToldInABox)
{
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Click("Toolbar", "Connect");
    EXPECT_THAT(boxes.Take(), ElementsAre(QStringLiteral("Comm Port 5 does not exist.") + ConnectAdvice::NoPort()));
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
}

TEST_F(Connection, ToAVehicleWithoutNodesIsToldInABox)
{
    ASSERT_NO_FATAL_FAILURE(vehicle.Start("node 9 type 2\nquiet\n"));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    Click("Toolbar", "Connect");
    EXPECT_EQ(Text("txtStatus"), "Connected");
    EXPECT_EQ(Text("txtMsg"), "Nodes Not Detected");
    EXPECT_THAT(boxes.Take(),
                ElementsAre(QStringLiteral("A transceiver was detected, but no network traffic was heard.\n"
                                           "Please check all connections to the transceiver and the network, and\n"
                                           "make sure power has been recycled since the last download.")));
}

TEST_F(Connection, IsProvedByTrafficIfTheTransceiverDoesNotAnswer)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected("quiet\nno-transceiver\nevery 0.1 send 1 on\n"));
    EXPECT_THAT(vehicle.Meanings("RX"), Contains("wake").Times(2));
}

TEST_F(Connection, EndsWhenTheWindowClosesAndTheSettingsAreSaved)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    CloseTool();
    EXPECT_TRUE(Eventually([this] { return vehicle.HasNote("port closed"); }));
    EXPECT_THAT(copy.StoredSettings().toStdString(), HasSubstr("CommPort=5"));
    EXPECT_THAT(copy.StoredSettings().toStdString(), HasSubstr("FirstRun=False"));
    EXPECT_EQ(vehicle.End(), 0);
}

// Named so that those who are in a hurry can leave it out: it takes its real time.
using SlowConnection = ToolTest;

TEST_F(SlowConnection, ToASilentTransceiverIsGivenUpAfterSevenAndAHalfSeconds)
{
    ASSERT_NO_FATAL_FAILURE(vehicle.Start("quiet\nno-transceiver\n"));
    ASSERT_NO_FATAL_FAILURE(StartTool());
    QElapsedTimer timer;
    timer.start();
    Click("Toolbar", "Connect");
    EXPECT_GE(timer.elapsed(), 7400);
    EXPECT_THAT(boxes.Take(), ElementsAre(QStringLiteral("No transceiver was detected.\n"
                                                         "Please check all connections to the transceiver, and\n"
                                                         "make sure power has been recycled since the last download.") +
                                          ConnectAdvice::NoTransceiver()));
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_EQ(Text("txtMsg"), "No Transceiver found");
    EXPECT_THAT(vehicle.Meanings("RX"), ElementsAre("wake", "wake"));
    EXPECT_TRUE(vehicle.HasNote("port closed"));
}

}  // namespace
}  // namespace fenrik
