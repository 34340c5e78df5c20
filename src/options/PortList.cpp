#include "options/PortList.h"

#include <QPainter>
#include <QStyledItemDelegate>

namespace fenrik {

namespace {

constexpr int kGap = 12;

/// Draws the device at the row's right end, as far as the port's text leaves room.
class DeviceDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const int taken = option.fontMetrics.horizontalAdvance(index.data().toString()) + 2 * kGap;
        const QRect room = option.rect.adjusted(taken, 0, -kGap / 2, 0);
        if (room.width() <= 0)
            return;
        const bool selected = option.state & QStyle::State_Selected;
        painter->save();
        painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::PlaceholderText));
        painter->setFont(option.font);
        const QString device = index.data(PortList::kDeviceRole).toString();
        painter->drawText(room, Qt::AlignRight | Qt::AlignVCenter,
                          option.fontMetrics.elidedText(device, Qt::ElideMiddle, room.width()));
        painter->restore();
    }
};

}  // namespace

PortList::PortList(QWidget* parent) : QListWidget(parent)
{
    setItemDelegate(new DeviceDelegate(this));
    setUniformItemSizes(true);
}

void PortList::Fill(const std::vector<PortRow>& rows, const std::function<QString(int)>& device)
{
    clear();
    for (const PortRow& row : rows) {
        auto* item = new QListWidgetItem(row.text, this);
        const QString where = device(row.number);
        item->setData(Qt::UserRole, row.number);
        item->setData(kDeviceRole, where);
        item->setData(Qt::AccessibleDescriptionRole, where);
        item->setToolTip(where);
    }
}

void PortList::SelectPort(int number)
{
    int found = -1;
    for (int row = 0; row < count(); ++row) {
        if (item(row)->data(Qt::UserRole).toInt() == number)
            found = row;
    }
    setCurrentRow(found);
}

int PortList::SelectedRow() const
{
    // Not the current row: the list makes its first row that when it gets the focus, which selects nothing.
    return row(selectedItems().value(0));
}

int PortList::SelectedPort() const
{
    const int selected = SelectedRow();
    return selected < 0 ? 0 : item(selected)->data(Qt::UserRole).toInt();
}

void PortList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (count() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(kGap, kGap, -kGap, -kGap), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("No serial port was found. Plug in the transceiver or a serial adapter and open this window "
                        "again."));
}

}  // namespace fenrik
