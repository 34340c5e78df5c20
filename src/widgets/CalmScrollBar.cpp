#include "widgets/CalmScrollBar.h"

#include <QStyle>
#include <QStyleOptionSlider>

namespace fenrik {

namespace {

constexpr int kPeriodMs = 200;

}  // namespace

CalmScrollBar::CalmScrollBar(Qt::Orientation orientation, QWidget* parent) : QScrollBar(orientation, parent)
{
    mPainting.setObjectName(QStringLiteral("TPainting"));
    mPainting.setParent(this);
    mPainting.setSingleShot(true);
    mPainting.setInterval(kPeriodMs);
    connect(&mPainting, &QTimer::timeout, this, &CalmScrollBar::PaintIfMoved);
}

void CalmScrollBar::sliderChange(SliderChange change)
{
    if (isSliderDown() || underMouse())
        QScrollBar::sliderChange(change);
    else if (!mPainting.isActive())
        mPainting.start();
}

void CalmScrollBar::paintEvent(QPaintEvent* event)
{
    mPainted = Handle();
    QScrollBar::paintEvent(event);
}

void CalmScrollBar::PaintIfMoved()
{
    if (Handle() != mPainted)
        update();
}

QRect CalmScrollBar::Handle() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
}

}  // namespace fenrik
