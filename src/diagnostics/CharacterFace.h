#pragma once

#include <QImage>
#include <QRect>
#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <string_view>
#include <vector>

namespace fenrik {

struct GlyphAtlas;
class GlyphSheets;

/// A picture of characters: the big face of the views and the pictures of the small panel.
///
/// Glyphs are copied, opaque, to pixel places of a picture that the widget keeps. What was put stands until it is
/// overwritten or cleared. The widget remembers the characters and draws those that changed when it is painted, so
/// that putting costs next to nothing and a screen of another pixel ratio is drawn sharp again. Places are in pixels
/// at scale 1 from the top left corner. A glyph that would not lie wholly on the face is left out.
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

    /// Has the changes painted, in at most 16 ms and together with all others of that time.
    void Refresh();

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
        bool stale = false;
    };
    struct Row {
        bool crowded = false;  // cells stand closer than their columns
        bool wiped = false;    // the background comes back before the cells are drawn
    };

    [[nodiscard]] Cell& At(int row, int column) { return mCells[std::size_t(row * mStoredColumns + column)]; }
    [[nodiscard]] const Cell& At(int row, int column) const
    {
        return mCells[std::size_t(row * mStoredColumns + column)];
    }
    void Store(Cell& cell, int x, int y, std::uint8_t code, bool dim);
    void WipeRow(int row, int column);
    [[nodiscard]] QString Lines(bool onlyDim) const;

    void BringUpToDate();
    void DrawRow(const GlyphAtlas& glyphs, int row);
    void CopyBackground(int row);
    void CopyGlyph(const GlyphAtlas& glyphs, const Cell& cell);

    const GlyphSheets& mSheets;
    const int mColumns;
    const int mRowCount;
    const int mStoredColumns;  // of a row whose glyphs stand without a gap
    std::vector<Cell> mCells;
    std::vector<Row> mRows;
    bool mCleared = true;
    QImage mBackground;
    QImage mImage;
    QRect mDirty;
    QTimer mRefresh;
};

}  // namespace fenrik
