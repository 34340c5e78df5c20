#include "app/HelpFiles.h"

#include "platform/Boxes.h"
#include "platform/CFileSystem.h"
#include "platform/ProgramFolder.h"
#include "platform/Shell.h"

#include <QDir>

namespace fenrik {

namespace {

struct HelpRow {
    const char* entry;
    const char* file;
};

const HelpRow kFiles[] = {
    {"mnuHelpDiagManual", "Fenrik Diagnostics.pdf"},
    {"mnuHelpSixSteps", "Fenrik Six Step Guide.pdf"},
    {"mnuHelpConnSpec", "Fenrik Connector Spec.pdf"},
};

}  // namespace

HelpFiles::HelpFiles(const ProgramFolder& folder, Shell& shell, Boxes& boxes)
    : mFolder(folder), mShell(shell), mBoxes(boxes)
{
}

bool HelpFiles::OpenFor(const QString& entry)
{
    for (const HelpRow& row : kFiles) {
        if (entry == QLatin1String(row.entry)) {
            Open(QLatin1String(row.file));
            return true;
        }
    }
    return false;
}

void HelpFiles::Open(const QString& file)
{
    const QString path = QDir::toNativeSeparators(mFolder.File(QStringLiteral("Help/") + file));
    if (!CFileSystem::FileExists(path)) {
        mBoxes.MsgBox(QStringLiteral("The file %1 is missing").arg(path), QMessageBox::Warning);
        return;
    }
    const int result = mShell.OpenFile(path);
    if (result == Shell::kNoAssociation)
        mBoxes.MsgBox(QStringLiteral("Acrobat Reader is required to view the %1\n"
                                     "It, or any other viewer of PDF files, can be had from www.adobe.com or from "
                                     "your system's packages.")
                          .arg(file),
                      QMessageBox::Warning);
    else if (result != Shell::kOpened)
        mBoxes.MsgBox(QStringLiteral("Error <%1> opening %2").arg(result).arg(path), QMessageBox::Warning);
}

}  // namespace fenrik
