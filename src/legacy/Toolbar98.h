#pragma once

#include <QToolBar>

class QAction;

namespace fenrik {

/// The toolbar `Toolbar` of the older network's window: one QAction for each key, whose objectName is the key. Knows
/// what the buttons are, not what they do.
class Toolbar98 : public QToolBar {
    Q_OBJECT

public:
    explicit Toolbar98(QWidget* parent = nullptr);

    [[nodiscard]] QAction* Button(const QString& key) const;

    /// What can be pressed with and without a connection.
    void ShowConnected(bool connected);

Q_SIGNALS:
    void Clicked(const QString& key);
};

}  // namespace fenrik
