// The windows of the operator commands against the vehicle.

#include "e2e/Scenarios.h"
#include "e2e/ToolTest.h"
#include "model/CSystem.h"
#include "support/WhenShown.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::StartsWith;

using Texts = std::vector<std::string>;

const QString kHornCategory = QStringLiteral("Horn and Alarms");

class Commands : public ToolTest {
protected:
    Commands()
    {
        boxes.LeaveAlone("frmSpecialCommand");
        boxes.LeaveAlone("frmCmdQry");
    }

    /// Connects with nobody looking for nodes, so that what the vehicle hears is what the windows say.
    void Connect(const char* scenario = "quiet\n")
    {
        QFile file(copy.ConfigFolder() + "/settings.ini");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Settings]\nCommPort=5\nNodesInSystem=8\nAutoDetect=False\n");
        file.close();
        ASSERT_NO_FATAL_FAILURE(vehicle.Start(scenario));
        ASSERT_NO_FATAL_FAILURE(StartTool());
        Click("Toolbar", "Connect");
        ASSERT_EQ(Text("txtStatus"), "Connected");
        Forget();
    }
    void Mount(int node)
    {
        program->Window()->System().ActivateNode(node);
        ClickNode(node);
        Click("Nodebar", "Mount");
        ASSERT_EQ(program->Window()->System().MountedNodeNumber(), node);
        Forget();
    }
    void Forget() { mHeard = vehicle.Meanings("RX").size(); }

    [[nodiscard]] Texts Heard() const
    {
        const auto all = vehicle.Meanings("RX");
        return {all.begin() + std::ptrdiff_t(mHeard), all.end()};
    }
    [[nodiscard]] int Mounted() const { return program->Window()->System().MountedNodeNumber(); }

    /// Chooses a menu's entry and works the window that it opens; `work` closes it.
    void Choose(const char* entry, const char* window, const std::function<void(QDialog&)>& work)
    {
        bool worked = false;
        const WhenShown shown(window, [&](QDialog& dialog) {
            worked = true;
            work(dialog);
        });
        Find<QAction>(entry).trigger();
        EXPECT_TRUE(worked);
    }

    static void Press(const QDialog& dialog, const char* button)
    {
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    }

    struct Answer {
        Texts lines;
        std::string result;
    };

    /// Asks a node for the horn's state by the window.
    Answer Query(int node)
    {
        Answer answer;
        Choose("mnuCommandQuery", "frmCmdQry", [&](QDialog& dialog) {
            const auto choose = [&](const char* list, const QString& text) {
                dialog.findChild<QComboBox*>(list)->setCurrentText(text);
            };
            choose("cboCatList", kHornCategory);
            choose("cboCmdList", "Electric Horn");
            choose("cboNodeNumber", QString::number(node));
            EXPECT_EQ(dialog.findChild<QComboBox*>("cboCmdList")->currentText(), "Electric Horn");
            Press(dialog, "bSend");
            const auto* list = dialog.findChild<QListWidget*>("lstResults");
            for (int row = 0; row < list->count(); ++row)
                answer.lines.push_back(list->item(row)->text().toStdString());
            answer.result = dialog.findChild<QLabel*>("lblResult")->text().toStdString();
            Press(dialog, "bCancel");
        });
        return answer;
    }

private:
    std::size_t mHeard = 0;
};

// --- Special commands ----------------------------------------------------------------------------------------------

TEST_F(Commands, AnAddressIsAssignedWithAMountForAsLongAsTheWindowIsOpen)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    const int before = LineCount();
    Choose("mnuAssignEatonE33", "frmSpecialCommand", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QComboBox*>("cmbName")->currentText(), "Assign Eaton E33 Address");
        auto* node = dialog.findChild<QComboBox*>("cmbNode")->lineEdit();
        node->setFocus();
        node->selectAll();
        QTest::keyClicks(node, "3");
        Press(dialog, "bSend");
        EXPECT_EQ(Mounted(), 3);
        Press(dialog, "bCancel");
    });
    EXPECT_THAT(Heard(),
                ElementsAre("905 state=1 ext=0 data=3", "969 state=0 ext=1 data=10243", "905 state=0 ext=0 data=3"));
    EXPECT_EQ(Mounted(), 0);
    EXPECT_TRUE(IsEnabled("Toolbar", "Disconnect"));
    // Mount, acknowledge, order, confirmation, unmount, acknowledge.
    ASSERT_TRUE(Eventually([&] { return LineCount() == before + 6; }));
    const Texts lines = LinesFrom(before);
    EXPECT_THAT(lines, testing::Contains(StartsWith("Assign Eaton E33 Address (Node 3)|Off|True|10243|")));
    EXPECT_THAT(lines, testing::Contains(StartsWith("Confirm Eaton E33 Address (Node 3)|On|True|10243|")));
}

TEST_F(Commands, AnEarlierMountIsPutBackWhenTheWindowCloses)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    ASSERT_NO_FATAL_FAILURE(Mount(2));
    Choose("mnuAssignEatonE33", "frmSpecialCommand", [&](QDialog& dialog) {
        boxes.AnswerNext(QMessageBox::Yes);
        auto* node = dialog.findChild<QComboBox*>("cmbNode")->lineEdit();
        EXPECT_EQ(node->text(), "2");
        node->setFocus();
        node->selectAll();
        QTest::keyClicks(node, "3");
        QTest::keyClick(node, Qt::Key_Return);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_THAT(Heard(),
                ElementsAre("905 state=0 ext=0 data=2", "905 state=1 ext=0 data=3", "969 state=0 ext=1 data=10243",
                            "905 state=0 ext=0 data=3", "905 state=1 ext=0 data=2"));
    EXPECT_EQ(Mounted(), 2);
}

TEST_F(Commands, ALineOfTheListOpensItsSpecialCommand)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    const int before = LineCount();
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 960 on false 1281"));  // restart of node 5
    ASSERT_TRUE(Eventually([&] { return LineCount() == before + 1; }));
    bool worked = false;
    const WhenShown shown("frmSpecialCommand", [&](QDialog& dialog) {
        worked = true;
        EXPECT_EQ(dialog.findChild<QComboBox*>("cmbName")->currentText(), "Restart Node");
        EXPECT_EQ(dialog.findChild<QComboBox*>("cmbNode")->currentText(), "5");
        Press(dialog, "bSend");
        Press(dialog, "bCancel");
    });
    auto& list = Find<QAbstractItemView>("lvMessages");
    const QPoint place = list.visualRect(list.model()->index(before, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    EXPECT_TRUE(worked);
    EXPECT_THAT(Heard(), ElementsAre("960 state=1 ext=0 data=1281"));
}

// --- Command queries -----------------------------------------------------------------------------------------------

TEST_F(Commands, AnUnmountedNodeTellsAndIsUnmountedAgain)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    const Answer off = Query(3);
    EXPECT_THAT(off.lines, ElementsAre("---->Node 3 believes Electric Horn is OFF."));
    EXPECT_EQ(off.result, "OFF");
    EXPECT_THAT(Heard(), ElementsAre("901 state=0 ext=0 data=3", "905 state=1 ext=0 data=3",
                                     "920 state=1 ext=0 data=277", "905 state=0 ext=0 data=3"));
    EXPECT_EQ(Mounted(), 0);

    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 277 on"));
    EXPECT_EQ(Query(3).result, "ON");
}

TEST_F(Commands, AMountedNodeIsOnlyAsked)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    ASSERT_NO_FATAL_FAILURE(Mount(3));
    EXPECT_EQ(Query(3).result, "OFF");
    EXPECT_THAT(Heard(), ElementsAre("920 state=1 ext=0 data=277"));
    EXPECT_EQ(Mounted(), 3);
}

TEST_F(Commands, ASilentNodeIsAskedTwiceAndLeavesTheMountAlone)
{
    ASSERT_NO_FATAL_FAILURE(Connect("quiet\nsilent node 3\n"));
    ASSERT_NO_FATAL_FAILURE(Mount(2));
    EXPECT_THAT(Query(3).lines, ElementsAre("ERROR: Node 3 did not respond to ping."));
    EXPECT_THAT(Heard(), ElementsAre("901 state=0 ext=0 data=3", "901 state=0 ext=0 data=3"));
    EXPECT_EQ(Mounted(), 2);
}

/// A refusal takes all tries.
class SlowCommands : public Commands {};

TEST_F(SlowCommands, EachRefusedStepIsTold)
{
    ASSERT_NO_FATAL_FAILURE(Connect(ScenarioText("refusals.txt").constData()));
    struct Row {
        int node;
        Texts lines;
        const char* result;
        int mounted;
    };
    const Row rows[] = {
        {1, {"---->Node 1 believes Electric Horn is OFF."}, "OFF", 0},
        {2, {"ERROR: Node 2 did not respond to ping."}, "", 0},
        {3, {"ERROR: Unable to mount Node 3"}, "", 0},
        {5, {"ERROR: No response from Node 5."}, "UNKNOWN", 0},
        {6, {"---->Node 6 responded with invalid state (2)."}, "UNKNOWN", 0},
        {7, {"ERROR: Node 7 did not respond to ping."}, "", 0},
        // An acknowledge that declines passes for a mount, and then there is nobody to answer.
        {8, {"ERROR: No response from Node 8."}, "UNKNOWN", 0},
        {4, {"---->Node 4 believes Electric Horn is OFF.", "ERROR: Unable to release mount on Node 4"}, "OFF", 4},
        // Now node 4 is mounted and does not let go.
        {1, {"ERROR: Unable to release mount on Node 4"}, "", 4},
    };
    for (const Row& row : rows) {
        const Answer answer = Query(row.node);
        EXPECT_THAT(answer.lines, ElementsAreArray(row.lines)) << row.node;
        EXPECT_EQ(answer.result, row.result) << row.node;
        EXPECT_EQ(Mounted(), row.mounted) << row.node;
    }
    // Closing the window asks for the mount that can't be released.
    boxes.AnswerNext(QMessageBox::Yes);
    CloseTool();
}

TEST_F(Commands, ClosingTheProgramInsideAQueryEndsIt)
{
    ASSERT_NO_FATAL_FAILURE(Connect("quiet\nsilent node 3\n"));
    Choose("mnuCommandQuery", "frmCmdQry", [&](QDialog& dialog) {
        dialog.findChild<QComboBox*>("cboNodeNumber")->setCurrentText("3");
        QTimer::singleShot(100, &dialog, [this] { program->Window()->close(); });
        Press(dialog, "bSend");
        Press(dialog, "bCancel");
    });
    EXPECT_THAT(Heard(), ElementsAre("901 state=0 ext=0 data=3"));
}

TEST_F(Commands, AnUnpluggedPortEndsAQuery)
{
    ASSERT_NO_FATAL_FAILURE(Connect("quiet\nsilent node 3\n"));
    Texts lines;
    Choose("mnuCommandQuery", "frmCmdQry", [&](QDialog& dialog) {
        dialog.findChild<QComboBox*>("cboNodeNumber")->setCurrentText("3");
        QTimer::singleShot(100, &dialog, [this] { vehicle.Control("unplug"); });
        Press(dialog, "bSend");
        const auto* list = dialog.findChild<QListWidget*>("lstResults");
        for (int row = 0; row < list->count(); ++row)
            lines.push_back(list->item(row)->text().toStdString());
        Press(dialog, "bCancel");
    });
    EXPECT_THAT(lines, ElementsAre("ERROR: Node 3 did not respond to ping."));
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
}

}  // namespace
}  // namespace fenrik
