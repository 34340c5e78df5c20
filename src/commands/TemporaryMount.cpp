#include "commands/TemporaryMount.h"

#include "commands/CommandsHost.h"
#include "model/CSystem.h"

namespace fenrik {

TemporaryMount::TemporaryMount(CommandsHost& host, const CSystem& system)
    : mHost(host), mSystem(system), mEarlier(system.MountedNodeNumber())
{
}

void TemporaryMount::Mount(int node)
{
    mMade = true;
    mHost.MountNode(node);
}

void TemporaryMount::PutBack()
{
    // A failed mount may have cost the earlier one, so what counts is what is mounted now.
    const int now = mSystem.MountedNodeNumber();
    if (!mMade || now == mEarlier)
        return;
    if (mEarlier != 0)
        mHost.MountNode(mEarlier);
    else
        mHost.UnmountNode(now);
}

}  // namespace fenrik
