#pragma once

#include <QColor>
#include <QFont>
#include <QTextCharFormat>

class QTextDocument;

namespace fenrik {

/// How a Help file looks: fonts, distances and colours of what the Markdown reader has made.
namespace BookStyle {

constexpr QRgb kAccent = 0xff1f4e79;
constexpr QRgb kRule = 0xff9aa7b4;

/// The text's own font in another size.
[[nodiscard]] QFont Font(qreal points, bool bold = false);

/// The letters of a link as those of the text around it.
[[nodiscard]] QTextCharFormat WithoutLink(QTextCharFormat format);

/// Gives each block, table and span of the document its look. Pictures are made to fit `textWidth`, in units of
/// 1/96 inch, get a thin frame and their text as a caption.
void Apply(QTextDocument& document, qreal textWidth);

}  // namespace BookStyle

}  // namespace fenrik
