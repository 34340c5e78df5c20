#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

class SettingsStore;

/// Everything that the program remembers between two runs, one member for each key and under the key's name.
/// Read once at start, changed by the windows, written once at the end.
///
/// In the store booleans are "True" and "False" and numbers are decimal.
struct Settings {
    bool AutoDetect = false;    ///< find the nodes when connecting
    bool ListAllMsgs = false;   ///< internal messages are listed too
    std::int16_t CommPort = 0;  ///< number of the transceiver's serial port
    std::int32_t BaudRate = 0;
    bool FirstRun = false;            ///< no settings had been saved when the program started
    QString Protocol;                 ///< "Fenrik 2000" or "Fenrik 98"
    bool ShowFenrikInternal = false;  ///< internal categories of the catalogue are offered
    bool SendSync = false;
    bool CompactList = false;        ///< one line for each command
    std::int16_t NodesInSystem = 0;  ///< nodes to scan while no system is defined
    bool HexData = false;
    std::int32_t SelectedMarket = 0;  ///< market subset of the default catalogue
    std::int16_t ModemCommPort = 0;
    std::int32_t ModemBaudRate = 0;
    QString LastPhoneNumber;
    QString ModemInitString;
    std::int32_t ConnectionType = 0;  ///< 1 transceiver, 2 modem, 3 relay
    QString SystemName;               ///< saved, never read: each run starts without a system
    QString SystemPath;

    bool LoggingOn = false;
    bool LoggingUnique = false;
    bool LoggingBuffered = false;
    std::int32_t LoggingBufferMax = 0;
    std::int32_t LoggingEventTrigger = 0;
    bool LoggingDisconnect = false;
    bool LoggingRedirected = false;

    QString DatabasePath;  ///< database of the older network
    QString DatabaseName;
    QString DatabaseSystemName;
    QString DatabaseCreated;
    QString DatabaseBy;

    static constexpr const char* kLegacyProtocol = "Fenrik 98";
    [[nodiscard]] bool IsLegacyProtocol() const { return Protocol == QLatin1String(kLegacyProtocol); }
};

/// Fills `settings` from the store in the order of the table of keys; a missing key takes its default. A text that
/// does not fit its key's type throws Error 13 (or 6 for a number that is too large), and the settings after it keep
/// zero, False and empty text.
void LoadSettings(const SettingsStore& store, Settings& settings);

/// Writes all keys in the order of the table. Throws Error 75 when the file can't be written.
void SaveSettings(SettingsStore& store, const Settings& settings);

/// The same for the group "Logging" alone.
void SaveLoggingSettings(SettingsStore& store, const Settings& settings);

}  // namespace fenrik
