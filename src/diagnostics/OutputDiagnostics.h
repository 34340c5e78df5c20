#pragma once

#include <QObject>

#include <cstdint>

namespace fenrik {

class CNode;
class COutput;
class CSystem;
class CommandTable;
class ErrorReporter;
class FrameOutputs;
class OutputViewHost;

/// The view of everything that is known of the selected node's outputs. Not live: it is built anew when it is opened
/// and when the window asks for it. Nothing but forcing an output goes to the node.
///
/// The node's outputs can be made anew while a force command waits for a quiet line, so none is held for longer than a
/// call that does not wait.
class OutputDiagnostics : public QObject {
    Q_OBJECT

public:
    /// All outlive it.
    OutputDiagnostics(CSystem& system, const CommandTable& commands, ErrorReporter& errors, OutputViewHost& host,
                      FrameOutputs& frame);

    /// Builds tree, buttons and terms for the selected node, and puts output 1 into focus. May wait.
    void DisplayOutputsFrame();

    /// The output in focus, 0 for none.
    [[nodiscard]] std::int16_t OutputSelected() const { return mOutputSelected; }
    void setOutputSelected(std::int16_t number);

    /// The level in focus. One that the output does not have counts as 0.
    [[nodiscard]] std::int16_t RLevelSelected() const { return mRLevelSelected; }
    void setRLevelSelected(std::uint8_t level);

    /// The output's row and button as it is now, and, if it is in focus, everything else.
    void UpdateOutputRow(COutput& output);

    /// See PointName::DisplayName.
    [[nodiscard]] static QString OutputDisplayName(const COutput& output, std::int16_t& limit);

private:
    void ShowNode(CNode& node);
    void AddOutputs(CNode& node);
    void ShowOutput(COutput& output);
    void ShowControl(const COutput& output);

    void TakeNodeClick(const QString& key, const QString& tag);
    void TakeButton(int number, bool pressed);
    void TakeForce();
    void TakeCommand(int command, const QString& op);

    void Force(int number, float percent);
    [[nodiscard]] COutput* Find(int number) const;
    [[nodiscard]] COutput& Get(int number) const;
    [[nodiscard]] QString FaultOf(const COutput& output) const;

    CSystem& mSystem;
    const CommandTable& mCommands;
    ErrorReporter& mErrors;
    OutputViewHost& mHost;
    FrameOutputs& mFrame;
    std::int16_t mOutputSelected = 0;
    std::int16_t mRLevelSelected = 0;
    int mBuilds = 0;  // tells after a wait whether the view was built anew meanwhile
};

}  // namespace fenrik
