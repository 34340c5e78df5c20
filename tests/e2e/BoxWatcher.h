#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <functional>
#include <vector>

namespace fenrik {

/// Closes every dialog that opens and keeps its text: a box that nobody expects shows as a
/// failed expectation and not as a test that hangs.
class BoxWatcher : public QObject {
public:
    BoxWatcher();

    /// Presses `button` of the next message box that nobody has answered so far; it counts as expected.
    void AnswerNext(QMessageBox::StandardButton button) { mAnswers.push_back(button); }

    /// Enters `text` into the next input box; it counts as expected.
    void EnterNext(const QString& text) { mInputs.push_back(text); }

    /// Windows of that name are the test's to work and to close.
    void LeaveAlone(const QString& name) { mLeft.append(name); }

    /// Does `work` on the next dialog of that object name, which it leaves closed; the dialog counts as expected.
    void WorkNext(const QString& name, const std::function<void(QDialog&)>& work) { mWorks.push_back({name, work}); }

    /// The texts since the last call.
    [[nodiscard]] QStringList Take();

private:
    struct Work {
        QString name;
        std::function<void(QDialog&)> work;
    };

    void Look();
    [[nodiscard]] bool IsWorked(QDialog* dialog);

    QTimer mTimer;
    QStringList mTexts;
    QStringList mLeft;
    std::deque<QMessageBox::StandardButton> mAnswers;
    std::deque<QString> mInputs;
    std::deque<Work> mWorks;
    std::vector<QPointer<QDialog>> mWorked;
};

}  // namespace fenrik
