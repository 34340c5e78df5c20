#pragma once

#include "diagnostics/AsciiMap.h"
#include "diagnostics/CharacterFace.h"
#include "diagnostics/Glass.h"
#include "diagnostics/GlyphSheets.h"
#include "support/Printers.h"

#include <QImage>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {

/// The table that belongs to the sheets.
inline AsciiMap MapOfTheSheets()
{
    AsciiMap map;
    for (int code = 0; code < 256; ++code) {
        map.entries[std::size_t(code)].xloc = code % 16 * Glass::kGlyphWidth;
        map.entries[std::size_t(code)].yloc = code / 16 * Glass::kGlyphHeight;
    }
    return map;
}

/// Row `row` (from 1) of a face, with its blanks.
inline QString Row(const QString& text, int row)
{
    return text.split(QLatin1Char('\n')).value(row - 1);
}

inline QString Row(const CharacterFace& face, int row)
{
    return Row(face.property("text").toString(), row);
}

inline QString DimRow(const CharacterFace& face, int row)
{
    return Row(face.property("dimText").toString(), row);
}

/// The timer has run out.
inline void Fire(QTimer& timer)
{
    ASSERT_TRUE(timer.isActive()) << timer.objectName().toStdString();
    if (timer.isSingleShot())
        timer.stop();
    QMetaObject::invokeMethod(&timer, "timeout", Qt::DirectConnection);
}

/// A glyph's picture out of a sheet.
inline QImage GlyphOf(const QImage& sheet, int code)
{
    const QSize glyph = sheet.size() / 16;
    return sheet.copy(QRect(QPoint(code % 16 * glyph.width(), code / 16 * glyph.height()), glyph))
        .convertToFormat(QImage::Format_RGB32);
}

/// The same out of PicAscii or PicAsciiDim of so many percent.
inline QImage GlyphPicture(const char* sheet, int percent, int code)
{
    return GlyphOf(QImage(QStringLiteral(":/glyphs/%1-%2.png").arg(QLatin1String(sheet)).arg(percent)), code);
}

class FaceFixture : public testing::Test {
protected:
    AsciiMap map = MapOfTheSheets();
    GlyphSheets sheets{map};
};

}  // namespace fenrik
