#include "catalogue/CommandDatabase.h"

#include "CatalogueFiles.h"
#include "support/Printers.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

class CommandDatabaseTest : public testing::Test {
protected:
    QString Path(const char* name) const { return folder.filePath(name); }

    CatalogueStatus Open(const QString& path)
    {
        CatalogueStatus status{};
        opened = OpenCommandDatabase(path, Path("ncCommand.dav"), status);
        return status;
    }

    QTemporaryDir folder;
    std::unique_ptr<Database> opened;
};

enum class File { Absent, Empty, NoRows, Good };

struct Search {
    const char* name;
    const char* asked;
    File custom;
    File standard;
    CatalogueStatus status;
    const char* opened;  // null for nothing
};

class Searches : public CommandDatabaseTest, public testing::WithParamInterface<Search> {
protected:
    void Make(const char* name, File kind) const
    {
        if (kind == File::Empty)
            MakeFile(Path(name), "");
        else if (kind == File::NoRows)
            MakeDatabase(Path(name), CategoryStatements());
        else if (kind == File::Good)
            MakeDatabase(Path(name), CatalogueStatements());
    }
};

TEST_P(Searches, EndInAStatus)
{
    Make("custom.dav", GetParam().custom);
    Make("ncCommand.dav", GetParam().standard);

    EXPECT_EQ(Open(Path(GetParam().asked)), GetParam().status);
    ASSERT_EQ(opened == nullptr, GetParam().opened == nullptr);
    if (opened) {
        EXPECT_EQ(opened->Name(), Path(GetParam().opened));
        EXPECT_TRUE(opened->ReadOnly());
    }
}

INSTANTIATE_TEST_SUITE_P(
    CommandDatabase, Searches,
    testing::Values(
        Search{"GoodCustom", "custom.dav", File::Good, File::Absent, CatalogueStatus::Good, "custom.dav"},
        Search{"GoodDefault", "ncCommand.dav", File::Absent, File::Good, CatalogueStatus::Good, "ncCommand.dav"},
        Search{"DefaultAbsent", "ncCommand.dav", File::Good, File::Absent, CatalogueStatus::DefaultMissing, nullptr},
        Search{"DefaultDoesNotOpen", "ncCommand.dav", File::Good, File::Empty, CatalogueStatus::DefaultMissing,
               nullptr},
        Search{"BothAbsent", "custom.dav", File::Absent, File::Absent, CatalogueStatus::BothMissing, nullptr},
        Search{"CustomAbsent", "custom.dav", File::Absent, File::Good, CatalogueStatus::CustomMissing, "ncCommand.dav"},
        Search{"CustomDoesNotOpen", "custom.dav", File::Empty, File::Good, CatalogueStatus::CustomMissing,
               "ncCommand.dav"},
        Search{"CustomAbsentDefaultCorrupt", "custom.dav", File::Absent, File::NoRows, CatalogueStatus::CustomMissing,
               "ncCommand.dav"},
        Search{"DefaultCorruptIsGivenAllTheSame", "ncCommand.dav", File::Absent, File::NoRows,
               CatalogueStatus::DefaultCorrupt, "ncCommand.dav"},
        Search{"CustomCorruptIsGivenAllTheSame", "custom.dav", File::NoRows, File::Good, CatalogueStatus::CustomCorrupt,
               "custom.dav"}),
    [](const auto& row) { return row.param.name; });

TEST_F(CommandDatabaseTest, TheDefaultFileIsKnownInAnyCaseOfLetters)
{
    EXPECT_EQ(Open(Path("NCCOMMAND.DAV")), CatalogueStatus::DefaultMissing);
}

TEST_F(CommandDatabaseTest, AFileOfAnotherNameIsCorrupt)
{
    MakeDatabase(Path("custom.db"), CatalogueStatements());
    EXPECT_EQ(Open(Path("custom.db")), CatalogueStatus::CustomCorrupt);
}

TEST_F(CommandDatabaseTest, AValidDatabaseHasTheNameOpensAndNamesACommand)
{
    MakeDatabase(Path("good.DAV"), CatalogueStatements());
    MakeDatabase(Path("good.mdb"), CatalogueStatements());
    MakeDatabase(Path("norows.dav"), CategoryStatements());
    MakeDatabase(Path("notables.dav"), {});
    MakeFile(Path("foreign.dav"), "not a database");

    EXPECT_TRUE(IsValidCommandDatabase(Path("good.DAV")));
    for (const char* name : {"good.mdb", "norows.dav", "notables.dav", "foreign.dav", "absent.dav", ""})
        EXPECT_FALSE(IsValidCommandDatabase(Path(name))) << name;
}

TEST_F(CommandDatabaseTest, PropertiesTellNamesAndVersions)
{
    MakeDatabase(Path("bus.dav"), {"CREATE TABLE SystemInfo (PropertyName TEXT, PropertyValue TEXT)",
                                   "INSERT INTO SystemInfo VALUES ('Node Count', '7')",
                                   "INSERT INTO SystemInfo VALUES ('Version', '4+')", "PRAGMA user_version = 3"});
    const auto properties = GetDatabaseProperties(Path("bus.dav"));

    ASSERT_TRUE(properties);
    EXPECT_EQ(properties->value("Name"), "bus.dav");
    EXPECT_EQ(properties->value("Path"), Path("bus.dav"));
    EXPECT_EQ(properties->value("Version"), "4+");
    EXPECT_EQ(properties->value("AccessVersion"), "3");
    EXPECT_TRUE(properties->value("Build").startsWith("3."));
}

TEST_F(CommandDatabaseTest, WithoutAVersionThePropertiesSaySo)
{
    MakeDatabase(Path("notable.dav"), {});
    MakeDatabase(Path("norow.dav"), {"CREATE TABLE SystemInfo (PropertyName TEXT, PropertyValue TEXT)"});
    MakeDatabase(Path("null.dav"), {"CREATE TABLE SystemInfo (PropertyName TEXT, PropertyValue TEXT)",
                                    "INSERT INTO SystemInfo VALUES ('Version', NULL)"});
    MakeFile(Path("broken.dav"), "x");

    for (const char* name : {"notable.dav", "norow.dav", "null.dav", "broken.dav"}) {
        const auto properties = GetDatabaseProperties(Path(name));
        ASSERT_TRUE(properties) << name;
        EXPECT_EQ(properties->value("Version"), "No Version Information Available") << name;
    }
}

TEST_F(CommandDatabaseTest, ThereAreNoPropertiesOfNoFile)
{
    EXPECT_FALSE(GetDatabaseProperties(""));
    EXPECT_FALSE(GetDatabaseProperties(Path("absent.dav")));
}

}  // namespace
}  // namespace fenrik
