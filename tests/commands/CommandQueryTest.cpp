#include "commands/CommandQuery.h"

#include "CommandsFixture.h"

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

/// Keeps the report; steps are indented.
class ReportRecorder : public CommandQueryHost {
public:
    explicit ReportRecorder(const HostRecorder& link) : mLink(link) {}

    [[nodiscard]] bool PortOpenForTx() const override { return mLink.open; }
    void AddStep(const QString& line) override { all.push_back("  " + line.toStdString()); }
    void AddLine(const QString& line) override
    {
        all.push_back(line.toStdString());
        lines.push_back(line.toStdString());
    }
    void ShowResult(const QString& text) override { result = text.toStdString(); }

    Texts all;
    Texts lines;
    std::string result;

private:
    const HostRecorder& mLink;
};

class CommandQueryTest : public CommandsTest {
protected:
    void Ask(int node) { query.Run(node, 277, "Electric Horn"); }

    /// The far end says nothing to frames of that text any more, "905 1 3".
    void Silence(const std::string& frame)
    {
        answer = [this, frame](const Frame& asked) -> std::optional<Frame> {
            return sent.back() == frame ? std::nullopt : NodesAnswer(asked);
        };
    }

    ReportRecorder report{host};
    CommandQuery query{handler, system, report};
};

// --- The good run --------------------------------------------------------------------------------------------------

TEST_F(CommandQueryTest, AMountedNodeIsOnlyAsked)
{
    system.MountNode(3);
    Ask(3);
    EXPECT_THAT(sent, ElementsAre("920 1 277"));
    EXPECT_THAT(report.all, ElementsAre("  Begin Processing...", "  Checking Communications Port.",
                                        "  Checking for previously mounted node.", "  Node 3 already mounted.",
                                        "  Requesting Command State Information from Node 3.",
                                        "---->Node 3 believes Electric Horn is ON.", "  End Processing..."));
    EXPECT_EQ(report.result, "ON");
    EXPECT_EQ(system.MountedNodeNumber(), 3);
}

TEST_F(CommandQueryTest, AnUnmountedNodeIsMountedForTheQuestionOnly)
{
    Ask(3);
    EXPECT_THAT(sent, ElementsAre("901 0 3", "905 1 3", "920 1 277", "905 0 3"));
    EXPECT_THAT(report.all, ElementsAre("  Begin Processing...", "  Checking Communications Port.",
                                        "  Checking for previously mounted node.", "  Checking network for Node 3.",
                                        "  Node 3 replied to ping.", "  Attempting to Mount Node 3.",
                                        "  Node 3 Mounted ", "  Requesting Command State Information from Node 3.",
                                        "---->Node 3 believes Electric Horn is ON.", "  Attempting to Unmount Node 3.",
                                        "  Node 3 Unmounted.", "  End Processing..."));
    EXPECT_EQ(system.MountedNodeNumber(), 0);
}

TEST_F(CommandQueryTest, AnotherMountedNodeGivesWayAndIsMountedAgain)
{
    system.MountNode(2);
    Ask(3);
    EXPECT_THAT(sent, ElementsAre("901 0 3", "905 0 2", "905 1 3", "920 1 277", "905 0 3", "905 1 2"));
    EXPECT_THAT(report.all,
                ElementsAre("  Begin Processing...", "  Checking Communications Port.",
                            "  Checking for previously mounted node.", "  Node 2 mounted.",
                            "  Checking network for Node 3.", "  Node 3 replied to ping.",
                            "  Attempting to Unmount Node 2.", "  Node 2 Unmounted.", "  Attempting to Mount Node 3.",
                            "  Node 3 Mounted ", "  Requesting Command State Information from Node 3.",
                            "---->Node 3 believes Electric Horn is ON.", "  Attempting to Unmount Node 3.",
                            "  Node 3 Unmounted.", "  Attempting to Mount Node 2.", "  Node 2 Mounted ",
                            "  End Processing..."));
    EXPECT_EQ(system.MountedNodeNumber(), 2);
}

TEST_F(CommandQueryTest, ANodeBeyondTheSystemIsAskedAllTheSame)
{
    Ask(20);
    EXPECT_THAT(sent, ElementsAre("901 0 20", "905 1 20", "920 1 277", "905 0 20"));
    EXPECT_EQ(report.result, "ON");
    EXPECT_EQ(system.MountedNodeNumber(), 0);
}

TEST_F(CommandQueryTest, AllFramesAreListed)
{
    Ask(3);
    std::vector<int> shown;
    for (const CMessage& message : host.shown)
        shown.push_back(message.Command);
    EXPECT_THAT(shown, ElementsAre(901, 902, 905, 903, 920, 950, 905, 903));
}

TEST_F(CommandQueryTest, ANameThatLooksLikeAPatternStaysAsItIs)
{
    system.MountNode(3);
    query.Run(3, 5, "Pump %1 %3");
    EXPECT_THAT(report.lines, ElementsAre("---->Node 3 believes Pump %1 %3 is ON."));
}

// An acknowledge that declines counts as well: only silence is a refusal here.
TEST_F(CommandQueryTest, AnAcknowledgeThatIsOffCounts)
{
    answer = [this](const Frame& frame) -> std::optional<Frame> {
        return frame.command == 905 ? Frame{903, false, false, 0} : NodesAnswer(frame);
    };
    system.MountNode(2);
    Ask(3);
    EXPECT_THAT(sent, ElementsAre("901 0 3", "905 0 2", "905 1 3", "920 1 277", "905 0 3", "905 1 2"));
    EXPECT_EQ(system.MountedNodeNumber(), 2);
    EXPECT_EQ(report.result, "ON");
}

struct ResultRow {
    const char* name;
    int data;
    const char* line;
    const char* result;
};

class Results : public CommandQueryTest, public testing::WithParamInterface<ResultRow> {};

TEST_P(Results, AreTold)
{
    state = GetParam().data;
    system.MountNode(3);
    Ask(3);
    EXPECT_THAT(report.lines, ElementsAre(GetParam().line));
    EXPECT_EQ(report.result, GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    CommandQuery, Results,
    testing::Values(ResultRow{"Off", 0, "---->Node 3 believes Electric Horn is OFF.", "OFF"},
                    ResultRow{"On", 1, "---->Node 3 believes Electric Horn is ON.", "ON"},
                    ResultRow{"Invalid", 2, "---->Node 3 responded with invalid state (2).", "UNKNOWN"},
                    ResultRow{"Largest", 65535, "---->Node 3 responded with invalid state (65535).", "UNKNOWN"}),
    [](const auto& row) { return row.param.name; });

struct PingRow {
    const char* name;
    int data;
    bool counts;
};

class PingAnswers : public CommandQueryTest, public testing::WithParamInterface<PingRow> {};

TEST_P(PingAnswers, CountOrNot)
{
    answer = [this](const Frame& frame) -> std::optional<Frame> {
        return frame.command == 901 ? Frame{902, false, false, std::uint16_t(GetParam().data)} : NodesAnswer(frame);
    };
    Ask(3);
    if (GetParam().counts) {
        EXPECT_EQ(report.result, "ON");
        return;
    }
    EXPECT_THAT(sent, ElementsAre("901 0 3"));
    EXPECT_THAT(report.lines, ElementsAre("ERROR: Node 3 did not respond to ping."));
    EXPECT_EQ(report.result, "");
}

INSTANTIATE_TEST_SUITE_P(CommandQuery, PingAnswers,
                         testing::Values(PingRow{"ItsNumber", 3, true}, PingRow{"TheNumberPinged", 12345, true},
                                         PingRow{"AnotherNumber", 4, false}, PingRow{"Zero", 0, false},
                                         PingRow{"ANumberOfNoNode", 40000, false}),
                         [](const auto& row) { return row.param.name; });

// --- Every step refused --------------------------------------------------------------------------------------------

struct RefusalRow {
    const char* name;
    const char* unanswered;
    Texts sent;
    Texts lines;
    const char* result;
    int mounted;
};

class Refusals : public CommandQueryTest, public testing::WithParamInterface<RefusalRow> {};

TEST_P(Refusals, EndTheQueryWhereItStands)
{
    Silence(GetParam().unanswered);
    system.MountNode(2);
    Ask(3);
    EXPECT_THAT(sent, ElementsAreArray(GetParam().sent));
    EXPECT_THAT(report.lines, ElementsAreArray(GetParam().lines));
    EXPECT_EQ(report.all.back(), "  End Processing...");
    EXPECT_EQ(report.result, GetParam().result);
    EXPECT_EQ(system.MountedNodeNumber(), GetParam().mounted);
}

INSTANTIATE_TEST_SUITE_P(
    CommandQuery, Refusals,
    testing::Values(
        RefusalRow{"OfThePing", "901 0 3", {"901 0 3", "901 0 3"}, {"ERROR: Node 3 did not respond to ping."}, "", 2},
        RefusalRow{"OfTheEarlierNodesRelease",
                   "905 0 2",
                   {"901 0 3", "905 0 2", "905 0 2", "905 0 2"},
                   {"ERROR: Unable to release mount on Node 2"},
                   "",
                   2},
        // The earlier node was given up for nothing; its mount is not put back.
        RefusalRow{"OfTheMount",
                   "905 1 3",
                   {"901 0 3", "905 0 2", "905 1 3", "905 1 3", "905 1 3"},
                   {"ERROR: Unable to mount Node 3"},
                   "",
                   0},
        // No answer is a result too, so the mounts are put back.
        RefusalRow{"OfTheQuestion",
                   "920 1 277",
                   {"901 0 3", "905 0 2", "905 1 3", "920 1 277", "920 1 277", "920 1 277", "905 0 3", "905 1 2"},
                   {"ERROR: No response from Node 3."},
                   "UNKNOWN",
                   2},
        RefusalRow{"OfTheRelease",
                   "905 0 3",
                   {"901 0 3", "905 0 2", "905 1 3", "920 1 277", "905 0 3", "905 0 3", "905 0 3", "905 1 2"},
                   {"---->Node 3 believes Electric Horn is ON.", "ERROR: Unable to release mount on Node 3"},
                   "ON",
                   2},
        RefusalRow{"OfTheEarlierNodesMount",
                   "905 1 2",
                   {"901 0 3", "905 0 2", "905 1 3", "920 1 277", "905 0 3", "905 1 2", "905 1 2", "905 1 2"},
                   {"---->Node 3 believes Electric Horn is ON."},
                   "ON",
                   0}),
    [](const auto& row) { return row.param.name; });

TEST_F(CommandQueryTest, AReleaseThatIsRefusedLeavesTheNodeMountedInTheTool)
{
    Silence("905 0 3");
    Ask(3);
    EXPECT_THAT(report.lines,
                ElementsAre("---->Node 3 believes Electric Horn is ON.", "ERROR: Unable to release mount on Node 3"));
    EXPECT_EQ(system.MountedNodeNumber(), 3);
}

// --- The port and the program --------------------------------------------------------------------------------------

TEST_F(CommandQueryTest, WithoutAPortNothingIsAsked)
{
    host.open = false;
    Ask(3);
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_THAT(report.all, ElementsAre("  Begin Processing...", "  Checking Communications Port.",
                                        "ERROR: Communications Port not open for Transmit.", "  End Processing..."));
    EXPECT_EQ(report.result, "");
}

struct VanishRow {
    const char* name;
    const char* frame;  ///< after which the port goes away
    Texts lines;
};

class VanishingPorts : public CommandQueryTest, public testing::WithParamInterface<VanishRow> {
protected:
    void LoseAfter(const std::string& frame, const std::function<void()>& lose)
    {
        answer = [this, frame, lose](const Frame& asked) -> std::optional<Frame> {
            if (sent.back() != frame)
                return NodesAnswer(asked);
            pump.After(0.1, lose);
            return std::nullopt;
        };
    }
};

TEST_P(VanishingPorts, CountAsSilence)
{
    LoseAfter(GetParam().frame, [this] { host.open = false; });
    system.MountNode(2);
    Ask(3);
    EXPECT_EQ(sent.back(), GetParam().frame);
    EXPECT_THAT(report.lines, ElementsAreArray(GetParam().lines));
    EXPECT_EQ(report.all.back(), "  End Processing...");
    EXPECT_LT(Elapsed(), 1.0);
}

TEST_P(VanishingPorts, AreTheEndOfAllTriesAlsoWhenTheProgramEnds)
{
    LoseAfter(GetParam().frame, [this] {
        host.open = false;
        pump.Stop();
    });
    system.MountNode(2);
    Ask(3);
    EXPECT_EQ(sent.back(), GetParam().frame);
    EXPECT_LT(Elapsed(), 1.0);
}

INSTANTIATE_TEST_SUITE_P(
    CommandQuery, VanishingPorts,
    testing::Values(VanishRow{"InThePing", "901 0 3", {"ERROR: Node 3 did not respond to ping."}},
                    VanishRow{"InTheRelease", "905 0 2", {"ERROR: Unable to release mount on Node 2"}},
                    VanishRow{"InTheMount", "905 1 3", {"ERROR: Unable to mount Node 3"}},
                    VanishRow{"InTheQuestion",
                              "920 1 277",
                              {"ERROR: No response from Node 3.", "ERROR: Unable to release mount on Node 3"}},
                    VanishRow{"InThePuttingBack", "905 1 2", {"---->Node 3 believes Electric Horn is ON."}}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace fenrik
