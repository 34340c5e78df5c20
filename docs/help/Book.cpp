#include "Book.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace fenrik {

namespace {

QString NameOf(const QString& file)
{
    return QFileInfo(file).fileName();
}

/// "Serial port permissions" becomes "serial-port-permissions", as on the web.
QString Slug(const QString& heading)
{
    static const QRegularExpression other(QStringLiteral("[^\\w -]"));
    return heading.toLower().remove(other).trimmed().replace(QLatin1Char(' '), QLatin1Char('-'));
}

/// "<" begins a tag unless it is escaped or within code; a tag would swallow what follows it.
bool HasTag(const QString& text)
{
    static const QRegularExpression code(QStringLiteral("`[^`]*`"));
    static const QRegularExpression tag(QStringLiteral("(?<!\\\\)<[A-Za-z/!?-]"));
    return QString(text).remove(code).contains(tag);
}

bool IsFence(const QString& text)
{
    return text.startsWith(QStringLiteral("```"));
}

}  // namespace

Book::Book(const QString& file)
{
    Read(file);
    if (mTitle.isEmpty())
        throw BookError(QStringLiteral("%1: no title").arg(NameOf(file)));
    CheckLinks();
}

void Book::Read(const QString& file)
{
    QFile source(file);
    if (mFiles.contains(file) || !source.open(QIODevice::ReadOnly))
        throw BookError(QStringLiteral("%1 can't be read, or includes itself").arg(file));
    mFiles.append(file);
    Place place{file, 0};
    const QStringList lines = QString::fromUtf8(source.readAll()).split(QLatin1Char('\n'));
    for (const QString& text : lines) {
        ++place.line;
        ReadLine(text, place);
    }
    if (mInCode)
        throw BookError(QStringLiteral("%1: code without an end").arg(NameOf(file)));
}

void Book::ReadLine(const QString& text, const Place& place)
{
    if (IsFence(text))
        mInCode = !mInCode;
    if (mInCode || IsFence(text))
        mLines.append(text);
    else if (text.startsWith(QStringLiteral("<!--")))
        Direct(text, place);
    else {
        if (HasTag(text))
            throw BookError(
                QStringLiteral("%1:%2: \"<\" without a \"\\\" before it").arg(NameOf(place.file)).arg(place.line));
        if (text.startsWith(QLatin1Char('#')))
            NoteHeading(text, place);
        mLines.append(WithLinks(WithPictures(text, place), place));
    }
}

void Book::Direct(const QString& text, const Place& place)
{
    static const QRegularExpression form(QStringLiteral("^<!-- (\\w+): (.+) -->$"));
    const QRegularExpressionMatch match = form.match(text);
    const QString name = match.captured(1);
    const QString value = match.captured(2);
    if (name == QStringLiteral("title"))
        mTitle = value;
    else if (name == QStringLiteral("subtitle"))
        mSubtitle = value;
    else if (name == QStringLiteral("include"))
        Read(QFileInfo(place.file).dir().filePath(value));
    else if (name == QStringLiteral("window"))
        mWindows.append(value);
    else
        throw BookError(
            QStringLiteral("%1:%2: unknown directive %3").arg(NameOf(place.file)).arg(place.line).arg(text));
}

void Book::NoteHeading(const QString& text, const Place& place)
{
    const QString name = NameOf(place.file);
    const QString heading = text.section(QLatin1Char(' '), 1);
    if (!mHeadings.contains(name))
        mHeadings.insert(name, mHeadingCount);
    mHeadings.insert(name + QLatin1Char('#') + Slug(heading), mHeadingCount++);
}

QString Book::WithPictures(const QString& text, const Place& place)
{
    static const QRegularExpression form(QStringLiteral("^!\\[([^\\]]+)\\]\\(([^)]+)\\)$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return text;
    const QString path = QFileInfo(place.file).dir().absoluteFilePath(match.captured(2));
    if (!QFileInfo(path).isFile())
        throw BookError(QStringLiteral("%1:%2: no picture %3").arg(NameOf(place.file)).arg(place.line).arg(path));
    mPictures.append(QDir::cleanPath(path));
    return QStringLiteral("![%1](<%2>)").arg(match.captured(1), mPictures.last());
}

QString Book::WithLinks(const QString& text, const Place& place)
{
    static const QRegularExpression form(QStringLiteral("(?<!!)\\[([^\\]]+)\\]\\(([^)]+)\\)"));
    if (text.startsWith(QLatin1Char('!')))
        return text;
    QString result;
    qsizetype done = 0;
    for (auto links = form.globalMatch(text); links.hasNext();) {
        const QRegularExpressionMatch match = links.next();
        QString target = match.captured(2);
        if (!target.startsWith(QStringLiteral("http"))) {
            target = target.startsWith(QLatin1Char('#')) ? NameOf(place.file) + target : target.section('/', -1);
            mLinks.append({target, place});
            target.prepend(QLatin1Char('#'));
        }
        result += text.mid(done, match.capturedStart() - done);
        result += QStringLiteral("[%1](%2)").arg(match.captured(1), target);
        done = match.capturedEnd();
    }
    return result + text.mid(done);
}

void Book::CheckLinks() const
{
    for (const Link& link : mLinks) {
        if (HeadingOf(link.anchor) < 0)
            throw BookError(QStringLiteral("%1:%2: the link to %3 leads nowhere")
                                .arg(NameOf(link.place.file))
                                .arg(link.place.line)
                                .arg(link.anchor));
    }
}

}  // namespace fenrik
