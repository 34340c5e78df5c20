#pragma once

#include <QCache>
#include <QRect>
#include <QStaticText>
#include <QString>

class QPainter;

namespace fenrik {

/// Draws texts of one line, and remembers how the last ones are set: finding the glyphs of a text costs several times
/// what copying them does, and a line of a list is painted more than once. All texts have one font; Clear when it
/// changes.
class ShapedTexts {
public:
    /// In the middle of `area`'s height, at its left edge or, right to left, at its right; elided if it is too long.
    void Draw(QPainter& painter, const QRect& area, const QString& text, Qt::LayoutDirection direction);

    void Clear() { mTexts.clear(); }

private:
    struct Shaped {
        QStaticText whole;
        QStaticText elided;
        int elidedWidth = -1;  // the room for which `elided` is
    };

    [[nodiscard]] Shaped& Find(const QString& text, const QPainter& painter);

    static constexpr int kMost = 1024;
    QCache<QString, Shaped> mTexts{kMost};
};

}  // namespace fenrik
