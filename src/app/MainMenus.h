#pragma once

#include <QObject>

#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace fenrik {

/// The menu bar, and the two menus that open on the right mouse button: `mnuListView` over the message list and
/// `mnuDiag` over the panel. Each entry is a QAction under its name; what it does is told by Chosen.
class MainMenus : public QObject {
    Q_OBJECT

public:
    /// `isDebug`: the script entry is offered.
    MainMenus(QMenuBar& bar, bool isDebug, QObject* parent = nullptr);

    [[nodiscard]] QAction* Entry(const QString& name) const;
    [[nodiscard]] QMenu* Menu(const QString& name) const;

    /// Checks the method's entry of `mnuConnectUsing`, 1 to 3.
    void ShowConnectionMethod(int connectionType);

    /// The method after `connectionType` among the visible and enabled entries, wrapping around.
    [[nodiscard]] int NextConnectionMethod(int connectionType) const;

Q_SIGNALS:
    void Chosen(const QString& name);

private:
    void Fill(bool isDebug);

    std::vector<QMenu*> mMenus;  // children of the bar
};

}  // namespace fenrik
