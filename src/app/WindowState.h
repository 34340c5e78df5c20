#pragma once

#include <QList>
#include <QRect>

class QWidget;

namespace fenrik {

class SettingsStore;

/// Keeps the place of a main window, of its splitters and of its columns between two runs, in a store of its own: a
/// group named as the window, lists of numbers.
///
///   Window    left, top, width, height, 1 if maximized
///   Splitter  heights of its parts; the key is the splitter's name
///   lvMessages  widths of its columns; the key is the list's name
///
/// What can't be used (a text that is no list of numbers, a column that is gone) is left out.
class WindowState {
public:
    /// `store` outlives the object. `screens`: what the desktop leaves to windows, the main screen first.
    WindowState(SettingsStore& store, const QList<QRect>& screens) : mStore(store), mScreens(screens) {}

    /// The screens of this process.
    [[nodiscard]] static QList<QRect> Screens();

    /// Before the window is shown. It is made no larger than its screen, and put on one that is there.
    void Restore(QWidget& window) const;

    /// Of a window that is on screen. Throws Error 75 if the store can't be written.
    void Save(const QWidget& window);

private:
    [[nodiscard]] QRect FitToScreen(const QRect& wanted) const;

    SettingsStore& mStore;
    QList<QRect> mScreens;
};

}  // namespace fenrik
