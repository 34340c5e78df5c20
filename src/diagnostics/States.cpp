#include "diagnostics/States.h"

#include "diagnostics/Graphics.h"
#include "link/CMsgHandler.h"
#include "model/CSystem.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"

#include <QScopeGuard>

#include <algorithm>
#include <limits>

namespace fenrik {

namespace {

enum Number { kAcknowledge = 903, kInputs = 921, kOutputs = 922, kValueReply = 950, kNodeAnnouncement = 988 };

constexpr int kTries = 3;
constexpr int kBitsPerWord = 16;
constexpr int kMostInputWords = 4;  // two flag bits of the frame tell them apart
constexpr int kBoth = 3;

constexpr int kInputRow = 1;
constexpr int kOutputRow = 5;
constexpr int kNoteRow = 9;

bool IsStateWord(const CMessage& message)
{
    return message.Command == kInputs || message.Command == kOutputs;
}

}  // namespace

States::States(CSystem& system, CMsgHandler& handler, const CommandTable& commands, Graphics& graphics,
               ErrorReporter& errors, NodeViewHost& host)
    : mSystem(system), mHandler(handler), mCommands(commands), mGraphics(graphics), mErrors(errors), mHost(host)
{
}

void States::ResetStates()
{
    mMode = kNotAsked;
    ++mMounts;
}

bool States::ShowsMountedNode() const
{
    const CNode* node = mSystem.SelectedNode();
    return node && node == mSystem.MountedNode();
}

// --- When it is asked and drawn ------------------------------------------------------------------------------------

void States::Open()
{
    mGraphics.ClearFace();
    // The last known states stand there while the node is asked, which can take seconds.
    UpdateStatesDisplay(kBoth);
    if (mMode != kBroadcast)
        UpdateStatesArray();
}

void States::RefreshFrame(bool getNewInfo)
{
    mGraphics.ClearFace();
    UpdateStatesDisplay(kBoth);
    if (!getNewInfo || !mSystem.MountedNode())
        return;
    ResetStates();
    UpdateStatesArray();
}

bool States::TakeMessage(const CMessage& message)
{
    if (!mSystem.MountedNode())
        return false;
    if (mMode == kBroadcast) {
        if (!IsStateWord(message))
            return false;
        GetInputArray(&message);
        GetOutputArray(&message);
        UpdateStatesDisplay(message.Command == kInputs ? 1 : 2);
        return true;
    }
    // An announcing node has restarted. If it is the mounted one, its mount has to go before anything is asked.
    if (!IsStateWord(message) && message.Command != kNodeAnnouncement && message.Command < CommandTable::kSize &&
        !mCommands.AnalogCommand(message.Command))
        UpdateStatesArray();
    return false;
}

void States::CommandSent()
{
    if (mMode == kPolled)
        UpdateStatesArray();
}

// --- Asking the node -----------------------------------------------------------------------------------------------

void States::UpdateStatesArray(const CMessage* message)
{
    if (mUpdating)
        return;
    mUpdating = true;
    const auto done = qScopeGuard([this] { mUpdating = false; });
    Guarded(mErrors, "States:UpdateStatesArray", [this, message] {
        if (mHost.DisplayState() != NodeViewHost::kViewStates || !ShowsMountedNode())
            return;
        mHost.VerifyNode(mSystem.SelectedNode(), false);
        const CMessage* words = message;
        if (mMode == kNotAsked) {
            words = nullptr;
            AskForMode();
            if (mMode != kPolled) {
                UpdateStatesDisplay(kBoth);
                return;
            }
        }
        GetInputArray(words);
        GetOutputArray(words);
        UpdateStatesDisplay(kBoth);
    });
}

void States::AskForMode()
{
    if (!mSystem.MountedNode())
        return;
    const int mount = mMounts;
    CMessage question;
    question.Command = kInputs;
    question.extended = 1;
    const auto reply = mHandler.SendMessageGetReply(question, kAcknowledge, kTries, true, true);
    if (mMounts != mount)
        return;
    mMode = reply && reply->extended == 1 ? kBroadcast : kPolled;
}

int States::InputWords(int inputs, int bitsPerInput)
{
    const int bits = inputs * bitsPerInput;
    if (bits > std::numeric_limits<std::int16_t>::max())
        throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow"));
    return std::min((bits + kBitsPerWord - 1) / kBitsPerWord, kMostInputWords);
}

int States::OutputWords(int outputs)
{
    return outputs > kBitsPerWord ? 2 : 1;
}

template <typename Apply>
void States::PollWords(CMessage& message, int words, Apply apply)
{
    mHost.SetUIState(NodeViewHost::kBusy);
    const auto ready = qScopeGuard([this] { mHost.SetUIState(NodeViewHost::kReady); });
    const CNode* const node = mSystem.MountedNode();
    for (int word = 0; word < words; ++word) {
        message.State = std::uint8_t(word & 1);
        message.extended = std::uint8_t(word >> 1);
        const auto reply = mHandler.SendMessageGetReply(message, kValueReply, kTries, true, true);
        if (mSystem.MountedNode() != node)
            return;  // it has restarted, and what it says is not asked of it any more
        if (reply)
            apply(word, reply->data);
    }
}

void States::GetInputArray(const CMessage* message)
{
    Guarded(mErrors, "States:GetInputArray", [this, message] {
        const CNode* node = mSystem.MountedNode();
        if (!node || node->Inputs() == 0 || node->bits_per_input() == 0)
            return;
        if (message && mMode == kBroadcast) {
            if (message->Command == kInputs)
                ApplyInputWord(message->extended * 2 + message->State, message->data);
            return;
        }
        CMessage poll;
        poll.Command = kInputs;
        PollWords(poll, InputWords(node->Inputs(), node->bits_per_input()),
                  [this](int word, std::int32_t data) { ApplyInputWord(word, data); });
    });
}

void States::GetOutputArray(const CMessage* message)
{
    Guarded(mErrors, "States:GetOutputArray", [this, message] {
        const CNode* node = mSystem.MountedNode();
        if (!node || node->Outputs() == 0)
            return;
        if (message && mMode == kBroadcast) {
            if (message->Command == kOutputs)
                ApplyOutputWord(message->State, message->data);
            return;
        }
        CMessage poll;
        poll.Command = kOutputs;
        PollWords(poll, OutputWords(node->COutputs().Count()),
                  [this](int word, std::int32_t data) { ApplyOutputWord(word, data); });
    });
}

void States::ApplyInputWord(int word, std::int32_t data)
{
    if (!mHost.VerifyNode(mSystem.MountedNode(), false))
        return;
    const CNode* node = mSystem.MountedNode();
    if (!node || node->bits_per_input() == 0)
        return;
    const std::int32_t mask = (1 << node->bits_per_input()) - 1;
    const int inputsPerWord = kBitsPerWord / node->bits_per_input();
    const int last = std::min((word + 1) * inputsPerWord, node->CDigitalInputs().Count());
    for (int number = word * inputsPerWord + 1; number <= last; ++number) {
        CDigitalInput& input = node->CDigitalInputs()[number];
        input.StateAndNot(std::uint16_t(mask));
        input.StateOr(std::uint16_t(data & mask));
        data /= mask + 1;
    }
}

void States::ApplyOutputWord(int word, std::int32_t data)
{
    if (!mHost.VerifyNode(mSystem.MountedNode(), false))
        return;
    const CNode* node = mSystem.MountedNode();
    if (!node)
        return;
    const int last = std::min((word + 1) * kBitsPerWord, node->COutputs().Count());
    for (int number = word * kBitsPerWord + 1; number <= last; ++number) {
        node->COutputs()[number].setResolved(data % 2 != 0);
        data /= 2;
    }
}

void States::UpdateDiagnostics(const CMessage& message)
{
    Guarded(mErrors, "States:UpdateDiagnostics", [this, &message] {
        const int node = message.data >> 8 & 0xFF;
        const int output = message.data & 0xFF;
        if (node == 0 || output == 0)
            return;
        const QString text = QStringLiteral("Fault detected!");
        mFaults.Set(node, output, text);
        const CNode* known = mSystem.Node(node);
        if (known && known->COutputs().Contains(output))
            known->COutputs()[output].setFault(text);
    });
}

// --- Drawing -------------------------------------------------------------------------------------------------------

void States::UpdateStatesDisplay(int which)
{
    Guarded(mErrors, "States:UpdateStatesDisplay", [this, which] {
        if (mHost.DisplayState() != NodeViewHost::kViewStates || which == 0)
            return;
        if (mWordsShown)
            mGraphics.ClearFace();
        mWordsShown = !ShowsMountedNode();
        if (!mSystem.SelectedNode()) {
            mGraphics.PutTitleLines({QStringLiteral("No node selected")}, true, false);
            return;
        }
        DisplayInputs();
        DisplayOutputs();
        if (mWordsShown)
            mGraphics.PutString(QStringLiteral("Not mounted: last known states"), 1, kNoteRow, true, false);
        mGraphics.Refresh();
    });
}

void States::DrawTitle(const QString& title, int count, int row, bool dim)
{
    QString digits;
    for (int number = 1; number <= count; ++number)
        digits += QString::number(number % 10);
    mGraphics.PutString(title, 1, row, dim, false);
    mGraphics.PutString(digits, 1, row + 1, dim, false);
}

QChar States::InputCharacter(int bitsPerInput, int state)
{
    if (bitsPerInput == 1)
        return QLatin1Char(state == 0 ? '0' : '1');
    if (bitsPerInput == 2 && state >= 0 && state <= 3)
        return QLatin1Char("0-+?"[state]);
    return QLatin1Char('?');
}

void States::DisplayInputs()
{
    Guarded(mErrors, "States:DisplayInputs", [this] {
        const CNode* node = mSystem.SelectedNode();
        if (!node)
            return;
        const bool notMounted = !ShowsMountedNode();
        const auto& inputs = node->CDigitalInputs();
        DrawTitle(QStringLiteral("Inputs"), inputs.Count(), kInputRow, notMounted);
        for (int number = 1; number <= inputs.Count(); ++number) {
            const CDigitalInput& input = inputs[number];
            const QChar character = InputCharacter(node->bits_per_input(), input.State());
            mGraphics.PutString(QString(character), number, kInputRow + 2, notMounted || !input.IsInUse(), false);
        }
    });
}

void States::DisplayOutputs()
{
    const CNode* node = mSystem.SelectedNode();
    if (!node)
        return;
    const bool notMounted = !ShowsMountedNode();
    const auto& outputs = node->COutputs();
    DrawTitle(QStringLiteral("Outputs"), outputs.Count(), kOutputRow, notMounted);
    for (int number = 1; number <= outputs.Count(); ++number) {
        const COutput& output = outputs[number];
        // The whole word counts: an output that is only overridden shows as on.
        const QString character = output.State() != 0 ? QStringLiteral("1") : QStringLiteral("0");
        mGraphics.PutString(character, number, kOutputRow + 2, notMounted || !output.IsInUse(), false);
    }
}

}  // namespace fenrik
