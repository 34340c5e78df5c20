#include "diagnostics/Graphics.h"

#include "diagnostics/CharacterFace.h"
#include "diagnostics/CodePage437.h"
#include "diagnostics/Glass.h"

namespace fenrik {

void Graphics::PutChar(int x, int y, QChar character, bool dim)
{
    mFace.Put(x, y, CodePage437::CodeOf(character), dim);
}

void Graphics::PutString(QStringView text, int column, int row, bool dim, bool right)
{
    const int first = right ? column - int(text.size()) : column - 1;
    int x = first * Glass::kCellWidth + Glass::kMargin;
    const int y = (row - 1) * Glass::kCellHeight + Glass::kMargin;
    for (const QChar character : text) {
        PutChar(x, y, character, dim);
        x += Glass::kCellWidth;
    }
    Refresh();
}

void Graphics::PutLines(const QStringList& lines, int column, int row, bool dim, bool right)
{
    for (const QString& line : lines)
        PutString(line, column, row++, dim, right);
}

void Graphics::PutTitleLines(const QStringList& lines, bool dim, bool right)
{
    PutLines(lines, right ? kColumns : 1, 1, dim, right);
}

void Graphics::ClearFace()
{
    mOpeningEnded = true;
    mFace.Clear();
    Refresh();
}

void Graphics::Refresh()
{
    mFace.Refresh();
}

}  // namespace fenrik
