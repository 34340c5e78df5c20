#include "model/SavePrompt.h"

#include "model/CSystem.h"
#include "model/SystemName.h"
#include "platform/Boxes.h"

namespace fenrik {

QString SavePrompt::Ask(const CSystem& system, std::int32_t& response)
{
    if (response == kAsk && system.Dirty()) {
        const auto answer = mBoxes.MsgBox(
            QStringLiteral("New information about this system has been gathered since it has been "
                           "connected.  To avoid needing to gather this information again, would you "
                           "like to save the system?"),
            QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, QStringLiteral("Changes in System Information"));
        response = answer == QMessageBox::Yes ? kYes : kNo;
    }
    return response == kYes ? AskName(system.Defined() ? system.Name() : QString()) : QString();
}

QString SavePrompt::AskName(const QString& present)
{
    const QString title = QStringLiteral("Save System Information");
    const QString entered = mBoxes.InputBox(QStringLiteral("Please enter a system Name:"), title, present);
    // Without it the system would be looked for under another name than its file's.
    const QLatin1String extension(SystemName::kExtension);
    QString name = entered;
    while (name.endsWith(extension, Qt::CaseInsensitive))
        name.chop(extension.size());
    const bool unchanged = !present.isEmpty() && name == present;
    if (entered.isEmpty() || unchanged || SystemName::IsUsable(name, mFolder))
        return name;
    mBoxes.MsgBox(QStringLiteral("<%1> is an invalid file name.  System not saved.").arg(entered),
                  QMessageBox::Critical, QMessageBox::Ok, title);
    return {};
}

}  // namespace fenrik
