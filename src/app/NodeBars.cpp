#include "app/NodeBars.h"

#include "app/NodeIcon.h"
#include "widgets/ToolIcon.h"

#include <QAction>
#include <QIcon>

namespace fenrik {

namespace {

struct ActionRow {
    const char* key;
    const char* text;
    const char* toolTip;
    const char* shortcut;
};

const ActionRow kActions[] = {
    {"Mount", "Mount", "Mount the selected node (Ctrl+E)", "Ctrl+E"},
    {"Unmount", "Unmount", "Unmount the mounted node (Ctrl+Shift+E)", "Ctrl+Shift+E"},
    {"Ping", "Ping", "Ping the selected node (Ctrl+G)", "Ctrl+G"},
};

// A button that only fills its place in the second bar. Its key is older than anybody here; people's scripts that
// walk the bar know it.
constexpr const char* kFillerKey = "yourmom";

QToolBar* MakeBar(const QString& name, const QString& title)
{
    auto* bar = new QToolBar;
    bar->setObjectName(name);
    bar->setWindowTitle(title);
    bar->setAccessibleName(title);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    return bar;
}

}  // namespace

NodeBars::NodeBars(QObject* parent)
    : QObject(parent), mFirst(MakeBar(QStringLiteral("Nodebar"), tr("Nodes 1 to 16"))),
      mSecond(MakeBar(QStringLiteral("Nodebar17_32"), tr("Nodes 17 to 32")))
{
    AddNodes(mFirst, 1, kNodesOfFirstBar);
    mFirst->addSeparator();
    AddActions();
    AddNodes(mSecond, kNodesOfFirstBar + 1, kNodes);
    QAction* filler = mSecond->addAction(QString());
    filler->setObjectName(QLatin1String(kFillerKey));
    filler->setVisible(false);
}

void NodeBars::AddNodes(QToolBar* bar, int first, int last)
{
    for (int number = first; number <= last; ++number) {
        QAction* button = bar->addAction(NodeIcon(QStringLiteral("Blank")), tr("Node %1").arg(number));
        button->setObjectName(QStringLiteral("Node%1").arg(number));
        button->setCheckable(true);
        button->setEnabled(false);
        connect(button, &QAction::triggered, this, [this, number] { Q_EMIT NodeClicked(number); });
    }
}

void NodeBars::AddActions()
{
    for (const ActionRow& row : kActions) {
        const QString key = QLatin1String(row.key);
        QAction* button = mFirst->addAction(ToolIcon(key), tr(row.text));
        button->setObjectName(key);
        button->setToolTip(tr(row.toolTip));
        button->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        connect(button, &QAction::triggered, this, [this, key] { Q_EMIT ActionClicked(key); });
    }
}

QAction* NodeBars::NodeButton(int number) const
{
    const QToolBar* bar = number <= kNodesOfFirstBar ? mFirst : mSecond;
    return bar->findChild<QAction*>(QStringLiteral("Node%1").arg(number), Qt::FindDirectChildrenOnly);
}

QAction* NodeBars::ActionButton(const QString& key) const
{
    return mFirst->findChild<QAction*>(key, Qt::FindDirectChildrenOnly);
}

void NodeBars::SetIcon(int number, const QString& iconKey)
{
    if (QAction* button = NodeButton(number))
        button->setIcon(NodeIcon(iconKey));
}

void NodeBars::SetEnabled(bool enabled)
{
    mFirst->setEnabled(enabled);
    mSecond->setEnabled(enabled);
}

}  // namespace fenrik
