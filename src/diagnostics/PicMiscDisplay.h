#pragma once

#include "diagnostics/GlassArea.h"

#include <QPointer>

#include <functional>

class QMenu;
class QStackedWidget;

namespace fenrik {

class CharacterFace;
class GlyphSheets;

/// The small panel: two pictures of 8 columns, "PicMiscFace" for nodes 1 to 16 and "PicMiscFace17_32" for the rest, of
/// which a left click shows the other one if the system has more than 16 nodes. The right button opens a menu.
/// In a low window that cuts off rows in use, a scroll bar stands beside it.
class PicMiscDisplay : public GlassArea {
    Q_OBJECT

public:
    static constexpr int kColumns = 8;

    /// `nodesInSystem` tells how many nodes the system has now. `sheets` outlives it.
    PicMiscDisplay(const GlyphSheets& sheets, std::function<int()> nodesInSystem, QWidget* parent = nullptr);

    [[nodiscard]] CharacterFace& Face() { return mFace; }
    [[nodiscard]] CharacterFace& Face17_32() { return mFace17_32; }

    /// The menu of the right button; its owner keeps it and sets its check marks when it is about to show.
    void setMenu(QMenu* menu);

    /// The number of nodes has changed: a system without nodes from 17 up shows the first picture, and the scroll bar
    /// comes or goes.
    void NodesChanged();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] CharacterFace& AddFace(const GlyphSheets& sheets, const QString& name, const QString& toolTip);
    void SwitchFaces();
    void FitBar();

    std::function<int()> mNodesInSystem;
    QStackedWidget* mFaces;  // owned by the scroll area
    CharacterFace& mFace;
    CharacterFace& mFace17_32;
    QPointer<QMenu> mMenu;
};

}  // namespace fenrik
