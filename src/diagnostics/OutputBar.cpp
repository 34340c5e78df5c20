#include "diagnostics/OutputBar.h"

#include <QAction>
#include <QGridLayout>
#include <QIcon>
#include <QToolButton>

namespace fenrik {

namespace {

constexpr int kLargestSingleRow = 13;
constexpr int kButtonWidth = 30;
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
        UpdateButton(i + 1, QString(), QStringLiteral("Off"), false);
    }
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
    button->setFixedWidth(kButtonWidth);
    mButtons.append(button);
    connect(action, &QAction::triggered, this, [this, number](bool pressed) { Q_EMIT ButtonClicked(number, pressed); });
}

void OutputBar::EnableButton(int number, bool enabled)
{
    if (QToolButton* button = Button(number))
        button->defaultAction()->setEnabled(enabled);
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
