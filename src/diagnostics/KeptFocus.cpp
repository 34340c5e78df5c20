#include "diagnostics/KeptFocus.h"

namespace fenrik {

void KeptFocus::Hide(QWidget& panel)
{
    QWidget* widget = panel.window()->focusWidget();
    const bool isInside = widget && panel.isAncestorOf(widget) && widget->isVisible();
    panel.hide();
    if (!isInside)
        return;
    // A widget that stands for others is still there when those are made anew.
    QWidget* parent = widget->parentWidget();
    mWidget = parent->focusProxy() == widget ? parent : widget;
    mNeighbour = panel.window()->focusWidget();
}

void KeptFocus::Restore(QWidget& instead)
{
    const bool isUntouched = mWidget && instead.window()->focusWidget() == mNeighbour;
    if (isUntouched)
        (mWidget->isVisible() ? mWidget.data() : &instead)->setFocus();
    mWidget = nullptr;
}

}  // namespace fenrik
