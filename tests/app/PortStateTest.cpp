#include "app/PortState.h"

#include "AppFixture.h"

namespace fenrik {
namespace {

struct RemoteRow {
    int state;
    bool open;
    bool rx;
    bool tx;
};

class RemoteLinks : public AppTest, public testing::WithParamInterface<RemoteRow> {};

TEST_P(RemoteLinks, OpenStepByStep)
{
    handler.setTargetPort(Transport::kRemote);
    remote.state = GetParam().state;
    EXPECT_EQ(portState.PortOpen(), GetParam().open);
    EXPECT_EQ(portState.PortOpenForRx(), GetParam().rx);
    EXPECT_EQ(portState.PortOpenForTx(), GetParam().tx);
    EXPECT_EQ(portState.RemoteConnected(), GetParam().open);
    EXPECT_EQ(portState.RemotePiped(), GetParam().rx);
}

INSTANTIATE_TEST_SUITE_P(PortState, RemoteLinks,
                         testing::Values(RemoteRow{1, false, false, false}, RemoteRow{2, true, false, false},
                                         RemoteRow{3, true, false, false}, RemoteRow{4, true, true, false},
                                         RemoteRow{5, true, true, false}, RemoteRow{6, true, true, true}));

class SerialLinks : public AppTest, public testing::WithParamInterface<int> {};

TEST_P(SerialLinks, AreThePort)
{
    PseudoTerminal terminal;
    portFolder.Link(1, terminal.Path());
    handler.setTargetPort(GetParam());
    EXPECT_FALSE(portState.PortOpen());
    EXPECT_FALSE(portState.PortOpenForRx());
    EXPECT_FALSE(portState.PortOpenForTx());

    port.setPortOpen(true);
    EXPECT_TRUE(portState.PortOpen());
    EXPECT_TRUE(portState.PortOpenForRx());
    EXPECT_TRUE(portState.PortOpenForTx());
    EXPECT_FALSE(portState.RemoteConnected()) << "whatever the relay's state is";
}

INSTANTIATE_TEST_SUITE_P(PortState, SerialLinks, testing::Values(Transport::kTransceiver, Transport::kModem));

TEST_F(AppTest, AnOpenPortOfNoTransportIsClosedForAll)
{
    PseudoTerminal terminal;
    portFolder.Link(1, terminal.Path());
    port.setPortOpen(true);
    EXPECT_FALSE(portState.PortOpen());
    EXPECT_FALSE(portState.PortOpenForTx());
}

}  // namespace
}  // namespace fenrik
