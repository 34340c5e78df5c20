#pragma once

#include <QScrollBar>
#include <QTimer>

namespace fenrik {

/// A scroll bar that is painted at most some 20 times a second while its values change by themselves. A style's bar is
/// all gradients; painted for each line that comes in, it would cost more than the lines do. Value and range are
/// always the true ones, and a bar that the user holds is painted at once.
class CalmScrollBar : public QScrollBar {
public:
    explicit CalmScrollBar(Qt::Orientation orientation, QWidget* parent = nullptr) : QScrollBar(orientation, parent)
    {
        mPainting.setSingleShot(true);
        mPainting.setInterval(kPeriodMs);
        connect(&mPainting, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    }

protected:
    void sliderChange(SliderChange change) override
    {
        if (isSliderDown() || underMouse())
            QScrollBar::sliderChange(change);
        else if (!mPainting.isActive())
            mPainting.start();
    }

private:
    static constexpr int kPeriodMs = 50;
    QTimer mPainting;
};

}  // namespace fenrik
