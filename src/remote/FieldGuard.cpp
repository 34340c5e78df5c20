#include "remote/FieldGuard.h"

#include <QApplication>
#include <QFocusEvent>
#include <QWidget>

#include <algorithm>

namespace fenrik {

namespace {

bool IsUsersWish(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::MouseFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

}  // namespace

FieldGuard::FieldGuard(QWidget& window, std::vector<QWidget*> boxes, const QWidget& exit, IsValid isValid)
    : QObject(&window), mWindow(window), mBoxes(std::move(boxes)), mExit(exit), mIsValid(std::move(isValid))
{
    for (QWidget* control : window.findChildren<QWidget*>())
        control->installEventFilter(this);
}

bool FieldGuard::eventFilter(QObject* watched, QEvent* event)
{
    const QWidget* focus = QApplication::focusWidget();
    if (event->type() == QEvent::FocusOut && IsBox(watched)) {
        auto* box = static_cast<QWidget*>(watched);
        if (IsUsersWish(static_cast<QFocusEvent*>(event)->reason()) && !mIsValid(box) && !MayGoTo(focus))
            box->setFocus(Qt::OtherFocusReason);
        return false;
    }
    // The focus was handed back by now, but the press would still work the control.
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        return watched != focus && IsBox(focus) && !mIsValid(focus) && !MayGoTo(static_cast<QWidget*>(watched));
    return false;
}

bool FieldGuard::IsBox(const QObject* object) const
{
    return std::ranges::find(mBoxes, object) != mBoxes.end();
}

bool FieldGuard::MayGoTo(const QWidget* target) const
{
    return !target || target == &mExit || target->window() != &mWindow;
}

}  // namespace fenrik
