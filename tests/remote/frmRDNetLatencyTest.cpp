#include "remote/frmRDNetLatency.h"

#include "shared/ErrorReporter.h"

#include "RemoteWindowFixture.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const QString kServerFrame = "server 12345678901234567890123456789012";
const QString kClientFrame = "client 12345678901234567890123456789012";

class LatencyWindow : public RemoteWindowTest {
protected:
    void OpenIn(int state)
    {
        host.state = state;
        window = std::make_unique<frmRDNetLatency>(host, clock, errors);
        Open(*window);
    }
    void Reply(int times, double seconds)
    {
        for (int i = 0; i < times; ++i) {
            clock.Advance(seconds);
            Guarded(errors, "the receiver", [this] { window->replyReceived("anything"); });
        }
    }
    [[nodiscard]] QStringList Info() const { return Find<QLabel>(*window, "lblInfo").text().split('\n'); }
    [[nodiscard]] int Progress() const { return Find<QProgressBar>(*window, "pbMeasure").value(); }
    [[nodiscard]] bool Enabled(const char* name) const { return Find<QPushButton>(*window, name).isEnabled(); }

    std::unique_ptr<frmRDNetLatency> window;
};

TEST_F(LatencyWindow, TellsWhatItWouldDo)
{
    OpenIn(RemoteStates::kLoggedOn);
    EXPECT_EQ(window->windowTitle(), "Fenrik RD Ping");
    EXPECT_EQ(Info().first(), "Average latency of (20) 32 byte frames.");
    EXPECT_EQ(Progress(), 0);
    EXPECT_THAT(host.sent, IsEmpty());
}

// The wrong way round, and kept: the button is off in a pipe, where it is of use, until the state is told anew.
TEST_F(LatencyWindow, OpenedInAPipeItLacksTheClientButtonUntilTheNextState)
{
    OpenIn(RemoteStates::kLoggedOn);
    EXPECT_TRUE(Enabled("cmdClient"));
    OpenIn(RemoteStates::kGranted);
    EXPECT_TRUE(Enabled("cmdServer"));
    EXPECT_FALSE(Enabled("cmdClient"));
    window->setState(RemoteStates::kGranted);
    EXPECT_TRUE(Enabled("cmdClient"));
}

TEST_F(LatencyWindow, OpenedInAPipeTheClientButtonComesBackAfterATestOfTheServer)
{
    OpenIn(RemoteStates::kGranted);
    Click(*window, "cmdServer");
    Reply(20, 0.1);
    EXPECT_TRUE(Enabled("cmdClient"));
}

TEST_F(LatencyWindow, ATestSendsOneFrameAfterTheOtherAndTellsTheMean)
{
    OpenIn(RemoteStates::kLoggedOn);
    Click(*window, "cmdServer");
    EXPECT_THAT(Info(), ElementsAre("Measuring Network Latency ...", "Sending 32 byte frames"));
    EXPECT_FALSE(Enabled("cmdServer"));
    EXPECT_FALSE(Enabled("cmdClient"));
    EXPECT_THAT(host.sent, ElementsAre(kServerFrame));

    Reply(10, 0.1);
    EXPECT_EQ(Progress(), 10);
    EXPECT_THAT(host.sent, SizeIs(11));
    Reply(10, 0.2);
    EXPECT_EQ(Progress(), 20);
    EXPECT_THAT(host.sent, SizeIs(20));
    EXPECT_THAT(Info(), ElementsAre("Measurement Complete!", "Average round trip latency is 0.1500"));
    EXPECT_TRUE(Enabled("cmdServer"));
    EXPECT_FALSE(Enabled("cmdClient"));
}

TEST_F(LatencyWindow, ATestOfTheClientGoesThroughThePipe)
{
    OpenIn(RemoteStates::kGranted);
    window->setState(RemoteStates::kGranted);
    Click(*window, "cmdClient");
    Reply(1, 0.1);
    EXPECT_THAT(host.sent, ElementsAre(kClientFrame, kClientFrame));
}

TEST_F(LatencyWindow, ASecondTestBeginsAtZero)
{
    OpenIn(RemoteStates::kLoggedOn);
    Click(*window, "cmdServer");
    Reply(20, 0.4);
    Click(*window, "cmdServer");
    EXPECT_EQ(Progress(), 0);
    Reply(20, 0.05);
    EXPECT_EQ(Info().last(), "Average round trip latency is 0.0500");
}

// Replies aren't told apart, so a stray one counts, and the next frame follows it.
TEST_F(LatencyWindow, AReplyWithoutATestCountsAndAsksForTheNext)
{
    OpenIn(RemoteStates::kLoggedOn);
    Reply(1, 0.1);
    EXPECT_EQ(Progress(), 1);
    EXPECT_THAT(host.sent, ElementsAre(kServerFrame));
}

TEST_F(LatencyWindow, AReplyAfterTheLastIsReportedAndChangesNoResult)
{
    OpenIn(RemoteStates::kLoggedOn);
    Click(*window, "cmdServer");
    Reply(20, 0.1);
    const QStringList info = Info();
    Reply(2, 9.0);
    ASSERT_THAT(errors.reports, SizeIs(2));
    EXPECT_EQ(errors.reports[0].number, 9);
    EXPECT_EQ(errors.reports[0].where, "the receiver");
    EXPECT_EQ(Info(), info);
    EXPECT_THAT(host.sent, SizeIs(20));
    EXPECT_TRUE(Enabled("cmdServer"));
}

TEST_F(LatencyWindow, ALostFrameLeavesTheTestWaitingUntilTheStateChanges)
{
    OpenIn(RemoteStates::kLoggedOn);
    Click(*window, "cmdServer");
    Reply(5, 0.1);
    EXPECT_FALSE(Enabled("cmdServer"));
    window->setState(RemoteStates::kLoggedOn);
    EXPECT_TRUE(Enabled("cmdServer"));
}

struct Buttons {
    int state;
    bool server;
    bool client;
};

class LatencyState : public LatencyWindow, public testing::WithParamInterface<Buttons> {};

TEST_P(LatencyState, EnablesWhatCanBeMeasured)
{
    OpenIn(0);
    window->setState(GetParam().state);
    EXPECT_EQ(Enabled("cmdServer"), GetParam().server);
    EXPECT_EQ(Enabled("cmdClient"), GetParam().client);
}

INSTANTIATE_TEST_SUITE_P(States, LatencyState,
                         testing::Values(Buttons{1, false, false}, Buttons{2, true, false}, Buttons{3, true, false},
                                         Buttons{4, true, true}, Buttons{5, true, true}, Buttons{6, true, true}));

TEST_F(LatencyWindow, AStateBelowTheFirstChangesNothing)
{
    OpenIn(0);
    window->setState(RemoteStates::kDisconnected);
    window->setState(0);
    EXPECT_FALSE(Enabled("cmdServer"));
}

TEST_F(LatencyWindow, KeysStartATestAndClose)
{
    OpenIn(RemoteStates::kLoggedOn);
    QTest::keyClick(window.get(), Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return host.sent == QStringList{kServerFrame}; }));
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace fenrik
