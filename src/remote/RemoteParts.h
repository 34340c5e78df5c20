#pragma once

namespace fenrik {

class Boxes;
class Clock;
class CMsgHandler;
class ErrorReporter;
class EventPump;
class RemoteChat;
class RemoteConnectionHost;
class RemoteStateView;
class RemoteWindows;

/// What a remote connection needs from around it, handed out as one value of references.
struct RemoteParts {
    CMsgHandler& handler;
    const Clock& clock;
    EventPump& pump;
    Boxes& boxes;
    ErrorReporter& errors;
    RemoteStateView& view;
    RemoteChat& chat;
    RemoteWindows& windows;
    RemoteConnectionHost& host;
};

}  // namespace fenrik
