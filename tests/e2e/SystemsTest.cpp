// Saving what was downloaded, and finding it again in another run.

#include "e2e/HeldNode.h"
#include "e2e/ToolTest.h"
#include "model/CNode.h"
#include "model/CSystem.h"
#include "model/RelationshipText.h"

#include "app/DiagHub.h"

#include <QFile>
#include <QProcess>
#include <QSettings>

namespace fenrik {
namespace {

using testing::HasSubstr;

const QString kScenario = QStringLiteral(FENRIK_SCENARIO_FOLDER "/download.txt");

class Systems : public ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        QSettings settings(copy.ConfigFolder() + "/settings.ini", QSettings::IniFormat);
        settings.setValue("Settings/NodesInSystem", "11");
    }

    void Connect()
    {
        QFile file(kScenario);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ASSERT_NO_FATAL_FAILURE(StartConnected(file.readAll().constData()));
    }

    void Download(int number)
    {
        Click("Nodebar", QStringLiteral("Node%1").arg(number).toLatin1().constData());
        boxes.AnswerNext(QMessageBox::Yes);
        Click("Toolbar", "Refresh");
    }

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

    /// The simulator's description of a node, by field.
    [[nodiscard]] static QMap<QString, QString> Described(int number)
    {
        QProcess describe;
        describe.start(QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle"), {"--describe", "--scenario", kScenario});
        EXPECT_TRUE(describe.waitForFinished());
        QMap<QString, QString> fields;
        const QString head = QStringLiteral("node %1 ").arg(number);
        for (const QString& line : QString::fromUtf8(describe.readAllStandardOutput()).split(QLatin1Char('\n'))) {
            if (!line.startsWith(head))
                continue;
            const QString field = line.mid(head.size());
            const auto quote = field.indexOf(QLatin1String(" \""));
            const auto split = quote >= 0 ? quote : field.lastIndexOf(QLatin1Char(' '));
            fields.insert(field.left(split), field.mid(split + 1));
        }
        return fields;
    }

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
        const auto described = Described(number);
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

    [[nodiscard]] int NodeOf(const QString& type, const QString& road)
    {
        for (int number = 1; number <= 11; ++number) {
            const auto described = Described(number);
            if (described["type"] == type && described["road"] == road)
                return number;
        }
        ADD_FAILURE() << "no node of type " << type.toStdString();
        return 1;
    }
};

TEST_F(Systems, WhatWasDownloadedIsThereInTheNextRunWithoutTheNetwork)
{
    const int byQueries = NodeOf("16", "query");
    const int byMemory = NodeOf("0", "memory");
    ASSERT_NO_FATAL_FAILURE(Connect());
    Download(byQueries);
    Download(byMemory);
    ASSERT_NO_FATAL_FAILURE(SaveAs("Tram 7"));
    EXPECT_EQ(program->Window()->windowTitle(), "Fenrik Diagnostics - Tram 7");
    CloseWithoutSaving();
    vehicle.End();

    ASSERT_NO_FATAL_FAILURE(LookAt("Tram 7"));
    EXPECT_EQ(program->Window()->System().NodesInSystem(), 11);
    ExpectSavedAsDescribed(byQueries);
    ExpectSavedAsDescribed(byMemory);
    EXPECT_EQ(Text("txtStatus"), "Disconnected");
    EXPECT_TRUE(IsEnabled("Toolbar", "OutputDiagnostics"));
    Click("Nodebar", QStringLiteral("Node%1").arg(byMemory).toLatin1().constData());
    Click("Toolbar", "OutputDiagnostics");
    ExpectSavedAsDescribed(byMemory);  // looking has asked nobody and lost nothing
}

TEST_F(Systems, ClosingAfterADownloadOffersToSave)
{
    ASSERT_NO_FATAL_FAILURE(Connect());
    Download(NodeOf("16", "query"));
    boxes.AnswerNext(QMessageBox::Yes);
    boxes.EnterNext("Bus");
    CloseTool();
    EXPECT_TRUE(QFile::exists(copy.ProgramFolder() + "/Bus.dav"));
    EXPECT_THAT(copy.StoredSettings().toStdString(), HasSubstr("SystemName=Bus"));
}

}  // namespace
}  // namespace fenrik
