#include "e2e/BoxWatcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QInputDialog>

#include <algorithm>
#include <utility>

namespace fenrik {

namespace {

constexpr int kLookMs = 20;

}  // namespace

BoxWatcher::BoxWatcher()
{
    connect(&mTimer, &QTimer::timeout, this, &BoxWatcher::Look);
    mTimer.start(kLookMs);
}

QStringList BoxWatcher::Take()
{
    return std::exchange(mTexts, {});
}

bool BoxWatcher::IsWorked(QDialog* dialog)
{
    if (!dialog)
        return false;
    if (std::find(mWorked.begin(), mWorked.end(), dialog) != mWorked.end())
        return true;
    if (mWorks.empty() || mWorks.front().name != dialog->objectName())
        return false;
    mWorked.emplace_back(dialog);
    const auto work = mWorks.front().work;
    mWorks.pop_front();
    // Not from here: the timer does not fire again inside its own handler, and the work may open further dialogs.
    QTimer::singleShot(0, dialog, [work, dialog] { work(*dialog); });
    return true;
}

void BoxWatcher::Look()
{
    // A window that is kept may be opened once more.
    std::erase_if(mWorked, [](const QPointer<QDialog>& dialog) { return !dialog || !dialog->isVisible(); });
    QWidget* open = QApplication::activeModalWidget();
    if (open && mLeft.contains(open->objectName()))
        return;
    if (IsWorked(qobject_cast<QDialog*>(open)))
        return;
    auto* box = qobject_cast<QMessageBox*>(open);
    if (box && !mAnswers.empty()) {
        QAbstractButton* button = box->button(mAnswers.front());
        mAnswers.pop_front();
        if (button)
            button->click();
    } else if (box) {
        mTexts.append(box->text());
        box->accept();
    } else if (auto* input = qobject_cast<QInputDialog*>(open); input && !mInputs.empty()) {
        input->setTextValue(mInputs.front());
        mInputs.pop_front();
        input->accept();
    } else if (auto* dialog = qobject_cast<QDialog*>(open)) {
        mTexts.append(dialog->objectName());
        dialog->reject();
    }
}

}  // namespace fenrik
