// Makes a Help file from its text: MakeHelp SOURCE.md TARGET.pdf VERSION

#include "Book.h"
#include "BookPages.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>

#include <cstdio>

namespace {

using namespace fenrik;

void Print(const Book& book, const QString& version, const QString& target)
{
    QPdfWriter writer(target);
    writer.setTitle(QStringLiteral("%1 - %2").arg(book.Title(), book.Subtitle()));
    writer.setCreator(QStringLiteral("Fenrik Diagnostics %1").arg(version));
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins({});
    writer.setResolution(600);
    const BookPages pages(book, version, writer);
    QPainter painter;
    if (!painter.begin(&writer))
        throw BookError(QStringLiteral("%1 can't be written").arg(target));
    for (int page = 1; page <= pages.PageCount(); ++page) {
        if (page > 1)
            writer.newPage();
        pages.Paint(painter, page);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 4) {
        std::fputs("Usage: make-help SOURCE.md TARGET.pdf VERSION\n", stderr);
        return 2;
    }
    try {
        Print(Book(arguments[1]), arguments[3], arguments[2]);
    } catch (const BookError& error) {
        std::fprintf(stderr, "make-help: %s\n", error.what());
        QFile::remove(arguments[2]);
        return 1;
    }
    return 0;
}
