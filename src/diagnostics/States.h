#pragma once

#include "diagnostics/FaultTable.h"
#include "diagnostics/NodeViewHost.h"

#include <QChar>

#include <cstdint>

namespace fenrik {

class CMsgHandler;
class CNode;
class CommandTable;
class CSystem;
class ErrorReporter;
class Graphics;
struct CMessage;

/// The view of a node's inputs and outputs: one character for each, live while the node is mounted.
///
/// A node either sends its states by itself or has to be polled, and is asked once which of the two it does. There is
/// no timer for the poll: the network's other traffic paces it.
///
///   command  state       extended    data               reply
///   921      0           1                              903, extended 1: the node sends by itself from now on
///   921      bit 0 of w  bit 1 of w                     950, data = input word w, 0 to 3
///   922      w           0                              950, data = output word w, 0 or 1
///   921      bit 0 of w  bit 1 of w  input word w       sent by the node itself
///   922      w                       output word w      sent by the node itself
///   983                              node, output       fault report: node in the high byte, output in the low one
///
/// Input words hold as many inputs of `bits_per_input` bits as fit, output words 16 outputs of one bit, the lowest
/// number in the lowest bits.
///
/// Words belong to the mounted node, also while another one is selected and shown. What waits on the network runs
/// events meanwhile, so the mount can end inside; what was asked then goes nowhere.
class States {
public:
    /// Values of StateUpdateMode.
    static constexpr std::uint8_t kNotAsked = 0;
    static constexpr std::uint8_t kPolled = 1;
    static constexpr std::uint8_t kBroadcast = 2;

    /// All outlive it.
    States(CSystem& system, CMsgHandler& handler, const CommandTable& commands, Graphics& graphics,
           ErrorReporter& errors, NodeViewHost& host);

    /// How the mounted node delivers its states.
    [[nodiscard]] std::uint8_t StateUpdateMode() const { return mMode; }

    /// The mount has ended: the next node is asked anew.
    void ResetStates();

    /// The view was opened.
    void Open();

    /// The view is drawn anew; with `getNewInfo` the mounted node is asked for everything again.
    void RefreshFrame(bool getNewInfo);

    /// A received message passes. True if it was a state word that the node sent by itself and needs no line in the
    /// list. May poll the node.
    bool TakeMessage(const CMessage& message);

    /// The user has sent a command, which may have changed states.
    void CommandSent();

    /// Finds out how the mounted node delivers its states, polls it if need be (or applies `message`), and draws.
    /// Does nothing unless the view is open and shows the mounted node, and while it runs already.
    void UpdateStatesArray(const CMessage* message = nullptr);

    /// Draws inputs and outputs for any `which` but 0, if the view is open.
    void UpdateStatesDisplay(int which);

    /// Polls the mounted node's input or output words; applies `message` instead if the node sends by itself.
    void GetInputArray(const CMessage* message = nullptr);
    void GetOutputArray(const CMessage* message = nullptr);

    /// Spreads one word over the inputs or outputs of the mounted node. Points that it does not have are left out.
    void ApplyInputWord(int word, std::int32_t data);
    void ApplyOutputWord(int word, std::int32_t data);

    /// Draw rows 1 to 3 and rows 5 to 7.
    void DisplayInputs();
    void DisplayOutputs();

    /// Keeps the fault that a message 983 reports.
    void UpdateDiagnostics(const CMessage& message);
    [[nodiscard]] const FaultTable& FaultText() const { return mFaults; }
    void ClearFaults() { mFaults.Clear(); }

    /// Number of words that a poll asks for. Throws Error 6 if there are more than 32767 bits of inputs.
    [[nodiscard]] static int InputWords(int inputs, int bitsPerInput);
    [[nodiscard]] static int OutputWords(int outputs);

    /// How an input is shown.
    [[nodiscard]] static QChar InputCharacter(int bitsPerInput, int state);

private:
    [[nodiscard]] bool ShowsMountedNode() const;
    void AskForMode();
    template <typename Apply>
    void PollWords(CMessage& message, int words, Apply apply);
    void DrawTitle(const QString& title, int count, int row, bool dim);

    CSystem& mSystem;
    CMsgHandler& mHandler;
    const CommandTable& mCommands;
    Graphics& mGraphics;
    ErrorReporter& mErrors;
    NodeViewHost& mHost;
    std::uint8_t mMode = kNotAsked;
    int mMounts = 0;  // counts ResetStates: tells an answer to an earlier mount from one to this
    bool mUpdating = false;
    bool mWordsShown = false;
    FaultTable mFaults;
};

}  // namespace fenrik
