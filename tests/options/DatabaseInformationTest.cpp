#include "options/DatabaseInformation.h"

#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

class DatabaseInformationTest : public testing::Test {
protected:
    void MakeCommands()
    {
        MakeDatabase(folder.filePath("ncCommand.dav"),
                     {"CREATE TABLE SystemInfo (PropertyName TEXT, PropertyValue TEXT)",
                      "INSERT INTO SystemInfo VALUES ('Version', '2.7')"});
    }
    void MakeSpecials()
    {
        MakeDatabase(folder.filePath("SpecialCommands.dav"), {"CREATE TABLE Version (Version TEXT)"});
    }

    [[nodiscard]] QString Block(const char* title, const char* version, const char* file) const
    {
        const QString path = folder.filePath(file);
        return QString("%1\nDatabase Version: \t%2\nLast Modified: \t%3\nPath and Filename: \t%4")
            .arg(title, version, QLocale().toString(QFileInfo(path).lastModified(), QLocale::ShortFormat),
                 QDir::toNativeSeparators(path));
    }

    QTemporaryDir folder;
};

TEST_F(DatabaseInformationTest, EachDatabaseHasABlock)
{
    MakeCommands();
    MakeSpecials();
    EXPECT_EQ(DatabaseInformation(folder.path()),
              Block("Default Fenrik Command Database", "2.7", "ncCommand.dav") + "\n\n" +
                  Block("Special Commands Database", "No Version Information Available", "SpecialCommands.dav"));
}

TEST_F(DatabaseInformationTest, AFileThatIsMissingOrNoDatabaseHasNone)
{
    MakeSpecials();
    const QString specials =
        Block("Special Commands Database", "No Version Information Available", "SpecialCommands.dav");
    EXPECT_EQ(DatabaseInformation(folder.path()), specials);
    MakeFile(folder.filePath("ncCommand.dav"), "this is no database");
    EXPECT_EQ(DatabaseInformation(folder.path()), specials);
}

TEST_F(DatabaseInformationTest, WithoutAnyThereIsNoText)
{
    EXPECT_EQ(DatabaseInformation(folder.path()), "");
}

}  // namespace
}  // namespace fenrik
