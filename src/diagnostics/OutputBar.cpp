#include "diagnostics/OutputBar.h"

#include <QAction>
#include <QGridLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QToolButton>

namespace fenrik {

namespace {

constexpr int kLargestSingleRow = 13;
constexpr int kButtonWidth = 30;  // more if the font is large
constexpr int kButtonMargin = 6;
constexpr int kPictureSize = 16;

}  // namespace

OutputBar::OutputBar(QWidget* parent) : QWidget(parent), mLayout(new QGridLayout)
{
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addLayout(mLayout);
    line->addStretch();
    mLayout->setSpacing(2);
}

int OutputBar::Columns(int count)
{
    return count <= kLargestSingleRow ? count : (count + 1) / 2;
}

void OutputBar::SetCount(int count)
{
    while (Count() > count) {
        QToolButton* button = mButtons.takeLast();
        mLayout->removeWidget(button);
        button->hide();
        // Its own click may be what brought us here.
        button->setObjectName(QString());
        button->defaultAction()->setObjectName(QString());
        removeAction(button->defaultAction());
        button->defaultAction()->deleteLater();
        button->deleteLater();
    }
    while (Count() < count)
        AddButton(Count() + 1);
    const int columns = Columns(count);
    for (int i = 0; i < count; ++i) {
        mLayout->addWidget(mButtons[i], i / columns, i % columns);
        mButtons[i]->show();  // the layout would do it later, and the keyboard may come sooner
        UpdateButton(i + 1, QString(), QStringLiteral("Off"), false);
    }
    OrderButtons();
    SetStop(mStop);
}

void OutputBar::OrderButtons()
{
    // Only what takes the Tab key can be put in order.
    setFocusProxy(nullptr);
    setFocusPolicy(Qt::TabFocus);
    QWidget* before = this;
    for (QToolButton* button : mButtons) {
        button->setFocusPolicy(Qt::TabFocus);
        setTabOrder(before, button);
        before = button;
    }
    setFocusPolicy(Qt::NoFocus);
}

void OutputBar::AddButton(int number)
{
    auto* action = new QAction(QString::number(number), this);
    action->setObjectName(QString::number(number));
    action->setCheckable(true);
    addAction(action);
    auto* button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setIconSize(QSize(kPictureSize, kPictureSize));
    button->setAutoRaise(true);
    button->setFixedWidth(ButtonWidth());
    button->installEventFilter(this);
    mButtons.append(button);
    connect(action, &QAction::triggered, this, [this, number](bool pressed) {
        SetStop(number);
        Q_EMIT ButtonClicked(number, pressed);
    });
}

int OutputBar::ButtonWidth() const
{
    return qMax(kButtonWidth, fontMetrics().horizontalAdvance(QStringLiteral("32")) + 2 * kButtonMargin);
}

void OutputBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    for (QToolButton* button : mButtons)
        button->setFixedWidth(ButtonWidth());
}

void OutputBar::EnableButton(int number, bool enabled)
{
    if (QToolButton* button = Button(number))
        button->defaultAction()->setEnabled(enabled);
    SetStop(mStop);
}

void OutputBar::SetStop(int number)
{
    QToolButton* button = Button(number);
    if (!button || !button->defaultAction()->isEnabled())
        button = Button(NextEnabled(0, 1));
    for (QToolButton* other : mButtons)
        other->setFocusPolicy(other == button ? Qt::TabFocus : Qt::NoFocus);
    setFocusProxy(button);
    if (button)
        mStop = int(mButtons.indexOf(button)) + 1;
}

int OutputBar::NextEnabled(int from, int step) const
{
    int number = from + step;
    while (Button(number) && !Button(number)->defaultAction()->isEnabled())
        number += step;
    return Button(number) ? number : 0;
}

void OutputBar::MoveTo(int number)
{
    if (number == 0)
        return;
    SetStop(number);
    Button(number)->setFocus(Qt::TabFocusReason);
}

bool OutputBar::Moves(int key)
{
    const int columns = Columns(Count());
    switch (key) {
    case Qt::Key_Right:
        MoveTo(NextEnabled(mStop, 1));
        return true;
    case Qt::Key_Left:
        MoveTo(NextEnabled(mStop, -1));
        return true;
    case Qt::Key_Down:
        MoveTo(NextEnabled(mStop, columns));
        return true;
    case Qt::Key_Up:
        MoveTo(NextEnabled(mStop, -columns));
        return true;
    case Qt::Key_Home:
        MoveTo(NextEnabled(0, 1));
        return true;
    case Qt::Key_End:
        MoveTo(NextEnabled(Count() + 1, -1));
        return true;
    default:
        return false;
    }
}

bool OutputBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && Moves(static_cast<QKeyEvent*>(event)->key()))
        return true;
    return QWidget::eventFilter(watched, event);
}

void OutputBar::UpdateButton(int number, const QString& toolTip, const QString& icon, bool pressed)
{
    QToolButton* button = Button(number);
    if (!button)
        return;
    QAction* action = button->defaultAction();
    action->setToolTip(toolTip);
    action->setData(icon);
    action->setIcon(QIcon(QStringLiteral(":/icons/%1.png").arg(icon)));
    action->setChecked(pressed);
    button->setAccessibleName(toolTip);
}

}  // namespace fenrik
