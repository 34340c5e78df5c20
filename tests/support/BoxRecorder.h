#pragma once

#include "platform/Boxes.h"

#include <deque>
#include <vector>

namespace fenrik {

/// Answers boxes without showing them: for tests of what decides about a box. Tests of windows use the real boxes.
class BoxRecorder : public Boxes {
public:
    struct Box {
        QString text;
        QMessageBox::Icon icon;
        Buttons buttons;
        QString title;
    };

    Button MsgBox(const QString& text, QMessageBox::Icon icon, Buttons buttons, const QString& title) override
    {
        boxes.push_back({text, icon, buttons, title});
        if (answers.empty())
            return QMessageBox::Ok;
        const Button answer = answers.front();
        answers.pop_front();
        return answer;
    }

    QString InputBox(const QString& prompt, const QString& title, const QString& defaultText) override
    {
        prompts.push_back({prompt, title, defaultText});
        if (inputs.empty())
            return {};
        const QString input = inputs.front();
        inputs.pop_front();
        return input;
    }

    struct Prompt {
        QString text;
        QString title;
        QString preset;
    };

    std::vector<Box> boxes;
    std::deque<Button> answers;  ///< the first is given to the next box; OK when there are none
    std::vector<Prompt> prompts;
    std::deque<QString> inputs;  ///< the first is entered next; cancelled when there are none
};

}  // namespace fenrik
