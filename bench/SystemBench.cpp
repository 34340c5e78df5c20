// A saved system of 32 large nodes: reading it, with the catalogue that a start reads besides, and writing it.

#include "catalogue/CatalogueHost.h"
#include "catalogue/CommandCatalogue.h"
#include "link/CMsgHandler.h"
#include "model/CSystem.h"
#include "model/NodeLink.h"
#include "platform/Boxes.h"
#include "platform/ComPorts.h"
#include "platform/SerialControl.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace fenrik {
namespace {

constexpr int kNodes = 32;
constexpr int kLargestType = 16;  // 16 inputs, 32 outputs
const QString kName = QStringLiteral("Bus");

/// Enters the system's name; nothing else is asked.
class NamingBoxes : public Boxes {
public:
    Button MsgBox(const QString&, QMessageBox::Icon, Buttons, const QString&) override
    {
        failed = true;
        return QMessageBox::No;
    }
    QString InputBox(const QString&, const QString&, const QString&) override { return kName; }

    bool failed = false;
};

class NoReports : public ErrorReporter {
public:
    void ShowError(int, const QString&, const QString&, const QString&) override {}
};

class NoWindow : public CatalogueHost {
public:
    void EndProgram() override {}
    [[nodiscard]] int SelectedNodeNumber() const override { return 0; }
};

/// A program folder with the built default database.
struct Tool {
    Tool()
    {
        settings.NodesInSystem = kNodes;
        settings.SelectedMarket = 1;
        QFile::copy(QStringLiteral(FENRIK_BIN_FOLDER "/ncCommand.dav"),
                    folder.filePath(QStringLiteral("ncCommand.dav")));
        system.setLink(&link);
    }

    void Learn()
    {
        system.LoadSystem({}, {}, false);
        for (int number = 1; number <= kNodes; ++number) {
            CNode& node = *system.Node(number);
            node.setTypeID(kLargestType);
            node.setName(QStringLiteral("Node of the vehicle %1").arg(number));
            for (int output = 1; output <= node.COutputs().Count(); ++output) {
                node.COutputs()[output].setName(QStringLiteral("Output name %1 %2").arg(number).arg(output));
                node.COutputs()[output].setUsageCode(COutput::kByRelationship);
                node.COutputs()[output].setRPN(QByteArray::fromHex("FE012CFE0107F1FE00C8F2FF"));
            }
        }
    }

    [[nodiscard]] bool Save()
    {
        std::int32_t response = 6;
        return system.SaveSystem(response) && !boxes.failed;
    }

    QTemporaryDir folder;
    Settings settings;
    NamingBoxes boxes;
    NoReports errors;
    NoWindow window;
    CommandTable commands;
    SystemClock clock;
    QtEventPump pump{clock};
    ComPorts ports{folder.path()};
    SerialControl port{ports};
    CMsgHandler handler{port, clock, pump, commands, errors};
    NodeLink link{handler, pump, commands, boxes, errors, nullptr};
    CSystem system{settings, folder.path()};
    CommandCatalogue catalogue{commands, settings, boxes, window, folder.path()};
};

/// Each time over the file of the time before, so that dropping the tables counts.
void SaveSystem(benchmark::State& state)
{
    Tool tool;
    tool.Learn();
    for (auto _ : state) {
        if (!tool.Save())
            state.SkipWithError("not saved");
    }
}
BENCHMARK(SaveSystem)->Unit(benchmark::kMillisecond)->UseRealTime()->Name("System/Save");

void LoadSystem(benchmark::State& state)
{
    Tool tool;
    tool.Learn();
    if (!tool.Save())
        state.SkipWithError("not saved");
    for (auto _ : state) {
        tool.catalogue.LoadCommands(tool.folder.filePath(QStringLiteral("ncCommand.dav")));
        tool.system.LoadSystem(kName, tool.folder.path(), false);
        const COutput& last = tool.system.Node(kNodes)->COutputs()[32];
        if (tool.boxes.failed || last.Name() != QLatin1String("Output name 32 32"))
            state.SkipWithError("not loaded");
    }
}
BENCHMARK(LoadSystem)->Unit(benchmark::kMillisecond)->UseRealTime()->Name("System/Load");

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
