#include "app/MainToolbar.h"

#include "widgets/ToolIcon.h"

#include <QAction>
#include <QActionGroup>
#include <QKeySequence>

namespace fenrik {

namespace {

enum class Kind { Plain, View, Toggle, Gap };

struct ButtonRow {
    Kind kind;
    const char* key;
    const char* text;
    const char* toolTip;
    int functionKey = 0;        ///< acts on its release, while the window is ready
    const char* shortcut = "";  ///< acts on its press
};

const ButtonRow kButtons[] = {
    {Kind::Plain, "Connect", "Connect", "Connect to the network", 0, "Ctrl+K"},
    {Kind::Plain, "Disconnect", "Disconnect", "Disconnect from the network", 0, "Ctrl+D"},
    {Kind::Plain, "ConnectUsing", "Connection method", "Change the connection method", 0, "Ctrl+M"},
    {Kind::Plain, "Port", "Network options", "Network options: ports, nodes, protocol", 0, "Ctrl+N"},
    {Kind::Plain, "System", "Select system", "Select the system and its command database", 0, "Ctrl+O"},
    {Kind::Gap, "", "", ""},
    {Kind::Plain, "DetectNodes", "Detect nodes", "Find the nodes that are alive", 0, "Ctrl+T"},
    {Kind::Plain, "Refresh", "Refresh node", "Download the selected node's information", 0, "Ctrl+R"},
    {Kind::Plain, "Save", "Save system", "Save what was learnt of the system", 0, "Ctrl+S"},
    {Kind::Gap, "", "", ""},
    {Kind::View, "Analog", "Analog", "Analog values", Qt::Key_F5},
    {Kind::View, "InputDiagnostics", "Inputs", "Input diagnostics", Qt::Key_F6},
    {Kind::View, "OutputDiagnostics", "Outputs", "Output diagnostics", Qt::Key_F7},
    {Kind::View, "States", "States", "States of all inputs and outputs", Qt::Key_F8},
    {Kind::View, "FlashInfo", "Flash information", "Flash information of the node", Qt::Key_F9},
    {Kind::Toggle, "Collision", "Collision monitor", "Watch the mounted node's collision count", Qt::Key_F10},
    {Kind::Gap, "", "", ""},
    {Kind::Plain, "Clear", "Clear", "Clear the message list and the panels", Qt::Key_F4},
    {Kind::Plain, "Log", "Message logging", "Options of the message log", 0, "Ctrl+L"},
    {Kind::Plain, "DiagLog", "Open log folder", "Show the folder of the message logs", 0, "Ctrl+Shift+L"},
    {Kind::Gap, "", "", ""},
    {Kind::Plain, "RDUsers", "Remote users", "Users of the relay", 0, "Ctrl+U"},
    {Kind::Plain, "RDChat", "Chat", "Chat with the user at the other end", 0, "Ctrl+H"},
    {Kind::Plain, "RDPing", "Latency", "Measure the latency of the remote link", 0, "Ctrl+P"},
    {Kind::Gap, "", "", ""},
    {Kind::Plain, "Harnwick", "Tool options", "Options of the display", 0, "Ctrl+,"},
    {Kind::Plain, "About", "About", "About Fenrik Diagnostics", 0, "Ctrl+I"},
};

struct Method {
    const char* icon;
    const char* toolTip;
};

const Method kMethods[] = {
    {"ConnectUsing_101", "Connection method: Transceiver"},
    {"ConnectUsing_102", "Connection method: Modem"},
    {"ConnectUsing_103", "Connection method: Pipe Server"},
};

/// A tool tip tells the key as well.
QString WithKey(const QString& text, const QKeySequence& key)
{
    return key.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText));
}

}  // namespace

MainToolbar::MainToolbar(QWidget* parent) : QToolBar(parent)
{
    setObjectName(QStringLiteral("Toolbar"));
    setWindowTitle(tr("Toolbar"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    auto* views = new QActionGroup(this);
    for (const ButtonRow& row : kButtons) {
        if (row.kind == Kind::Gap) {
            addSeparator();
            continue;
        }
        const QString key = QLatin1String(row.key);
        QAction* action = addAction(ToolIcon(key), tr(row.text));
        action->setObjectName(key);
        action->setToolTip(WithKey(tr(row.toolTip), row.functionKey ? QKeySequence(row.functionKey)
                                                                    : QKeySequence(QLatin1String(row.shortcut))));
        if (*row.shortcut)
            action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        action->setCheckable(row.kind != Kind::Plain);
        if (row.kind == Kind::View)
            views->addAction(action);
        connect(action, &QAction::triggered, this, [this, key] { Q_EMIT Clicked(key); });
    }
}

QAction* MainToolbar::Button(const QString& key) const
{
    return findChild<QAction*>(key, Qt::FindDirectChildrenOnly);
}

void MainToolbar::ShowConnectionMethod(int connectionType)
{
    const Method& method = kMethods[connectionType - 1];
    QAction* button = Button(QStringLiteral("ConnectUsing"));
    button->setIcon(ToolIcon(QLatin1String(method.icon)));
    button->setToolTip(WithKey(tr(method.toolTip), button->shortcut()));
}

void MainToolbar::ClickByFunctionKey(int released)
{
    for (const ButtonRow& row : kButtons) {
        if (row.functionKey != 0 && row.functionKey == released)
            Button(QLatin1String(row.key))->trigger();
    }
}

}  // namespace fenrik
