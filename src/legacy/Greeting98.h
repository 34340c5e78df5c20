#pragma once

#include <QString>

namespace fenrik {

class EventPump;
class Graphics;
class VersionInfo;

/// The greeting on the wide face, once: for half a second dark, then lit. Clearing the face ends it, also before it has
/// begun.
class Greeting98 {
public:
    /// All outlive it.
    Greeting98(Graphics& graphics, EventPump& pump, const VersionInfo& version)
        : mGraphics(graphics), mPump(pump), mVersion(version)
    {
    }

    /// Takes a second, in which events are delivered. Any call but the first does nothing.
    void Play();

private:
    [[nodiscard]] bool Over() const;
    void Draw(bool dim);

    Graphics& mGraphics;
    EventPump& mPump;
    const VersionInfo& mVersion;
    bool mPlayed = false;
};

}  // namespace fenrik
