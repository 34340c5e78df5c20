#pragma once

#include <QPaintEvent>
#include <QRegion>
#include <QWidget>

namespace fenrik {

/// Counts the paintings of a widget, and gathers what of it was painted, for as long as both live.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        ++count;
        painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

    int count = 0;
    QRegion painted;
};

}  // namespace fenrik
