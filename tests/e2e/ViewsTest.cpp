// The views of outputs and states, worked against nodes that obey, are polled or report by themselves.

#include "e2e/ToolTest.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <stdexcept>

namespace fenrik {
namespace {

constexpr const char* kScenario = "node 1 type 16 Engine\n"
                                  "node 2 type 16 Rear push\n"
                                  "node 3 type 9 Front\n"
                                  "node 4 type 2 Door\n"
                                  "node 5 type 2 EarlyDoor early\n"
                                  "node 6 type 0 Rear\n"
                                  "quiet\n";
constexpr int kNodes = 6;

class Views : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        SetNodes(kNodes);
    }

    void Mount(int node)
    {
        ASSERT_NO_FATAL_FAILURE(StartConnected(kScenario));
        ClickNode(node);
        Click("Nodebar", "Mount");
        ASSERT_TRUE(IsVisible("Nodebar", "Unmount"));
    }

    /// Downloads the node that is mounted, with its names.
    void Download()
    {
        boxes.AnswerNext(QMessageBox::Yes);
        Click("Toolbar", "Refresh");
        ASSERT_EQ(Text("txtMsg"), "Node information successfully updated.");
    }

    [[nodiscard]] QToolButton& OutputButton(int number) const
    {
        const QString name = QString::number(number);
        for (auto* button : Find<QWidget>("tbOutputs").findChildren<QToolButton*>()) {
            if (button->defaultAction() != nullptr && button->defaultAction()->objectName() == name)
                return *button;
        }
        throw std::runtime_error("no button of output " + name.toStdString());
    }

    void PressOutput(int number)
    {
        QToolButton& button = OutputButton(number);
        ASSERT_TRUE(button.isVisible() && button.isEnabled());
        QTest::mouseClick(&button, Qt::LeftButton);
    }

    [[nodiscard]] bool Noted(const std::string& note) const
    {
        return Eventually([&] { return vehicle.HasNote(note.c_str()); });
    }

    /// A row of the display, from 1, without the blanks around it.
    [[nodiscard]] std::string Row(int row) const
    {
        const QStringList rows = QString::fromStdString(Face("PicAnalogFace")).split(QLatin1Char('\n'));
        return rows.value(row - 1).trimmed().toStdString();
    }
    [[nodiscard]] bool ShowsPoint(int row, int point, char wanted) const
    {
        const std::string text = Row(row);
        return int(text.size()) >= point && text[std::size_t(point - 1)] == wanted;
    }

    /// A row of the small panel, from 1.
    [[nodiscard]] std::string Panel(int row, const char* property = "text") const
    {
        const QStringList rows = QString::fromStdString(Face("PicMiscFace", property)).split(QLatin1Char('\n'));
        return rows.value(row - 1).trimmed().toStdString();
    }

    static constexpr int kInputRow = 3;
    static constexpr int kOutputRow = 7;
};

struct ForceRow {
    const char* name;
    int node;
    int output;
};

class ViewsForce : public Views, public testing::WithParamInterface<ForceRow> {};

TEST_P(ViewsForce, AnOutputByItsButtonAndReleaseItByASecondPress)
{
    const auto& row = GetParam();
    ASSERT_NO_FATAL_FAILURE(Mount(row.node));
    Click("Toolbar", "OutputDiagnostics");
    const std::string output = "node " + std::to_string(row.node) + " output " + std::to_string(row.output);
    ASSERT_NO_FATAL_FAILURE(PressOutput(row.output));
    EXPECT_TRUE(Noted(output + " forced to 100%"));
    EXPECT_TRUE(OutputButton(row.output).isChecked());
    ASSERT_NO_FATAL_FAILURE(PressOutput(row.output));
    EXPECT_TRUE(Noted(output + " released"));
    EXPECT_FALSE(OutputButton(row.output).isChecked());
}

INSTANTIATE_TEST_SUITE_P(Forms, ViewsForce,
                         testing::Values(ForceRow{"Newer", 1, 1}, ForceRow{"NewerOutput31", 1, 31},
                                         ForceRow{"Channel", 3, 15}, ForceRow{"ChannelOfType0", 6, 16},
                                         ForceRow{"NewerOfType2", 4, 12}, ForceRow{"EarlyOfType2", 5, 12}),
                         [](const auto& row) { return row.param.name; });

TEST_F(Views, ForceADownloadedOutputToALevelAndReleaseIt)
{
    ASSERT_NO_FATAL_FAILURE(Mount(1));
    ASSERT_NO_FATAL_FAILURE(Download());
    Click("Toolbar", "OutputDiagnostics");
    auto& levels = Find<QComboBox>("cmbDPWMC");
    auto& force = Find<QPushButton>("cmdDPWMC");
    ASSERT_TRUE(levels.isVisible() && force.isVisible());
    levels.setCurrentText("50%");
    QTest::mouseClick(&force, Qt::LeftButton);
    EXPECT_TRUE(Noted("node 1 output 1 forced to 50%"));
    EXPECT_TRUE(OutputButton(1).isChecked());
    levels.setCurrentText("Release");
    QTest::mouseClick(&force, Qt::LeftButton);
    EXPECT_TRUE(Noted("node 1 output 1 released"));
    EXPECT_FALSE(OutputButton(1).isChecked());
}

TEST_F(Views, ShowTheFaultThatANodeReports)
{
    ASSERT_NO_FATAL_FAILURE(Mount(1));
    Click("Toolbar", "OutputDiagnostics");
    ASSERT_EQ(Text("lblFaults"), "No Faults Detected");
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("fault 1 1"));
    EXPECT_TRUE(Eventually([this] { return Text("lblFaults") == "Fault detected!"; }));
    constexpr int kIconKeyRole = Qt::UserRole + 1;
    const QAbstractItemModel& tree = *Find<QTreeView>("tvOutputs").model();
    EXPECT_EQ(tree.index(0, 0).data(kIconKeyRole).toString(), "Fault");
    EXPECT_EQ(tree.index(1, 0).data(kIconKeyRole).toString(), "Off");
    EXPECT_EQ(OutputButton(1).defaultAction()->data().toString(), "Fault");
    EXPECT_EQ(OutputButton(2).defaultAction()->data().toString(), "Off");
}

TEST_F(Views, ShowAFaultThatWasReportedBeforeTheNodeWasLookedAt)
{
    ASSERT_NO_FATAL_FAILURE(Mount(1));
    Click("Toolbar", "OutputDiagnostics");
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("fault 4 1"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("fault 1 2"));
    ASSERT_TRUE(Eventually([this] { return OutputButton(2).defaultAction()->data() == "Fault"; }));
    EXPECT_EQ(Text("lblFaults"), "No Faults Detected") << "output 1 of node 1 has none";
    Click("Nodebar", "Node4");
    EXPECT_EQ(Text("lblFaults"), "Fault detected!");
    EXPECT_EQ(OutputButton(1).defaultAction()->data().toString(), "Fault");
}

TEST_F(Views, ShowAForcedOutputOnTheFace)
{
    constexpr int kOutput = 15;
    ASSERT_NO_FATAL_FAILURE(Mount(6));
    Click("Toolbar", "OutputDiagnostics");
    ASSERT_NO_FATAL_FAILURE(PressOutput(kOutput));
    Click("Toolbar", "States");
    EXPECT_TRUE(Eventually([this] { return ShowsPoint(kOutputRow, kOutput, '1'); })) << Row(kOutputRow);
    Click("Toolbar", "OutputDiagnostics");
    EXPECT_TRUE(OutputButton(kOutput).isChecked()) << "the view knows what is forced when it is opened again";
    ASSERT_NO_FATAL_FAILURE(PressOutput(kOutput));
    Click("Toolbar", "States");
    EXPECT_TRUE(Eventually([this] { return ShowsPoint(kOutputRow, kOutput, '0'); })) << Row(kOutputRow);
}

TEST_F(Views, ShowTheInputsOfADownloadedNode)
{
    ASSERT_NO_FATAL_FAILURE(Mount(1));
    Click("Toolbar", "InputDiagnostics");
    ASSERT_EQ(Text("lblCommandName"), "Unavailable");
    ASSERT_NO_FATAL_FAILURE(Download());
    const QAbstractItemModel& tree = *Find<QTreeView>("tvInputs").model();
    EXPECT_EQ(tree.rowCount(), 16);
    EXPECT_NE(Text("lblCommandName"), "Unavailable");
    EXPECT_THAT(Text("lblSwitchType"), testing::AnyOf("Momentary", "Latching"));
    EXPECT_THAT(Text("lbl3Way"), testing::AnyOf("True", "False"));
}

TEST_F(Views, FollowAPolledNodeWhenItsInputsSendTheirCommands)
{
    ASSERT_NO_FATAL_FAILURE(Mount(1));
    Click("Toolbar", "States");
    ASSERT_EQ(Row(1), "Inputs");
    ASSERT_EQ(Row(5), "Outputs");
    ASSERT_TRUE(ShowsPoint(kInputRow, 2, '0')) << Row(kInputRow);
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("input 1 2 on"));
    EXPECT_TRUE(Eventually([this] { return ShowsPoint(kInputRow, 2, '1'); })) << Row(kInputRow);
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("input 1 2 off"));
    EXPECT_TRUE(Eventually([this] { return ShowsPoint(kInputRow, 2, '0'); })) << Row(kInputRow);
}

TEST_F(Views, FollowANodeThatReportsByItselfWithoutAnyTraffic)
{
    constexpr int kSpareInput = 13;  // sends no command
    ASSERT_NO_FATAL_FAILURE(Mount(2));
    Click("Toolbar", "States");
    ASSERT_TRUE(Eventually([this] { return ShowsPoint(kInputRow, kSpareInput, '0'); }));
    const auto heard = vehicle.Meanings("RX").size();
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("input 2 13 on"));
    EXPECT_TRUE(Eventually([this] { return ShowsPoint(kInputRow, kSpareInput, '1'); })) << Row(kInputRow);
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("input 2 13 off"));
    EXPECT_TRUE(Eventually([this] { return ShowsPoint(kInputRow, kSpareInput, '0'); })) << Row(kInputRow);
    EXPECT_EQ(vehicle.Meanings("RX").size(), heard) << "nothing is polled";
}

TEST_F(Views, FollowANodeThatReportsByItselfUntilItIsUnmounted)
{
    ASSERT_NO_FATAL_FAILURE(Mount(2));
    Click("Toolbar", "States");
    Click("Nodebar", "Unmount");
    ASSERT_TRUE(IsVisible("Nodebar", "Mount"));
    const auto told = vehicle.Meanings("TX").size();
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("input 2 13 on"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("shed 3 7"));
    EXPECT_TRUE(Eventually([this] { return Panel(8) == "N:03 L=7"; }));
    EXPECT_EQ(vehicle.Meanings("TX").size(), told + 1) << "the load shed alone";
}

TEST_F(Views, ShowTheLoadThatANodeShedsWhenTheVoltageSags)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected(kScenario));
    ASSERT_EQ(Panel(8), "N:03 L=0");
    ASSERT_EQ(Panel(8, "dimText"), "N:03 L=0");
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("voltage 9.0"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("quiet off"));
    EXPECT_TRUE(Eventually([this] { return Panel(8) == "N:03 L=3" && Panel(8, "dimText").empty(); })) << Panel(8);
}

TEST_F(Views, CountTheCollisionsThatTheMountedNodeSaw)
{
    ASSERT_NO_FATAL_FAILURE(Mount(1));
    ASSERT_EQ(Panel(5), "NC 00000");
    Click("Toolbar", "Collision");
    EXPECT_EQ(Text("txtMsg"), "Node collision monitoring enabled on Node 1.");
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("noise 40"));
    EXPECT_TRUE(Eventually([this] { return QString::fromStdString(Panel(5)).endsWith("00001"); })) << Panel(5);
    EXPECT_EQ(Panel(2), "<- NC ->");
    EXPECT_TRUE(Panel(3) != "PC 00000" || Panel(4) != "BC 00000") << "the tool heard the noise itself";
    Click("Toolbar", "Collision");
    EXPECT_EQ(Text("txtMsg"), "Node collision monitoring disabled on Node 1.");
    EXPECT_EQ(Panel(5, "dimText"), "NC 00001");
}

}  // namespace
}  // namespace fenrik
