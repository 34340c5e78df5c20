#include "platform/Shell.h"

#include <QDesktopServices>
#include <QUrl>

namespace fenrik {

namespace {

Shell::Result Open(const QUrl& url)
{
    // The desktop tells no more than whether something took the address.
    return QDesktopServices::openUrl(url) ? Shell::Result::Opened : Shell::Result::NoAssociation;
}

}  // namespace

Shell::Result Shell::OpenFile(const QString& path)
{
    return Open(QUrl::fromLocalFile(path));
}

Shell::Result Shell::OpenPage(const QString& address)
{
    return Open(QUrl(address));
}

Shell::Result Shell::Explore(const QString& folder)
{
    return Open(QUrl::fromLocalFile(folder));
}

}  // namespace fenrik
