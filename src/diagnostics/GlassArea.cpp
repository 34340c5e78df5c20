#include "diagnostics/GlassArea.h"

#include "diagnostics/Glass.h"

namespace fenrik {

GlassArea::GlassArea(QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QPalette glass = viewport()->palette();
    glass.setColor(QPalette::Window, QColor::fromRgb(Glass::kEdge));
    viewport()->setPalette(glass);
}

}  // namespace fenrik
