#pragma once

#include "diagnostics/NodeViewFixture.h"
#include "diagnostics/States.h"

#include <array>

namespace fenrik {

/// The states view over a node that answers polls with `inputWords` and `outputWords`.
class StatesTest : public NodeViewTest {
protected:
    StatesTest()
    {
        answer = [this](const Frame& frame) { return Answer(frame); };
    }

    Frames Answer(const Frame& frame)
    {
        if (frame.command == 921 && isQuestion) {
            isQuestion = false;
            return questionAnswer;
        }
        if (!answersPolls || (frame.command != 921 && frame.command != 922))
            return {};
        const auto word = std::size_t(frame.extended * 2 + frame.state);
        return {Frame{950, false, false, frame.command == 921 ? inputWords[word] : outputWords[word]}};
    }

    void Restart() override
    {
        NodeViewTest::Restart();
        states.ResetStates();
    }

    /// Opens the view on a node that sends its states by itself.
    void OpenBroadcasting()
    {
        questionAnswer = {Frame{903, true, true, 0}};
        states.Open();
        heard.clear();
    }

    /// Opens the view on a node that has to be polled.
    void OpenPolled()
    {
        questionAnswer = {Frame{903, true, false, 0}};
        states.Open();
        heard.clear();
    }

    [[nodiscard]] QString Shown(int row) const { return Row(face, row).trimmed(); }

    std::array<std::uint16_t, 4> inputWords{};
    std::array<std::uint16_t, 4> outputWords{};
    Frames questionAnswer;
    bool isQuestion = true;  // the next 921 is the question for the mode; the frame alone can't tell
    bool answersPolls = true;
    States states{system, handler, commands, graphics, errors, window};
};

}  // namespace fenrik
