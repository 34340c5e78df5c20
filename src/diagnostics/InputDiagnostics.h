#pragma once

#include <QObject>

#include <cstdint>

namespace fenrik {

class CDigitalInput;
class CNode;
class CSystem;
class CommandTable;
class ErrorReporter;
class FrameInputs;
class InputViewHost;

/// The view of the configuration of the selected node's inputs. Not live, and nothing here goes to the node: it is
/// built anew when it is opened and when the window asks for it.
class InputDiagnostics : public QObject {
    Q_OBJECT

public:
    /// All outlive it.
    InputDiagnostics(CSystem& system, const CommandTable& commands, ErrorReporter& errors, InputViewHost& host,
                     FrameInputs& frame);

    /// Builds the tree for the selected node, and puts input 1 into focus. May wait.
    void DisplayInputsFrame();

    /// The input in focus, 0 for none.
    [[nodiscard]] std::int16_t InputSelected() const { return mInputSelected; }
    void setInputSelected(std::int16_t number);

    void UpdateInputRow(const CDigitalInput& input);

    /// See PointName::DisplayName.
    [[nodiscard]] static QString InputDisplayName(const CDigitalInput& input, std::int16_t& limit);

private:
    void ShowNode(const CNode& node);
    void ShowInput(int number);

    CSystem& mSystem;
    const CommandTable& mCommands;
    ErrorReporter& mErrors;
    InputViewHost& mHost;
    FrameInputs& mFrame;
    std::int16_t mInputSelected = 0;
    int mBuilds = 0;  // tells after a wait whether the view was built anew meanwhile
};

}  // namespace fenrik
