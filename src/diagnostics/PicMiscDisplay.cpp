#include "diagnostics/PicMiscDisplay.h"

#include "diagnostics/CharacterFace.h"
#include "diagnostics/Glass.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStackedWidget>

#include <algorithm>

namespace fenrik {

namespace {

constexpr QSize kPanel(148, 702);
constexpr int kNodesOfFirstFace = 16;
constexpr int kLeastRows = 5;  // lamp, mark and the three counters
constexpr int kPaceMs = 16;    // noise changes the counters thousands of times a second

}  // namespace

PicMiscDisplay::PicMiscDisplay(const GlyphSheets& sheets, std::function<int()> nodesInSystem, QWidget* parent)
    : GlassArea(parent), mNodesInSystem(std::move(nodesInSystem)), mFaces(new QStackedWidget),
      mFace(AddFace(sheets, QStringLiteral("PicMiscFace"), tr("Click to show nodes 17-32"))),
      mFace17_32(AddFace(sheets, QStringLiteral("PicMiscFace17_32"), tr("Click to show nodes 1-16")))
{
    setObjectName(QStringLiteral("PicMiscDisplay"));
    verticalScrollBar()->setSingleStep(Glass::kCellHeight);
    mFaces->setFixedSize(kPanel);
    setWidget(mFaces);
    FitBar();
}

CharacterFace& PicMiscDisplay::AddFace(const GlyphSheets& sheets, const QString& name, const QString& toolTip)
{
    auto* face = new CharacterFace(sheets, kPanel, kColumns);
    face->setObjectName(name);
    face->setPace(kPaceMs);
    face->setToolTip(toolTip);
    face->setAccessibleName(tr("Panel"));
    mFaces->addWidget(face);
    return *face;
}

void PicMiscDisplay::setMenu(QMenu* menu)
{
    mMenu = menu;
}

QSize PicMiscDisplay::sizeHint() const
{
    return kPanel;
}

QSize PicMiscDisplay::minimumSizeHint() const
{
    return {kPanel.width(), kLeastRows * Glass::kCellHeight + Glass::kMargin};
}

void PicMiscDisplay::resizeEvent(QResizeEvent* event)
{
    GlassArea::resizeEvent(event);
    FitBar();
}

void PicMiscDisplay::FitBar()
{
    // Rows of nodes that the system does not have are blank, and nobody misses them. The bar stands beside the
    // picture: its last column would lie under it.
    const int rows = kLeastRows + std::clamp(mNodesInSystem(), 0, kNodesOfFirstFace);
    const bool cutOff = height() < rows * Glass::kCellHeight + Glass::kMargin;
    setVerticalScrollBarPolicy(cutOff ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    setFixedWidth(kPanel.width() + (cutOff ? verticalScrollBar()->sizeHint().width() : 0));
}

void PicMiscDisplay::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        SwitchFaces();
    else if (event->button() == Qt::RightButton && mMenu)
        mMenu->popup(event->globalPosition().toPoint());
}

void PicMiscDisplay::contextMenuEvent(QContextMenuEvent* event)
{
    // The mouse has opened it already, by its button's release.
    if (event->reason() != QContextMenuEvent::Mouse && mMenu)
        mMenu->popup(event->globalPos());
}

void PicMiscDisplay::NodesChanged()
{
    if (mNodesInSystem() <= kNodesOfFirstFace)
        mFaces->setCurrentIndex(0);
    FitBar();
}

void PicMiscDisplay::SwitchFaces()
{
    if (mNodesInSystem() > kNodesOfFirstFace)
        mFaces->setCurrentIndex(1 - mFaces->currentIndex());
}

}  // namespace fenrik
