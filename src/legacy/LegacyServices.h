#pragma once

#include <QString>

namespace fenrik {

class Boxes;
class Clock;
class ErrorReporter;
class EventPump;
class MsgLogging;
class SerialControl;
class SettingsStore;
class VersionInfo;
struct AsciiMap;
struct Settings;

/// What the program owns and the window of the older network needs.
struct LegacyServices {
    Settings& settings;
    SettingsStore& store;
    SerialControl& port;
    MsgLogging& log;
    const Clock& clock;
    EventPump& pump;
    Boxes& boxes;
    ErrorReporter& errors;
    const VersionInfo& version;
    const AsciiMap& asciiMap;
    QString programFolder;  ///< where the choice of a database begins
};

}  // namespace fenrik
