#pragma once

#include <QPointer>
#include <QWidget>

namespace fenrik {

/// Keeps the keyboard in a panel that is hidden while it is built anew. A widget that is hidden hands the keyboard to
/// its neighbour, where the next key that is typed would do something else.
class KeptFocus {
public:
    void Hide(QWidget& panel);

    /// When the panel is complete and shown: gives the keyboard back, unless the user has taken it elsewhere meanwhile.
    /// `instead` has it if the widget that had it is not shown any more.
    void Restore(QWidget& instead);

private:
    QPointer<QWidget> mWidget;     // had the keyboard; none if it was outside of the panel
    QPointer<QWidget> mNeighbour;  // got it
};

}  // namespace fenrik
