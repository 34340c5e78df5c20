#include "widgets/StatusLine.h"

namespace fenrik {

namespace {

constexpr int kProgressWidth = 200;

QLabel* MakeLabel(const QString& name, const QString& accessibleName)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setAccessibleName(accessibleName);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

StatusLine::StatusLine(QWidget* parent)
    : QStatusBar(parent), mStatus(MakeLabel(QStringLiteral("txtStatus"), tr("Connection state"))),
      mMsg(MakeLabel(QStringLiteral("txtMsg"), tr("Last message"))), mProgress(new QProgressBar)
{
    setObjectName(QStringLiteral("StatusLine"));
    mStatus->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("Initializing Transceiver...  ")));
    // A long message must not widen the window.
    mMsg->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addWidget(mStatus);
    addWidget(mMsg, 1);
    mProgress->setObjectName(QStringLiteral("pbProgress"));
    mProgress->setAccessibleName(tr("Progress"));
    mProgress->setToolTip(tr("Escape breaks the download off"));
    mProgress->setMaximumWidth(kProgressWidth);
    mProgress->hide();
    addPermanentWidget(mProgress);
}

void StatusLine::StartProgress(int total)
{
    mProgress->setRange(0, total);
    mProgress->setValue(0);
    mProgress->show();
}

void StatusLine::StepProgress(int step)
{
    mProgress->setValue(qMin(mProgress->value() + step, mProgress->maximum()));
}

void StatusLine::EndProgress()
{
    mProgress->hide();
}

void StatusLine::setStatus(const QString& text)
{
    mStatus->setText(text);
}

void StatusLine::setMsg(const QString& text)
{
    mMsg->setText(text);
    mMsg->setToolTip(text);
}

}  // namespace fenrik
