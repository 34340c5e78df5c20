#pragma once

#include <QLabel>

namespace fenrik {

/// One line of plain text that gives way: where the room is short the middle is left out, and the tool tip has it all.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

}  // namespace fenrik
