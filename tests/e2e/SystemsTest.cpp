// Saving what was downloaded, and finding it again in another run.

#include "app/DiagHub.h"
#include "e2e/HeldNode.h"
#include "e2e/Scenarios.h"
#include "e2e/ToolTest.h"
#include "model/CNode.h"
#include "model/CSystem.h"
#include "model/RelationshipText.h"

#include <QFile>

namespace fenrik {
namespace {

using testing::HasSubstr;

constexpr const char* kScenario = "download.txt";
constexpr int kNodesInScenario = 11;

class Systems : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        SetNodes(kNodesInScenario);
    }

    void Connect() { ASSERT_NO_FATAL_FAILURE(StartConnected(ScenarioText(kScenario).constData())); }

    void SaveAs(const QString& name)
    {
        boxes.EnterNext(name);
        Click("Toolbar", "Save");
        ASSERT_EQ(Text("txtMsg"), "System Saved as <" + name.toStdString() + ".dav>");
    }

    void CloseWithoutSaving()
    {
        boxes.AnswerNext(QMessageBox::No);
        CloseTool();
        (void)boxes.Take();
    }

    /// Starts the tool anew, without a vehicle, and looks at the saved system.
    void LookAt(const QString& name)
    {
        ToolTest::SetUp();
        ASSERT_NO_FATAL_FAILURE(StartTool());
        program->Window()->System().LoadSystem(name, copy.ProgramFolder(), false);
        program->Window()->Hub().ShowLoadedSystem();
    }

    [[nodiscard]] CNode& Node(int number) { return *program->Window()->System().Node(number); }

    [[nodiscard]] static bool IsSaved(const QString& field)
    {
        if (field == QLatin1String("name") || field == QLatin1String("type"))
            return true;
        const bool isInput = field.startsWith(QLatin1String("input "));
        const bool isOutput = field.startsWith(QLatin1String("output "));
        return (isInput && field.endsWith(QLatin1String(" on-state"))) ||
               ((isInput || isOutput) && field.endsWith(QLatin1String(" name"))) ||
               (isOutput && (field.endsWith(QLatin1String(" usage")) || field.endsWith(QLatin1String("relationship"))));
    }

    /// As it reads after it was saved: see RelationshipFromText.
    [[nodiscard]] static QString ReadBack(const QString& field, const QString& value)
    {
        if (!field.endsWith(QLatin1String("relationship")) || value == QLatin1String("\"\""))
            return value;
        const QByteArray bytes = QByteArray::fromHex(value.mid(1, value.size() - 2).toLatin1());
        const QByteArray read = RelationshipFromText(RelationshipToText(bytes));
        return QLatin1Char('"') + QString::fromLatin1(read.toHex().toUpper()) + QLatin1Char('"');
    }

    void ExpectSavedAsDescribed(int number)
    {
        const auto held = HeldNode(Node(number));
        const auto described = DescribedNode(ScenarioPath(kScenario), number);
        int compared = 0;
        for (auto field = described.begin(); field != described.end(); ++field) {
            if (!IsSaved(field.key()))
                continue;
            ++compared;
            EXPECT_EQ(held.value(field.key()), ReadBack(field.key(), field.value()))
                << "node " << number << ' ' << field.key().toStdString();
        }
        EXPECT_GT(compared, 10);
    }

    [[nodiscard]] static int NodeOf(const char* type, const char* road)
    {
        return DescribedNodeOf(ScenarioPath(kScenario), kNodesInScenario, type, road);
    }
};

TEST_F(Systems, WhatWasDownloadedIsThereInTheNextRunWithoutTheNetwork)
{
    const int byQueries = NodeOf("16", "query");
    const int byMemory = NodeOf("0", "memory");
    ASSERT_NO_FATAL_FAILURE(Connect());
    DownloadNode(byQueries);
    DownloadNode(byMemory);
    ASSERT_NO_FATAL_FAILURE(SaveAs("Tram 7"));
    EXPECT_EQ(program->Window()->windowTitle(), "Fenrik Diagnostics - Tram 7");
    CloseWithoutSaving();
    vehicle.End();

    ASSERT_NO_FATAL_FAILURE(LookAt("Tram 7"));
    EXPECT_EQ(program->Window()->System().NodesInSystem(), kNodesInScenario);
    ExpectSavedAsDescribed(byQueries);
    ExpectSavedAsDescribed(byMemory);
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_TRUE(IsEnabled("Toolbar", "OutputDiagnostics"));
    ClickNode(byMemory);
    Click("Toolbar", "OutputDiagnostics");
    ExpectSavedAsDescribed(byMemory);  // looking has asked nobody and lost nothing
}

TEST_F(Systems, ClosingAfterADownloadOffersToSave)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    DownloadNode(NodeOf("16", "query"));
    boxes.AnswerNext(QMessageBox::Yes);
    boxes.EnterNext("Bus");
    CloseTool();
    EXPECT_TRUE(QFile::exists(copy.ProgramFolder() + "/Bus.dav"));
    EXPECT_THAT(copy.StoredSettings().toStdString(), HasSubstr("SystemName=Bus"));
}

}  // namespace
}  // namespace fenrik
