#pragma once

#include <QMessageBox>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <deque>

namespace fenrik {

/// Closes every dialog that opens and keeps its text: a box that nobody expects shows as a
/// failed expectation and not as a test that hangs.
class BoxWatcher : public QObject {
public:
    BoxWatcher();

    /// Presses `button` of the next message box that nobody has answered so far; it counts as expected.
    void AnswerNext(QMessageBox::StandardButton button) { mAnswers.push_back(button); }

    /// Windows of that name are the test's to work and to close.
    void LeaveAlone(const QString& name) { mLeft.append(name); }

    /// Enters `text` into the next input box; it counts as expected.
    void EnterNext(const QString& text) { mInputs.push_back(text); }

    /// The texts since the last call.
    [[nodiscard]] QStringList Take();

private:
    void Look();

    QTimer mTimer;
    QStringList mTexts;
    QStringList mLeft;
    std::deque<QMessageBox::StandardButton> mAnswers;
    std::deque<QString> mInputs;
};

}  // namespace fenrik
