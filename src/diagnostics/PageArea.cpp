#include "diagnostics/PageArea.h"

#include <QEvent>
#include <QScrollBar>

namespace fenrik {

namespace {
constexpr int kLeastLines = 6;
}

PageArea::PageArea(QWidget& page, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(&page);
}

QSize PageArea::minimumSizeHint() const
{
    return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(),
            kLeastLines * fontMetrics().lineSpacing()};
}

bool PageArea::eventFilter(QObject* object, QEvent* event)
{
    if (object == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(object, event);
}

}  // namespace fenrik
