#pragma once

namespace fenrik {

class CommandsHost;
class CSystem;

/// A mount for the length of one window: remembers which node was mounted when it was made, and puts that back.
class TemporaryMount {
public:
    /// Both references outlive the object.
    TemporaryMount(CommandsHost& host, const CSystem& system);

    /// Mounts `node`, in place of whichever is mounted. Waits.
    void Mount(int node);

    /// Puts the mount back as it was, if Mount has changed it. Waits.
    void PutBack();

private:
    CommandsHost& mHost;
    const CSystem& mSystem;
    int mEarlier;
    bool mMade = false;
};

}  // namespace fenrik
