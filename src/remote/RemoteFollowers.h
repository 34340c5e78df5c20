#pragma once

#include <cstdint>
#include <vector>

namespace fenrik {

class ErrorReporter;
class IRemoteStateable;

/// The windows that follow the remote connection, in the order in which they came. The main window's is first, since
/// it stores the state and the others ask for it.
class RemoteFollowers {
public:
    explicit RemoteFollowers(ErrorReporter& errors) : mErrors(errors) {}

    /// `follower` is removed before it goes away. Both may be called from a follower's setState.
    void Add(IRemoteStateable& follower);
    void Remove(IRemoteStateable& follower);

    /// Tells everybody. Who throws is reported, and those behind aren't told.
    void setRemoteState(std::int32_t state);

private:
    ErrorReporter& mErrors;
    std::vector<IRemoteStateable*> mFollowers;
};

}  // namespace fenrik
