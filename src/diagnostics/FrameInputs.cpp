#include "diagnostics/FrameInputs.h"

#include "diagnostics/PointName.h"
#include "diagnostics/ReadableColor.h"

#include "ui_FrameInputs.h"

#include <QScopedValueRollback>

namespace fenrik {

FrameInputs::FrameInputs(QWidget* parent)
    : QGroupBox(parent), mUi(std::make_unique<Ui::FrameInputs>()),
      mTree(new PointTreeModel(QStringLiteral("Input"), this))
{
    mUi->setupUi(this);
    mUi->tvInputs->setModel(mTree);
    mUi->tvInputs->setItemDelegate(new ReadableDelegate(this));
    connect(mUi->tvInputs->selectionModel(), &QItemSelectionModel::currentChanged, this, &FrameInputs::ReportNode);
    connect(mUi->tvInputs, &QTreeView::clicked, this, &FrameInputs::ReportNode);
    Clear();
}

FrameInputs::~FrameInputs() = default;

void FrameInputs::SetCaption(const QString& caption)
{
    setTitle(QString(caption).replace(QLatin1Char('&'), QStringLiteral("&&")));
}

void FrameInputs::ShowWords(const QString& words)
{
    mUi->pnlInputs->hide();
    mFocus = {};
    mUi->lblNoInputs->setText(words);
    mUi->lblNoInputs->show();
}

void FrameInputs::ShowPanel(bool downloaded)
{
    mUi->lblNoInputs->hide();
    mUi->lblNotDownloaded->setVisible(!downloaded);
    mUi->pnlInputs->show();
}

void FrameInputs::RestorePlace(int node)
{
    mPlace.Restore(*mUi->tvInputs, node);
    mFocus.Restore(*mUi->tvInputs);
}

void FrameInputs::Clear()
{
    mFocus.Hide(*mUi->pnlInputs);
    mPlace.Note(*mUi->tvInputs);
    const QScopedValueRollback selecting(mSelecting, true);
    mTree->SetPoints({});
}

void FrameInputs::SelectInput(int number)
{
    const QModelIndex selected = mUi->tvInputs->currentIndex();
    if (number != 0 && PointName::NumberOf(selected.data(PointTreeModel::KeyRole).toString()) == number)
        return;
    const QScopedValueRollback selecting(mSelecting, true);
    mUi->tvInputs->setCurrentIndex(mTree->IndexOf(number));
}

void FrameInputs::ReportNode(const QModelIndex& index)
{
    if (!mSelecting && index.isValid())
        Q_EMIT NodeClicked(index.data(PointTreeModel::KeyRole).toString());
}

void FrameInputs::ShowDetails(const InputDetails& details)
{
    mUi->lblCommandName->setText(details.commandName);
    mUi->lblSwitchType->setText(details.switchType);
    mUi->lblOnState->setText(details.onState);
    mUi->lbl3Way->setText(details.threeWay);
}

}  // namespace fenrik
