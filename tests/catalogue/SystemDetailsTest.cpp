#include "catalogue/SystemDetails.h"

#include "SystemFolder.h"
#include "support/Printers.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

class SystemDetailsTest : public testing::Test {
protected:
    SystemDetails Details(const QString& name) const
    {
        return DetailsOf(list, list.Lines().at(std::size_t(list.PositionOf(name))));
    }

    SystemFolder folder;
    SystemList list{folder.ProgramFolder()};
};

TEST_F(SystemDetailsTest, TellsTheDefaultsVersionWhenItIsANumberAboveZero)
{
    EXPECT_EQ(Details("").version, "Using default database");  // it has no table of that
    EXPECT_EQ(Details("").nodes, "Unknown");
    for (const auto& [version, text] :
         {std::pair("1.5", "Using default database, Version 1.5"), std::pair("0", "Using default database"),
          std::pair("new", "Using default database")}) {
        SystemFolder::Database(folder.Program("ncCommand.dav"), VersionStatements(version));
        EXPECT_EQ(Details("").version, text);
    }
}

TEST_F(SystemDetailsTest, TellsADatabasesFileVersionAndDate)
{
    SystemFolder::Database(folder.Program("Bus.dav"), VersionStatements("1+"));
    SystemFolder::Database(folder.Program("Old.dav"));
    QFile file(folder.Program("Bus.dav"));
    const QDateTime date(QDate(2004, 5, 6), QTime(7, 8));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(date, QFileDevice::FileModificationTime));
    file.close();
    list.Fill({}, {});
    EXPECT_EQ(Details("Bus").path, folder.Program("Bus.dav"));
    EXPECT_EQ(Details("Bus").version, "1+");
    EXPECT_EQ(Details("Bus").modified, QLocale().toString(date, QLocale::ShortFormat));
    EXPECT_EQ(Details("Bus").nodes, "Unknown");
    EXPECT_EQ(Details("Old").version, "No Version Information Available");
}

TEST_F(SystemDetailsTest, TellsTheNodesOfASystemOfImages)
{
    SystemFolder::Image(folder.Program("Bus_Node 1.bin"));
    list.Fill({}, {});
    EXPECT_EQ(Details("Bus").nodes, "1 Node in System");
    EXPECT_EQ(Details("Bus").version, "No custom Command Database found.");
    EXPECT_EQ(Details("Bus").path, folder.Program());
    EXPECT_EQ(Details("Bus").modified, "");

    SystemFolder::Image(folder.Program("Bus_Node 2.bin"));
    SystemFolder::Image(folder.Program("Bus_Node 3.bin"), 100);
    EXPECT_EQ(Details("Bus").nodes, "2 Nodes in System");
}

TEST_F(SystemDetailsTest, CountsTheImagesOfLongerNamesAsLoadingTakesThem)
{
    SystemFolder::Image(folder.Program("Bus_Node 1.bin"));
    SystemFolder::Image(folder.Program("Bus2_Node 1.bin"));
    list.Fill({}, {});
    EXPECT_EQ(Details("Bus").nodes, "2 Nodes in System");
    EXPECT_EQ(Details("Bus2").nodes, "1 Node in System");
}

TEST_F(SystemDetailsTest, ADatabaseThatHasGoneSinceIsToldAsNone)
{
    SystemFolder::Database(folder.Program("Bus.dav"));
    list.Fill({}, {});
    QFile::remove(folder.Program("Bus.dav"));
    EXPECT_EQ(Details("Bus").version, "No custom Command Database found.");
}

TEST_F(SystemDetailsTest, NamesMayHoldWhatOtherToolsGiveAMeaning)
{
    const QStringList names{
        "Bob's bus",      "x'; DROP TABLE Commands;--", "50%1 [a-z]*", "a & <b>b", "K\u00f6ln 4\"", "..bus",
        "Bus.v2.dav copy"};
    for (const QString& name : names) {
        SystemFolder::Database(folder.Program(name + ".dav"), VersionStatements("7"));
        SystemFolder::Image(folder.Program(name + "_Node 1.bin"));
    }
    list.Fill({}, {});
    for (const QString& name : names) {
        ASSERT_GE(list.PositionOf(name), 1) << name.toStdString();
        EXPECT_EQ(Details(name).path, folder.Program(name + ".dav"));
        EXPECT_EQ(Details(name).version, "7");
        EXPECT_EQ(Details(name).nodes, "1 Node in System");
    }
    EXPECT_EQ(list.Lines().size(), std::size_t(names.size()) + 1);
}

}  // namespace
}  // namespace fenrik
