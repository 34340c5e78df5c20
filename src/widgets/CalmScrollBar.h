#pragma once

#include <QRect>
#include <QScrollBar>
#include <QTimer>

namespace fenrik {

/// A scroll bar that is painted at most five times a second while its values change by themselves, and only if its
/// handle is then seen in another place. A style's bar is all gradients; painted for each line that comes in, it would
/// cost more than the lines do. Value and range are always the true ones, and a bar that the user holds is painted at
/// once.
class CalmScrollBar : public QScrollBar {
public:
    explicit CalmScrollBar(Qt::Orientation orientation, QWidget* parent = nullptr);

protected:
    void sliderChange(SliderChange change) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void PaintIfMoved();
    [[nodiscard]] QRect Handle() const;

    QTimer mPainting;
    QRect mPainted;  // the handle, where it was painted
};

}  // namespace fenrik
