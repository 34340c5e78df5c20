#include "diagnostics/CollisionMonitor.h"

#include "diagnostics/MiscFace.h"
#include "diagnostics/NodeViewHost.h"
#include "shared/ErrorReporter.h"

#include <QScopeGuard>

namespace fenrik {

namespace {

constexpr int kPollMilliseconds = 1000;

}  // namespace

CollisionMonitor::CollisionMonitor(CollisionHost& host, MiscFace& panel, ErrorReporter& errors, QObject* parent)
    : QObject(parent), mHost(host), mPanel(panel), mErrors(errors), mPoll(this)
{
    mPoll.setObjectName(QStringLiteral("TPollCollision"));
    mPoll.setInterval(kPollMilliseconds);
    connect(&mPoll, &QTimer::timeout, this,
            [this] { Guarded(mErrors, "frmmain:TPollCollision:Timer", [this] { Poll(); }); });
}

void CollisionMonitor::SetCollisionMonitor(bool on)
{
    mHost.setCollisionPressed(on);
    if (on)
        mPoll.start();
    else
        mPoll.stop();
    mHost.setTxtMsg(Text(on));
    mPanel.StepSpinner(!on);
    mPanel.ShowNC(on);
}

void CollisionMonitor::Poll()
{
    if (mHost.MountedNodeNumber() == 0)
        return;
    if (!mHost.UIReady()) {
        mHost.setTxtMsg(tr("Currently processing another message"));
        return;
    }
    mHost.SetUIState(NodeViewHost::kBusy);
    const auto ready = qScopeGuard([this] { mHost.SetUIState(NodeViewHost::kReady); });
    mHost.setTxtMsg(Text(true));
    mPanel.StepSpinner(false);
    mPanel.ShowNC(true);
}

QString CollisionMonitor::Text(bool on) const
{
    QString text = on ? tr("Node collision monitoring enabled") : tr("Node collision monitoring disabled");
    if (const int node = mHost.MountedNodeNumber(); node != 0)
        text += tr(" on Node %1.").arg(node);
    return text;
}

}  // namespace fenrik
