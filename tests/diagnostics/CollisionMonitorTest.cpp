#include "diagnostics/CollisionMonitor.h"

#include "diagnostics/PanelFixture.h"
#include "platform/Error.h"
#include "support/ErrorRecorder.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HostRecorder : public CollisionHost {
public:
    bool UIReady() const override { return ready; }
    void SetUIState(int state) override { states.push_back(state); }
    void setTxtMsg(const QString& text) override { txtMsg = text; }
    int MountedNodeNumber() const override { return mounted; }
    void setCollisionPressed(bool on) override { pressed = on; }

    bool ready = true;
    int mounted = 0;
    bool pressed = false;
    QString txtMsg;
    std::vector<int> states;
};

class FailingNode : public NodeCountSource {
public:
    std::optional<int> AskNodeCount() override { throw Error(ErrorNumber::kPortNotOpen, "no port"); }
};

class CollisionMonitorTest : public PanelFixture {
protected:
    void Tick() { Fire(*monitor.findChild<QTimer*>("TPollCollision")); }

    HostRecorder host;
    ErrorRecorder errors;
    CollisionMonitor monitor{host, panel, errors};
};

TEST_F(CollisionMonitorTest, IsOffAtStart)
{
    EXPECT_FALSE(monitor.On());
    EXPECT_EQ(monitor.findChild<QTimer*>("TPollCollision")->interval(), 1000);
}

TEST_F(CollisionMonitorTest, SwitchedOnItAsksAtOnceAndSaysSo)
{
    host.mounted = 3;
    node.answer = 12;
    monitor.SetCollisionMonitor(true);
    EXPECT_TRUE(monitor.On());
    EXPECT_TRUE(host.pressed);
    EXPECT_EQ(host.txtMsg, "Node collision monitoring enabled on Node 3.");
    EXPECT_EQ(Line(5), "NC-00012");
    EXPECT_TRUE(IsBright(5));
}

TEST_F(CollisionMonitorTest, SwitchedOffItBlanksTheSpinnerAndDimsTheCount)
{
    host.mounted = 3;
    node.answer = 12;
    monitor.SetCollisionMonitor(true);
    monitor.SetCollisionMonitor(false);
    EXPECT_FALSE(monitor.On());
    EXPECT_FALSE(host.pressed);
    EXPECT_EQ(host.txtMsg, "Node collision monitoring disabled on Node 3.");
    EXPECT_EQ(Line(5), "NC 00012");
    EXPECT_EQ(DimRow(face, 5), "NC 00012");
    EXPECT_EQ(node.asked, 1);
}

TEST_F(CollisionMonitorTest, WithoutAMountedNodeTheTextNamesNone)
{
    monitor.SetCollisionMonitor(false);
    EXPECT_EQ(host.txtMsg, "Node collision monitoring disabled");
}

TEST_F(CollisionMonitorTest, ATickPollsBetweenBusyAndReady)
{
    host.mounted = 3;
    monitor.SetCollisionMonitor(true);
    host.txtMsg.clear();
    node.answer = 13;
    Tick();
    EXPECT_THAT(host.states, ElementsAre(8, 4));
    EXPECT_EQ(host.txtMsg, "Node collision monitoring enabled on Node 3.");
    EXPECT_EQ(Line(5), "NC\\00013");
    EXPECT_EQ(Line(2), "<- NC ->");
    EXPECT_TRUE(monitor.On());
}

TEST_F(CollisionMonitorTest, ATickWithoutAMountedNodeDoesNothing)
{
    monitor.SetCollisionMonitor(true);
    const int asked = node.asked;
    host.txtMsg = "before";
    Tick();
    EXPECT_EQ(node.asked, asked);
    EXPECT_EQ(host.txtMsg, "before");
    EXPECT_THAT(host.states, IsEmpty());
}

TEST_F(CollisionMonitorTest, ATickDuringAnotherExchangeOnlySaysSo)
{
    host.mounted = 3;
    monitor.SetCollisionMonitor(true);
    const int asked = node.asked;
    host.ready = false;
    Tick();
    EXPECT_EQ(host.txtMsg, "Currently processing another message");
    EXPECT_EQ(node.asked, asked);
    EXPECT_THAT(host.states, IsEmpty());
}

TEST_F(CollisionMonitorTest, ANodeThatDoesNotAnswerLeavesTheCountAndIsAskedAgain)
{
    host.mounted = 3;
    node.answer = 12;
    monitor.SetCollisionMonitor(true);
    node.answer.reset();
    Tick();
    Tick();
    EXPECT_EQ(node.asked, 3);
    EXPECT_EQ(Line(5).right(5), "00012");
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(CollisionMonitorTest, TheEndOfTheConnectionStopsThePolling)
{
    monitor.SetCollisionMonitor(true);
    host.txtMsg = "before";
    monitor.Stop();
    EXPECT_FALSE(monitor.On());
    EXPECT_EQ(host.txtMsg, "before");
}

TEST_F(CollisionMonitorTest, AFailureOfATickIsReportedAndTheWindowIsReadyAgain)
{
    FailingNode failing;
    MiscFace otherPanel(display, clock, failing);
    CollisionMonitor other(host, otherPanel, errors);
    host.mounted = 3;
    EXPECT_THROW(other.SetCollisionMonitor(true), Error);
    Fire(*other.findChild<QTimer*>("TPollCollision"));
    ASSERT_EQ(errors.reports.size(), 1U);
    EXPECT_EQ(errors.reports[0].number, ErrorNumber::kPortNotOpen);
    EXPECT_THAT(host.states, ElementsAre(8, 4));
}

}  // namespace
}  // namespace fenrik
