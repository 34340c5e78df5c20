// Downloading nodes by the toolbar, compared field by field with what the simulator says that they hold.

#include "e2e/HeldNode.h"
#include "e2e/ToolTest.h"
#include "model/CNode.h"
#include "model/CSystem.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTest>

#include <map>

namespace fenrik {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

const QString kScenario = QStringLiteral(FENRIK_SCENARIO_FOLDER "/download.txt");
constexpr int kNodesInScenario = 11;

class Download : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        QSettings settings(copy.ConfigFolder() + "/settings.ini", QSettings::IniFormat);
        settings.setValue("Settings/NodesInSystem", QString::number(kNodesInScenario));
    }

    void Connect()
    {
        QFile file(kScenario);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ASSERT_NO_FATAL_FAILURE(StartConnected(file.readAll().constData()));
    }

    [[nodiscard]] CNode& Node(int number) { return *program->Window()->System().Nodes().Find(number); }

    void Select(int number) { Click("Nodebar", QStringLiteral("Node%1").arg(number).toLatin1().constData()); }

    /// Downloads the node with its names; gives the last words of the status line.
    std::string DownloadNode(int number)
    {
        Select(number);
        boxes.AnswerNext(QMessageBox::Yes);
        Click("Toolbar", "Refresh");
        return Text("txtMsg");
    }

    [[nodiscard]] static DescribedFields Described(int number, const QStringList& more = {})
    {
        return DescribedNode(kScenario, number, more);
    }

    /// Number of the first node of that type and road.
    [[nodiscard]] static int NodeOf(const char* type, const char* road)
    {
        for (int number = 1; number <= kNodesInScenario; ++number) {
            std::map<QString, QString> fields;
            for (const auto& [field, value] : Described(number))
                fields.emplace(field, value);
            if (fields["type"] == QLatin1String(type) && fields["road"] == QLatin1String(road))
                return number;
        }
        ADD_FAILURE() << "no node of type " << type << " and road " << road;
        return 1;
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
    EXPECT_EQ(DownloadNode(node), GetParam().closing);
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
    (void)DownloadNode(node);
    ExpectNodeAsDescribed(node);
    EXPECT_TRUE(Node(node).VFlashSupport());
}

TEST_F(Download, OfAVariableFlashTypeWithoutTheStructureTakesTwoCalls)
{
    const int node = NodeOf("6", "query");
    ASSERT_NO_FATAL_FAILURE(Connect());
    (void)DownloadNode(node);
    EXPECT_FALSE(Node(node).VFlashSupport());
    EXPECT_EQ(DownloadNode(node), kByQueries);
    ExpectNodeAsDescribed(node);
}

TEST_F(Download, OfANodeImageBringsWhatTheWireBrings)
{
    QProcess writer;
    writer.start(QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle"),
                 {"--write-images", copy.Path("bin"), "--system", "Tram", "--scenario", kScenario});
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
        auto fields = Described(node.number(), {"--road", "memory"});
        std::erase_if(fields, [](const auto& field) { return field.first == QLatin1String("road"); });
        ExpectAsDescribed(node, fields);
    }
}

TEST_F(Download, OfAModelWithoutConfigurationIsRefusedInWords)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    Select(NodeOf("1", "query"));
    Click("Toolbar", "Refresh");
    EXPECT_EQ(Text("txtMsg"), "This Node Type cannot be downloaded.");
    EXPECT_THAT(boxes.Take(), Contains(QStringLiteral("This Node Type cannot be downloaded.")));
}

TEST_F(Download, IsCancelledByItsQuestion)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    Select(NodeOf("16", "query"));
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
    EXPECT_EQ(DownloadNode(NodeOf("16", "query")), "Data download cancelled due to user request.");
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
    Select(NodeOf("0", "memory"));
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
    Select(NodeOf("0", "memory"));
    boxes.AnswerNext(QMessageBox::Yes);
    Click("Toolbar", "Refresh");
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_TRUE(IsEnabled("Toolbar", "Connect"));
    EXPECT_TRUE(Find<QWidget>("pbProgress").isHidden());
    (void)boxes.Take();  // the words of the failure, which another test reads
}

}  // namespace
}  // namespace fenrik
