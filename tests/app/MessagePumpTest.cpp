#include "app/MessagePump.h"

#include "AppFixture.h"

#include <QTest>
#include <QTimer>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowRecorder : public PumpHost {
public:
    void CarrierWasLost() override { ++carriersLost; }
    void ShowMessageList(bool visible) override { visibility.push_back(visible); }
    bool TakenByStates(const CMessage& message) override { return message.Command == taken; }
    void NodeAnnounced(int node) override { announced.push_back(node); }
    void DisplayMessage(CMessage& message) override
    {
        shown.push_back(message.Command);
        onDisplay();
    }

    int taken = -1;
    int carriersLost = 0;
    std::vector<bool> visibility;
    std::vector<int> announced;
    std::vector<int> shown;
    std::function<void()> onDisplay = [] {};
};

class MessagePumpTest : public AppTest {
protected:
    void Receive(int command, int data = 0)
    {
        network.Receive({std::uint16_t(command), false, false, std::uint16_t(data)});
    }

    FakeNetwork network{handler, pump, portState};
    WindowRecorder window;
    MessagePump pumpOfMessages{handler, window};
};

TEST_F(MessagePumpTest, EachTickCarriesOneMessage)
{
    Receive(1);
    Receive(2);
    pumpOfMessages.Tick();
    EXPECT_THAT(window.shown, ElementsAre(1));
    pumpOfMessages.Tick();
    EXPECT_THAT(window.shown, ElementsAre(1, 2));
    pumpOfMessages.Tick();
    EXPECT_THAT(window.shown, ElementsAre(1, 2)) << "an empty queue shows nothing";
}

TEST_F(MessagePumpTest, TheListHidesWhileTenOrMoreWait)
{
    for (int i = 0; i < 11; ++i)
        Receive(5);
    for (int i = 0; i < 3; ++i)
        pumpOfMessages.Tick();
    EXPECT_THAT(window.visibility, ElementsAre(false, false, true)) << "with 11, 10 and 9 waiting";
}

TEST_F(MessagePumpTest, AMessageThatTheStatesKeepIsNotShown)
{
    window.taken = 921;
    Receive(921);
    Receive(988, 0x0104);
    pumpOfMessages.Tick();
    EXPECT_THAT(window.shown, IsEmpty());
    window.taken = 988;
    pumpOfMessages.Tick();
    EXPECT_THAT(window.announced, IsEmpty());
}

TEST_F(MessagePumpTest, AnAnnouncedNodeIsTheLowByteAndItsMessageIsShownToo)
{
    Receive(988, 0x0104);
    pumpOfMessages.Tick();
    EXPECT_THAT(window.announced, ElementsAre(4));
    EXPECT_THAT(window.shown, ElementsAre(988));
}

TEST_F(MessagePumpTest, ALostCarrierComesBeforeAllTraffic)
{
    PseudoTerminal terminal;
    portFolder.Link(1, terminal.Path());
    port.setPortOpen(true);
    QObject::connect(&port, &SerialControl::OnComm, &port,
                     [this] { handler.ProcessCommEvent(SerialControl::kEvReceive); });
    Receive(1);
    terminal.Write("NO CARRIER");
    ASSERT_TRUE(QTest::qWaitFor([this] { return handler.CarrierLost(); }));

    pumpOfMessages.Tick();
    EXPECT_EQ(window.carriersLost, 1);
    EXPECT_FALSE(handler.CarrierLost());
    EXPECT_THAT(window.shown, IsEmpty()) << "the tick ends there";
    pumpOfMessages.Tick();
    EXPECT_EQ(window.carriersLost, 1) << "told once";
    EXPECT_THAT(window.shown, ElementsAre(1));
}

TEST_F(MessagePumpTest, TheTimerSleepsWhileThereIsNothingToCarry)
{
    auto* timer = pumpOfMessages.findChild<QTimer*>("TMsg");
    ASSERT_NE(timer, nullptr);
    EXPECT_EQ(timer->interval(), 1);
    pumpOfMessages.setEnabled(true);
    EXPECT_FALSE(timer->isActive());

    Receive(1);
    Receive(2);
    pumpOfMessages.Wake();
    EXPECT_TRUE(timer->isActive());
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.shown.size() == 2; }));
    EXPECT_FALSE(timer->isActive());
}

TEST_F(MessagePumpTest, ADisabledPumpCarriesNothingUntilItIsEnabled)
{
    auto* timer = pumpOfMessages.findChild<QTimer*>("TMsg");
    Receive(1);
    pumpOfMessages.Wake();
    EXPECT_FALSE(timer->isActive());
    pumpOfMessages.setEnabled(true);
    EXPECT_TRUE(pumpOfMessages.Enabled());
    EXPECT_TRUE(timer->isActive()) << "what waited is carried now";
    pumpOfMessages.setEnabled(false);
    EXPECT_FALSE(timer->isActive());
    EXPECT_THAT(window.shown, IsEmpty());
}

TEST_F(MessagePumpTest, TicksGoOnInsideAWaitOfATick)
{
    for (int command = 1; command <= 3; ++command)
        Receive(command);
    int depth = 0;
    int deepest = 0;
    window.onDisplay = [&] {
        deepest = std::max(deepest, ++depth);
        if (depth == 1) {
            EXPECT_TRUE(QTest::qWaitFor([this] { return window.shown.size() == 3; }));
        }
        --depth;
    };
    pumpOfMessages.setEnabled(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.shown.size() == 3 && depth == 0; }));
    EXPECT_EQ(deepest, 2);
    EXPECT_THAT(window.shown, ElementsAre(1, 2, 3));
}

}  // namespace
}  // namespace fenrik
