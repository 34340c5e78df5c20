// The Help files that the build has made, and the program that makes them.

#include "Book.h"

#include "app/AppFixture.h"
#include "app/HelpFiles.h"
#include "platform/ProgramFolder.h"
#include "support/Printers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

constexpr const char* kNames[] = {"Fenrik Diagnostics.pdf", "Fenrik Six Step Guide.pdf", "Fenrik Connector Spec.pdf"};

QString Built(const char* name)
{
    return QStringLiteral(FENRIK_HELP_FOLDER "/") + QLatin1String(name);
}

struct FileRow {
    const char* source;
    const char* name;
    int leastPages;
};

class HelpFile : public testing::TestWithParam<FileRow> {
protected:
    static QByteArray Content()
    {
        QFile file(QStringLiteral(FENRIK_HELP_FOLDER "/%1.pdf").arg(QLatin1String(GetParam().name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_P(HelpFile, IsAPdfWithItsPages)
{
    const QByteArray content = Content();
    EXPECT_TRUE(content.startsWith("%PDF-1."));
    EXPECT_TRUE(content.trimmed().endsWith("%%EOF"));
    static const QRegularExpression count("/Type /Pages.*?/Count (\\d+)",
                                          QRegularExpression::DotMatchesEverythingOption);
    const int pages = count.match(QString::fromLatin1(content)).captured(1).toInt();
    EXPECT_GE(pages, GetParam().leastPages);
    EXPECT_EQ(content.count("/Type /Page\n"), pages);
}

TEST_P(HelpFile, TellsItsTitle)
{
    const Book book(QStringLiteral(FENRIK_ROOT "/docs/help/%1.md").arg(QLatin1String(GetParam().source)));
    EXPECT_FALSE(book.Subtitle().isEmpty());
    EXPECT_EQ(book.Title(), QLatin1String(GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(HelpFiles, HelpFile,
                         testing::Values(FileRow{"manual", "Fenrik Diagnostics", 25},
                                         FileRow{"six-steps", "Fenrik Six Step Guide", 4},
                                         FileRow{"connector", "Fenrik Connector Spec", 9}),
                         [](const auto& row) { return QString(row.param.source).remove('-').toStdString(); });

struct MenuRow {
    const char* entry;
    const char* name;
};

class HelpMenu : public AppTest, public testing::WithParamInterface<MenuRow> {};

// The names in the menu's code and those in the build's are two lists.
TEST_P(HelpMenu, OpensAFileThatTheBuildHasMade)
{
    const QString bin = QStringLiteral(FENRIK_HELP_FOLDER).chopped(int(qstrlen("/Help")));
    const ProgramFolder portable(bin, bin, bin);
    HelpFiles help(portable, shell, boxes);
    EXPECT_TRUE(help.OpenFor(GetParam().entry));
    EXPECT_THAT(boxes.boxes, testing::IsEmpty());
    ASSERT_THAT(shell.opened, testing::ElementsAre(bin + "/Help/" + GetParam().name));
    EXPECT_TRUE(QFile::exists(shell.opened.constFirst()));
}

INSTANTIATE_TEST_SUITE_P(HelpFiles, HelpMenu,
                         testing::Values(MenuRow{"mnuHelpDiagManual", "Fenrik Diagnostics.pdf"},
                                         MenuRow{"mnuHelpSixSteps", "Fenrik Six Step Guide.pdf"},
                                         MenuRow{"mnuHelpConnSpec", "Fenrik Connector Spec.pdf"}));

// As an installation's first start fills it.
TEST(HelpFiles, AreCopiedToTheUsersFolder)
{
    QTemporaryDir root;
    const QString installed = root.filePath("share");
    QDir().mkpath(installed + "/Help");
    for (const char* name : kNames)
        ASSERT_TRUE(QFile::copy(Built(name), installed + "/Help/" + name));
    const ProgramFolder folder(root.filePath("bin"), root.filePath("user"), installed);
    for (const char* name : kNames) {
        const QFileInfo copy(folder.File(QStringLiteral("Help/") + QLatin1String(name)));
        EXPECT_EQ(copy.size(), QFileInfo(Built(name)).size()) << name;
    }
}

class MakeHelpTest : public testing::Test {
protected:
    int Make(const QStringList& arguments)
    {
        QProcess program;
        program.start(QStringLiteral(FENRIK_MAKE_HELP), arguments);
        EXPECT_TRUE(program.waitForFinished());
        errors = program.readAllStandardError();
        return program.exitCode();
    }

    QString Source(const QByteArray& text)
    {
        QFile file(folder.filePath("book.md"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    QTemporaryDir folder;
    QString target = folder.filePath("book.pdf");
    QByteArray errors;
};

TEST_F(MakeHelpTest, ABrokenTextFailsAndLeavesNoFile)
{
    EXPECT_EQ(Make({Source("<!-- title: T -->\n![A shot](none.png)\n"), target, "1"}), 1);
    EXPECT_THAT(errors.toStdString(), testing::HasSubstr("make-help: book.md:2: no picture"));
    EXPECT_FALSE(QFile::exists(target));
}

TEST_F(MakeHelpTest, ATargetThatCantBeWrittenFails)
{
    EXPECT_EQ(Make({Source("<!-- title: T -->\n# One\n"), folder.filePath("none/book.pdf"), "1"}), 1);
    EXPECT_THAT(errors.toStdString(), testing::HasSubstr("can't be written"));
}

TEST_F(MakeHelpTest, WithoutArgumentsItTellsThem)
{
    EXPECT_EQ(Make({}), 2);
    EXPECT_THAT(errors.toStdString(), testing::HasSubstr("Usage: make-help"));
}

}  // namespace
}  // namespace fenrik
