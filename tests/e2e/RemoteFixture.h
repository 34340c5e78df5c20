#pragma once

#include "e2e/RelayProcess.h"
#include "e2e/ToolTest.h"

class QDialog;
class QLabel;

namespace fenrik {

/// The tool with a profile of Ann's for a real relay, and Bob, a colleague with a vehicle, logged on to the same relay.
class RemoteTest : public ToolTest {
protected:
    void SetUp() override;

    /// Starts relay, Bob and the tool.
    void StartAll(const char* answer = "--ask", const char* scenario = "quiet\n");

    /// Clicks "Connect" and chooses Bob.
    void Connect();

    /// The same up to a connection that may send.
    void StartGranted(const char* scenario = "quiet\n");

    /// Selects Bob with the mouse and presses "Connect".
    static void ChooseBob(QDialog& users);

    void ExpectDisconnected();

    /// A window of that name that is on the screen, or nothing.
    [[nodiscard]] static QDialog* Shown(const char* name);
    [[nodiscard]] static std::string LabelOf(const char* window, const char* label);

    RelayProcess relay{copy};
};

}  // namespace fenrik
