#include "diagnostics/OutputDiagnostics.h"

#include "diagnostics/FrameOutputs.h"
#include "diagnostics/NodeTitle.h"
#include "diagnostics/OutputBar.h"
#include "diagnostics/OutputTexts.h"
#include "diagnostics/PointName.h"
#include "diagnostics/PointViewHost.h"
#include "model/CSystem.h"
#include "platform/SubscriptOutOfRange.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"

namespace fenrik {

namespace {

constexpr int kForcableNodes = 16;  // a force command has four bits for the node
constexpr std::int16_t kTreeLimit = 64;
constexpr std::int16_t kTipLimit = 49;
constexpr float kFull = 100;
constexpr float kRelease = -1;

bool IsFault(const QString& fault)
{
    return fault != QLatin1String(OutputTexts::kNoFaults);
}

PointTone ToneOf(const COutput& output, const QString& icon)
{
    if (icon == QLatin1String("Fault"))
        return PointTone::Fault;
    if (icon == QLatin1String("On"))
        return PointTone::On;
    return output.IsInUse() ? PointTone::InUse : PointTone::NotInUse;
}

bool IsDownloaded(const CNode& node)
{
    for (int number = 1; number <= node.COutputs().Count(); ++number) {
        if (node.COutputs()[number].UsageCode() != COutput::kNotKnown)
            return true;
    }
    return false;
}

}  // namespace

OutputDiagnostics::OutputDiagnostics(CSystem& system, const CommandTable& commands, ErrorReporter& errors,
                                     OutputViewHost& host, FrameOutputs& frame)
    : mSystem(system), mCommands(commands), mErrors(errors), mHost(host), mFrame(frame)
{
    connect(&frame, &FrameOutputs::NodeClicked, this, &OutputDiagnostics::TakeNodeClick);
    connect(&frame, &FrameOutputs::ButtonClicked, this, &OutputDiagnostics::TakeButton);
    connect(&frame, &FrameOutputs::ForceClicked, this, &OutputDiagnostics::TakeForce);
    connect(&frame, &FrameOutputs::CommandChosen, this, &OutputDiagnostics::TakeCommand);
}

void OutputDiagnostics::DisplayOutputsFrame()
{
    const int build = ++mBuilds;
    mFrame.Clear();
    setOutputSelected(0);
    if (CNode* node = mSystem.SelectedNode()) {
        mHost.VerifyNode(*node);
        if (build != mBuilds)
            return;
    }
    // Asked again: the wait may have ended with another node selected, or none.
    if (CNode* node = mSystem.SelectedNode())
        ShowNode(*node);
    else
        mFrame.ShowNoNode();
}

void OutputDiagnostics::ShowNode(CNode& node)
{
    const QString title = NodeTitle(node);
    if (node.Outputs() < 1 || !node.DiagOutputLabel().isEmpty()) {
        mFrame.SetCaption(QStringLiteral("No Outputs detected on ") + title);
        mFrame.ShowWords(node.DiagOutputLabel());
        return;
    }
    mFrame.SetCaption(QStringLiteral("Output Information for ") + title);
    AddOutputs(node);
    mFrame.ShowPanel(IsDownloaded(node));
    setOutputSelected(1);
    mFrame.RestorePlace(node.number());
}

void OutputDiagnostics::AddOutputs(CNode& node)
{
    const int count = node.COutputs().Count();
    QList<PointRow> rows;
    for (int number = 1; number <= count; ++number)
        rows.append({QString(), QString(), PointTone::InUse, node.COutputs()[number].RLevelCount()});
    mFrame.Tree().SetPoints(rows);
    mFrame.Buttons().SetCount(count);
    for (int number = 1; number <= count; ++number) {
        COutput& output = node.COutputs()[number];
        mFrame.Buttons().EnableButton(number, output.PWMKind() != 0 && node.number() <= kForcableNodes);
        UpdateOutputRow(output);
    }
}

QString OutputDiagnostics::OutputDisplayName(const COutput& output, std::int16_t& limit)
{
    return PointName::DisplayName(output.number(), output.Pin(), output.Name(), limit);
}

void OutputDiagnostics::UpdateOutputRow(COutput& output)
{
    QString icon = QStringLiteral("Off");
    if (IsFault(FaultOf(output)))
        icon = QStringLiteral("Fault");
    else if (output.Override() || output.PermOn())
        icon = QStringLiteral("On");
    std::int16_t treeLimit = kTreeLimit;
    mFrame.Tree().UpdatePoint(output.number(), OutputDisplayName(output, treeLimit), icon, ToneOf(output, icon));
    std::int16_t tipLimit = kTipLimit;
    mFrame.Buttons().UpdateButton(output.number(), OutputDisplayName(output, tipLimit), icon, output.Override());
    if (output.number() == mOutputSelected)
        setOutputSelected(mOutputSelected);
}

void OutputDiagnostics::setOutputSelected(std::int16_t number)
{
    Guarded(mErrors, "OutputDiagnostics:OutputSelected:Let", [this, number] {
        mOutputSelected = number;
        mFrame.HideControl();
        mFrame.ClearFlashingAndFaults();
        mFrame.SelectOutput(number);
        if (number != 0)
            ShowOutput(Get(number));
    });
}

void OutputDiagnostics::ShowOutput(COutput& output)
{
    OutputDetails details;
    details.shed = OutputTexts::LoadShed(output.Loadshed());
    details.flashing = OutputTexts::Flashing(output);
    details.timing = OutputTexts::TimingOf(output, output.Parent()->OutputDelay());
    details.fault = FaultOf(output);
    details.faulty = IsFault(details.fault);
    mFrame.ShowDetails(details);
    ShowControl(output);
    setRLevelSelected(0);
}

void OutputDiagnostics::ShowControl(const COutput& output)
{
    mFrame.FillLevels(output.PWMKind());
    if (output.PWMKind() == 0)
        return;
    mFrame.SetLevel(OutputTexts::Level(output));
    if (mHost.PortOpenForTx())
        mFrame.ShowControl();
}

void OutputDiagnostics::setRLevelSelected(std::uint8_t level)
{
    Guarded(mErrors, "OutputDiagnostics:RLevelSelected:Let", [this, level] {
        mFrame.SetTerms({});
        const COutput& output = Get(mOutputSelected);
        mRLevelSelected = level > output.RLevelCount() ? 0 : level;
        if (mRLevelSelected != 0)
            mFrame.ShowNoWholeValues();
        mFrame.SetTerms(RelationshipTerms::RowsOf(output, mRLevelSelected, mCommands));
    });
}

void OutputDiagnostics::TakeNodeClick(const QString& key, const QString& tag)
{
    setOutputSelected(std::int16_t(PointName::NumberOf(key)));
    if (tag == QLatin1String(PointTreeModel::kLevelTag))
        setRLevelSelected(std::uint8_t(PointName::LevelOf(key)));
}

void OutputDiagnostics::TakeButton(int number, bool pressed)
{
    Force(number, pressed ? kFull : kRelease);
    if (Find(number))
        setOutputSelected(std::int16_t(number));
}

void OutputDiagnostics::TakeForce()
{
    Force(mOutputSelected, OutputTexts::LevelOfText(mFrame.Level()));
    mFrame.FocusLevel();
}

void OutputDiagnostics::TakeCommand(int command, const QString& op)
{
    static const QStringList kWantsOn{QStringLiteral("ON"), QStringLiteral("AND"), QStringLiteral("OR"),
                                      QStringLiteral("XOR")};
    if (CommandTable::Contains(command))
        mHost.Compose(command, kWantsOn.contains(op));
}

void OutputDiagnostics::Force(int number, float percent)
{
    if (COutput* output = Find(number))
        output->setValue(percent);
    // The command has waited: the output may be another object now.
    if (COutput* output = Find(number))
        UpdateOutputRow(*output);
}

COutput* OutputDiagnostics::Find(int number) const
{
    const CNode* node = mSystem.SelectedNode();
    return node ? node->COutputs().Find(number) : nullptr;
}

COutput& OutputDiagnostics::Get(int number) const
{
    COutput* output = Find(number);
    if (!output)
        throw SubscriptOutOfRange();
    return *output;
}

QString OutputDiagnostics::FaultOf(const COutput& output) const
{
    if (IsFault(output.Fault()))
        return output.Fault();
    const QString reported = mHost.FaultText(output.Parent()->number(), output.number());
    return reported.isEmpty() ? output.Fault() : reported;
}

}  // namespace fenrik
