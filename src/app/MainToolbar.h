#pragma once

#include <QToolBar>

class QAction;

namespace fenrik {

/// The toolbar `Toolbar`: one QAction for each key, whose objectName is the key. Knows what the buttons are, not
/// what they do: a click is told by Clicked.
class MainToolbar : public QToolBar {
    Q_OBJECT

public:
    explicit MainToolbar(QWidget* parent = nullptr);

    /// The button of `key`; there must be one.
    [[nodiscard]] QAction* Button(const QString& key) const;

    void SetEnabled(const QString& key, bool enabled) { Button(key)->setEnabled(enabled); }
    [[nodiscard]] bool IsEnabled(const QString& key) const { return Button(key)->isEnabled(); }

    /// Presses the button of a view; the others of the group rise.
    void Press(const QString& key, bool pressed = true) { Button(key)->setChecked(pressed); }

    /// The picture and the words of "ConnectUsing" for a connection method, 1 to 3.
    void ShowConnectionMethod(int connectionType);

    /// Acts as a click would, if the button is enabled. `released` is a key of the keyboard.
    void ClickByFunctionKey(int released);

Q_SIGNALS:
    void Clicked(const QString& key);
};

}  // namespace fenrik
