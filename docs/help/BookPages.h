#pragma once

#include <QList>
#include <QSizeF>
#include <QString>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <vector>

class QPaintDevice;
class QPainter;
class QTextTable;

namespace fenrik {

class Book;

/// A book laid out on sheets of A4: a title page, the contents, and the text.
///
/// Headings, captions' pictures and lines that end in a colon stay with what follows them. Links within the book say
/// their page.
class BookPages {
public:
    /// `version` stands on the title page. `device` is what the pages will be painted on; it has to live as long.
    BookPages(const Book& book, const QString& version, QPaintDevice& device);

    [[nodiscard]] int PageCount() const { return 1 + mContentsPages + mTextPages; }

    /// Paints a page, the first of which is 1, at the place of the painter.
    void Paint(QPainter& painter, int page) const;

private:
    struct Entry {
        QString text;
        int level = 0;
        int page = 0;
    };
    struct Reference {
        QTextCursor number;  ///< the page's number in the text, selected
        int heading = 0;
    };

    void ReadText();
    void NoteReferences();
    void KeepTogether();
    [[nodiscard]] bool IsSplitForNothing(const QTextTable& table) const;
    static void BreakBefore(const QTextBlock& block);
    void LayOutAnew();
    void WritePageNumbers();
    [[nodiscard]] bool StaysWithNext(const QTextBlock& block) const;
    [[nodiscard]] int TextPageOf(const QTextBlock& block, bool lastLine = false) const;  ///< from 0
    [[nodiscard]] qreal Dots(qreal millimetres) const;
    [[nodiscard]] QRectF TextArea() const;

    void PaintTitle(QPainter& painter) const;
    void PaintContents(QPainter& painter, int page) const;
    void PaintEntry(QPainter& painter, const Entry& entry, const QRectF& line) const;
    void PaintText(QPainter& painter, int page) const;
    void PaintFooter(QPainter& painter, int page) const;

    const Book& mBook;
    QString mVersion;
    QPaintDevice& mDevice;
    QTextDocument mText;
    std::vector<QTextBlock> mHeadings;
    QList<Entry> mContents;  ///< chapters and sections
    std::vector<Reference> mReferences;
    int mContentsPages = 0;
    int mTextPages = 0;
};

}  // namespace fenrik
