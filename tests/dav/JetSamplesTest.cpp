// Genuine files beside mdbtools' own commands: a second reader of the same tables.

#include "dav/Dump.h"
#include "platform/Database.h"
#include "platform/Recordset.h"
#include "support/Printers.h"

#include <QBuffer>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

using Table = std::vector<QStringList>;

/// Takes comma-separated text apart. Quoted and plain fields are not told apart: mdb-export has no empty texts.
Table ReadTable(const QString& text)
{
    Table table(1, QStringList(QString()));
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == '"' && quoted && i + 1 < text.size() && text[i + 1] == '"')
            table.back().back() += text[++i];
        else if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted)
            table.back().append(QString());
        else if (c == '\n' && !quoted)
            table.emplace_back(QString());
        else
            table.back().back() += c;
    }
    table.pop_back();  // behind the last line
    return table;
}

QString Ask(const char* program, const QStringList& arguments)
{
    QProcess process;
    process.start(QString::fromLatin1(program), arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// mdbtools has money with its zeros, truth as 1, and no day for dates before 1900 and after 2700.
bool SameField(const QString& ours, const QString& theirs, const QString& type)
{
    if (type == "DATETIME" && theirs.contains("-00 "))
        return true;
    if (type == "BOOLEAN")
        return (ours == "-1") == (theirs == "1");
    if (type.startsWith("TEXT") || theirs.isEmpty())
        return ours == theirs;
    bool isNumber = false;
    const double number = theirs.toDouble(&isNumber);
    return isNumber ? number == ours.toDouble() : ours == theirs;
}

class JetSamples : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override
    {
        path = QDir(FENRIK_JET_SAMPLES).filePath(GetParam());
        if (!QFile::exists(path))
            GTEST_SKIP() << "The sample " << path.toStdString() << " is not here.";
        if (QStandardPaths::findExecutable("mdb-export").isEmpty())
            GTEST_SKIP() << "mdbtools' commands are not installed.";
        database = Database::OpenDatabase(path, false, true);
    }

    QStringList Tables() const { return Ask("mdb-tables", {"-1", path}).split('\n', Qt::SkipEmptyParts); }

    Table Ours(const QString& table) const
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        DumpTable(*database, table, buffer);
        return ReadTable(QString::fromUtf8(buffer.data()));
    }

    Table Theirs(const QString& table) const
    {
        const QString dates = "%Y-%m-%d %H:%M:%S";
        return ReadTable(Ask("mdb-export", {"-b", "hex", "-D", dates, "-T", dates, path, table}));
    }

    QStringList Types(const QString& table) const
    {
        QStringList types;
        const auto rows = database->OpenRecordset(QString("SELECT type FROM pragma_table_info('%1')").arg(table));
        for (; !rows->EndOfFile(); rows->MoveNext())
            types.append(rows->Fields(0).toString());
        return types;
    }

    QString path;
    std::unique_ptr<Database> database;
};

INSTANTIATE_TEST_SUITE_P(Jet, JetSamples, testing::Values("ASampleDatabase.accdb", "DateTestDatabase.mdb"),
                         [](const auto& row) { return QString(row.param).section('.', 0, 0).toStdString(); });

TEST_P(JetSamples, EveryTableHasTheRowsThatTheLibrarysOwnProgramCounts)
{
    ASSERT_FALSE(Tables().isEmpty());
    for (const QString& table : Tables())
        EXPECT_EQ(database->OpenRecordset(table)->RecordCount(), Ask("mdb-count", {path, table}).toInt());
}

TEST_P(JetSamples, EveryFieldIsWhatTheLibrarysOwnProgramPrints)
{
    for (const QString& table : Tables()) {
        const Table ours = Ours(table);
        const Table theirs = Theirs(table);
        const QStringList types = Types(table);
        ASSERT_EQ(ours.size(), theirs.size());
        EXPECT_EQ(ours[0], theirs[0]);
        for (std::size_t row = 1; row < ours.size(); ++row) {
            ASSERT_EQ(ours[row].size(), theirs[row].size());
            for (qsizetype column = 0; column < types.size(); ++column)
                EXPECT_TRUE(SameField(ours[row][column], theirs[row][column], types[column]))
                    << ours[row][column].toStdString() << " against " << theirs[row][column].toStdString();
        }
    }
}

TEST_P(JetSamples, EveryStoredQueryIsRebuilt)
{
    EXPECT_TRUE(database->LeftOut().empty());
    for (const QString& query : Ask("mdb-queries", {"-L", "-1", path}).split('\n', Qt::SkipEmptyParts))
        EXPECT_TRUE(TableExists(*database, query)) << query.toStdString();
}

}  // namespace
}  // namespace fenrik
