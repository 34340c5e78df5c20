#pragma once

#include <QMessageBox>
#include <QString>

namespace fenrik {

/// The standard boxes: messages, one-line input, file choice. Always Qt's own and never the desktop's, so that
/// texts, icons and buttons are exactly those asked for. All are modal and run the event loop.
class Boxes {
public:
    virtual ~Boxes() = default;

    using Button = QMessageBox::StandardButton;
    using Buttons = QMessageBox::StandardButtons;

    /// Shows `text` (lines joined by "\n") and gives the button pressed. Closing the box counts as the button that
    /// Escape presses, as the toolkit defines it. An empty title stands for the program's.
    virtual Button MsgBox(const QString& text, QMessageBox::Icon icon = QMessageBox::NoIcon,
                          Buttons buttons = QMessageBox::Ok, const QString& title = {});

    /// The text entered, empty if cancelled.
    virtual QString InputBox(const QString& prompt, const QString& title = {}, const QString& defaultText = {});

    /// The path of an existing file, empty if cancelled. `filter` as in QFileDialog; with a single pattern, "(*.fds)",
    /// a name typed without an ending gets that one.
    virtual QString OpenFileBox(const QString& title, const QString& filter, const QString& folder = {});
};

}  // namespace fenrik
