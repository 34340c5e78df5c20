#include "shared/Settings.h"

#include "platform/Error.h"
#include "platform/SettingsStore.h"
#include "shared/TextFormat.h"

#include <cmath>
#include <limits>
#include <variant>

namespace fenrik {

namespace {

using Member = std::variant<bool Settings::*, std::int16_t Settings::*, std::int32_t Settings::*, QString Settings::*>;

struct Key {
    const char* section;
    const char* key;
    Member member;
    const char* defaultValue;
    bool read = true;
};

// The order is the order of reading and writing: what stands behind a broken value keeps zero.
constexpr const char* kSettings = "Settings";
constexpr const char* kLogging = "Logging";
constexpr const char* kDatabase = "Database";
const Key kKeys[] = {
    {kSettings, "AutoDetect", &Settings::AutoDetect, "True"},
    {kSettings, "ListAllMsgs", &Settings::ListAllMsgs, "False"},
    {kSettings, "CommPort", &Settings::CommPort, "1"},
    {kSettings, "BaudRate", &Settings::BaudRate, "9600"},
    {kSettings, "FirstRun", &Settings::FirstRun, "True"},
    {kSettings, "Protocol", &Settings::Protocol, "Fenrik 2000"},
    {kSettings, "ShowFenrikInternal", &Settings::ShowFenrikInternal, "False"},
    {kSettings, "SendSync", &Settings::SendSync, "False"},
    {kSettings, "CompactList", &Settings::CompactList, "False"},
    {kSettings, "NodesInSystem", &Settings::NodesInSystem, "8"},
    {kSettings, "HexData", &Settings::HexData, "False"},
    {kSettings, "SelectedMarket", &Settings::SelectedMarket, "1"},
    {kSettings, "ModemCommPort", &Settings::ModemCommPort, "1"},
    {kSettings, "ModemBaudRate", &Settings::ModemBaudRate, "57600"},
    {kSettings, "LastPhoneNumber", &Settings::LastPhoneNumber, ""},
    {kSettings, "ModemInitString", &Settings::ModemInitString, ""},
    {kSettings, "ConnectionType", &Settings::ConnectionType, "1"},
    {kSettings, "SystemName", &Settings::SystemName, "", false},
    {kSettings, "SystemPath", &Settings::SystemPath, "", false},
    {kLogging, "On", &Settings::LoggingOn, "True"},
    {kLogging, "Unique", &Settings::LoggingUnique, "True"},
    {kLogging, "Buffered", &Settings::LoggingBuffered, "False"},
    {kLogging, "BufferMax", &Settings::LoggingBufferMax, "25"},
    {kLogging, "EventTrigger", &Settings::LoggingEventTrigger, "0"},
    {kLogging, "Disconnect", &Settings::LoggingDisconnect, "False"},
    {kLogging, "Redirected", &Settings::LoggingRedirected, "False"},
    {kDatabase, "Path", &Settings::DatabasePath, ""},
    {kDatabase, "Name", &Settings::DatabaseName, ""},
    {kDatabase, "SystemName", &Settings::DatabaseSystemName, ""},
    {kDatabase, "Created", &Settings::DatabaseCreated, ""},
    {kDatabase, "By", &Settings::DatabaseBy, ""},
};

[[noreturn]] void Mismatch(const Key& key, const QString& text)
{
    throw Error(ErrorNumber::kTypeMismatch,
                QStringLiteral("Type mismatch: the setting \"%1\" in [%2] has the value \"%3\"")
                    .arg(QLatin1String(key.key), QLatin1String(key.section), text));
}

double ToNumber(const Key& key, const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        Mismatch(key, text);
    return number;
}

bool ToBoolean(const Key& key, const QString& text)
{
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    return ToNumber(key, text) != 0;
}

template <typename Integer>
Integer ToInteger(const Key& key, const QString& text)
{
    // A fraction is rounded, a half to the even neighbour.
    const double number = std::nearbyint(ToNumber(key, text));
    if (number < std::numeric_limits<Integer>::min() || number > std::numeric_limits<Integer>::max())
        throw Error(ErrorNumber::kOverflow, QStringLiteral("Overflow: the setting \"%1\" in [%2] has the value \"%3\"")
                                                .arg(QLatin1String(key.key), QLatin1String(key.section), text));
    return Integer(number);
}

/// Moves one setting between its text and its member.
struct TextToMember {
    const Key& key;
    const QString& text;
    Settings& settings;
    void operator()(bool Settings::*member) const { settings.*member = ToBoolean(key, text); }
    void operator()(std::int16_t Settings::*member) const { settings.*member = ToInteger<std::int16_t>(key, text); }
    void operator()(std::int32_t Settings::*member) const { settings.*member = ToInteger<std::int32_t>(key, text); }
    void operator()(QString Settings::*member) const { settings.*member = text; }
};

struct MemberToText {
    const Settings& settings;
    QString operator()(bool Settings::*member) const { return BooleanText(settings.*member); }
    QString operator()(std::int16_t Settings::*member) const { return QString::number(settings.*member); }
    QString operator()(std::int32_t Settings::*member) const { return QString::number(settings.*member); }
    QString operator()(QString Settings::*member) const { return settings.*member; }
};

void SaveKey(SettingsStore& store, const Settings& settings, const Key& key)
{
    store.SaveSetting(QLatin1String(key.section), QLatin1String(key.key),
                      std::visit(MemberToText{settings}, key.member));
}

}  // namespace

void LoadSettings(const SettingsStore& store, Settings& settings)
{
    settings = Settings();
    for (const Key& key : kKeys) {
        if (!key.read)
            continue;
        const QString text =
            store.GetSetting(QLatin1String(key.section), QLatin1String(key.key), QLatin1String(key.defaultValue));
        std::visit(TextToMember{key, text, settings}, key.member);
    }
}

void SaveSettings(SettingsStore& store, const Settings& settings)
{
    for (const Key& key : kKeys)
        SaveKey(store, settings, key);
    store.Sync();
}

void SaveLoggingSettings(SettingsStore& store, const Settings& settings)
{
    for (const Key& key : kKeys) {
        if (QLatin1String(key.section) == QLatin1String(kLogging))
            SaveKey(store, settings, key);
    }
    store.Sync();
}

}  // namespace fenrik
