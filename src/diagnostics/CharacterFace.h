#pragma once

#include <QRect>
#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <string_view>
#include <vector>

namespace fenrik {

class FacePainter;
class GlyphSheets;

/// A picture of characters: the big face of the views and the pictures of the small panel.
///
/// Glyphs are copied, opaque, to pixel places. What was put stands until it is overwritten or cleared. The widget
/// remembers the characters and paints from them, so that putting costs next to nothing, what did not change is not
/// painted again, and a screen of another pixel ratio is drawn sharp. Places are in pixels at scale 1 from the top left
/// corner. A glyph that would not lie wholly on the face is left out.
///
/// For screen readers and tests `text` gives the characters that stand on the face, one line for each row, blanks
/// kept; `dimText` the same with only the dim ones. A glyph belongs to the cell that it is nearest to.
class CharacterFace : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ Text)
    Q_PROPERTY(QString dimText READ DimText)

public:
    /// A face of `columns` cells on a picture of `size` pixels. `sheets` outlives it.
    CharacterFace(const GlyphSheets& sheets, QSize size, int columns, QWidget* parent = nullptr);

    /// Copies one glyph, by its code. Shows at the next Refresh.
    void Put(int x, int y, std::uint8_t code, bool dim);

    /// Puts codes side by side from a cell on (both numbers from 1). If they are too many for the cells up to the
    /// right edge, they move together, and if even that does not help, the first ones are left out. What stood in
    /// the row from there on is wiped if it was drawn that way.
    void PutFitted(std::string_view codes, int column, int row, bool dim);

    /// Copies the background over all.
    void Clear();

    /// Has the changes painted when the event loop turns, together with all others by then. Nothing that stands as it
    /// did is painted.
    void Refresh();

    /// From now on changes wait that long for others, in milliseconds; 0 at first.
    void setPace(int milliseconds) { mRefresh.setInterval(milliseconds); }

    [[nodiscard]] QString Text() const { return Lines(false); }
    [[nodiscard]] QString DimText() const { return Lines(true); }
    [[nodiscard]] QSize sizeHint() const override { return size(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Cell {
        std::int16_t x = 0;
        std::int16_t y = 0;
        std::uint8_t code = 0;
        bool dim = false;
        bool used = false;

        [[nodiscard]] bool InPlace(int column, int row) const;
        [[nodiscard]] QRect Rect() const;
        friend bool operator==(const Cell&, const Cell&) = default;
    };

    [[nodiscard]] Cell& At(int row, int column) { return mCells[std::size_t(row * mStoredColumns + column)]; }
    [[nodiscard]] const Cell& At(int row, int column) const
    {
        return mCells[std::size_t(row * mStoredColumns + column)];
    }
    void WipeRow(int row, int column);
    [[nodiscard]] QString Lines(bool onlyDim) const;
    [[nodiscard]] QRect TakeChanges();
    void PaintGrid(FacePainter& painter) const;
    void PaintLoose(FacePainter& painter) const;

    const GlyphSheets& mSheets;
    const int mColumns;
    const int mRowCount;
    const int mStoredColumns;  // of a row whose glyphs stand without a gap
    std::vector<Cell> mCells;
    std::vector<Cell> mShown;    // as they were at the last refresh
    std::vector<bool> mCrowded;  // by row: cells stand closer than their columns
    QTimer mRefresh;
};

}  // namespace fenrik
