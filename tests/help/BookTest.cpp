#include "Book.h"

#include "BookPages.h"
#include "BookStyle.h"

#include "support/Printers.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class BookTest : public testing::Test {
protected:
    QString Write(const QString& name, const QByteArray& text)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    QString WritePicture(const QString& name)
    {
        QImage picture(300, 200, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        EXPECT_TRUE(picture.save(folder.filePath(name)));
        return folder.filePath(name);
    }

    /// Why the text below a title is no book; empty if it is one.
    std::string Complaint(const QByteArray& text)
    {
        try {
            const Book book(Write("book.md", "<!-- title: T -->\n" + text));
        } catch (const BookError& error) {
            return error.what();
        }
        return {};
    }

    QTemporaryDir folder;
};

TEST_F(BookTest, TitlesIncludesAndWindowsAreTakenAndNotPrinted)
{
    Write("one.md", "<!-- window: frmOne -->\n# One\n");
    const Book book(
        Write("book.md", "<!-- title: Help -->\n<!-- subtitle: of a kind -->\n<!-- include: one.md -->\nEnd\n"));
    EXPECT_EQ(book.Title(), "Help");
    EXPECT_EQ(book.Subtitle(), "of a kind");
    EXPECT_THAT(book.Windows(), ElementsAre("frmOne"));
    EXPECT_EQ(book.Markdown().simplified(), "# One End");
}

TEST_F(BookTest, LinksLeadToChaptersAndSections)
{
    Write("one.md", "# One\n## A part: two\nSee [there](two.md#end) and [here](#a-part-two).\n");
    Write("two.md", "# Two\n## End\n[Back](one.md), [web](https://example.org)\n");
    const Book book(Write("book.md", "<!-- title: T -->\n<!-- include: one.md -->\n<!-- include: two.md -->\n"));
    EXPECT_EQ(book.HeadingOf("one.md"), 0);
    EXPECT_EQ(book.HeadingOf("one.md#a-part-two"), 1);
    EXPECT_EQ(book.HeadingOf("two.md#end"), 3);
    EXPECT_EQ(book.HeadingOf("two.md#none"), -1);
    EXPECT_THAT(book.Markdown().toStdString(), HasSubstr("[there](#two.md#end) and [here](#one.md#a-part-two)"));
    EXPECT_THAT(book.Markdown().toStdString(), HasSubstr("[web](https://example.org)"));
}

TEST_F(BookTest, PicturesAreFoundBesideTheirText)
{
    const QString path = WritePicture("shot.png");
    const Book book(Write("book.md", "<!-- title: T -->\n![A shot](shot.png)\n"));
    EXPECT_THAT(book.Pictures(), ElementsAre(path));
}

struct BadRow {
    const char* text;
    const char* complaint;
};

class BadBooks : public BookTest, public testing::WithParamInterface<BadRow> {};

TEST_P(BadBooks, AreRefusedWithTheirLine)
{
    EXPECT_THAT(Complaint(GetParam().text), HasSubstr(GetParam().complaint));
}

INSTANTIATE_TEST_SUITE_P(
    Book, BadBooks,
    testing::Values(BadRow{"<!-- colour: red -->\n", "book.md:2: unknown directive"},
                    BadRow{"<!-- note -->\n", "book.md:2: unknown directive"},
                    BadRow{"\n![A shot](none.png)\n", "book.md:3: no picture"},
                    BadRow{"# One\n[two](#two)\n", "book.md:3: the link to book.md#two leads nowhere"},
                    BadRow{"[two](two.md)\n", "book.md:2: the link to two.md leads nowhere"},
                    BadRow{"a <b> c\n", "book.md:2: \"<\""}, BadRow{"```\ncode\n", "code without an end"},
                    BadRow{"<!-- include: none.md -->\n", "none.md can't be read"},
                    BadRow{"<!-- include: book.md -->\n", "includes itself"}));

TEST_F(BookTest, TagsMayStandInCodeAndBehindABackslash)
{
    EXPECT_EQ(Complaint("`<b>` and \\<b> and 1 < 2\n```\n<b>\n```\n"), "");
}

TEST_F(BookTest, ABookWithoutATitleIsRefused)
{
    EXPECT_THROW(Book(Write("none.md", "# One\n")), BookError);
}

/// A sheet on which tests paint.
class PagesTest : public BookTest {
protected:
    PagesTest()
    {
        constexpr int kDotsPerMeter = 4000;
        sheet.setDotsPerMeterX(kDotsPerMeter);
        sheet.setDotsPerMeterY(kDotsPerMeter);
    }

    int PagesOf(const QByteArray& text)
    {
        const Book book(Write("book.md", "<!-- title: T -->\n" + text));
        return BookPages(book, "1", sheet).PageCount();
    }

    /// How many dots of a page are not white.
    int InkOn(const BookPages& pages, int page)
    {
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        pages.Paint(painter, page);
        painter.end();
        int ink = 0;
        for (int y = 0; y < sheet.height(); ++y)
            for (int x = 0; x < sheet.width(); ++x)
                ink += sheet.pixel(x, y) != qRgb(255, 255, 255);
        return ink;
    }

    QImage sheet{840, 1188, QImage::Format_RGB32};
};

TEST_F(PagesTest, ThereIsATitleTheContentsAndAPageForEachChapter)
{
    EXPECT_EQ(PagesOf("# One\nText\n"), 3);
    EXPECT_EQ(PagesOf("# One\nText\n# Two\nText\n## Part\nText\n"), 4);
}

TEST_F(PagesTest, ManyHeadingsTakeMorePagesOfContents)
{
    QByteArray text;
    for (int i = 0; i < 38; ++i)
        text += "# Chapter\n";
    EXPECT_EQ(PagesOf(text), 1 + 2 + 38);
}

TEST_F(PagesTest, EveryPageIsPainted)
{
    WritePicture("shot.png");
    const Book book(Write("book.md", "<!-- title: T -->\n# One\n[Two](#two)\n\n| A | B |\n|---|---|\n| 1 | 2 |\n"
                                     "\n# Two\n\n![A shot](shot.png)\n\n> Mind this.\n\n```\ncode\n```\n"));
    const BookPages pages(book, "1", sheet);
    ASSERT_EQ(pages.PageCount(), 4);
    for (int page = 1; page <= 4; ++page)
        EXPECT_GT(InkOn(pages, page), 100) << page;
}

/// The lowest line of a page with ink of that kind; -1 if there is none.
int LowestInk(const QImage& sheet, bool (*isInk)(QRgb))
{
    for (int y = sheet.height() - 1; y >= 0; --y)
        for (int x = 0; x < sheet.width(); ++x)
            if (isInk(sheet.pixel(x, y)))
                return y;
    return -1;
}

// Headings are blue, the text is black, and what stands at a page's foot is grey.
bool IsBlue(QRgb dot)
{
    return qBlue(dot) > qRed(dot) + 50;
}

bool IsBlack(QRgb dot)
{
    return qRed(dot) < 70 && qBlue(dot) < 70;
}

constexpr int kHeadingsOnAPage = 37;  // of the contents

/// How many rows of letters in the headings' own colour a page has. A line between two heights of one is none.
int HeadingRows(const QImage& sheet)
{
    int rows = 0;
    bool inRow = false;
    for (int y = 0; y < sheet.height(); ++y) {
        bool isBlue = false;
        for (int x = 0; x < sheet.width(); ++x)
            isBlue = isBlue || sheet.pixel(x, y) == BookStyle::kAccent;
        rows += isBlue && !inRow;
        inRow = isBlue;
    }
    return rows;
}

// Pages on which much was moved to keep it together were once painted with gaps.
TEST_F(PagesTest, EveryHeadingOfTheHelpFilesIsPainted)
{
    for (const char* name : {"manual", "six-steps", "connector"}) {
        const Book book(QStringLiteral(FENRIK_ROOT "/docs/help/%1.md").arg(QLatin1String(name)));
        const int headings =
            int(book.Markdown().count(QRegularExpression("^#+ ", QRegularExpression::MultilineOption)));
        const BookPages pages(book, "1", sheet);
        int found = 0;
        for (int page = 3; page <= pages.PageCount(); ++page) {
            ASSERT_GT(InkOn(pages, page), 0);
            const bool isContents = page == 3 && headings > kHeadingsOnAPage;
            found += isContents ? 0 : HeadingRows(sheet);
        }
        EXPECT_EQ(found, headings) << name;
    }
}

TEST_F(PagesTest, AHeadingIsNeverTheLastOfItsPage)
{
    int broken = 0;
    for (int lines = 20; lines < 50; ++lines) {
        const QByteArray above = "<!-- title: T -->\n# One\n\n" + QByteArray("Line\n\n").repeated(lines);
        const Book book(Write("book.md", above + "## Part\n\nText\n"));
        const BookPages pages(book, "1", sheet);
        broken += pages.PageCount() - 3;
        for (int page = 3; page <= pages.PageCount(); ++page) {
            ASSERT_GT(InkOn(pages, page), 0);
            EXPECT_LT(LowestInk(sheet, IsBlue), LowestInk(sheet, IsBlack)) << lines << " lines, page " << page;
        }
    }
    EXPECT_GT(broken, 0);
    EXPECT_LT(broken, 30);
}

}  // namespace
}  // namespace fenrik
