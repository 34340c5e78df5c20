#include "remote/RemoteFollowers.h"

#include "remote/RemoteHost.h"
#include "shared/ErrorReporter.h"

#include <algorithm>

namespace fenrik {

void RemoteFollowers::Add(IRemoteStateable& follower)
{
    if (std::ranges::find(mFollowers, &follower) == mFollowers.end())
        mFollowers.push_back(&follower);
}

void RemoteFollowers::Remove(IRemoteStateable& follower)
{
    std::erase(mFollowers, &follower);
}

void RemoteFollowers::setRemoteState(std::int32_t state)
{
    Guarded(mErrors, "RDMain.setRemoteState", [this, state] {
        // A window may close at a state, or another one open.
        const auto followers = mFollowers;
        for (auto* follower : followers)
            if (std::ranges::find(mFollowers, follower) != mFollowers.end())
                follower->setState(state);
    });
}

}  // namespace fenrik
