#include "dav/DavProgram.h"

#include "platform/Recordset.h"
#include "support/DatabaseFile.h"
#include "support/JetCatalogue.h"
#include "support/Printers.h"

#include <QBuffer>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::HasSubstr;
using Version = JetFileWriter::Version;

class DavProgramTest : public testing::Test {
protected:
    DavProgramTest()
    {
        MakeFile(Path("jet3.dav"), MakeJetCatalogue(Version::kJet3, 4));
        MakeFile(Path("jet4.dav"), MakeJetCatalogue(Version::kJet4, 4));
    }

    QString Path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

    int Run(const QStringList& arguments)
    {
        QBuffer outputBuffer;
        QBuffer errorBuffer;
        outputBuffer.open(QIODevice::WriteOnly);
        errorBuffer.open(QIODevice::WriteOnly);
        const int code =
            DavProgram(outputBuffer, errorBuffer).Run(CommandLine::Parse(QStringList{"fenrik-dav"} + arguments));
        output = outputBuffer.data().toStdString();
        errors = errorBuffer.data().toStdString();
        return code;
    }

    QByteArray Bytes(const char* name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    std::string output;
    std::string errors;
};

TEST_F(DavProgramTest, InfoTellsTheKindTheVersionTheTablesTheQueriesAndTheSystem)
{
    EXPECT_EQ(Run({"info", Path("jet3.dav")}), 0);
    for (const char* line : {"Kind: Jet 3 (genuine)\n", "Version: 07.53\n", "Build: 4122\n", "  Commands: 4 rows\n",
                             "  MrkCatCmdJoin\n", "  Version: 1.7\n"})
        EXPECT_THAT(output, HasSubstr(line));
    EXPECT_EQ(errors, "");
}

TEST_F(DavProgramTest, InfoTellsWhatWasLeftOutAndWhy)
{
    MakeFile(Path("asks.dav"), MakeJetCatalogue(Version::kJet4, 4, {{2, {}, 10, "Which market?", {}, {}}}));
    EXPECT_EQ(Run({"info", Path("asks.dav")}), 0);
    EXPECT_THAT(output, HasSubstr("Left out:\n  MrkCatCmdJoin: it asks for parameters\n"));
}

TEST_F(DavProgramTest, InfoOfATableWithoutAnEndEnds)
{
    MakeEndlessTable(Path("endless.dav"));
    EXPECT_EQ(Run({"info", Path("endless.dav")}), 2);
}

TEST_F(DavProgramTest, TablesAreNamedInTheFilesOrder)
{
    EXPECT_EQ(Run({"tables", Path("jet4.dav")}), 0);
    EXPECT_EQ(output, "Commands\nCategorys\nMarket\nMarketCategorys\nSystemInfo\n");
}

TEST_F(DavProgramTest, DumpWritesCommaSeparatedTextAndFindsTheTableInAnyCase)
{
    EXPECT_EQ(Run({"dump", Path("jet3.dav"), "COMMANDS"}), 0);
    EXPECT_EQ(output, "Command,Name,CategoryID\n1,\"Heizlüfter – 20 €\",1\n2,\"Tür „hinten“\",2\n"
                      "3,\"Command 3\",1\n4,\"Command 4\",2\n");
}

TEST_F(DavProgramTest, DumpTellsNullsFromEmptyTextsAndDoublesQuotes)
{
    MakeDatabase(Path("plain.dav"), {"CREATE TABLE T (\"a,b\" TEXT, c FLOAT, d BLOB, e DOUBLE, f)",
                                     "INSERT INTO T VALUES ('say \"x\"', 0.100000001490116, x'00FF', 0.1, 12.3456), "
                                     "('', NULL, NULL, 1e300, -1)"});
    EXPECT_EQ(Run({"dump", Path("plain.dav"), "T"}), 0);
    EXPECT_EQ(output, "\"a,b\",c,d,e,f\n\"say \"\"x\"\"\",0.1,\"00ff\",0.1,12.3456\n\"\",,,1e+300,-1\n");
}

TEST_F(DavProgramTest, ADumpOfTheConvertedFileIsTheDumpOfTheGenuineOne)
{
    ASSERT_EQ(Run({"convert", Path("jet4.dav"), Path("new.dav")}), 0);
    for (const char* table : {"Commands", "Categorys", "SystemInfo", "MrkCatCmdJoin"}) {
        ASSERT_EQ(Run({"dump", Path("jet4.dav"), table}), 0);
        const std::string genuine = output;
        ASSERT_EQ(Run({"dump", Path("new.dav"), table}), 0);
        EXPECT_EQ(output, genuine);
    }
}

TEST_F(DavProgramTest, ConvertReplacesAFileOnlyIfForced)
{
    MakeFile(Path("new.dav"), "old");
    EXPECT_EQ(Run({"convert", Path("jet4.dav"), Path("new.dav")}), 3);
    EXPECT_THAT(errors, HasSubstr("--force"));
    EXPECT_EQ(Bytes("new.dav"), "old");

    EXPECT_EQ(Run({"convert", "--force", Path("jet4.dav"), Path("new.dav")}), 0);
    EXPECT_TRUE(Bytes("new.dav").startsWith("SQLite"));
}

TEST_F(DavProgramTest, ConvertNeverReplacesAGenuineFileNorItsSource)
{
    const QByteArray before = Bytes("jet3.dav");
    EXPECT_EQ(Run({"convert", "--force", Path("jet4.dav"), Path("jet3.dav")}), 3);
    EXPECT_EQ(Run({"convert", "--force", Path("jet3.dav"), Path("jet3.dav")}), 3);
    EXPECT_EQ(Bytes("jet3.dav"), before);
}

TEST_F(DavProgramTest, ConvertTellsWhatItLeftOut)
{
    MakeFile(Path("asks.dav"), MakeJetCatalogue(Version::kJet4, 4, {{2, {}, 10, "Which market?", {}, {}}}));
    EXPECT_EQ(Run({"convert", Path("asks.dav"), Path("new.dav")}), 0);
    EXPECT_THAT(errors, HasSubstr("MrkCatCmdJoin"));
}

TEST_F(DavProgramTest, WhatCannotBeReadOrWrittenHasItsCodeAndWords)
{
    MakeFile(Path("foreign.dav"), "a letter");
    MakeFile(Path("cut.dav"), Bytes("jet4.dav").left(9000));
    for (const char* name : {"absent.dav", "foreign.dav", "cut.dav"}) {
        EXPECT_EQ(Run({"info", Path(name)}), 2);
        EXPECT_THAT(errors, HasSubstr(name));
    }
    EXPECT_EQ(Run({"dump", Path("jet4.dav"), "Nuts"}), 2);
    EXPECT_THAT(errors, HasSubstr("Nuts"));
    EXPECT_EQ(Run({"convert", Path("jet4.dav"), Path("none/new.dav")}), 3);
    EXPECT_EQ(Run({"explode"}), 1);
    EXPECT_THAT(errors, HasSubstr("--help"));
    EXPECT_EQ(output, "");
}

}  // namespace
}  // namespace fenrik
