#include "platform/CFileSystem.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

class CFileSystemTest : public testing::Test {
protected:
    CFileSystemTest()
    {
        QFile made(file);
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
    }

    QTemporaryDir folder;
    QString file = folder.path() + QStringLiteral("/a file.txt");
    QString missing = folder.path() + QStringLiteral("/missing");
};

TEST_F(CFileSystemTest, FileExistsKnowsFilesOnly)
{
    EXPECT_TRUE(CFileSystem::FileExists(file));
    EXPECT_FALSE(CFileSystem::FileExists(folder.path()));
    EXPECT_FALSE(CFileSystem::FileExists(missing));
    EXPECT_FALSE(CFileSystem::FileExists(QString()));
}

TEST_F(CFileSystemTest, DirectoryExistsKnowsFoldersAndFiles)
{
    EXPECT_TRUE(CFileSystem::DirectoryExists(folder.path()));
    EXPECT_TRUE(CFileSystem::DirectoryExists(file));
    EXPECT_FALSE(CFileSystem::DirectoryExists(missing));
    EXPECT_FALSE(CFileSystem::DirectoryExists(QString()));
}

TEST_F(CFileSystemTest, CreateDirectoryTellsWhetherItCould)
{
    EXPECT_TRUE(CFileSystem::CreateDirectory(missing));
    EXPECT_TRUE(QFileInfo(missing).isDir());
    EXPECT_FALSE(CFileSystem::CreateDirectory(missing));
    EXPECT_FALSE(CFileSystem::CreateDirectory(file));
    EXPECT_FALSE(CFileSystem::CreateDirectory(file + QStringLiteral("/below a file")));
    EXPECT_FALSE(CFileSystem::CreateDirectory(folder.path() + QStringLiteral("/no/parent")));
    EXPECT_FALSE(CFileSystem::CreateDirectory(QString()));
}

}  // namespace
}  // namespace fenrik
