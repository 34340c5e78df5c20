#include "options/FrmOptions.h"

#include "CommSetupFixture.h"

#include <QGroupBox>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrmOptionsTest : public testing::Test {
protected:
    void Open(FrmOptions::Size size = FrmOptions::Size::Full, const QString& database = "/program/ncCommand.dav")
    {
        dialog = std::make_unique<FrmOptions>(settings, size, database, "/program/ncCommand.dav", host);
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }

    [[nodiscard]] QCheckBox& Check(const char* name) { return *dialog->findChild<QCheckBox*>(name); }
    [[nodiscard]] QString Database() { return dialog->findChild<QLineEdit*>("txtDatabase")->text(); }

    Settings settings;
    OptionsHostRecorder host;
    std::unique_ptr<FrmOptions> dialog;
};

struct Box {
    const char* name;
    const char* caption;
    bool Settings::*setting;
    QStringList calls;
};

TEST_F(FrmOptionsTest, EachBoxShowsItsSettingAndSetsItAtOnce)
{
    const std::vector<Box> kBoxes{
        {"ChkAutoDetect", "Detect nodes", &Settings::AutoDetect, {}},
        {"ChkListAllMsgs", "Show all messages", &Settings::ListAllMsgs, {"categories"}},
        {"ChkCompactList", "Don't display duplicate messages", &Settings::CompactList, {}},
        {"ChkHex", "Display message data in Hex", &Settings::HexData, {"hex"}},
    };
    for (const Box& box : kBoxes) {
        for (const bool before : {false, true}) {
            settings = Settings();
            settings.*box.setting = before;
            Open();
            host.calls.clear();
            EXPECT_EQ(Check(box.name).text().remove('&'), box.caption);
            EXPECT_EQ(Check(box.name).isChecked(), before) << box.name;
            QTest::keyClick(&Check(box.name), Qt::Key_Space);
            EXPECT_EQ(settings.*box.setting, !before) << box.name;
            EXPECT_EQ(host.calls, box.calls) << box.name;
            dialog->close();
        }
    }
}

TEST_F(FrmOptionsTest, ItsFullSizeShowsEverything)
{
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Tool Options");
    EXPECT_EQ(dialog->height(), 281);
    EXPECT_EQ(dialog->findChild<QGroupBox*>("FrmOnConnect")->title(), "On Connect");
    EXPECT_EQ(dialog->findChild<QLabel*>("lblDatabase")->text().remove('&'), "Current Message Database:");
    for (const char* name :
         {"FrmOnConnect", "ChkAutoDetect", "ChkListAllMsgs", "ChkCompactList", "ChkHex", "lblDatabase", "txtDatabase"})
        EXPECT_TRUE(dialog->findChild<QWidget*>(name)->isVisible()) << name;
}

TEST_F(FrmOptionsTest, ForTheOlderNetworkItShowsOneBoxOnly)
{
    Open(FrmOptions::Size::Small);
    EXPECT_EQ(dialog->height(), 131);
    EXPECT_TRUE(Check("ChkListAllMsgs").isVisible());
    for (const char* name : {"FrmOnConnect", "ChkAutoDetect", "ChkCompactList", "ChkHex", "lblDatabase", "txtDatabase"})
        EXPECT_FALSE(dialog->findChild<QWidget*>(name)->isVisible()) << name;
}

TEST_F(FrmOptionsTest, TellsTheDatabase)
{
    Open();
    EXPECT_EQ(Database(), "Default - ncCommand.dav");
    EXPECT_TRUE(dialog->findChild<QLineEdit*>("txtDatabase")->isReadOnly());
    Open(FrmOptions::Size::Full, "/program/My Bus.dav");
    EXPECT_EQ(Database(), "My Bus.dav");
    EXPECT_EQ(dialog->findChild<QLineEdit*>("txtDatabase")->toolTip(), "/program/My Bus.dav");
}

TEST_F(FrmOptionsTest, EscapeTheWindowButtonAndTheProgramsEndWriteTheSettings)
{
    Open();
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_THAT(host.calls, ElementsAre("write"));
    Open();
    dialog->close();
    EXPECT_THAT(host.calls, ElementsAre("write", "write"));
    Open();
    dialog.reset();
    EXPECT_THAT(host.calls, ElementsAre("write", "write", "write"));
}

}  // namespace
}  // namespace fenrik
