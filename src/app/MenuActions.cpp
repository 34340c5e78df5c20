#include "app/MenuActions.h"

#include "app/DiagHub.h"
#include "app/MainMenus.h"
#include "app/MainToolbar.h"
#include "app/ProgramHost.h"
#include "app/ScriptRunner.h"
#include "app/ToolbarActions.h"
#include "app/frmDiag.h"
#include "app/messages/MessageListModel.h"
#include "options/WebPages.h"
#include "platform/Shell.h"
#include "shared/ErrorReporter.h"
#include "shared/Settings.h"

#include <QAction>
#include <QHash>

namespace fenrik {

namespace {

struct ButtonEntry {
    const char* entry;
    const char* key;
    bool whenReady = false;  // not inside an exchange, which a menu does not keep the user from
};

// Entries that do what a button does.
constexpr ButtonEntry kButtonEntries[] = {
    {"mnuSettingsOptions", "Harnwick"},      {"mnuSettingsLogging", "Log"}, {"mnuSettingsNetwork", "Port", true},
    {"mnuSettingsDatabase", "System", true}, {"mnuHelpAbout", "About"},
};

constexpr const char* kMethodPrefix = "mnuConnectUsing_10";

}  // namespace

MenuActions::MenuActions(const Services& services, DiagHub& hub, frmDiag& window, ProgramHost& program,
                         ToolbarActions& toolbar)
    : mServices(services), mHub(hub), mWindow(window), mProgram(program), mToolbar(toolbar),
      mHelp(services.folder, services.shell, services.boxes)
{
    connect(&window.Menus(), &MainMenus::Chosen, this, [this](const QString& entry) {
        Guarded(mServices.errors, "frmmain:Menu:Click", [this, &entry] { Choose(entry); });
    });
}

void MenuActions::Choose(const QString& entry)
{
    if (ChooseAsButton(entry) || ChooseListOption(entry) || ChooseOperatorCommand(entry) || mHelp.OpenFor(entry))
        return;
    if (entry.startsWith(QLatin1String(kMethodPrefix)))
        ChooseConnectionMethod(entry);
    else if (entry == QLatin1String("mnuDiagSendSync"))
        mHub.ToggleSendSync();
    else if (entry == QLatin1String("mnuRunScript"))
        mHub.Scripts().Choose();
    else if (entry == QLatin1String("mnuSettingsExit"))
        mWindow.close();
    else if (entry == QLatin1String("mnuHelpHarnwick"))
        mServices.shell.OpenPage(QLatin1String(WebPages::kFenrik));
}

bool MenuActions::ChooseAsButton(const QString& entry)
{
    for (const ButtonEntry& row : kButtonEntries) {
        if (entry != QLatin1String(row.entry))
            continue;
        if (row.whenReady && !mHub.State().Ready())
            TellBusy();
        else
            mToolbar.Click(QLatin1String(row.key));
        return true;
    }
    return false;
}

bool MenuActions::ChooseListOption(const QString& entry)
{
    Settings& settings = mServices.settings;
    if (entry == QLatin1String("mnuListViewShowAll")) {
        settings.ListAllMsgs = !settings.ListAllMsgs;
        mProgram.PopulatecboCategoryList();
    } else if (entry == QLatin1String("mnuListViewCompactList")) {
        settings.CompactList = !settings.CompactList;
        // Keyed and keyless lines must not mix, so turning it on empties the list.
        mWindow.Messages().SetCompactList(settings.CompactList);
    } else if (entry == QLatin1String("mnuListViewHexData")) {
        settings.HexData = !settings.HexData;
        mWindow.Messages().SetHexData(settings.HexData);
    } else {
        return false;
    }
    return true;
}

bool MenuActions::ChooseOperatorCommand(const QString& entry)
{
    using Open = void (OperatorCommands::*)();
    static const QHash<QString, Open> kWindows{
        {QStringLiteral("mnuCommandQuery"), &OperatorCommands::OpenCommandQuery},
        {QStringLiteral("mnuAssignEatonE33"), &OperatorCommands::AssignEatonE33},
    };
    const Open open = kWindows.value(entry);
    if (!open)
        return false;
    // Menus are open to the user also inside an exchange, which the window's own would disturb.
    if (mHub.State().Ready())
        (mHub.Commands().*open)();
    else
        TellBusy();
    return true;
}

void MenuActions::TellBusy()
{
    mWindow.setMsg(QStringLiteral("Please wait until the present exchange has come to its end."));
}

void MenuActions::ChooseConnectionMethod(const QString& entry)
{
    const bool ready = mHub.State().Ready();
    if (!ready)
        TellBusy();
    // The toolkit has set the mark by now, so the old method is shown again.
    mHub.setConnectionType(ready ? entry.right(1).toInt() : mHub.Link().ConnectionType());
}

void MenuActions::SetCheck(const QString& entry, bool checked)
{
    mWindow.Menus().Entry(entry)->setChecked(checked);
}

void MenuActions::ShowListChecks()
{
    SetCheck(QStringLiteral("mnuListViewShowAll"), mServices.settings.ListAllMsgs);
    SetCheck(QStringLiteral("mnuListViewCompactList"), mServices.settings.CompactList);
    SetCheck(QStringLiteral("mnuListViewHexData"), mServices.settings.HexData);
}

void MenuActions::ShowDiagChecks()
{
    SetCheck(QStringLiteral("mnuDiagSendSync"), mServices.settings.SendSync);
}

}  // namespace fenrik
