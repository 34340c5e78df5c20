#pragma once

#include <QKeySequence>
#include <QLabel>

namespace fenrik {

/// A text that does something when it is clicked.
class LinkLabel : public QLabel {
    Q_OBJECT

public:
    explicit LinkLabel(QWidget* parent = nullptr);

    /// The key that clicks it; the tool tip `what` tells it.
    void SetKey(const QKeySequence& key, const QString& what);

Q_SIGNALS:
    void Clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};

}  // namespace fenrik
