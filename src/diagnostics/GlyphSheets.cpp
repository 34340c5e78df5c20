#include "diagnostics/GlyphSheets.h"

#include "diagnostics/AsciiMap.h"
#include "diagnostics/Glass.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace fenrik {

namespace {

constexpr int kSheetPercents[] = {100, 150, 200};
constexpr double kFarthest = 1'000'000;  // outside every sheet, and pixels can still be counted there

int SheetFor(double ratio)
{
    const auto* const sheet = std::find_if(std::begin(kSheetPercents), std::end(kSheetPercents),
                                           [ratio](int percent) { return percent >= ratio * 100.0; });
    return sheet != std::end(kSheetPercents) ? *sheet : 200;
}

QImage Sheet(const char* name, int percent)
{
    return QImage(QStringLiteral(":/glyphs/%1-%2.png").arg(QLatin1String(name)).arg(percent))
        .convertToFormat(QImage::Format_RGB32);
}

int Pixels(std::int32_t place, double scale)
{
    return qRound(std::clamp(place * scale, -kFarthest, kFarthest));
}

QImage CutGlyphs(const QImage& sheet, double sheetScale, const AsciiMap& map, QSize glyph, int pitch)
{
    QImage cut(pitch, glyph.height() * int(map.entries.size()), QImage::Format_RGB32);
    cut.fill(Glass::kGround);
    QPainter painter(&cut);
    const QSize source(qRound(Glass::kGlyphWidth * sheetScale), qRound(Glass::kGlyphHeight * sheetScale));
    for (int code = 0; code < int(map.entries.size()); ++code) {
        const AsciiMap::Entry& entry = map.entries[std::size_t(code)];
        const QPoint corner(Pixels(entry.xloc, sheetScale), Pixels(entry.yloc, sheetScale));
        // A place outside the sheet, which a damaged table may hold, gives a black glyph.
        QImage picture = sheet.copy(QRect(corner, source));
        if (source != glyph)
            picture = picture.scaled(glyph, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        painter.drawImage(0, code * glyph.height(), picture);
    }
    return cut;
}

}  // namespace

const GlyphAtlas& GlyphSheets::At(double ratio) const
{
    auto atlas = mAtlases.find(ratio);
    if (atlas == mAtlases.end())
        atlas = mAtlases.emplace(ratio, Cut(ratio)).first;
    return atlas->second;
}

GlyphAtlas GlyphSheets::Cut(double ratio) const
{
    const int percent = SheetFor(ratio);
    const double scale = percent / 100.0;
    const QSize glyph(qRound(Glass::kGlyphWidth * ratio), qRound(Glass::kGlyphHeight * ratio));
    const int pitch = int(std::ceil(Glass::kCellWidth * ratio));
    return {glyph, pitch, CutGlyphs(Sheet("PicAscii", percent), scale, mMap, glyph, pitch),
            CutGlyphs(Sheet("PicAsciiDim", percent), scale, mMap, glyph, pitch)};
}

}  // namespace fenrik
