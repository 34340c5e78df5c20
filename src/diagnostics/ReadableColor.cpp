#include "diagnostics/ReadableColor.h"

#include <QWidget>

namespace fenrik {

namespace {

constexpr int kMiddle = 128;
constexpr int kLightHue = 175;

bool IsDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < kMiddle;
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
    const auto color = index.data(Qt::ForegroundRole).value<QColor>();
    if (!color.isValid())
        return;
    // The option's own palette has the row's colour in it by now.
    const QPalette& palette = option->widget ? option->widget->palette() : option->palette;
    option->palette.setColor(QPalette::Text, ReadableColor(color, palette));
}

}  // namespace fenrik
