#pragma once

namespace fenrik {

class Boxes;
class Clock;
class CMsgHandler;
class CommandTable;
class ComPorts;
class ErrorReporter;
class EventPump;
class MsgLogging;
class PipeSettings;
class ProgramFolder;
class RDMain;
class SerialControl;
class SettingsStore;
class Shell;
class SpecialCommands;
class VersionInfo;
struct RunState;
struct Settings;

/// What MMain owns and everything in a main window may need, handed out as one value of references.
struct Services {
    Settings& settings;
    SettingsStore& store;
    SettingsStore& windowStore;  ///< for what the settings have no place for
    RunState& run;
    CommandTable& commands;
    SpecialCommands& specials;
    SerialControl& port;
    CMsgHandler& handler;
    MsgLogging& log;
    const Clock& clock;
    EventPump& pump;
    Boxes& boxes;
    Shell& shell;
    ErrorReporter& errors;
    const VersionInfo& version;
    const ProgramFolder& folder;
    const ComPorts& ports;
    RDMain& remote;          ///< the user's choice for remote diagnostics
    PipeSettings& profiles;  ///< where its profiles are kept
};

}  // namespace fenrik
