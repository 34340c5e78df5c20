#include "options/frmAbout.h"

#include "options/DatabaseInformation.h"
#include "options/WebPages.h"
#include "platform/Boxes.h"
#include "platform/Shell.h"
#include "platform/VersionInfo.h"
#include "shared/ErrorReporter.h"
#include "widgets/ToolIcon.h"

#include "ui_frmAbout.h"

#include <QKeyEvent>

namespace fenrik {

namespace {

constexpr int kLogo = 64;
constexpr double kTitleScale = 1.6;

bool IsModifier(int key)
{
    return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_AltGr;
}

}  // namespace

frmAbout::frmAbout(const Parts& parts, QWidget* parent)
    : QDialog(parent), mParts(parts), mUi(std::make_unique<Ui::frmAbout>())
{
    mUi->setupUi(this);
    Guarded(mParts.errors, "frmAbout.Form.Load", [this] {
        ShowVersion();
        ShowLogos();
        SetUpLinks();
    });
}

frmAbout::~frmAbout() = default;

void frmAbout::ShowVersion()
{
    QFont large = mUi->lblAppTitle->font();
    large.setPointSizeF(large.pointSizeF() * kTitleScale);
    large.setBold(true);
    mUi->lblAppTitle->setFont(large);
    mUi->lblAppTitle->setText(VersionInfo::Title());
    mUi->lblBuild->setText(QStringLiteral("Version %1 [build %2%3")
                               .arg(mParts.version.MajorMinorRevision(), mParts.version.Build(),
                                    mParts.version.IsBeta() ? QStringLiteral(" BETA]") : QStringLiteral("]")));
    if (mParts.version.IsBeta())
        mUi->lblBetaRelease->setText(QStringLiteral("non-released"));
    else if (mParts.version.IsTest() || mParts.version.IsDebug())
        mUi->lblBetaRelease->setText(QStringLiteral("test version"));
    mUi->lblBetaRelease->setVisible(!mUi->lblBetaRelease->text().isEmpty());
    mUi->lblCopyright->setText(VersionInfo::Copyright());
}

void frmAbout::ShowLogos()
{
    mUi->imFenrikLogo->setPixmap(ToolIcon(QStringLiteral("fenrik-diagnostics")).pixmap(kLogo));
    mUi->imHarnwickLogo->setPixmap(ToolIcon(QStringLiteral("HarnwickLogo")).pixmap(kLogo));
}

void frmAbout::SetUpLinks()
{
    mUi->lblFenrikLink->setText(QLatin1String(WebPages::kFenrik));
    mUi->lblFenrikLink->SetKey(QKeySequence(Qt::ALT | Qt::Key_F), tr("Fenrik Diagnostics on the web"));
    connect(mUi->lblFenrikLink, &LinkLabel::Clicked, this, [this] { OpenPage(WebPages::kFenrik); });
    mUi->lblHarnwickLink->setText(QLatin1String(WebPages::kHarnwick));
    mUi->lblHarnwickLink->SetKey(QKeySequence(Qt::ALT | Qt::Key_H), tr("Harnwick on the web"));
    connect(mUi->lblHarnwickLink, &LinkLabel::Clicked, this, [this] { OpenPage(WebPages::kHarnwick); });
    mUi->lDatabaseInfo->SetKey(QKeySequence(Qt::ALT | Qt::Key_D), tr("Versions and places of the databases"));
    connect(mUi->lDatabaseInfo, &LinkLabel::Clicked, this, &frmAbout::ShowDatabases);
}

void frmAbout::OpenPage(const char* address)
{
    if (mParts.shell.OpenPage(QLatin1String(address)) != Shell::kOpened)
        mParts.boxes.MsgBox(tr("No browser could be started for %1").arg(QLatin1String(address)), QMessageBox::Warning);
}

void frmAbout::ShowDatabases()
{
    mParts.boxes.MsgBox(DatabaseInformation(mParts.programFolder), QMessageBox::Information, QMessageBox::Ok,
                        QStringLiteral("Fenrik Database Information"));
}

void frmAbout::keyPressEvent(QKeyEvent* event)
{
    // A key that is still held from opening the window is none, nor is half of a combination.
    if (!event->isAutoRepeat() && !IsModifier(event->key()))
        close();
}

void frmAbout::mouseReleaseEvent(QMouseEvent*)
{
    close();
}

}  // namespace fenrik
