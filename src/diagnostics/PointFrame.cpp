#include "diagnostics/PointFrame.h"

#include "diagnostics/PointName.h"
#include "diagnostics/ReadableColor.h"

#include <QLabel>
#include <QScopedValueRollback>
#include <QTreeView>

namespace fenrik {

PointFrame::PointFrame(const QString& tag, QWidget* parent) : QGroupBox(parent), mTree(new PointTreeModel(tag, this)) {}

void PointFrame::SetUpPoints(const Parts& parts)
{
    mParts = parts;
    QTreeView* tree = parts.tree;
    tree->setModel(mTree);
    tree->setItemDelegate(new ReadableDelegate(this));
    connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this, &PointFrame::ReportNode);
    connect(tree, &QTreeView::clicked, this, &PointFrame::ReportNode);
}

void PointFrame::SetCaption(const QString& caption)
{
    setTitle(QString(caption).replace(QLatin1Char('&'), QStringLiteral("&&")));
}

void PointFrame::ShowWords(const QString& words)
{
    mParts.panel->hide();
    mFocus = {};
    mParts.words->setText(words);
    mParts.words->show();
}

void PointFrame::ShowNoNode()
{
    SetCaption(QStringLiteral("No Node Selected"));
    ShowWords(QStringLiteral("Node not selected, information not available."));
}

void PointFrame::ShowPanel(bool downloaded)
{
    mParts.words->hide();
    mParts.notDownloaded->setVisible(!downloaded);
    mParts.panel->show();
}

void PointFrame::RestorePlace(int node)
{
    mPlace.Restore(*mParts.tree, node);
    mFocus.Restore(*mParts.tree);
}

void PointFrame::ClearPoints()
{
    mFocus.Hide(*mParts.panel);
    mPlace.Note(*mParts.tree);
    const QScopedValueRollback selecting(mSelecting, true);
    mTree->SetPoints({});
}

void PointFrame::SelectPoint(int number)
{
    const QModelIndex selected = mParts.tree->currentIndex();
    if (number != 0 && PointName::NumberOf(selected.data(PointTreeModel::KeyRole).toString()) == number)
        return;
    const QScopedValueRollback selecting(mSelecting, true);
    mParts.tree->setCurrentIndex(mTree->IndexOf(number));
}

void PointFrame::ReportNode(const QModelIndex& index)
{
    if (mSelecting || !index.isValid())
        return;
    Q_EMIT NodeClicked(index.data(PointTreeModel::KeyRole).toString(), index.data(PointTreeModel::TagRole).toString());
}

}  // namespace fenrik
