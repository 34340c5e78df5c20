#include "diagnostics/FrameOutputs.h"

#include "diagnostics/OutputBar.h"
#include "diagnostics/ReadableColor.h"
#include "diagnostics/RelationModel.h"

#include "ui_FrameOutputs.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>

namespace fenrik {

namespace {

const QColor kNoFaultColor(0, 0x80, 0);
const QColor kFaultColor(0xC0, 0x20, 0x20);
constexpr const char* kTag = "Tag";  // property of the level list: the PWMKind that it is filled for
constexpr int kStep = 10;
constexpr int kOpWidth = 80;
constexpr int kCellMargin = 24;

}  // namespace

FrameOutputs::FrameOutputs(QWidget* parent)
    : PointFrame(QStringLiteral("OUTPUT"), parent), mUi(std::make_unique<Ui::FrameOutputs>()),
      mRelations(new RelationModel(this))
{
    mUi->setupUi(this);
    SetUpPoints({mUi->lblNoOutputs, mUi->pnlOutputs, mUi->lblNotDownloaded, mUi->tvOutputs});
    SetUpControl();
    SetUpRelations();
    connect(mUi->tbOutputs, &OutputBar::ButtonClicked, this, &FrameOutputs::ButtonClicked);
    Clear();
}

FrameOutputs::~FrameOutputs() = default;

void FrameOutputs::SetUpControl()
{
    // Completing what is typed would turn a 5 into 50%.
    mUi->cmbDPWMC->setCompleter(nullptr);
    mUi->cmbDPWMC->setProperty(kTag, QStringLiteral("0"));
    connect(mUi->cmbDPWMC, &QComboBox::currentTextChanged, this,
            [this](const QString& level) { mUi->cmdDPWMC->setToolTip(OutputTexts::ForceTip(level)); });
    connect(mUi->cmbDPWMC->lineEdit(), &QLineEdit::returnPressed, mUi->cmdDPWMC, &QPushButton::click);
    connect(mUi->cmdDPWMC, &QPushButton::clicked, this, &FrameOutputs::ForceClicked);
}

void FrameOutputs::SetUpRelations()
{
    mUi->lvRelations->setModel(mRelations);
    FitOpColumn();
    connect(mUi->lvRelations, &QTreeView::doubleClicked, this, &FrameOutputs::ReportTerm);
    mUi->lvRelations->installEventFilter(this);
}

void FrameOutputs::Clear()
{
    ClearPoints();
    mUi->tbOutputs->SetCount(0);
    mRelations->SetRows({});
}

OutputBar& FrameOutputs::Buttons()
{
    return *mUi->tbOutputs;
}

void FrameOutputs::SelectOutput(int number)
{
    SelectPoint(number);
    if (number == 0)  // the list of levels is filled anew for the next output
        mUi->cmbDPWMC->setProperty(kTag, QStringLiteral("0"));
}

void FrameOutputs::ReportTerm(const QModelIndex& index)
{
    const int command = index.data(RelationModel::TagRole).toInt();
    if (command > 0)
        Q_EMIT CommandChosen(command, mRelations->Rows().at(index.row()).op);
}

bool FrameOutputs::eventFilter(QObject* watched, QEvent* event)
{
    // Enter does what the double click does.
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (watched == mUi->lvRelations && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
        ReportTerm(mUi->lvRelations->currentIndex());
        return true;
    }
    return PointFrame::eventFilter(watched, event);
}

void FrameOutputs::ShowDetails(const OutputDetails& details)
{
    mUi->lblShed->setText(details.shed);
    mUi->lblFlashing->setText(details.flashing);
    mUi->lblSeqOnTitle->setText(details.timing.onTitle);
    mUi->lblSeqOn->setText(details.timing.on);
    const bool pair = !details.timing.offTitle.isEmpty();
    mUi->lblOffTitle->setVisible(pair);
    mUi->lblOff->setVisible(pair);
    if (pair)
        mUi->lblOffTitle->setText(details.timing.offTitle);
    mUi->lblOff->setText(details.timing.off);
    mUi->lblFaults->setText(details.fault);
    mFaulty = details.faulty;
    PaintFault();
}

void FrameOutputs::ShowNoWholeValues()
{
    mUi->lblFlashing->setText(QLatin1String(OutputTexts::kUnavailable));
    mUi->lblShed->setText(QLatin1String(OutputTexts::kUnavailable));
}

void FrameOutputs::ClearFlashingAndFaults()
{
    mUi->lblFlashing->clear();
    mUi->lblFaults->clear();
}

void FrameOutputs::SetTerms(const QList<TermRow>& rows)
{
    mRelations->SetRows(rows);
    // A word that stands for all terms is longer than an operator.
    for (int row = 0; row < rows.size(); ++row)
        mUi->lvRelations->setFirstColumnSpanned(row, QModelIndex(), rows[row].command.isEmpty());
}

void FrameOutputs::FitOpColumn()
{
    const int text = mUi->lvRelations->fontMetrics().horizontalAdvance(QStringLiteral("(ERR)"));
    mUi->lvRelations->header()->resizeSection(RelationModel::OpColumn, qMax(kOpWidth, text + kCellMargin));
}

void FrameOutputs::HideControl()
{
    mUi->lblDPMC->hide();
    mUi->cmbDPWMC->hide();
    mUi->cmdDPWMC->hide();
}

void FrameOutputs::ShowControl()
{
    mUi->lblDPMC->show();
    mUi->cmbDPWMC->show();
    mUi->cmdDPWMC->show();
}

void FrameOutputs::FillLevels(int pwmKind)
{
    const bool known = pwmKind == 1 || pwmKind == 2;
    const QString tag = QString::number(known ? pwmKind : 0);
    if (known && mUi->cmbDPWMC->property(kTag).toString() == tag)
        return;
    mUi->cmbDPWMC->clear();
    mUi->cmbDPWMC->setProperty(kTag, tag);
    if (!known)
        return;
    mUi->cmbDPWMC->addItem(QLatin1String(OutputTexts::kRelease), 0);
    for (int percent = pwmKind == 1 ? kStep : 0; percent <= 100; percent += kStep)
        mUi->cmbDPWMC->addItem(QStringLiteral("%1%").arg(percent), percent);
}

void FrameOutputs::SetLevel(const QString& level)
{
    mUi->cmbDPWMC->setCurrentIndex(mUi->cmbDPWMC->findText(level, Qt::MatchExactly | Qt::MatchCaseSensitive));
    mUi->cmbDPWMC->setEditText(level);
    mUi->cmdDPWMC->setToolTip(OutputTexts::ForceTip(level));
}

QString FrameOutputs::Level() const
{
    return mUi->cmbDPWMC->currentText();
}

void FrameOutputs::FocusLevel()
{
    mUi->cmbDPWMC->setFocus();
}

void FrameOutputs::PaintFault()
{
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, ReadableColor(mFaulty ? kFaultColor : kNoFaultColor, colors));
    mUi->lblFaults->setPalette(colors);
}

void FrameOutputs::changeEvent(QEvent* event)
{
    PointFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        PaintFault();
    if (event->type() == QEvent::FontChange)
        FitOpColumn();
}

}  // namespace fenrik
