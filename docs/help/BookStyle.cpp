#include "BookStyle.h"

#include <QImage>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <vector>

namespace fenrik {

namespace {

constexpr qreal kTextPoints = 9;
constexpr qreal kSmallPoints = 8;
constexpr qreal kPictureScale = 0.62;  // letters on a picture come out about as large as those of the text
constexpr QRgb kShade = 0xffeef2f6;
constexpr QRgb kWarning = 0xfffff3d6;

struct HeadingRow {
    qreal points;
    qreal above;
    qreal below;
};

constexpr HeadingRow kHeadings[] = {{18, 0, 14}, {12.5, 20, 6}, {10, 14, 4}};

void SetHeading(QTextCursor& cursor, QTextBlockFormat& block)
{
    const HeadingRow& row = kHeadings[qBound(1, block.headingLevel(), 3) - 1];
    block.setTopMargin(row.above);
    block.setBottomMargin(row.below);
    if (block.headingLevel() == 1 && cursor.block().blockNumber() > 0)
        block.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QTextCharFormat letters;
    letters.setFont(BookStyle::Font(row.points, true));
    letters.setForeground(QColor(BookStyle::kAccent));
    cursor.mergeCharFormat(letters);
}

void SetCode(QTextCursor& cursor, QTextBlockFormat& block)
{
    const auto isCode = [](const QTextBlock& other) {
        return other.isValid() && other.blockFormat().hasProperty(QTextFormat::BlockCodeFence);
    };
    block.setBackground(QColor(kShade));
    block.setLineHeight(100, QTextBlockFormat::ProportionalHeight);
    block.setLeftMargin(0);
    block.setTopMargin(isCode(cursor.block().previous()) ? 0 : 4);
    block.setBottomMargin(isCode(cursor.block().next()) ? 0 : 10);
    block.setTextIndent(8);
    block.setNonBreakableLines(false);  // a long line goes on below rather than beyond the edge
}

void SetWarning(QTextBlockFormat& block)
{
    block.setBackground(QColor(kWarning));
    block.setLeftMargin(0);
    block.setRightMargin(0);
    block.setTopMargin(4);
    block.setBottomMargin(12);
}

void SetBlock(const QTextBlock& textBlock)
{
    QTextCursor cursor(textBlock);
    cursor.select(QTextCursor::BlockUnderCursor);
    QTextBlockFormat block = textBlock.blockFormat();
    block.setTopMargin(0);
    block.setBottomMargin(7);
    block.setLineHeight(cursor.currentTable() ? 115 : 128, QTextBlockFormat::ProportionalHeight);
    QTextCharFormat letters;
    letters.setFontPointSize(cursor.currentTable() ? kSmallPoints : kTextPoints);
    cursor.mergeCharFormat(letters);
    if (block.headingLevel() > 0)
        SetHeading(cursor, block);
    else if (block.hasProperty(QTextFormat::BlockCodeFence))
        SetCode(cursor, block);
    else if (block.hasProperty(QTextFormat::BlockQuoteLevel))
        SetWarning(block);
    else if (cursor.currentTable())
        block.setBottomMargin(0);
    else if (textBlock.textList())
        block.setBottomMargin(4);
    QTextCursor(textBlock).setBlockFormat(block);
}

/// Code stands in letters of one width wherever it is.
void SetFixedLetters(const QTextBlock& textBlock)
{
    const bool inTable = QTextCursor(textBlock).currentTable();
    QTextCharFormat fixed;
    fixed.setFontFamilies({QStringLiteral("DejaVu Sans Mono"), QStringLiteral("monospace")});
    fixed.setFontPointSize(inTable ? kSmallPoints - 0.5 : kSmallPoints);
    QList<QPair<int, int>> spans;
    for (auto part = textBlock.begin(); !part.atEnd(); ++part) {
        if (part.fragment().charFormat().fontFixedPitch())
            spans.append({part.fragment().position(), part.fragment().position() + part.fragment().length()});
    }
    for (const auto& [start, end] : spans) {
        QTextCursor cursor(textBlock);
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(fixed);
    }
}

void SetTable(QTextTable& table)
{
    QTextTableFormat format = table.format();
    format.setBorderCollapse(true);
    format.setBorder(1);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(QColor(BookStyle::kRule));
    format.setCellPadding(3.5);
    format.setCellSpacing(0);
    format.setTopMargin(3);
    format.setBottomMargin(12);
    format.setHeaderRowCount(1);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    table.setFormat(format);
    for (int column = 0; column < table.columns(); ++column) {
        QTextTableCell cell = table.cellAt(0, column);
        QTextCharFormat shade = cell.format();
        shade.setBackground(QColor(kShade));
        cell.setFormat(shade);
    }
}

/// A picture with a thin line around it, so that a window's light edge shows on paper.
QImage Framed(const QString& path)
{
    QImage picture = QImage(path).convertToFormat(QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.setPen(QPen(QColor(BookStyle::kRule), 2));
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    return picture;
}

/// A block that is a picture takes its text as a caption in a block of its own.
void SetPicture(QTextDocument& document, const QTextBlock& textBlock, qreal textWidth)
{
    if (textBlock.begin().atEnd() || !textBlock.begin().fragment().charFormat().isImageFormat())
        return;
    QTextImageFormat format = textBlock.begin().fragment().charFormat().toImageFormat();
    const QImage picture = Framed(format.name());
    const QString name = QStringLiteral("picture:%1").arg(format.name());
    document.addResource(QTextDocument::ImageResource, QUrl(name), picture);
    const QString caption = format.property(QTextFormat::ImageAltText).toString();
    format.setName(name);
    format.setWidth(std::min(textWidth, picture.width() * kPictureScale));
    format.setHeight(format.width() * picture.height() / picture.width());
    QTextCursor cursor(textBlock);
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    cursor.setCharFormat(format);
    cursor.movePosition(QTextCursor::EndOfBlock);
    QTextBlockFormat below = textBlock.blockFormat();
    below.setBottomMargin(14);
    QTextCharFormat letters;
    letters.setFont(BookStyle::Font(kSmallPoints));
    letters.setFontItalic(true);
    cursor.insertBlock(below, letters);
    cursor.insertText(caption, letters);
    QTextBlockFormat own = textBlock.blockFormat();
    own.setTopMargin(4);
    own.setBottomMargin(3);
    own.setLineHeight(100, QTextBlockFormat::ProportionalHeight);
    QTextCursor(textBlock).setBlockFormat(own);
}

}  // namespace

QFont BookStyle::Font(qreal points, bool bold)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

QTextCharFormat BookStyle::WithoutLink(QTextCharFormat format)
{
    for (const int property : {QTextFormat::IsAnchor, QTextFormat::AnchorHref, QTextFormat::TextUnderlineStyle,
                               QTextFormat::FontUnderline, QTextFormat::ForegroundBrush})
        format.clearProperty(property);
    return format;
}

void BookStyle::Apply(QTextDocument& document, qreal textWidth)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        SetBlock(block);
        SetFixedLetters(block);
    }
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(frame))
            SetTable(*table);
    }
    std::vector<QTextBlock> blocks;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        blocks.push_back(block);
    for (const QTextBlock& block : blocks)
        SetPicture(document, block, textWidth);
}

}  // namespace fenrik
