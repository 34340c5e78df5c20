#include "app/MainMenus.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

namespace fenrik {

namespace {

struct MenuRow {
    const char* name;
    const char* caption;  ///< empty: not on the bar, opens on the right mouse button
};

// "&" marks the mnemonics; the captions are the given ones.
const MenuRow kMenus[] = {
    {"mnuSettings", "&Settings"},
    {"mnuConnectMethod", "&Connection Method"},
    {"mnuSpecialFunctions", "Special &Functions"},
    {"mnuHelp", "&Help"},
    {"mnuListView", ""},
    {"mnuDiag", ""},
};

enum class Kind { Plain, Check, Method, Gap, DebugGap, Debug };

struct EntryRow {
    const char* menu;
    Kind kind;
    const char* name;
    const char* caption;
    const char* shortcut = "";
};

const EntryRow kEntries[] = {
    {"mnuDiag", Kind::Check, "mnuDiagSendSync", "Send \"Artificial\" &Sync"},
    {"mnuListView", Kind::Check, "mnuListViewShowAll", "Show &all messages"},
    {"mnuListView", Kind::Check, "mnuListViewCompactList", "&Don't display duplicate commands"},
    {"mnuListView", Kind::Check, "mnuListViewHexData", "Display message data in &Hex"},
    {"mnuSettings", Kind::Plain, "mnuSettingsOptions", "&Tool Options"},
    {"mnuSettings", Kind::Plain, "mnuSettingsLogging", "Message &Logging"},
    {"mnuSettings", Kind::Plain, "mnuSettingsNetwork", "&Network Options"},
    {"mnuSettings", Kind::Plain, "mnuSettingsDatabase", "&Database Options"},
    {"mnuSettings", Kind::Gap, "", ""},
    {"mnuSettings", Kind::Plain, "mnuSettingsExit", "E&xit", "Ctrl+Q"},
    {"mnuConnectMethod", Kind::Method, "mnuConnectUsing_101", "&Transceiver"},
    {"mnuConnectMethod", Kind::Method, "mnuConnectUsing_102", "&Modem"},
    {"mnuConnectMethod", Kind::Method, "mnuConnectUsing_103", "&Pipe Server"},
    {"mnuSpecialFunctions", Kind::Plain, "mnuCommandQuery", "Command &Query..."},
    {"mnuSpecialFunctions", Kind::Plain, "mnuAssignEatonE33", "&Assign Eaton E33 Switch Address..."},
    {"mnuSpecialFunctions", Kind::DebugGap, "", ""},
    {"mnuSpecialFunctions", Kind::Debug, "mnuRunScript", "&Run Script..."},
    {"mnuHelp", Kind::Plain, "mnuHelpDiagManual", "Fenrik Diagnostics &Manual", "F1"},
    {"mnuHelp", Kind::Plain, "mnuHelpSixSteps", "Fenrik &Six Steps Guide"},
    {"mnuHelp", Kind::Plain, "mnuHelpConnSpec", "Fenrik &Connector Spec"},
    {"mnuHelp", Kind::Gap, "", ""},
    {"mnuHelp", Kind::Plain, "mnuHelpHarnwick", "&Harnwick on the Web"},
    {"mnuHelp", Kind::Plain, "mnuHelpAbout", "&About Fenrik Diagnostics"},
};

constexpr int kFirstMethodIndex = 101;
constexpr int kMethods = 3;

QString MethodName(int connectionType)
{
    return QStringLiteral("mnuConnectUsing_%1").arg(kFirstMethodIndex + connectionType - 1);
}

}  // namespace

MainMenus::MainMenus(QMenuBar& bar, bool isDebug, QObject* parent) : QObject(parent)
{
    for (const MenuRow& row : kMenus) {
        auto menu = std::make_unique<QMenu>(tr(row.caption), &bar);
        menu->setObjectName(QLatin1String(row.name));
        if (*row.caption)
            bar.addMenu(menu.get());
        mMenus.push_back(menu.release());  // a child of the bar
    }
    Fill(isDebug);
}

void MainMenus::Fill(bool isDebug)
{
    auto* methods = new QActionGroup(this);
    for (const EntryRow& row : kEntries) {
        QMenu* menu = Menu(QLatin1String(row.menu));
        const bool visible = isDebug || (row.kind != Kind::Debug && row.kind != Kind::DebugGap);
        if (row.kind == Kind::Gap || row.kind == Kind::DebugGap) {
            menu->addSeparator()->setVisible(visible);
            continue;
        }
        const QString name = QLatin1String(row.name);
        QAction* entry = menu->addAction(tr(row.caption));
        entry->setObjectName(name);
        entry->setVisible(visible);
        entry->setCheckable(row.kind == Kind::Check || row.kind == Kind::Method);
        if (row.kind == Kind::Method)
            methods->addAction(entry);
        if (*row.shortcut)
            entry->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        connect(entry, &QAction::triggered, this, [this, name] { Q_EMIT Chosen(name); });
    }
}

QMenu* MainMenus::Menu(const QString& name) const
{
    for (QMenu* menu : mMenus) {
        if (menu->objectName() == name)
            return menu;
    }
    return nullptr;
}

QAction* MainMenus::Entry(const QString& name) const
{
    for (QMenu* menu : mMenus) {
        if (auto* entry = menu->findChild<QAction*>(name, Qt::FindDirectChildrenOnly))
            return entry;
    }
    return nullptr;
}

void MainMenus::ShowConnectionMethod(int connectionType)
{
    Entry(MethodName(connectionType))->setChecked(true);
}

int MainMenus::NextConnectionMethod(int connectionType) const
{
    for (int step = 1; step <= kMethods; ++step) {
        const int next = (connectionType - 1 + step) % kMethods + 1;
        const QAction* entry = Entry(MethodName(next));
        if (entry->isVisible() && entry->isEnabled())
            return next;
    }
    return connectionType;
}

}  // namespace fenrik
