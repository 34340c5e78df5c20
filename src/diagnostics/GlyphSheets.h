#pragma once

#include <QImage>
#include <QSize>

#include <map>

namespace fenrik {

struct AsciiMap;

/// The glyphs of one device pixel ratio, cut out of the sheets: one below the other by their codes, each with the
/// glass that lies between it and its right neighbour on a face. A glyph's bytes stand together so, and copying one
/// costs a fraction of what it does out of a wide picture.
struct GlyphAtlas {
    QSize glyph;    ///< device pixels
    int pitch = 0;  ///< of a cell: width of the pictures, device pixels
    QImage bright;
    QImage dim;
};

/// The pictures PicAscii and PicAsciiDim, ready to be copied at any device pixel ratio. Shared by all faces; `map`
/// is filled before the first face is painted and outlives this.
///
/// Sheets exist for the ratios 1, 1.5 and 2, where a dot has a whole number of pixels. For another ratio the glyphs
/// are scaled, once, from the next larger sheet.
class GlyphSheets {
public:
    explicit GlyphSheets(const AsciiMap& map) : mMap(map) {}

    /// Stays valid as long as this does.
    [[nodiscard]] const GlyphAtlas& At(double ratio) const;

private:
    [[nodiscard]] GlyphAtlas Cut(double ratio) const;

    const AsciiMap& mMap;
    mutable std::map<double, GlyphAtlas> mAtlases;
};

}  // namespace fenrik
