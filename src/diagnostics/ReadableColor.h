#pragma once

#include <QColor>
#include <QPalette>
#include <QStyledItemDelegate>

namespace fenrik {

/// `color`, chosen for a light background, or what stands for it on the background of a dark palette: black and grey
/// change places with the palette's own texts, and a hue is made lighter.
[[nodiscard]] QColor ReadableColor(const QColor& color, const QPalette& palette);

/// Draws rows in readable colours, and the picture of a selected row on the ground that it was drawn for.
class ReadableDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace fenrik
