// The simulated vehicle as a user of the relay, both as programs.

#include "link/Frame.h"
#include "relay/RelayClient.h"

#include <QProcess>

#include <algorithm>
#include <gmock/gmock.h>
#include <thread>

namespace fenrik {
namespace {

using enum PipeFrameType;
using namespace std::chrono_literals;
using testing::HasSubstr;

class VehicleAtRelay : public testing::Test {
protected:
    void SetUp() override
    {
        relay.start(QStringLiteral(FENRIK_RELAY_PROGRAM), {"--listen", "127.0.0.1:0"});
        address = ReadLine(relay).substr(sizeof "ready");
    }
    void TearDown() override
    {
        for (auto* process : {&vehicle, &relay}) {
            process->kill();
            process->waitForFinished();
        }
    }
    void StartVehicle(const QStringList& options)
    {
        vehicle.start(QStringLiteral(FENRIK_VEHICLE_PROGRAM),
                      QStringList{"--relay", QString::fromStdString(address), "--name", "Bob", "--control"} + options);
        EXPECT_EQ(ReadLine(vehicle), "ready relay Bob");
        EXPECT_EQ(Control("quiet"), "ok");
    }
    static std::string ReadLine(QProcess& process)
    {
        while (!process.canReadLine() && process.waitForReadyRead(5000)) {
        }
        return process.readLine().trimmed().toStdString();
    }
    std::string Control(const char* statement)
    {
        vehicle.write(QByteArray(statement) + '\n');
        return ReadLine(vehicle);
    }
    RelayClient LogOn()
    {
        RelayClient client{address, [] { std::this_thread::sleep_for(1ms); }};
        client.LogOn("Ada");
        return client;
    }
    /// The next frame of that type; others are passed over.
    static PipeFrame Next(RelayClient& client, PipeFrameType type)
    {
        while (auto frame = client.Read())
            if (frame->type == type)
                return *frame;
        ADD_FAILURE() << "the connection ended";
        return {};
    }
    /// Finds Bob in the list and pipes to him.
    static void PipeToBob(RelayClient& client)
    {
        client.Send(frameUserListRequest);
        const auto list = PipeUserRecord::DecodeList(Next(client, frameUserList).body).value();
        const auto bob = std::ranges::find(list, "Bob", &PipeUserRecord::userName);
        ASSERT_NE(bob, list.end());
        client.Send(framePipeTo, PipeNumber(bob->clientID));
        EXPECT_EQ(PipeNotice::Decode(Next(client, framePiped).body)->clientID, bob->clientID);
    }
    static std::string Text(const Frame& frame)
    {
        const auto bytes = frame.Encode();
        return {bytes.begin(), bytes.end()};
    }

    QProcess relay;
    QProcess vehicle;
    std::string address;
};

TEST_F(VehicleAtRelay, GrantsAccessAndAnswersAPing)
{
    StartVehicle({"--grant"});
    auto ada = LogOn();
    PipeToBob(ada);
    EXPECT_EQ(Next(ada, frameBussAccessReply).body.front(), '\1');
    ada.Send(frameNetworkMessage, Text({901, false, false, 3}));
    EXPECT_EQ(Next(ada, frameNetworkMessage).body, Text({902, false, false, 3}));
    EXPECT_EQ(Control("send 12 on false 100"), "ok");
    EXPECT_EQ(Next(ada, frameNetworkMessage).body, Text({12, true, false, 100}));
    ada.Send(frameEchoClient, "echo");
    EXPECT_EQ(Next(ada, frameEchoReply).body, "echo");
    ada.Send(frameChat, "How is it?");
    EXPECT_EQ(Next(ada, frameChat).body, "You said: How is it?");
}

TEST_F(VehicleAtRelay, LetsOneWatchAndDeniesAccess)
{
    StartVehicle({"--deny"});
    auto ada = LogOn();
    PipeToBob(ada);
    EXPECT_EQ(Next(ada, frameBussAccessReply).body.front(), '\0');
    ada.Send(frameNetworkMessage, Text({901, false, false, 3}));
    ada.Send(frameEchoClient, "echo");
    EXPECT_EQ(Next(ada, frameEchoReply).body, "echo");
    EXPECT_EQ(Control("send 12 on false 100"), "ok");
    EXPECT_EQ(Next(ada, frameNetworkMessage).body, Text({12, true, false, 100}));
}

TEST_F(VehicleAtRelay, AsksThePersonAtTheTerminal)
{
    StartVehicle({"--ask"});
    auto ada = LogOn();
    PipeToBob(ada);
    EXPECT_EQ(ReadLine(vehicle), "Ada asks for access: grant or deny");
    EXPECT_EQ(Control("grant"), "ok");
    EXPECT_EQ(Next(ada, frameBussAccessReply).body.front(), '\1');
    EXPECT_EQ(Control("deny"), "ok");
    EXPECT_EQ(Next(ada, frameBussAccessReply).body.front(), '\0');
    EXPECT_EQ(Control("break"), "ok");
    EXPECT_EQ(PipeNotice::Decode(Next(ada, framePipeBroken).body)->name, "Bob");
    EXPECT_EQ(Control("grant"), "error: nobody is piped to us");
}

TEST_F(VehicleAtRelay, LogsOffWhenItEnds)
{
    StartVehicle({});
    auto ada = LogOn();
    PipeToBob(ada);
    vehicle.terminate();
    EXPECT_EQ(PipeNotice::Decode(Next(ada, framePipeBroken).body)->name, "Bob");
    ASSERT_TRUE(vehicle.waitForFinished(5000));
    EXPECT_EQ(vehicle.exitCode(), 0);
}

TEST_F(VehicleAtRelay, EndsWithAnErrorWhenTheRelayGoesOrIsNotThere)
{
    StartVehicle({});
    relay.terminate();
    ASSERT_TRUE(vehicle.waitForFinished(5000));
    EXPECT_EQ(vehicle.exitCode(), 1);
    EXPECT_THAT(vehicle.readAllStandardError().toStdString(), HasSubstr("the relay has hung up"));
    ASSERT_TRUE(relay.waitForFinished(5000));
    vehicle.start(QStringLiteral(FENRIK_VEHICLE_PROGRAM), {"--relay", QString::fromStdString(address)});
    ASSERT_TRUE(vehicle.waitForFinished(5000));
    EXPECT_EQ(vehicle.exitCode(), 1);
    EXPECT_THAT(vehicle.readAllStandardError().toStdString(), HasSubstr("Connection refused"));
}

}  // namespace
}  // namespace fenrik
