#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstdint>

class QPainter;

namespace fenrik {

struct GlyphAtlas;

/// Paints a face: dark glass with the unlit dots of its character cells, glyphs, and the shadow of the bezel around
/// them. Works in device pixels, so that every dot is sharp and glyphs are copied, never scaled.
///
/// Cells are numbered from 0. `face` is the face's size and `dirty` the part to paint, both in logical pixels.
class FacePainter {
public:
    /// Takes `painter` over; it must be fresh, of the device pixel ratio `ratio`. All outlive it.
    FacePainter(QPainter& painter, const GlyphAtlas& glyphs, QSize face, double ratio, const QRect& dirty);

    /// The glass between the cells. Comes first.
    void DrawGround();

    /// One cell of the grid with what is on it, and the glass between it and its right neighbour.
    void DrawCell(int column, int row, std::uint8_t code, bool dim);

    /// A glyph at a place of its own, over what is there.
    void DrawGlyph(QPoint corner, std::uint8_t code, bool dim);

    /// The bezel's shadow, in the margin. Comes after the cells, whose last gaps lie there.
    void DrawEdge();

    [[nodiscard]] int FirstRow() const { return mFirstRow; }
    [[nodiscard]] int LastRow() const { return mLastRow; }
    [[nodiscard]] int FirstColumn() const { return mFirstColumn; }
    [[nodiscard]] int LastColumn() const { return mLastColumn; }

private:
    [[nodiscard]] int Pixels(int logical) const;
    void Copy(QPoint place, int width, std::uint8_t code, bool dim);

    QPainter& mPainter;
    const GlyphAtlas& mGlyphs;
    QSize mFace;
    double mRatio;
    QRect mDirty;
    int mFirstRow;  // of the cells that touch the dirty part
    int mLastRow;
    int mFirstColumn;
    int mLastColumn;
};

}  // namespace fenrik
