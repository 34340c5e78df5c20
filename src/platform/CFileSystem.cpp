#include "platform/CFileSystem.h"

#include <QDir>
#include <QFileInfo>

namespace fenrik {

bool CFileSystem::FileExists(const QString& path)
{
    return QFileInfo(path).exists() && !QFileInfo(path).isDir();
}

bool CFileSystem::DirectoryExists(const QString& path)
{
    return QFileInfo::exists(path);
}

bool CFileSystem::CreateDirectory(const QString& path)
{
    return QDir().mkdir(path);
}

}  // namespace fenrik
