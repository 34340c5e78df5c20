#pragma once

#include <QColor>

/// The look of the instrument: a vacuum-fluorescent display behind dark glass. Shared by the tool that makes the
/// glyph sheets and by the faces that the glyphs are copied to, so that a glyph's ground and the face's are one.
namespace fenrik::Glass {

inline constexpr QRgb kGround = 0xFF0A1012;  ///< the glass between the character cells
inline constexpr QRgb kUnlit = 0xFF111B1D;   ///< a dot that is off: just to be seen
inline constexpr QRgb kBright = 0xFF86FCE0;
inline constexpr QRgb kDim = 0xFF34937F;
inline constexpr QRgb kEdge = 0xFF060A0B;  ///< the shadow of the bezel

inline constexpr int kGlyphWidth = 14;   ///< pixels at scale 1: seven dots
inline constexpr int kGlyphHeight = 20;  ///< ten dots
inline constexpr int kCellWidth = 18;    ///< from one character to the next
inline constexpr int kCellHeight = 23;
inline constexpr int kMargin = 4;  ///< corner of the cell in column 1, row 1

}  // namespace fenrik::Glass
