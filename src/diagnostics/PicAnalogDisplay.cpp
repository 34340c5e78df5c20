#include "diagnostics/PicAnalogDisplay.h"

#include "diagnostics/CharacterFace.h"
#include "diagnostics/Glass.h"
#include "diagnostics/Graphics.h"

#include <QScrollBar>

namespace fenrik {

namespace {

constexpr QSize kPicMainFace(672, 740);
constexpr int kLeastRows = 6;

}  // namespace

PicAnalogDisplay::PicAnalogDisplay(const GlyphSheets& sheets, QWidget* parent)
    : GlassArea(parent), mFace(*new CharacterFace(sheets, kPicMainFace, Graphics::kColumns))
{
    setObjectName(QStringLiteral("PicAnalogDisplay"));
    mFace.setObjectName(QStringLiteral("PicAnalogFace"));
    mFace.setAccessibleName(tr("Display"));

    auto* bar = new QScrollBar(Qt::Vertical);
    bar->setObjectName(QStringLiteral("VScrlanalogFace"));
    bar->setSingleStep(Glass::kCellHeight);
    setVerticalScrollBar(bar);
    setWidget(&mFace);
}

QSize PicAnalogDisplay::sizeHint() const
{
    return kPicMainFace;
}

/// All columns, and a few of the rows.
QSize PicAnalogDisplay::minimumSizeHint() const
{
    const int columns = Graphics::kColumns * Glass::kCellWidth + Glass::kMargin;
    return {columns + verticalScrollBar()->sizeHint().width(), kLeastRows * Glass::kCellHeight + Glass::kMargin};
}

}  // namespace fenrik
