#include "app/ErrorDialog.h"

#include "app/frmError.h"
#include "platform/Boxes.h"
#include "platform/Error.h"
#include "platform/NormalPointer.h"
#include "platform/ProgramFolder.h"
#include "shared/Clock.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTextStream>

namespace fenrik {

namespace {

QString DateAndTime(const Clock& clock)
{
    return QLocale().toString(clock.Now().DateTime(), QLocale::ShortFormat);
}

}  // namespace

ErrorDialog::ErrorDialog(const ProgramFolder& folder, const VersionInfo& version, const Clock& clock, Boxes& boxes)
    : mFolder(folder), mVersion(version), mClock(clock), mBoxes(boxes)
{
}

void ErrorDialog::ShowError(int number, const QString& description, const QString& where, const QString&)
{
    const NormalPointer pointer;
    try {
        frmError dialog(mVersion, Details(number, description, where), QApplication::activeWindow());
        dialog.exec();
        WriteEntry(number, description, where);
    } catch (const Error& error) {
        mBoxes.MsgBox(QStringLiteral("%1: %2").arg(error.Number()).arg(error.Description()), QMessageBox::Critical,
                      QMessageBox::Ok, QStringLiteral("A Software Error Has Occured!"));
    }
}

QString ErrorDialog::Details(int number, const QString& description, const QString& where) const
{
    // The file named here is not the one that WriteEntry writes. Users' instructions quote this text, so it stays.
    return QStringList{
        DateAndTime(mClock), QStringLiteral(">> Error <%1> %2").arg(number).arg(description), where,
        QStringLiteral("Log is located @ %1").arg(QDir::toNativeSeparators(mFolder.File(QStringLiteral("Error.log"))))}
        .join(QLatin1Char('\n'));
}

void ErrorDialog::WriteEntry(int number, const QString& description, const QString& where) const
{
    QFile file(mFolder.File(QStringLiteral("DiagErr.log")));
    if (!file.open(QIODevice::Append))
        throw Error(ErrorNumber::kPathFileAccess,
                    QStringLiteral("Path/File access error: %1").arg(QDir::toNativeSeparators(file.fileName())));
    QTextStream stream(&file);
    stream << '\n'
           << "FenrikII Diagnostics\n"
           << DateAndTime(mClock) << '\n'
           << ">> Error <" << number << "> " << description << " @ " << where << '\n';
    stream.flush();
    if (file.error() != QFile::NoError)
        throw Error(ErrorNumber::kPathFileAccess, file.errorString());
}

}  // namespace fenrik
