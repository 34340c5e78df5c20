// A script: any bytes. What the tool's reader hands on is something that the composer can send, and what it refuses is
// told in one line. The simulator's reader gets the same bytes as a scenario of each network: what it takes without a
// complaint can be carried out.

#include "ScratchFile.h"
#include "app/DataValidator.h"
#include "commands/DiagScript.h"
#include "platform/Error.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/EventPump.h"
#include "simulator/Scenario.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>

namespace fenrik {
namespace {

bool IsOneOf(int number, std::initializer_list<int> numbers)
{
    return std::ranges::find(numbers, number) != numbers.end();
}

/// Where a script's pauses take no time.
class NoPauses : public EventPump {
public:
    using EventPump::EventPump;

protected:
    void Pump(double) override {}
    void Sleep(int milliseconds) override
    {
        if (milliseconds < 0)
            std::abort();
    }
};

class Sender : public DiagScriptHost {
public:
    void ShowScriptLine(int number) override
    {
        if (number != ++mLines)
            std::abort();
    }

    void SendScriptCommand(const DiagScriptCommand& command) override
    {
        if (!CommandTable::Contains(command.command))
            std::abort();
        try {
            (void)DataValue(command.data);
        } catch (const Error& error) {
            if (error.Number() != ErrorNumber::kOverflow)
                std::abort();
        }
    }

    [[nodiscard]] int Lines() const { return mLines; }

private:
    int mLines = 0;
};

void RunScript(const QByteArray& bytes)
{
    const ScratchFile file(bytes);
    const SystemClock clock;
    NoPauses pump(clock);
    Sender sender;
    DiagScript script(pump, sender);
    try {
        const bool whole = script.Run(file.Path());
        if (!whole || script.Line() > bytes.count('\n') + bytes.count('\r') + 1)
            std::abort();
    } catch (const Error& error) {
        const QString place = QStringLiteral(". Script line %1: ").arg(script.Line());
        const QString text = error.Description();
        if (!IsOneOf(error.Number(),
                     {ErrorNumber::kOverflow, ErrorNumber::kSubscriptOutOfRange, ErrorNumber::kTypeMismatch}) ||
            !text.contains(place) || text.size() > 300 || text.contains(QLatin1Char('\n')))
            std::abort();
    }
    if (sender.Lines() != script.Line())
        std::abort();
}

void CheckAction(const ScheduledAction& scheduled, const std::set<int>& nodes)
{
    const Action& action = scheduled.action;
    const bool shortest = scheduled.when == ScheduledAction::When::Every;
    if (!(scheduled.seconds >= (shortest ? 0.001 : 0) && scheduled.seconds <= 86400))
        std::abort();
    if (!std::isfinite(action.value) || action.value2 < 0 || action.count < 0 || action.count > 1'000'000)
        std::abort();
    if (action.node != 0 && !nodes.contains(action.node))
        std::abort();
}

void ReadScenario(const QByteArray& bytes, Network network)
{
    std::istringstream text(bytes.toStdString());
    std::vector<ScenarioProblem> problems;
    const Scenario scenario = Scenario::Parse(text, problems, network);
    const auto lines = bytes.count('\n') + 1;
    if (!std::ranges::all_of(problems, [lines](const auto& problem) {
            return problem.line >= 1 && problem.line <= lines && !problem.text.empty();
        }))
        std::abort();
    if (!problems.empty())
        return;
    std::set<int> nodes;
    for (const NodeSetup& node : scenario.nodes) {
        if (node.number < 1 || node.number > NodeSetup::kMaxNumber || !nodes.insert(node.number).second)
            std::abort();
    }
    for (const ScheduledAction& action : scenario.actions)
        CheckAction(action, nodes);
}

}  // namespace
}  // namespace fenrik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    fenrik::RunScript(bytes);
    fenrik::ReadScenario(bytes, fenrik::Network::Fenrik2000);
    fenrik::ReadScenario(bytes, fenrik::Network::Fenrik98);
    return 0;
}
