#include "widgets/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace fenrik {

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QRect room = contentsRect();
    QString line = text();
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    painter.drawText(room, int(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine),
                     fontMetrics().elidedText(line, Qt::ElideMiddle, room.width()));
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || text().isEmpty())
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text().toHtmlEscaped(), this);
    return true;
}

}  // namespace fenrik
