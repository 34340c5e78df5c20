#include "platform/Error.h"
#include "remote/PipeFixture.h"

#include <utility>

namespace fenrik {
namespace {

class RemoteSocketTest : public RemoteFixture {
protected:
    RemoteSocketTest()
    {
        relay.onAccept = [this] { accepted = true; };
        QObject::connect(&socket, &RemoteSocket::Connected, &socket, [this] { ++connected; });
        QObject::connect(&socket, &RemoteSocket::Closed, &socket, [this] { ++closed; });
        QObject::connect(&socket, &RemoteSocket::Failed, &socket, [this](int number, auto&) { failure = number; });
        QObject::connect(&socket, &RemoteSocket::DataArrival, &socket, [this] {
            got += socket.GetData(1 << 20);
            onData();
        });
    }

    void Connect()
    {
        socket.Connect(QStringLiteral("127.0.0.1"), relay.Port());
        ASSERT_TRUE(Until([this] { return accepted && connected > 0; }));
    }

    FakeRelay relay;
    RemoteSocket socket;
    bool accepted = false;
    int connected = 0;
    int closed = 0;
    int failure = 0;
    std::string got;
    std::function<void()> onData = [] {};
};

TEST_F(RemoteSocketTest, GivesTheLastBytesBeforeTheEnd)
{
    Connect();
    const std::string bytes(300000, 'x');
    relay.SendBytes(bytes);
    relay.Hang();
    ASSERT_TRUE(Until([this] { return closed > 0; }));
    EXPECT_EQ(got.size(), bytes.size());
    EXPECT_EQ(closed, 1);
}

TEST_F(RemoteSocketTest, DeliversToAHandlerThatWaits)
{
    Connect();
    bool first = true;
    bool came = false;
    onData = [&] {
        if (!std::exchange(first, false))
            return;
        relay.SendBytes("b");
        came = Until([this] { return got == "ab"; });
    };
    relay.SendBytes("a");
    ASSERT_TRUE(Until([this] { return got == "ab"; }));
    EXPECT_TRUE(came);
}

TEST_F(RemoteSocketTest, IsSilentAfterItWasClosed)
{
    Connect();
    relay.SendBytes("late");
    relay.Hang();
    socket.Close();
    Turns(5);
    EXPECT_EQ(got, "");
    EXPECT_EQ(closed, 0);
    EXPECT_FALSE(socket.IsOpen());
    EXPECT_THROW(socket.SendData({"x"}), Error);
}

TEST_F(RemoteSocketTest, HoldsNoEndOfBytesForAPeerThatNeverReads)
{
    relay.reads = false;
    Connect();
    const std::string piece(32000, 'x');
    const auto fill = [&] {
        for (int i = 0; i < 100000; ++i)
            socket.SendData({piece});
    };
    try {
        fill();
        ADD_FAILURE() << "everything was taken";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), RemoteSocket::kNoBufferSpace);
    }
    // Closing doesn't wait for the peer either.
    socket.Close();
    EXPECT_FALSE(socket.IsOpen());
}

TEST_F(RemoteSocketTest, SendsThePartsOfAFrameInOneSegment)
{
    Connect();
    const auto before = relay.SegmentsIn();
    for (int i = 1; i <= 5; ++i) {
        const std::string body(32, 'x');
        socket.SendData({"PS", "ab", "cd", body});
        ASSERT_TRUE(Until([&] { return relay.BytesIn() == std::size_t(38 * i); }));
    }
    EXPECT_EQ(relay.SegmentsIn() - before, 5U);
}

TEST_F(RemoteSocketTest, TellsAnErrorOfAConnectionThatStood)
{
    Connect();
    BreakConnectionTo(relay.Port());
    relay.SendBytes("x");
    ASSERT_TRUE(Until([this] { return failure != 0; }));
    EXPECT_EQ(failure, 10051);
    socket.Close();
}

TEST_F(RemoteSocketTest, TellsARefusal)
{
    const int dead = [] {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return int(server.serverPort());
    }();
    socket.Connect(QStringLiteral("127.0.0.1"), dead);
    ASSERT_TRUE(Until([this] { return failure != 0; }));
    EXPECT_EQ(failure, RemoteSocket::kRefused);
    EXPECT_EQ(closed, 0);
}

TEST_F(RemoteSocketTest, ConnectsAnewWhileConnected)
{
    Connect();
    accepted = false;
    socket.Connect(QStringLiteral("127.0.0.1"), relay.Port());
    ASSERT_TRUE(Until([this] { return accepted && connected == 2; }));
    EXPECT_EQ(closed, 0);
}

}  // namespace
}  // namespace fenrik
