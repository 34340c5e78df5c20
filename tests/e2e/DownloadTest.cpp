// Downloading nodes by the toolbar, compared field by field with what the simulator says that they hold.

#include "e2e/HeldNode.h"
#include "e2e/Scenarios.h"
#include "e2e/ToolTest.h"
#include "model/CNode.h"
#include "model/CSystem.h"

#include <QDir>
#include <QTest>

namespace fenrik {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kScenario = "download.txt";
constexpr int kNodesInScenario = 11;

class Download : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        SetNodes(kNodesInScenario);
    }

    void Connect() { ASSERT_NO_FATAL_FAILURE(StartConnected(ScenarioText(kScenario).constData())); }

    [[nodiscard]] CNode& Node(int number) { return *program->Window()->System().Nodes().Find(number); }

    /// Downloads the node; gives the last words of the status line.
    [[nodiscard]] std::string Downloaded(int number)
    {
        DownloadNode(number);
        return Text("txtMsg");
    }

    [[nodiscard]] static NodeFields Described(int number, const QStringList& more = {})
    {
        return DescribedNode(ScenarioPath(kScenario), number, more);
    }
    [[nodiscard]] static int NodeOf(const char* type, const char* road)
    {
        return DescribedNodeOf(ScenarioPath(kScenario), kNodesInScenario, type, road);
    }

    void ExpectNodeAsDescribed(int number) { ExpectAsDescribed(Node(number), Described(number)); }
};

struct RoadRow {
    const char* name;
    const char* type;
    const char* road;
    const char* closing;
};

class DownloadRoads : public Download, public testing::WithParamInterface<RoadRow> {};

TEST_P(DownloadRoads, BringWhatTheNodeHolds)
{
    const int node = NodeOf(GetParam().type, GetParam().road);
    ASSERT_NO_FATAL_FAILURE(Connect());
    EXPECT_EQ(Downloaded(node), GetParam().closing);
    ExpectNodeAsDescribed(node);
    EXPECT_EQ(program->Window()->System().MountedNodeNumber(), 0);
    EXPECT_TRUE(program->Window()->System().Dirty());
}

constexpr const char* kByQueries = "Node information successfully updated.";
// Spelt so since ever.
constexpr const char* kByMemory = "Node information succesfully updated.";

INSTANTIATE_TEST_SUITE_P(Types, DownloadRoads,
                         testing::Values(RoadRow{"QueriesOfType16", "16", "query", kByQueries},
                                         RoadRow{"QueriesOfType10", "10", "query", kByQueries},
                                         RoadRow{"QueriesOfType9", "9", "query", kByQueries},
                                         RoadRow{"MemoryOfType0", "0", "memory", kByMemory},
                                         RoadRow{"MemoryOfType2", "2", "memory", kByMemory},
                                         RoadRow{"MemoryOfType5", "5", "memory", kByMemory}),
                         [](const auto& row) { return row.param.name; });

TEST_F(Download, OfAVariableFlashBringsWhatTheNodeHolds)
{
    const int node = NodeOf("6", "flash");
    ASSERT_NO_FATAL_FAILURE(Connect());
    DownloadNode(node);
    ExpectNodeAsDescribed(node);
    EXPECT_TRUE(Node(node).VFlashSupport());
}

TEST_F(Download, OfAVariableFlashTypeWithoutTheStructureTakesTwoCalls)
{
    const int node = NodeOf("6", "query");
    ASSERT_NO_FATAL_FAILURE(Connect());
    DownloadNode(node);
    EXPECT_FALSE(Node(node).VFlashSupport());
    EXPECT_EQ(Downloaded(node), kByQueries);
    ExpectNodeAsDescribed(node);
}

TEST_F(Download, OfANodeImageBringsWhatTheWireBrings)
{
    QProcess writer;
    writer.start(QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle"),
                 {"--write-images", copy.Path("bin"), "--system", "Tram", "--scenario", ScenarioPath(kScenario)});
    ASSERT_TRUE(writer.waitForFinished());
    const QStringList images = QDir(copy.Path("bin")).entryList({"Tram_Node *.bin"});
    ASSERT_GE(images.size(), 4);
    ASSERT_NO_FATAL_FAILURE(StartTool());
    for (const QString& image : images) {
        CNode node;
        node.Init(program->Window()->System(), 0);
        std::uint8_t nodesInSystem = 0;
        node.ReadNode(copy.Path("bin") + QLatin1Char('/') + image, nodesInSystem, true);
        EXPECT_EQ(nodesInSystem, kNodesInScenario);
        NodeFields fields = Described(node.number(), {"--road", "memory"});
        fields.remove("road");
        ExpectAsDescribed(node, fields);
    }
}

TEST_F(Download, OfAModelWithoutConfigurationIsRefusedInWords)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    ClickNode(NodeOf("1", "query"));
    Click("Toolbar", "Refresh");
    EXPECT_EQ(Text("txtMsg"), "This Node Type cannot be downloaded.");
    EXPECT_THAT(boxes.Take(), Contains(QStringLiteral("This Node Type cannot be downloaded.")));
}

TEST_F(Download, IsCancelledByItsQuestion)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    ClickNode(NodeOf("16", "query"));
    boxes.AnswerNext(QMessageBox::Cancel);
    Click("Toolbar", "Refresh");
    EXPECT_EQ(Text("txtMsg"), "Data download cancelled.");
}

TEST_F(Download, IsBrokenOffByEscape)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    QTimer escape;
    QObject::connect(&escape, &QTimer::timeout, program->Window(), [this] {
        if (Text("txtMsg").find("Retrieving Output usage") == 0)
            QTest::keyClick(program->Window(), Qt::Key_Escape);
    });
    escape.start(1);
    EXPECT_EQ(Downloaded(NodeOf("16", "query")), "Data download cancelled due to user request.");
    EXPECT_TRUE(Find<QWidget>("pbProgress").isHidden());
    EXPECT_TRUE(IsEnabled("Toolbar", "Refresh"));
}

TEST_F(Download, GivesUpInWordsWhenTheAnswersStop)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    QTimer silence;
    QObject::connect(&silence, &QTimer::timeout, program->Window(), [this, &silence] {
        if (Text("txtMsg").find("Retrieving Output usage") == 0) {
            silence.stop();
            vehicle.Control("lose every 1");
        }
    });
    silence.start(1);
    ClickNode(NodeOf("0", "memory"));
    boxes.AnswerNext(QMessageBox::Yes);
    Click("Toolbar", "Refresh");
    EXPECT_THAT(boxes.Take().join(QLatin1Char('\n')).toStdString(),
                HasSubstr("Diagnostics is having trouble communicating with the node."));
    EXPECT_TRUE(Find<QWidget>("pbProgress").isHidden());
}

TEST_F(Download, EndsWithAPulledCable)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    QTimer pull;
    QObject::connect(&pull, &QTimer::timeout, program->Window(), [this, &pull] {
        if (Text("txtMsg").find("Retrieving Input usage") == 0) {
            pull.stop();
            vehicle.Control("unplug");
        }
    });
    pull.start(1);
    ClickNode(NodeOf("0", "memory"));
    boxes.AnswerNext(QMessageBox::Yes);
    Click("Toolbar", "Refresh");
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_TRUE(IsEnabled("Toolbar", "Connect"));
    EXPECT_TRUE(Find<QWidget>("pbProgress").isHidden());
    (void)boxes.Take();  // the words of the failure, which another test reads
}

}  // namespace
}  // namespace fenrik
