#include "diagnostics/InputDiagnostics.h"

#include "diagnostics/FrameInputs.h"
#include "diagnostics/InputTexts.h"
#include "diagnostics/NodeTitle.h"
#include "diagnostics/PointName.h"
#include "diagnostics/PointViewHost.h"
#include "model/CSystem.h"
#include "platform/SubscriptOutOfRange.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"

namespace fenrik {

namespace {

constexpr std::int16_t kTreeLimit = 64;
constexpr std::int16_t kOnStateNotKnown = 255;

bool IsDownloaded(const CNode& node)
{
    for (int number = 1; number <= node.CDigitalInputs().Count(); ++number) {
        if (node.CDigitalInputs()[number].OnState() != kOnStateNotKnown)
            return true;
    }
    return false;
}

}  // namespace

InputDiagnostics::InputDiagnostics(CSystem& system, const CommandTable& commands, ErrorReporter& errors,
                                   InputViewHost& host, FrameInputs& frame)
    : mSystem(system), mCommands(commands), mErrors(errors), mHost(host), mFrame(frame)
{
    connect(&frame, &FrameInputs::NodeClicked, this,
            [this](const QString& key) { setInputSelected(std::int16_t(PointName::NumberOf(key))); });
}

void InputDiagnostics::DisplayInputsFrame()
{
    const int build = ++mBuilds;
    mFrame.Clear();
    setInputSelected(0);
    if (CNode* node = mSystem.SelectedNode()) {
        mHost.VerifyNode(*node);
        if (build != mBuilds)
            return;
    }
    // Asked again: the wait may have ended with another node selected, or none.
    if (const CNode* node = mSystem.SelectedNode())
        ShowNode(*node);
    else
        mFrame.ShowNoNode();
}

void InputDiagnostics::ShowNode(const CNode& node)
{
    mFrame.SetCaption(QStringLiteral("Input Information for ") + NodeTitle(node));
    if (node.Inputs() < 1 || !node.DiagInputLabel().isEmpty()) {
        mFrame.ShowWords(node.DiagInputLabel());
        return;
    }
    mFrame.Tree().SetPoints(QList<PointRow>(node.CDigitalInputs().Count()));
    for (int number = 1; number <= node.CDigitalInputs().Count(); ++number)
        UpdateInputRow(node.CDigitalInputs()[number]);
    mFrame.ShowPanel(IsDownloaded(node));
    setInputSelected(1);
    mFrame.RestorePlace(node.number());
}

QString InputDiagnostics::InputDisplayName(const CDigitalInput& input, std::int16_t& limit)
{
    return PointName::DisplayName(input.number(), input.Pin(), input.Name(), limit);
}

void InputDiagnostics::UpdateInputRow(const CDigitalInput& input)
{
    std::int16_t limit = kTreeLimit;
    mFrame.Tree().UpdatePoint(input.number(), InputDisplayName(input, limit), QStringLiteral("DigitalInput"),
                              PointTone::InUse);
}

void InputDiagnostics::setInputSelected(std::int16_t number)
{
    Guarded(mErrors, "InputDiagnostics:InputSelected:Let", [this, number] {
        mInputSelected = number;
        mFrame.ShowDetails({});
        mFrame.SelectInput(number);
        if (number != 0)
            ShowInput(number);
    });
}

void InputDiagnostics::ShowInput(int number)
{
    const CNode* node = mSystem.SelectedNode();
    if (!node)
        throw SubscriptOutOfRange();
    const CDigitalInput& input = node->CDigitalInputs()[number];
    mFrame.ShowDetails({InputTexts::CommandName(input.InCommand(), mCommands),
                        InputTexts::SwitchType(input.SwitchType()), InputTexts::OnState(input.OnState()),
                        InputTexts::ThreeWay(input.ThreeWay())});
}

}  // namespace fenrik
