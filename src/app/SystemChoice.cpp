#include "app/SystemChoice.h"

#include "app/DiagHub.h"
#include "app/ProgramHost.h"
#include "app/frmDiag.h"
#include "catalogue/frmDBProperties.h"
#include "model/SavePrompt.h"
#include "platform/ProgramFolder.h"
#include "shared/EventPump.h"
#include "shared/Settings.h"
#include "widgets/WaitCursor.h"

#include <memory>

namespace fenrik {

SystemChoice::SystemChoice(const Services& services, DiagHub& hub, frmDiag& window, ProgramHost& program)
    : mServices(services), mHub(hub), mWindow(window), mProgram(program)
{
}

void SystemChoice::Choose()
{
    std::int32_t response = SavePrompt::kAsk;
    mHub.System().SaveSystem(response);
    if (AskUser())
        Load();
}

bool SystemChoice::AskUser()
{
    std::unique_ptr<frmDBProperties> dialog;
    {
        const WaitCursor hourglass;  // every database of the folder is looked into
        dialog = std::make_unique<frmDBProperties>(mServices.settings, mServices.folder.Path(), mServices.boxes,
                                                   mServices.errors, &mWindow);
    }
    return dialog->exec() == QDialog::Accepted;
}

void SystemChoice::Load()
{
    const Settings& settings = mServices.settings;
    {
        const WaitCursor hourglass;
        mHub.System().LoadSystem(settings.SystemName, settings.SystemPath, false);
    }
    mHub.ShowLoadedSystem();
    if (mServices.pump.Stopped())
        return;  // the window was closed meanwhile
    mProgram.LoadCommands();
}

}  // namespace fenrik
