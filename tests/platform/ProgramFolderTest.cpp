#include "platform/ProgramFolder.h"

#include "support/Printers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

class ProgramFolderTest : public testing::Test {
protected:
    QString In(const QString& name) const { return root.path() + QLatin1Char('/') + name; }

    void Write(const QString& name, const QByteArray& text)
    {
        QDir().mkpath(QFileInfo(In(name)).path());
        QFile file(In(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QByteArray Text(const QString& name)
    {
        QFile file(In(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    ProgramFolder Find() { return {In("bin"), In("user/fenrik"), In("share")}; }

    QTemporaryDir root;
};

TEST_F(ProgramFolderTest, APortableCopyRunsWhereItLies)
{
    Write("bin/ncCommand.dav", "catalogue");
    Write("share/ncCommand.dav", "installed");
    EXPECT_EQ(Find().Path(), In("bin"));
    EXPECT_EQ(Find().File("fxmaps.dav"), In("bin/fxmaps.dav"));
    EXPECT_FALSE(QFileInfo::exists(In("user")));
}

TEST_F(ProgramFolderTest, AnInstalledProgramFillsTheUsersFolderOnFirstStart)
{
    Write("share/ncCommand.dav", "catalogue");
    Write("share/Help/english/index.html", "help");
    EXPECT_EQ(Find().Path(), In("user/fenrik"));
    EXPECT_EQ(Text("user/fenrik/ncCommand.dav"), QByteArray("catalogue"));
    EXPECT_EQ(Text("user/fenrik/Help/english/index.html"), QByteArray("help"));
}

TEST_F(ProgramFolderTest, FilesThatAreThereAlreadyAreLeftAlone)
{
    Write("share/ncCommand.dav", "installed");
    Write("share/fxmaps.dav", "new");
    Write("user/fenrik/ncCommand.dav", "the user's");
    EXPECT_EQ(Find().Path(), In("user/fenrik"));
    EXPECT_EQ(Text("user/fenrik/ncCommand.dav"), QByteArray("the user's"));
    EXPECT_EQ(Text("user/fenrik/fxmaps.dav"), QByteArray("new"));
}

TEST_F(ProgramFolderTest, CopiesOfReadOnlyFilesCanBeWritten)
{
    Write("share/ncCommand.dav", "catalogue");
    QFile::setPermissions(In("share/ncCommand.dav"), QFile::ReadOwner | QFile::ReadUser);
    (void)Find();
    EXPECT_TRUE(QFile::permissions(In("user/fenrik/ncCommand.dav")) & QFile::WriteOwner);
}

TEST_F(ProgramFolderTest, WithoutInstalledFilesTheFolderIsThereAndEmpty)
{
    EXPECT_EQ(Find().Path(), In("user/fenrik"));
    EXPECT_TRUE(QDir(In("user/fenrik")).isEmpty());
    EXPECT_TRUE(QFileInfo(In("user/fenrik")).isDir());
}

TEST_F(ProgramFolderTest, AUserFolderThatCannotBeMadeIsNoCrash)
{
    Write("share/ncCommand.dav", "catalogue");
    Write("user", "a file where the folder should be");
    EXPECT_EQ(Find().Path(), In("user/fenrik"));
    EXPECT_FALSE(QFileInfo::exists(In("user/fenrik")));
}

}  // namespace
}  // namespace fenrik
