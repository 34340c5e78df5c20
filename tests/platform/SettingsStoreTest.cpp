#include "platform/SettingsStore.h"
#include "platform/Error.h"
#include "support/Printers.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

class SettingsStoreTest : public testing::Test {
protected:
    QByteArray FileText(const QString& file)
    {
        QFile read(file);
        EXPECT_TRUE(read.open(QIODevice::ReadOnly));
        return read.readAll();
    }

    void WriteFile(const QByteArray& text)
    {
        QFile write(path);
        ASSERT_TRUE(write.open(QIODevice::WriteOnly));
        write.write(text);
    }

    QTemporaryDir folder;
    QString path = folder.path() + QStringLiteral("/settings.ini");
};

TEST_F(SettingsStoreTest, AMissingKeyGivesTheDefault)
{
    const SettingsStore store(path);
    EXPECT_EQ(store.GetSetting("Settings", "CommPort", "1"), QStringLiteral("1"));
    EXPECT_EQ(store.GetSetting("Settings", "LastPhoneNumber", ""), QString());
    EXPECT_FALSE(QFileInfo::exists(path));  // reading makes no file
}

TEST_F(SettingsStoreTest, AnEmptyValueIsAValue)
{
    SettingsStore store(path);
    store.SaveSetting("Settings", "Protocol", "");
    store.Sync();
    EXPECT_EQ(SettingsStore(path).GetSetting("Settings", "Protocol", "default"), QString());
}

class StoredText : public SettingsStoreTest, public testing::WithParamInterface<const char*> {};

TEST_P(StoredText, ComesBackAsItWasSaved)
{
    const QString text = QString::fromUtf8(GetParam());
    {
        SettingsStore store(path);
        store.SaveSetting("Settings", "ModemInitString", text);
        store.SaveSetting("Settings", "After", "still here");
        store.Sync();
    }
    const SettingsStore again(path);
    EXPECT_EQ(again.GetSetting("Settings", "ModemInitString", "default"), text);
    EXPECT_EQ(again.GetSetting("Settings", "After", "default"), QStringLiteral("still here"));
}

INSTANTIATE_TEST_SUITE_P(SettingsStore, StoredText,
                         testing::Values("plain", "a,b", "a, b", ",", "say \"hello\"", "\"", "M\xC3\xBCller \xC3\x9F",
                                         "\xE2\x82\xAC", "  leading", "trailing  ", " ", "100%", "%20%C3", "a;b", "#x",
                                         "key=value", "[Section]", "C:\\cars\\new", "back\\", "line\nbreak",
                                         "tab\there", "@Invalid()", "@ByteArray(x)", "@", "AT&F0\\N3%C0", "0123",
                                         "True"));

TEST_F(SettingsStoreTest, TwoSectionsMayHaveTheSameKey)
{
    SettingsStore store(path);
    store.SaveSetting("Settings", "SystemName", "one");
    store.SaveSetting("Database", "SystemName", "two");
    store.Sync();
    const SettingsStore again(path);
    EXPECT_EQ(again.GetSetting("Settings", "SystemName", ""), QStringLiteral("one"));
    EXPECT_EQ(again.GetSetting("Database", "SystemName", ""), QStringLiteral("two"));
    EXPECT_EQ(again.GetSetting("Logging", "SystemName", "none"), QStringLiteral("none"));
}

TEST_F(SettingsStoreTest, AValueWrittenByHandWithACommaIsOneText)
{
    WriteFile("[Settings]\nModemInitString=ATX3, DT\n");
    EXPECT_EQ(SettingsStore(path).GetSetting("Settings", "ModemInitString", ""), QStringLiteral("ATX3, DT"));
}

TEST_F(SettingsStoreTest, TheFileHasAGroupForEachSection)
{
    SettingsStore store(path);
    store.SaveSetting("Settings", "CommPort", "5");
    store.SaveSetting("Logging", "On", "True");
    store.Sync();
    EXPECT_TRUE(FileText(path).contains("[Settings]\nCommPort=5\n"));
    EXPECT_TRUE(FileText(path).contains("[Logging]\nOn=True\n"));
    EXPECT_EQ(store.Path(), path);
}

TEST_F(SettingsStoreTest, MakesItsFolderWhenItIsSaved)
{
    const QString deep = folder.path() + QStringLiteral("/new/deeper/settings.ini");
    SettingsStore store(deep);
    store.SaveSetting("Settings", "CommPort", "5");
    store.Sync();
    EXPECT_EQ(SettingsStore(deep).GetSetting("Settings", "CommPort", ""), QStringLiteral("5"));
}

TEST_F(SettingsStoreTest, AFolderThatCannotBeWrittenIsError75)
{
    WriteFile("a file where the folder should be");
    SettingsStore store(path + QStringLiteral("/settings.ini"));
    store.SaveSetting("Settings", "CommPort", "5");
    try {
        store.Sync();
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kPathFileAccess);
        EXPECT_TRUE(error.Description().contains(QStringLiteral("settings.ini")));
    }
}

TEST_F(SettingsStoreTest, KeepsACopyOfABrokenFile)
{
    const QByteArray broken = "[Settings]\nCommPort=many\n";
    WriteFile(broken);
    SettingsStore store(path);
    store.KeepBrokenCopy();
    EXPECT_EQ(FileText(path + QStringLiteral(".broken")), broken);

    WriteFile("[Settings]\nCommPort=worse\n");
    store.KeepBrokenCopy();  // the newest copy is the one that is kept
    EXPECT_EQ(FileText(path + QStringLiteral(".broken")), QByteArray("[Settings]\nCommPort=worse\n"));
}

TEST_F(SettingsStoreTest, NoFileMakesNoBrokenCopy)
{
    SettingsStore(path).KeepBrokenCopy();
    EXPECT_FALSE(QFileInfo::exists(path + QStringLiteral(".broken")));
}

TEST_F(SettingsStoreTest, TheFolderIsTheProgramsOwn)
{
    EXPECT_TRUE(SettingsStore::ConfigFolder().endsWith(QStringLiteral("/fenrik-diagnostics")));
}

}  // namespace
}  // namespace fenrik
