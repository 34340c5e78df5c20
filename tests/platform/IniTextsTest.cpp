#include "platform/IniTexts.h"

#include "platform/Error.h"
#include "platform/RegistryStore.h"
#include "platform/SettingsStore.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

struct Line {
    const char* name;
    const char* text;
    bool holds;
};

class IniLines : public testing::TestWithParam<Line> {};

TEST_P(IniLines, HoldAnObjectOrTextsAlone)
{
    EXPECT_EQ(IniTexts::HoldObjects(QByteArray("[Settings]\n") + GetParam().text + "\nOn=True\n"), GetParam().holds);
}

INSTANTIATE_TEST_SUITE_P(
    IniTexts, IniLines,
    testing::Values(Line{"Plain", R"i(On=@Variant(\0\0\0\t))i", true}, Line{"Date", R"i(On=@DateTime(\0))i", true},
                    Line{"InAList", R"i(On=a, @Variant(\0))i", true}, Line{"Quoted", R"i(On= "@Variant(\0)")i", true},
                    Line{"QuotesBetween", R"i(On="@Var" "iant(\0)")i", true},
                    Line{"Hexadecimal", R"i(On=\x40Variant(\0))i", true},
                    Line{"HexadecimalThatWraps", R"i(On=\x10040Variant(\0))i", true},
                    Line{"Octal", R"i(On=\100Variant(\0))i", true},
                    Line{"EscapeOfNothing", R"i(On=@Va\qriant(\0))i", true},
                    Line{"LineGoesOn", "On=@Var\\\niant(\\0)i", true}, Line{"BackslashAtTheEnd", "On=1\\", false},
                    Line{"Text", "On=True", false}, Line{"TextThatBeginsSo", "On=@@Variant(x)i", false},
                    Line{"TextWithinWhich", "On=see @Variant(x)i", false}, Line{"Size", "On=@Size(3 4)i", false}),
    [](const auto& row) { return std::string(row.param.name); });

class StoresOfTexts : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path = folder.filePath("kept.ini");
};

// A list that claims to have two thousand million elements.
constexpr const char* kHostile =
    "[Settings]\nCommPort=7\nProtocol=@Variant(\\0\\0\\0\\t\\0\\x7f\\xff\\xff\\xff\\0\\0\\0\\n\\0)\n";

TEST_F(StoresOfTexts, SetAFileWithAnObjectAsideAndBeginAnew)
{
    MakeFile(path, kHostile);
    MakeFile(path + ".broken", "older");
    SettingsStore store(path);
    EXPECT_EQ(store.GetSetting("Settings", "Protocol", "none"), "none");
    EXPECT_EQ(store.GetSetting("Settings", "CommPort", "1"), "1");
    store.SaveSetting("Settings", "CommPort", "5");
    store.Sync();
    EXPECT_EQ(SettingsStore(path).GetSetting("Settings", "CommPort", "1"), "5");
    EXPECT_EQ(QFileInfo(path + ".broken").size(), qint64(qstrlen(kHostile)));
}

TEST_F(StoresOfTexts, SetARegistryWithAnObjectAside)
{
    MakeFile(path, kHostile);
    RegistryStore store(path);
    EXPECT_FALSE(store.KeyExists("Settings"));
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(StoresOfTexts, KeepATextThatLooksLikeAnObject)
{
    {
        SettingsStore store(path);
        store.SaveSetting("Settings", "Protocol", "@Variant(x)");
        store.Sync();
    }
    EXPECT_EQ(SettingsStore(path).GetSetting("Settings", "Protocol", "none"), "@Variant(x)");
}

}  // namespace
}  // namespace fenrik
