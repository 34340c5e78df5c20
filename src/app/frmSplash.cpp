#include "app/frmSplash.h"

#include "platform/VersionInfo.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace fenrik {

namespace {

constexpr int kMargin = 28;

QLabel* AddLabel(QVBoxLayout& layout, const QString& name, const QString& text)
{
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignCenter);
    layout.addWidget(label);
    return label;
}

}  // namespace

frmSplash::frmSplash(const VersionInfo& version) : QFrame(nullptr, Qt::SplashScreen)
{
    setObjectName(QStringLiteral("frmSplash"));
    setFrameShape(QFrame::Box);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin / 2);
    QLabel* title = AddLabel(*layout, QStringLiteral("lblTitle"),
                             QStringLiteral("%1 v%2").arg(VersionInfo::Title(), version.GetVersionRelease()));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    title->setFont(large);
    AddLabel(*layout, QStringLiteral("lblCopyright"), VersionInfo::Copyright());
    mLoadStatus = AddLabel(*layout, QStringLiteral("lblLoadStatus"), QString());
    adjustSize();
    move(QGuiApplication::primaryScreen()->availableGeometry().center() - rect().center());
}

void frmSplash::setInfo(const QString& text)
{
    mLoadStatus->setText(text);
}

}  // namespace fenrik
