#pragma once

namespace fenrik {

class Boxes;
class CMsgHandler;
class CommandTable;
class DownloadHost;
class ErrorReporter;
class EventPump;

/// What the nodes of a system use to talk to the network and to report on it. All references outlive the system
/// that holds it.
struct NodeLink {
    CMsgHandler& handler;
    EventPump& pump;
    const CommandTable& commands;
    Boxes& boxes;
    ErrorReporter& errors;
    DownloadHost* host = nullptr;  ///< the window that shows a download; may be absent
};

}  // namespace fenrik
