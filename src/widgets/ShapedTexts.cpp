#include "widgets/ShapedTexts.h"

#include <QPainter>

#include <memory>

namespace fenrik {

namespace {

void Shape(QStaticText& shaped, QString text, const QPainter& painter)
{
    shaped.setTextFormat(Qt::PlainText);
    shaped.setText(text.replace(QLatin1Char('\n'), QLatin1Char(' ')));  // it would begin a second line
    shaped.prepare({}, painter.font());
}

}  // namespace

void ShapedTexts::Draw(QPainter& painter, const QRect& area, const QString& text, Qt::LayoutDirection direction)
{
    if (text.isEmpty())
        return;
    Shaped& known = Find(text, painter);
    const QStaticText* shown = &known.whole;
    if (shown->size().width() > area.width()) {
        if (known.elidedWidth != area.width())
            Shape(known.elided, painter.fontMetrics().elidedText(text, Qt::ElideRight, area.width()), painter);
        known.elidedWidth = area.width();
        shown = &known.elided;
    }
    const QSizeF size = shown->size();
    const int left = direction == Qt::RightToLeft ? area.right() + 1 - qRound(size.width()) : area.left();
    painter.drawStaticText(QPoint(left, area.top() + (area.height() - int(size.height())) / 2), *shown);
}

ShapedTexts::Shaped& ShapedTexts::Find(const QString& text, const QPainter& painter)
{
    if (Shaped* known = mTexts.object(text))
        return *known;
    auto fresh = std::make_unique<Shaped>();
    Shape(fresh->whole, text, painter);
    Shaped& shaped = *fresh;
    mTexts.insert(text, fresh.release());
    return shaped;
}

}  // namespace fenrik
