#include "diagnostics/ReadableColor.h"

#include <QPainter>
#include <QWidget>

namespace fenrik {

namespace {

constexpr int kMiddle = 128;
constexpr int kLightHue = 175;

bool IsDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < kMiddle;
}

/// `icon` on a tile of `ground`, in every mode: the style would tint it for a selected row, and on the highlight some
/// pictures vanish.
QIcon OnGround(const QIcon& icon, const QColor& ground, const QSize& size, qreal scale)
{
    QPixmap tile((QSizeF(size) * scale).toSize());
    tile.setDevicePixelRatio(scale);
    tile.fill(ground);
    QPainter painter(&tile);
    icon.paint(&painter, QRect(QPoint(), size));
    painter.end();
    QIcon result(tile);
    result.addPixmap(tile, QIcon::Selected);
    return result;
}

}  // namespace

QColor ReadableColor(const QColor& color, const QPalette& palette)
{
    if (!color.isValid() || !IsDark(palette))
        return color;
    if (color.hslSaturation() == 0)
        return palette.color(color.lightness() < kMiddle ? QPalette::Active : QPalette::Disabled, QPalette::Text);
    return QColor::fromHsl(color.hslHue(), color.hslSaturation() * 3 / 4, qMax(color.lightness(), kLightHue));
}

void ReadableDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // The option's own palette has the row's colour in it by now.
    const QPalette palette = option->widget ? option->widget->palette() : option->palette;
    if (option->state.testFlag(QStyle::State_Selected) && !option->icon.isNull()) {
        const qreal scale = option->widget ? option->widget->devicePixelRatioF() : 1;
        option->icon = OnGround(option->icon, palette.color(QPalette::Base), option->decorationSize, scale);
    }
    const auto color = index.data(Qt::ForegroundRole).value<QColor>();
    if (color.isValid())
        option->palette.setColor(QPalette::Text, ReadableColor(color, palette));
}

}  // namespace fenrik
