#include "app/OptionDialogs.h"

#include "app/Services.h"
#include "options/FrmOptions.h"
#include "options/frmAbout.h"
#include "options/frmCommSetup.h"
#include "platform/ProgramFolder.h"
#include "shared/RunState.h"
#include "widgets/WaitCursor.h"

#include <memory>

namespace fenrik {

void OptionDialogs::OpenNetworkOptions(QWidget* parent)
{
    std::unique_ptr<frmCommSetup> dialog;
    {
        const WaitCursor hourglass;
        dialog = std::make_unique<frmCommSetup>(frmCommSetup::Parts{mServices.settings, mServices.run, mServices.remote,
                                                                    mServices.profiles, mServices.ports, mServices.port,
                                                                    mServices.boxes, mServices.errors, mServices.pump,
                                                                    mHost},
                                                parent);
    }
    dialog->exec();
}

void OptionDialogs::OpenToolOptions(QWidget* parent, const QString& database)
{
    const auto size = mServices.run.LegacyProtocol ? FrmOptions::Size::Small : FrmOptions::Size::Full;
    FrmOptions(mServices.settings, size, database, mServices.folder.File(QStringLiteral("ncCommand.dav")), mHost,
               parent)
        .exec();
}

void OptionDialogs::OpenAbout(QWidget* parent)
{
    frmAbout({mServices.version, mServices.folder.Path(), mServices.shell, mServices.boxes, mServices.errors}, parent)
        .exec();
}

}  // namespace fenrik
