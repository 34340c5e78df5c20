#include "legacy/ToolbarActions98.h"

#include "legacy/FrmDiag98.h"
#include "legacy/LegacyHost.h"
#include "legacy/MessageList98.h"
#include "legacy/Toolbar98.h"
#include "logging/FrmMsgLogging.h"
#include "platform/NormalPointer.h"
#include "shared/ErrorReporter.h"
#include "widgets/WaitCursor.h"

#include <QHash>

namespace fenrik {

ToolbarActions98::ToolbarActions98(const LegacyServices& services, FrmDiag98& window, LegacyHost& host)
    : mServices(services), mWindow(window), mHost(host)
{
    connect(&window.Toolbar(), &Toolbar98::Clicked, this, &ToolbarActions98::Click);
}

void ToolbarActions98::Click(const QString& key)
{
    mWindow.Toolbar().setEnabled(false);
    {
        const WaitCursor hourglass;
        Guarded(mServices.errors, "frmmain98:Toolbar:ButtonClick", [this, &key] { Run(key); });
    }
    mWindow.Toolbar().setEnabled(true);
}

void ToolbarActions98::Run(const QString& key)
{
    using Action = void (*)(ToolbarActions98&);
    static const QHash<QString, Action> kWork{
        {QStringLiteral("Connect"), [](ToolbarActions98& self) { self.mWindow.Link().Connect(); }},
        {QStringLiteral("Disconnect"), [](ToolbarActions98& self) { self.mWindow.Link().Disconnect(); }},
        {QStringLiteral("Clear"), [](ToolbarActions98& self) { self.Clear(); }},
        {QStringLiteral("Analog"), [](ToolbarActions98& self) { self.ShowAnalog(); }},
        {QStringLiteral("Info"), [](ToolbarActions98& self) { self.ShowInformation(); }},
    };
    static const QHash<QString, Action> kWindows{
        {QStringLiteral("Port"), [](ToolbarActions98& self) { self.mHost.OpenNetworkOptions(self.mWindow); }},
        {QStringLiteral("DB"), [](ToolbarActions98& self) { self.mWindow.ChooseDatabase(); }},
        {QStringLiteral("Log"), [](ToolbarActions98& self) { self.ChooseLogOptions(); }},
        {QStringLiteral("Harnwick"), [](ToolbarActions98& self) { self.mHost.OpenToolOptions(self.mWindow); }},
        {QStringLiteral("About"), [](ToolbarActions98& self) { self.mHost.OpenAbout(self.mWindow); }},
    };
    if (const Action work = kWork.value(key)) {
        work(*this);
        return;
    }
    const NormalPointer pointer;
    kWindows.value(key)(*this);
}

void ToolbarActions98::ChooseLogOptions()
{
    FrmMsgLogging(FrmMsgLogging::Network::Older, mServices.settings, mServices.store, mServices.errors, &mWindow)
        .exec();
}

void ToolbarActions98::Clear()
{
    mWindow.Messages().Clear();
    mWindow.Panels().ClearAnalog();
}

void ToolbarActions98::ShowAnalog()
{
    mWindow.Panels().ClearAnalog();
    mWindow.Link().Monitor().setPanel(Panel98::Analog);
}

void ToolbarActions98::ShowInformation()
{
    mWindow.Panels().ClearAnalog();
    mWindow.Link().Monitor().setPanel(Panel98::SystemInformation);
    mWindow.Panels().SystemInformation(mServices.settings);
}

}  // namespace fenrik
