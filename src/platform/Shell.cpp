#include "platform/Shell.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace fenrik {

namespace {

int Open(const QUrl& url)
{
    // The desktop tells no more than whether something took the address.
    return QDesktopServices::openUrl(url) ? Shell::kOpened : Shell::kNoAssociation;
}

}  // namespace

int Shell::OpenFile(const QString& path)
{
    if (!QFileInfo(path).isReadable())
        return kAccessDenied;
    return Open(QUrl::fromLocalFile(path));
}

int Shell::OpenPage(const QString& address)
{
    return Open(QUrl(address));
}

int Shell::Explore(const QString& folder)
{
    return Open(QUrl::fromLocalFile(folder));
}

}  // namespace fenrik
