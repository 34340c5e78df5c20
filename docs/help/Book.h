#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <stdexcept>

namespace fenrik {

/// What is wrong in a text source, with its file and line.
class BookError : public std::runtime_error {
public:
    explicit BookError(const QString& what) : std::runtime_error(what.toStdString()) {}
};

/// One Help file's text, read from Markdown files.
///
/// A line `<!-- name: value -->` is a directive:
///
/// | Name | Meaning |
/// |---|---|
/// | title, subtitle | What the title page says |
/// | include | The text of another file stands here |
/// | window | The section describes the window of that name; for the tests |
///
/// A link leads to `file.md`, `file.md#heading` or `#heading` within the book, or to a web page. Pictures stand on
/// lines of their own. A directive, link or picture that can't be followed is an error.
class Book {
public:
    /// Reads `file` and what it includes; throws BookError.
    explicit Book(const QString& file);

    [[nodiscard]] QString Title() const { return mTitle; }
    [[nodiscard]] QString Subtitle() const { return mSubtitle; }

    /// All of the text; links within the book are "#" and an anchor, pictures are absolute paths.
    [[nodiscard]] QString Markdown() const { return mLines.join(QLatin1Char('\n')); }

    /// Number of the heading, from 0, that an anchor stands for; -1 if there is none.
    [[nodiscard]] int HeadingOf(const QString& anchor) const { return mHeadings.value(anchor, -1); }

    [[nodiscard]] QStringList Pictures() const { return mPictures; }

    /// The windows that have a section, in order.
    [[nodiscard]] QStringList Windows() const { return mWindows; }

    /// The files that were read.
    [[nodiscard]] QStringList Files() const { return mFiles; }

private:
    struct Place {
        QString file;
        int line = 0;
    };
    struct Link {
        QString anchor;
        Place place;
    };

    void Read(const QString& file);
    void ReadLine(const QString& text, const Place& place);
    void Direct(const QString& text, const Place& place);
    void NoteHeading(const QString& text, const Place& place);
    [[nodiscard]] QString WithPictures(const QString& text, const Place& place);
    [[nodiscard]] QString WithLinks(const QString& text, const Place& place);
    void CheckLinks() const;

    QString mTitle;
    QString mSubtitle;
    QStringList mLines;
    QStringList mFiles;
    QStringList mPictures;
    QStringList mWindows;
    QHash<QString, int> mHeadings;
    QList<Link> mLinks;
    int mHeadingCount = 0;
    bool mInCode = false;
};

}  // namespace fenrik
