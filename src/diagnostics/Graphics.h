#pragma once

#include <QChar>
#include <QStringList>
#include <QStringView>

namespace fenrik {

class CharacterFace;

/// What the views draw with on the big face. Columns and rows count from 1.
class Graphics {
public:
    static constexpr int kColumns = 32;

    /// `face` outlives it.
    explicit Graphics(CharacterFace& face) : mFace(face) {}

    /// Copies one glyph to a pixel place; shows at the next Refresh.
    void PutChar(int x, int y, QChar character, bool dim);

    /// Draws one line. `right`: its last character stands in `column` instead of its first.
    void PutString(QStringView text, int column, int row, bool dim, bool right);

    /// Line i of the list on row `row` + i - 1.
    void PutLines(const QStringList& lines, int column, int row, bool dim, bool right);

    /// The lines from row 1 on, at the left edge or the right.
    void PutTitleLines(const QStringList& lines, bool dim, bool right);

    /// Empties the face and ends the opening banner.
    void ClearFace();

    /// Has what PutChar drew shown.
    void Refresh();

    /// True since ClearFace; the opening banner takes it back when it starts and stops when it is set.
    [[nodiscard]] bool OpeningEnded() const { return mOpeningEnded; }
    void StartOpening() { mOpeningEnded = false; }

private:
    CharacterFace& mFace;
    bool mOpeningEnded = false;
};

}  // namespace fenrik
