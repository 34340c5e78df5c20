#include "BookPages.h"

#include "Book.h"
#include "BookStyle.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>
#include <QTextTable>

namespace fenrik {

namespace {

constexpr qreal kPageWidth = 210;  // millimetres, as the rest
constexpr qreal kPageHeight = 297;
constexpr qreal kSide = 22;
constexpr qreal kTop = 20;
constexpr qreal kBottom = 24;
constexpr qreal kFooter = 14;  // from the lower edge to the footer's line
constexpr qreal kEntryHeight = 6.2;
constexpr int kEntriesOnPage = 37;
constexpr int kContentsDepth = 2;
constexpr const char* kPageRoom = " (page 00)";
constexpr int kPageNumberAt = 7;
constexpr int kPageDigits = 2;
constexpr qreal kShortTable = 0.5;  // of a page
constexpr qreal kMillimetresPerInch = 25.4;
constexpr qreal kPixelsPerInch = 96;  // the unit of distances in a text document

}  // namespace

BookPages::BookPages(const Book& book, const QString& version, QPaintDevice& device)
    : mBook(book), mVersion(version), mDevice(device)
{
    ReadText();
    mContentsPages = int((mContents.size() + kEntriesOnPage - 1) / kEntriesOnPage);
    NoteReferences();
    KeepTogether();
    LayOutAnew();
    WritePageNumbers();
    LayOutAnew();
    mTextPages = 1 + TextPageOf(mText.lastBlock(), true);
}

qreal BookPages::Dots(qreal millimetres) const
{
    return millimetres / kMillimetresPerInch * mDevice.logicalDpiX();
}

QRectF BookPages::TextArea() const
{
    return {Dots(kSide), Dots(kTop), Dots(kPageWidth - 2 * kSide), Dots(kPageHeight - kTop - kBottom)};
}

void BookPages::ReadText()
{
    mText.setUndoRedoEnabled(false);
    mText.setUseDesignMetrics(true);
    mText.setDocumentMargin(0);
    mText.setDefaultFont(BookStyle::Font(9));
    mText.setMarkdown(mBook.Markdown(), QTextDocument::MarkdownDialectGitHub);
    BookStyle::Apply(mText, (kPageWidth - 2 * kSide) / kMillimetresPerInch * kPixelsPerInch);
    mText.documentLayout()->setPaintDevice(&mDevice);
    mText.setPageSize(TextArea().size());
    for (QTextBlock block = mText.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level > 0)
            mHeadings.push_back(block);
        if (level > 0 && level <= kContentsDepth)
            mContents.append({block.text(), level, 0});
    }
}

/// A link within the book becomes plain text, and behind it room is made for its page.
void BookPages::NoteReferences()
{
    struct Link {
        int begin;
        int end;
        int heading;
    };
    QList<Link> links;  // the last one first, as each changes the places behind it
    for (QTextBlock block = mText.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment text = part.fragment();
            const QString target = text.charFormat().anchorHref();
            if (target.startsWith(QLatin1Char('#')))
                links.prepend({text.position(), text.position() + text.length(), mBook.HeadingOf(target.mid(1))});
        }
    }
    for (const Link& link : links) {
        QTextCursor cursor(&mText);
        cursor.setPosition(link.begin);
        cursor.setPosition(link.end, QTextCursor::KeepAnchor);
        const QTextCharFormat plain = BookStyle::WithoutLink(cursor.charFormat());
        cursor.setCharFormat(plain);
        cursor.setPosition(link.end);
        cursor.insertText(QString::fromLatin1(kPageRoom), plain);
        cursor.setPosition(link.end + kPageNumberAt);
        cursor.setPosition(link.end + kPageNumberAt + kPageDigits, QTextCursor::KeepAnchor);
        mReferences.push_back({cursor, link.heading});
    }
}

/// By the line's base: its top, with the distance above, may lie on the page before.
int BookPages::TextPageOf(const QTextBlock& block, bool lastLine) const
{
    const QRectF place = mText.documentLayout()->blockBoundingRect(block);  // also lays out up to there
    const QTextLayout& lines = *block.layout();
    qreal base = 0;
    if (lines.lineCount() > 0) {
        const QTextLine line = lines.lineAt(lastLine ? lines.lineCount() - 1 : 0);
        base = line.y() + line.ascent();
    }
    return int((place.top() + base) / mText.pageSize().height());
}

bool BookPages::StaysWithNext(const QTextBlock& block) const
{
    if (QTextCursor(block).currentTable() || !block.next().isValid() ||
        block.next().blockFormat().pageBreakPolicy() == QTextFormat::PageBreak_AlwaysBefore)
        return false;
    const bool isPicture = !block.begin().atEnd() && block.begin().fragment().charFormat().isImageFormat();
    return isPicture || block.blockFormat().headingLevel() > 0 || block.text().endsWith(QLatin1Char(':'));
}

/// From the start to the end, as each break moves what follows it.
void BookPages::KeepTogether()
{
    QTextBlock first;  // of blocks that each stay with the next one
    for (QTextBlock block = mText.begin(); block.isValid(); block = block.next()) {
        const QTextTable* table = QTextCursor(block).currentTable();
        if (table && table->firstCursorPosition().block() == block) {
            if (IsSplitForNothing(*table))
                BreakBefore(first.isValid() ? first : block);
            block = table->lastCursorPosition().block();
            first = {};
            continue;
        }
        if (!StaysWithNext(block)) {
            first = {};
            continue;
        }
        if (!first.isValid())
            first = block;
        if (TextPageOf(first) != TextPageOf(block.next()))
            BreakBefore(first);
    }
}

/// A table goes over the end of a page only if it is a long one.
bool BookPages::IsSplitForNothing(const QTextTable& table) const
{
    const QTextBlock begin = table.firstCursorPosition().block();
    const QTextBlock end = table.lastCursorPosition().block();
    const auto* layout = mText.documentLayout();
    const qreal height = layout->blockBoundingRect(end).bottom() - layout->blockBoundingRect(begin).top();
    return TextPageOf(begin) != TextPageOf(end) && height < kShortTable * mText.pageSize().height();
}

void BookPages::BreakBefore(const QTextBlock& block)
{
    if (QTextTable* table = QTextCursor(block).currentTable()) {
        QTextTableFormat format = table->format();
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        table->setFormat(format);
        return;
    }
    QTextBlockFormat format = block.blockFormat();
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QTextCursor(block).setBlockFormat(format);
}

/// From the start: a layout that was only brought up to date is painted with gaps.
void BookPages::LayOutAnew()
{
    mText.setPageSize({});
    mText.setPageSize(TextArea().size());
}

void BookPages::WritePageNumbers()
{
    const auto page = [this](const QTextBlock& heading) { return 1 + mContentsPages + TextPageOf(heading) + 1; };
    for (Reference& reference : mReferences)
        reference.number.insertText(QString::number(page(mHeadings.at(std::size_t(reference.heading)))));
    qsizetype entry = 0;
    for (const QTextBlock& heading : mHeadings) {
        if (heading.blockFormat().headingLevel() <= kContentsDepth)
            mContents[entry++].page = page(heading);
    }
}

void BookPages::Paint(QPainter& painter, int page) const
{
    if (page == 1) {
        PaintTitle(painter);
        return;
    }
    if (page <= 1 + mContentsPages)
        PaintContents(painter, page - 2);
    else
        PaintText(painter, page - 2 - mContentsPages);
    PaintFooter(painter, page);
}

void BookPages::PaintTitle(QPainter& painter) const
{
    const QRectF area = TextArea();
    const QColor accent(BookStyle::kAccent);
    painter.fillRect(QRectF(0, 0, Dots(9), Dots(kPageHeight)), accent);
    painter.setPen(accent);
    painter.setFont(BookStyle::Font(34, true));
    painter.drawText(area.adjusted(0, Dots(55), 0, 0), Qt::AlignLeft | Qt::AlignTop, mBook.Title());
    painter.fillRect(QRectF(area.left(), area.top() + Dots(75), Dots(40), Dots(1)), accent);
    painter.setPen(Qt::black);
    painter.setFont(BookStyle::Font(17));
    painter.drawText(area.adjusted(0, Dots(84), 0, 0), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                     mBook.Subtitle());
    painter.setFont(BookStyle::Font(10));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignBottom, QStringLiteral("Version %1").arg(mVersion));
}

void BookPages::PaintContents(QPainter& painter, int page) const
{
    const QRectF area = TextArea();
    qreal y = area.top();
    if (page == 0) {
        painter.setPen(QColor(BookStyle::kAccent));
        painter.setFont(BookStyle::Font(18, true));
        painter.drawText(QRectF(area.left(), y, area.width(), Dots(12)), Qt::AlignLeft | Qt::AlignTop,
                         QStringLiteral("Contents"));
    }
    y += Dots(18);
    for (const Entry& entry : mContents.mid(qsizetype(page) * kEntriesOnPage, kEntriesOnPage)) {
        PaintEntry(painter, entry, {area.left(), y, area.width(), Dots(kEntryHeight)});
        y += Dots(kEntryHeight);
    }
}

void BookPages::PaintEntry(QPainter& painter, const Entry& entry, const QRectF& line) const
{
    const QString number = QString::number(entry.page);
    painter.setPen(Qt::black);
    painter.setFont(BookStyle::Font(9.5, entry.level == 1));
    const QRectF text = line.adjusted(entry.level == 1 ? 0 : Dots(6), 0, 0, 0);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, entry.text);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, number);
    const QFontMetricsF metrics(painter.font(), &mDevice);
    const qreal from = text.left() + metrics.horizontalAdvance(entry.text) + Dots(2);
    const qreal to = line.right() - metrics.horizontalAdvance(QStringLiteral("000")) - Dots(1);
    painter.setPen(QPen(QColor(BookStyle::kRule), Dots(0.25), Qt::DotLine));
    if (to > from)
        painter.drawLine(QPointF(from, line.center().y() + Dots(1)), QPointF(to, line.center().y() + Dots(1)));
}

void BookPages::PaintText(QPainter& painter, int page) const
{
    const QRectF area = TextArea();
    const QRectF part(0, page * area.height(), area.width(), area.height());
    painter.save();
    painter.translate(area.left(), area.top() - part.top());
    painter.setClipRect(part.adjusted(-Dots(1), 0, Dots(1), 0));
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = part;
    context.palette.setColor(QPalette::Text, Qt::black);
    mText.documentLayout()->draw(&painter, context);
    painter.restore();
}

void BookPages::PaintFooter(QPainter& painter, int page) const
{
    const QRectF line(Dots(kSide), Dots(kPageHeight - kFooter), Dots(kPageWidth - 2 * kSide), Dots(6));
    painter.setPen(QPen(QColor(BookStyle::kRule), Dots(0.2)));
    painter.drawLine(line.topLeft(), line.topRight());
    painter.setPen(QColor(0x55, 0x5f, 0x69));
    painter.setFont(BookStyle::Font(7.5));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignBottom,
                     QStringLiteral("%1 \u2013 %2").arg(mBook.Title(), mBook.Subtitle()));
    painter.drawText(line, Qt::AlignRight | Qt::AlignBottom, QString::number(page));
}

}  // namespace fenrik
