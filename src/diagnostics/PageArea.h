#pragma once

#include <QScrollArea>

namespace fenrik {

/// A page of a window that may be lower than what stands on it: it is scrolled down and up then, so that a large font
/// neither cuts its texts nor pushes the window out of the screen. The page fills it otherwise.
class PageArea : public QScrollArea {
public:
    /// Owns the page from now on.
    explicit PageArea(QWidget& page, QWidget* parent = nullptr);

    /// As wide as the page wants to be at least, and a few lines high.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
};

}  // namespace fenrik
