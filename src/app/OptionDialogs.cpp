#include "app/OptionDialogs.h"

#include "app/Services.h"
#include "options/FrmOptions.h"
#include "options/frmAbout.h"
#include "platform/ProgramFolder.h"
#include "shared/RunState.h"

namespace fenrik {

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
