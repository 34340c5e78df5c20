#include "shared/Settings.h"

#include "platform/Error.h"
#include "platform/SettingsStore.h"
#include "support/Printers.h"

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <variant>

namespace fenrik {
namespace {

using testing::UnorderedElementsAreArray;

using Member = std::variant<bool Settings::*, std::int16_t Settings::*, std::int32_t Settings::*, QString Settings::*>;

/// One key of the store: its default, and another text that it can hold.
struct KeyRow {
    const char* section;
    const char* key;
    Member member;
    const char* defaultText;
    const char* otherText;
};

const KeyRow kRows[] = {
    {"Settings", "AutoDetect", &Settings::AutoDetect, "True", "False"},
    {"Settings", "ListAllMsgs", &Settings::ListAllMsgs, "False", "True"},
    {"Settings", "CommPort", &Settings::CommPort, "1", "16"},
    {"Settings", "BaudRate", &Settings::BaudRate, "9600", "115200"},
    {"Settings", "FirstRun", &Settings::FirstRun, "True", "False"},
    {"Settings", "Protocol", &Settings::Protocol, "Fenrik 2000", "Fenrik 98"},
    {"Settings", "ShowFenrikInternal", &Settings::ShowFenrikInternal, "False", "True"},
    {"Settings", "SendSync", &Settings::SendSync, "False", "True"},
    {"Settings", "CompactList", &Settings::CompactList, "False", "True"},
    {"Settings", "NodesInSystem", &Settings::NodesInSystem, "8", "32"},
    {"Settings", "HexData", &Settings::HexData, "False", "True"},
    {"Settings", "SelectedMarket", &Settings::SelectedMarket, "1", "70000"},
    {"Settings", "ModemCommPort", &Settings::ModemCommPort, "1", "-32768"},
    {"Settings", "ModemBaudRate", &Settings::ModemBaudRate, "57600", "2147483647"},
    {"Settings", "LastPhoneNumber", &Settings::LastPhoneNumber, "", "0049 89, 123"},
    {"Settings", "ModemInitString", &Settings::ModemInitString, "", " AT&F\"x\" 50%\\N3"},
    {"Settings", "ConnectionType", &Settings::ConnectionType, "1", "3"},
    {"Logging", "On", &Settings::LoggingOn, "True", "False"},
    {"Logging", "Unique", &Settings::LoggingUnique, "True", "False"},
    {"Logging", "Buffered", &Settings::LoggingBuffered, "False", "True"},
    {"Logging", "BufferMax", &Settings::LoggingBufferMax, "25", "100000"},
    {"Logging", "EventTrigger", &Settings::LoggingEventTrigger, "0", "905"},
    {"Logging", "Disconnect", &Settings::LoggingDisconnect, "False", "True"},
    {"Logging", "Redirected", &Settings::LoggingRedirected, "False", "True"},
    {"Database", "Path", &Settings::DatabasePath, "", "C:\\cars, old"},
    {"Database", "Name", &Settings::DatabaseName, "", "M\xC3\xBCller.dav"},
    {"Database", "SystemName", &Settings::DatabaseSystemName, "", "100% \"new\""},
    {"Database", "Created", &Settings::DatabaseCreated, "", "14.03.2026"},
    {"Database", "By", &Settings::DatabaseBy, "", "  J\xC3\xB6rg"},
};

QString TextOf(const Settings& settings, const Member& member)
{
    return std::visit(
        [&settings](auto pointer) {
            const auto& value = settings.*pointer;
            using Value = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, QString>)
                return value;
            else if constexpr (std::is_same_v<Value, bool>)
                return QString::fromLatin1(value ? "True" : "False");
            else
                return QString::number(value);
        },
        member);
}

class SettingsFile : public testing::Test {
protected:
    void Save(const Settings& settings)
    {
        SettingsStore store(path);
        SaveSettings(store, settings);
    }

    Settings Load()
    {
        Settings settings;
        LoadSettings(SettingsStore(path), settings);
        return settings;
    }

    void Put(const char* section, const char* key, const QString& value)
    {
        SettingsStore store(path);
        store.SaveSetting(section, key, value);
        store.Sync();
    }

    /// Loads into `settings` and gives the number of the error.
    int LoadError(Settings& settings)
    {
        try {
            LoadSettings(SettingsStore(path), settings);
        } catch (const Error& error) {
            return error.Number();
        }
        return 0;
    }

    QTemporaryDir folder;
    QString path = folder.path() + QStringLiteral("/settings.ini");
};

class SettingsKeys : public SettingsFile, public testing::WithParamInterface<KeyRow> {};

TEST_P(SettingsKeys, HaveTheirDefaultInAnEmptyStore)
{
    EXPECT_EQ(TextOf(Load(), GetParam().member), QString::fromUtf8(GetParam().defaultText));
}

TEST_P(SettingsKeys, AreReadUnderTheirSectionAndName)
{
    Put(GetParam().section, GetParam().key, QString::fromUtf8(GetParam().otherText));
    const Settings settings = Load();
    for (const KeyRow& row : kRows) {
        const bool changed = row.member == GetParam().member;
        EXPECT_EQ(TextOf(settings, row.member), QString::fromUtf8(changed ? row.otherText : row.defaultText))
            << row.key;
    }
}

TEST_P(SettingsKeys, AreSavedInTheirStoredForm)
{
    Put(GetParam().section, GetParam().key, QString::fromUtf8(GetParam().otherText));
    const Settings settings = Load();
    QFile::remove(path);
    Save(settings);
    EXPECT_EQ(SettingsStore(path).GetSetting(GetParam().section, GetParam().key, "missing"),
              QString::fromUtf8(GetParam().otherText));
    EXPECT_EQ(TextOf(Load(), GetParam().member), QString::fromUtf8(GetParam().otherText));
}

INSTANTIATE_TEST_SUITE_P(Settings, SettingsKeys, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.section) + row.param.key; });

TEST_F(SettingsFile, SavingWritesEveryKey)
{
    Save(Load());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    std::map<std::string, std::vector<std::string>> keys;
    std::string section;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith('['))
            section = line.mid(1, line.size() - 2).toStdString();
        else if (line.contains('='))
            keys[section].push_back(line.left(line.indexOf('=')).toStdString());
    }
    EXPECT_THAT(keys["Settings"],
                UnorderedElementsAreArray({"AutoDetect", "ListAllMsgs", "CommPort", "BaudRate", "FirstRun", "Protocol",
                                           "ShowFenrikInternal", "SendSync", "CompactList", "NodesInSystem", "HexData",
                                           "SelectedMarket", "ModemCommPort", "ModemBaudRate", "LastPhoneNumber",
                                           "ModemInitString", "ConnectionType", "SystemName", "SystemPath"}));
    EXPECT_THAT(keys["Logging"], UnorderedElementsAreArray({"On", "Unique", "Buffered", "BufferMax", "EventTrigger",
                                                            "Disconnect", "Redirected"}));
    EXPECT_THAT(keys["Database"], UnorderedElementsAreArray({"Path", "Name", "SystemName", "Created", "By"}));
    EXPECT_EQ(keys.size(), 3u);
}

// Each run starts without a system, whatever the last one worked on.
TEST_F(SettingsFile, SystemNameAndSystemPathAreSavedAndNeverRead)
{
    Settings settings = Load();
    settings.SystemName = "Bus 7";
    settings.SystemPath = "/cars/bus7.dav";
    settings.DatabaseSystemName = "Old bus";
    Save(settings);
    EXPECT_EQ(SettingsStore(path).GetSetting("Settings", "SystemName", ""), QStringLiteral("Bus 7"));
    EXPECT_EQ(SettingsStore(path).GetSetting("Settings", "SystemPath", ""), QStringLiteral("/cars/bus7.dav"));

    const Settings again = Load();
    EXPECT_EQ(again.SystemName, QString());
    EXPECT_EQ(again.SystemPath, QString());
    EXPECT_EQ(again.DatabaseSystemName, QStringLiteral("Old bus"));  // the same key in another section
}

TEST_F(SettingsFile, FirstRunIsSavedAsTheCallerHasIt)
{
    Settings settings = Load();
    EXPECT_TRUE(settings.FirstRun);
    settings.FirstRun = false;
    Save(settings);
    EXPECT_FALSE(Load().FirstRun);
}

struct BrokenRow {
    const char* key;
    const char* value;
    int error;
};

class BrokenValues : public SettingsFile, public testing::WithParamInterface<BrokenRow> {};

TEST_P(BrokenValues, AreAnErrorOfTheirKind)
{
    Put("Settings", GetParam().key, QString::fromLatin1(GetParam().value));
    Settings settings;
    EXPECT_EQ(LoadError(settings), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(Settings, BrokenValues,
                         testing::Values(BrokenRow{"AutoDetect", "maybe", 13}, BrokenRow{"AutoDetect", "", 13},
                                         BrokenRow{"CommPort", "", 13}, BrokenRow{"CommPort", "COM1", 13},
                                         BrokenRow{"CommPort", "1,2", 13}, BrokenRow{"CommPort", "0x10", 13},
                                         BrokenRow{"CommPort", "inf", 13}, BrokenRow{"CommPort", "nan", 13},
                                         BrokenRow{"CommPort", "32768", 6}, BrokenRow{"CommPort", "-32769", 6},
                                         BrokenRow{"BaudRate", "2147483648", 6},
                                         BrokenRow{"BaudRate", "99999999999999999999999", 6}));

TEST_F(SettingsFile, WhatStandsBehindABrokenValueKeepsZeroAndEmptyText)
{
    Save(Load());
    Put("Settings", "ListAllMsgs", "True");
    Put("Settings", "LastPhoneNumber", "123");
    Put("Settings", "NodesInSystem", "many");
    Settings settings;
    settings.HexData = true;  // left over from before
    settings.DatabaseName = "leftover";
    EXPECT_EQ(LoadError(settings), ErrorNumber::kTypeMismatch);

    EXPECT_TRUE(settings.AutoDetect);  // before the broken one
    EXPECT_TRUE(settings.ListAllMsgs);
    EXPECT_EQ(settings.Protocol, QStringLiteral("Fenrik 2000"));
    EXPECT_EQ(settings.NodesInSystem, 0);  // the broken one and after it
    EXPECT_FALSE(settings.HexData);
    EXPECT_EQ(settings.ModemBaudRate, 0);
    EXPECT_EQ(settings.LastPhoneNumber, QString());
    EXPECT_EQ(settings.ConnectionType, 0);
    EXPECT_FALSE(settings.LoggingOn);
    EXPECT_EQ(settings.DatabaseName, QString());
}

TEST_F(SettingsFile, ANumberCountsAsABooleanAndAFractionIsRounded)
{
    Put("Settings", "ListAllMsgs", "-1");
    Put("Settings", "AutoDetect", "0");
    Put("Settings", "SendSync", "TRUE");
    Put("Settings", "CommPort", " 2.6 ");
    const Settings settings = Load();
    EXPECT_TRUE(settings.ListAllMsgs);
    EXPECT_FALSE(settings.AutoDetect);
    EXPECT_TRUE(settings.SendSync);
    EXPECT_EQ(settings.CommPort, 3);
}

TEST_F(SettingsFile, OnlyTheExactTextOfTheLegacyProtocolCounts)
{
    Settings settings;
    for (const char* current : {"", "Fenrik 2000", "fenrik 98", "Fenrik 98 ", "Fenrik98"}) {
        settings.Protocol = QString::fromLatin1(current);
        EXPECT_FALSE(settings.IsLegacyProtocol()) << current;
    }
    settings.Protocol = "Fenrik 98";
    EXPECT_TRUE(settings.IsLegacyProtocol());
}

TEST_F(SettingsFile, AFolderThatCannotBeWrittenIsError75)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    SettingsStore store(path + QStringLiteral("/settings.ini"));  // its folder is a file
    try {
        SaveSettings(store, Settings());
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kPathFileAccess);
    }
}

}  // namespace
}  // namespace fenrik
