#include "legacy/MiscPanel98.h"

#include "diagnostics/CharacterFace.h"
#include "diagnostics/Glass.h"

namespace fenrik {

namespace {

constexpr QSize kPanel(148, 702);
constexpr int kColumns = 8;
constexpr int kRows = 7;     // down to the load-shed line
constexpr int kPaceMs = 50;  // tokens come hundreds of times a second, and nobody reads more than twenty

}  // namespace

MiscPanel98::MiscPanel98(const GlyphSheets& sheets, QWidget* parent)
    : GlassArea(parent), mFace(*new CharacterFace(sheets, kPanel, kColumns))
{
    setObjectName(QStringLiteral("PicMiscDisplay"));
    mFace.setObjectName(QStringLiteral("PicMiscFace"));
    mFace.setAccessibleName(tr("Panel"));
    mFace.setPace(kPaceMs);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedWidth(kPanel.width());
    setWidget(&mFace);
}

QSize MiscPanel98::sizeHint() const
{
    return kPanel;
}

/// All that is ever drawn, so that nothing has to be scrolled to.
QSize MiscPanel98::minimumSizeHint() const
{
    return {kPanel.width(), kRows * Glass::kCellHeight + Glass::kMargin};
}

}  // namespace fenrik
