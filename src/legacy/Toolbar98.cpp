#include "legacy/Toolbar98.h"

#include "widgets/ToolIcon.h"

#include <QAction>
#include <QKeySequence>

namespace fenrik {

namespace {

enum class Works { Always, Connected, Disconnected };

struct ButtonRow {
    const char* key;  ///< empty: a gap
    const char* text = "";
    const char* toolTip = "";
    const char* shortcut = "";
    Works works = Works::Always;
    const char* icon = nullptr;  ///< of the key's name if there is none
};

const ButtonRow kButtons[] = {
    {"Connect", "Connect", "Connect to the network", "Ctrl+K", Works::Disconnected},
    {"Disconnect", "Disconnect", "Disconnect from the network", "Ctrl+D", Works::Connected},
    {"Port", "Network options", "Network options: port and protocol", "Ctrl+N", Works::Disconnected},
    {"DB", "Select database", "Select the system database", "Ctrl+O", Works::Disconnected, "System"},
    {""},
    {"Analog", "Analog", "Analog values", "F5", Works::Connected},
    {"Info", "System information", "System information", "F6", Works::Connected, "SystemInfo"},
    {""},
    {"Clear", "Clear", "Clear the message list and the display", "F4"},
    {"Log", "Message logging", "Options of the message log", "Ctrl+L", Works::Disconnected},
    {""},
    {"Harnwick", "Tool options", "Options of the display", "Ctrl+,"},
    {"About", "About", "About Fenrik Diagnostics", "Ctrl+I"},
};

}  // namespace

Toolbar98::Toolbar98(QWidget* parent) : QToolBar(parent)
{
    setObjectName(QStringLiteral("Toolbar"));
    setWindowTitle(tr("Toolbar"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    for (const ButtonRow& row : kButtons) {
        if (!*row.key) {
            addSeparator();
            continue;
        }
        const QString key = QLatin1String(row.key);
        const QKeySequence shortcut(QLatin1String(row.shortcut));
        QAction* action = addAction(ToolIcon(row.icon ? QLatin1String(row.icon) : key), tr(row.text));
        action->setObjectName(key);
        action->setShortcut(shortcut);
        action->setToolTip(QStringLiteral("%1 (%2)").arg(tr(row.toolTip), shortcut.toString(QKeySequence::NativeText)));
        connect(action, &QAction::triggered, this, [this, key] { Q_EMIT Clicked(key); });
    }
    ShowConnected(false);
}

QAction* Toolbar98::Button(const QString& key) const
{
    return findChild<QAction*>(key, Qt::FindDirectChildrenOnly);
}

void Toolbar98::ShowConnected(bool connected)
{
    for (const ButtonRow& row : kButtons) {
        if (*row.key)
            Button(QLatin1String(row.key))
                ->setEnabled(row.works == Works::Always || (row.works == Works::Connected) == connected);
    }
}

}  // namespace fenrik
