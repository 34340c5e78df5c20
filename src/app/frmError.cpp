#include "app/frmError.h"

#include "platform/VersionInfo.h"

#include "ui_frmError.h"

#include <QIcon>
#include <QLayout>

namespace fenrik {

namespace {

constexpr int kBugSize = 64;
constexpr int kWidth = 460;
constexpr double kOopsScale = 1.6;

}  // namespace

frmError::frmError(const VersionInfo& version, const QString& details, QWidget* parent)
    : QDialog(parent), mUi(std::make_unique<Ui::frmError>())
{
    mUi->setupUi(this);
    mUi->lblTitle->setText(VersionInfo::Title() + QLatin1Char(' ') + version.MajorMinorRevision());
    QFont large = mUi->lblOpps->font();
    large.setPointSizeF(large.pointSizeF() * kOopsScale);
    mUi->lblOpps->setFont(large);
    mUi->imgBug->setPixmap(
        QIcon(QStringLiteral(":/icons/imgBug.png")).pixmap(QSize(kBugSize, kBugSize), devicePixelRatioF()));
    mUi->tbDetails->setPlainText(details);
    connect(mUi->cmdDetails, &QPushButton::clicked, this, &frmError::FlipDetails);
    connect(mUi->cmdOk, &QPushButton::clicked, this, &QDialog::accept);
    resize(kWidth, layout()->totalHeightForWidth(kWidth));
}

frmError::~frmError() = default;

void frmError::FlipDetails()
{
    const bool show = mUi->tbDetails->isHidden();
    mUi->tbDetails->setVisible(show);
    mUi->cmdDetails->setText(show ? QStringLiteral("<< Details <<") : QStringLiteral(">> Details >>"));
    // adjustSize would take the narrowest width as well and break all lines anew.
    layout()->activate();
    resize(width(), layout()->totalHeightForWidth(width()));
}

}  // namespace fenrik
