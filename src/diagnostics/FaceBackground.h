#pragma once

#include <QImage>
#include <QSize>

namespace fenrik {

struct GlyphAtlas;

/// The picture behind a face: dark glass with the unlit dots of its character cells, shaded towards the bezel.
/// `size` is in logical pixels; there are as many cells as it holds. The image has the device pixel ratio `ratio` and
/// the format RGB32.
[[nodiscard]] QImage FaceBackground(QSize size, double ratio, const GlyphAtlas& glyphs);

}  // namespace fenrik
