#include "model/SaveStep.h"

#include "platform/Boxes.h"
#include "platform/Error.h"

namespace fenrik {

namespace {

SaveResult TellFailure(Boxes& boxes, const SaveWords& words, const QString& path, const Error& error)
{
    if (error.Number() == ErrorNumber::kPermissionDenied) {
        boxes.MsgBox(QStringLiteral("The target file <%1> is currently open.  Please close it before attempting to "
                                    "compile a Custom System Database.")
                         .arg(path),
                     QMessageBox::Warning, QMessageBox::Ok, words.title);
        return SaveResult::Ended;
    }
    if (error.Number() == ErrorNumber::kDatabaseReadOnly) {
        boxes.MsgBox(QStringLiteral("The target file <%1> is marked as read-only.  Please gain write access to this "
                                    "file before attempting to compile a Custom System Database.")
                         .arg(path),
                     QMessageBox::Warning, QMessageBox::Ok, words.title);
        return SaveResult::Ended;
    }
    const auto answer = boxes.MsgBox(
        QStringLiteral("An unexpected error has occurred while trying to compile a %1 database: %2 (%3)\n\n"
                       "Would you like to continue making the database anyway?")
            .arg(words.what, error.Description(), QString::number(error.Number())),
        QMessageBox::Critical, QMessageBox::Yes | QMessageBox::No, words.otherTitle);
    return answer == QMessageBox::Yes ? SaveResult::Skipped : SaveResult::Ended;
}

}  // namespace

SaveResult RunSaveStep(Boxes* boxes, const SaveWords& words, const QString& path, const std::function<void()>& step)
{
    try {
        step();
        return SaveResult::Done;
    } catch (const Error& error) {
        return boxes ? TellFailure(*boxes, words, path, error) : SaveResult::Ended;
    }
}

}  // namespace fenrik
