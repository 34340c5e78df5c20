#pragma once

#include <QCache>
#include <QGlyphRun>
#include <QRawFont>
#include <QRect>
#include <QStaticText>
#include <QString>

class QPainter;

namespace fenrik {

/// Draws texts of one line, and remembers how the last ones are set: finding the glyphs of a text costs several times
/// what copying them does, and a line of a list is painted more than once. Figures, which seldom come back, are set
/// glyph by glyph, since their glyphs don't depend on each other. All texts have one font; Clear when it changes.
class ShapedTexts {
public:
    /// In the middle of `area`'s height, at its left edge or, right to left, at its right; elided if it is too long.
    void Draw(QPainter& painter, const QRect& area, const QString& text, Qt::LayoutDirection direction);

    void Clear();

private:
    struct Shaped {
        QStaticText whole;
        QStaticText elided;
        int elidedWidth = -1;  // the room for which `elided` is
    };

    /// False, with nothing drawn, if `text` holds more than figures or doesn't fit.
    bool DrawFigures(QPainter& painter, const QRect& area, const QString& text);
    [[nodiscard]] bool SetFigures(const QString& text, const QFont& font);
    [[nodiscard]] Shaped& Find(const QString& text, const QPainter& painter);

    static constexpr int kMost = 1024;
    QCache<QString, Shaped> mTexts{kMost};
    QRawFont mFont;
    QList<quint32> mFigureGlyphs;  // by place in the set of figures; 0 if the font lacks one
    QList<QPointF> mFigureSteps;
    QGlyphRun mRun;
    QList<quint32> mGlyphs;  // of the text that is being drawn, and where each stands
    QList<QPointF> mPositions;
    qreal mWidth = 0;
};

}  // namespace fenrik
