#include "logging/FrmMsgLogging.h"

#include "platform/SettingsStore.h"
#include "shared/Settings.h"
#include "support/DatabaseFile.h"
#include "support/ErrorRecorder.h"
#include "support/Printers.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class FrmMsgLoggingTest : public testing::Test {
protected:
    FrmMsgLoggingTest()
    {
        settings.LoggingOn = true;
        settings.LoggingUnique = true;
        settings.LoggingBuffered = true;
        settings.LoggingBufferMax = 25;
        settings.LoggingEventTrigger = 77;
    }

    void Open(FrmMsgLogging::Network network)
    {
        dialog = std::make_unique<FrmMsgLogging>(network, settings, store, errors);
        dialog->show();
    }
    void Open00() { Open(FrmMsgLogging::Network::Present); }
    void Open98() { Open(FrmMsgLogging::Network::Older); }

    template <typename T>
    [[nodiscard]] T& Control(const char* name)
    {
        return *dialog->findChild<T*>(name);
    }
    [[nodiscard]] QCheckBox& Check(const char* name) { return Control<QCheckBox>(name); }
    [[nodiscard]] QLineEdit& Text(const char* name) { return Control<QLineEdit>(name); }

    [[nodiscard]] QString Stored(const char* key)
    {
        return SettingsStore(store.Path()).GetSetting("Logging", key, "none");
    }

    QTemporaryDir dir;
    Settings settings;
    SettingsStore store{dir.filePath("settings.ini")};
    ErrorRecorder errors;
    std::unique_ptr<FrmMsgLogging> dialog;
};

TEST_F(FrmMsgLoggingTest, ThePresentNetworkShowsTheFirstTwoBoxesOnly)
{
    Open00();
    EXPECT_EQ(dialog->windowTitle(), "Message Logging");
    EXPECT_EQ(dialog->height(), 94);
    EXPECT_TRUE(Check("ChkLog").isVisible());
    EXPECT_TRUE(Check("ChkLogUnique").isVisible());
    for (const char* name : {"ChkEvent", "ChkDisconnect", "Txtentries", "TxtTrigger"})
        EXPECT_FALSE(Control<QWidget>(name).isVisible()) << name;
}

TEST_F(FrmMsgLoggingTest, TheOlderNetworkShowsTheEventToo)
{
    settings.LoggingDisconnect = true;
    Open98();
    EXPECT_EQ(dialog->height(), 254);
    for (const char* name : {"ChkLog", "ChkLogUnique", "ChkEvent", "ChkDisconnect", "Txtentries", "TxtTrigger"})
        EXPECT_TRUE(Control<QWidget>(name).isVisible()) << name;
    EXPECT_TRUE(Check("ChkEvent").isChecked());
    EXPECT_TRUE(Check("ChkDisconnect").isChecked());
    EXPECT_EQ(Text("Txtentries").text(), "25");
    EXPECT_EQ(Text("TxtTrigger").text(), "77");
}

TEST_F(FrmMsgLoggingTest, AProtocolChosenForTheNextStartChangesNothingYet)
{
    settings.Protocol = Settings::kLegacyProtocol;
    Open00();
    EXPECT_FALSE(Check("ChkEvent").isVisible());
}

TEST_F(FrmMsgLoggingTest, ALargeFontTakesTheRoomThatItNeeds)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(3 * usual.pointSizeF());
    QApplication::setFont(large);
    for (const auto network : {FrmMsgLogging::Network::Present, FrmMsgLogging::Network::Older}) {
        Open(network);
        QCoreApplication::processEvents();
        for (const QWidget* widget : dialog->findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->objectName().isEmpty())
                continue;
            const QRect place(widget->mapTo(dialog.get(), QPoint()), widget->size());
            EXPECT_TRUE(dialog->rect().contains(place)) << widget->objectName().toStdString();
            EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << widget->objectName().toStdString();
            EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->objectName().toStdString();
        }
    }
    EXPECT_GT(dialog->height(), 254);
    QApplication::setFont(usual);
}

TEST_F(FrmMsgLoggingTest, TheCaptionsAreTheGivenOnes)
{
    Open98();
    const auto plain = [](QString text) { return text.remove('&'); };
    EXPECT_EQ(plain(Check("ChkLog").text()), "Generate Log");
    EXPECT_EQ(plain(Check("ChkLogUnique").text()), "Unique Log Per Connect ");
    EXPECT_EQ(plain(Check("ChkEvent").text()), "Enable Event Trigger");
    EXPECT_EQ(plain(Check("ChkDisconnect").text()), "Disconnect on Event");
    EXPECT_EQ(plain(Control<QLabel>("lblEntries").text()), "Message Entries Before Event ");
}

TEST_F(FrmMsgLoggingTest, SwitchingTheLogHoldsAtOnce)
{
    Open98();
    Check("ChkLog").click();
    EXPECT_FALSE(settings.LoggingOn);
    EXPECT_FALSE(Check("ChkLogUnique").isEnabled());
    EXPECT_FALSE(Check("ChkEvent").isEnabled());
    Check("ChkLog").click();
    EXPECT_TRUE(settings.LoggingOn);
    EXPECT_TRUE(Check("ChkLogUnique").isEnabled());
    Check("ChkLogUnique").click();
    EXPECT_FALSE(settings.LoggingUnique);
}

TEST_F(FrmMsgLoggingTest, TheEventControlsNeedAnEventBoxThatIsCheckedAndEnabled)
{
    Open98();
    const auto expectEnabled = [this](bool enabled) {
        for (const char* name : {"ChkDisconnect", "Txtentries", "TxtTrigger"})
            EXPECT_EQ(Control<QWidget>(name).isEnabled(), enabled) << name;
    };
    expectEnabled(true);
    Check("ChkLog").click();
    expectEnabled(false);
    EXPECT_TRUE(settings.LoggingBuffered) << "checked still, though out of reach";
    Check("ChkLog").click();
    expectEnabled(true);
    Check("ChkEvent").click();
    expectEnabled(false);
    EXPECT_FALSE(settings.LoggingBuffered);
}

struct KeyRow {
    const char* typed;
    const char* text;
    int number;
};

TEST_F(FrmMsgLoggingTest, TheNumbersTakeDigitsAndFollowEachChange)
{
    constexpr KeyRow kRows[] = {{"12", "12", 12},
                                {"1x2 -.,3", "123", 123},
                                {"12\b", "1", 1},
                                {"", "", 0},
                                {"2147483647", "2147483647", 2147483647},
                                {"2147483648", "214748364", 214748364},
                                {"0000000000000007", "0000000000000007", 7}};
    Open98();
    for (const KeyRow& row : kRows) {
        for (const char* name : {"Txtentries", "TxtTrigger"}) {
            Text(name).clear();
            QTest::keyClicks(&Text(name), row.typed);
            EXPECT_EQ(Text(name).text(), row.text);
        }
        EXPECT_EQ(settings.LoggingBufferMax, row.number);
        EXPECT_EQ(settings.LoggingEventTrigger, row.number);
    }
}

TEST_F(FrmMsgLoggingTest, APasteOfLettersIsRefused)
{
    Open98();
    QApplication::clipboard()->setText("12a");
    Text("TxtTrigger").selectAll();
    Text("TxtTrigger").paste();
    EXPECT_EQ(Text("TxtTrigger").text(), "77");
    EXPECT_EQ(settings.LoggingEventTrigger, 77);
}

TEST_F(FrmMsgLoggingTest, ClosingWritesItsGroupAndNoOther)
{
    MakeFile(store.Path(), "[Settings]\nCommPort=5\n");
    settings.CommPort = 9;
    settings.LoggingRedirected = true;
    Open98();
    Check("ChkLogUnique").click();
    Check("ChkDisconnect").click();
    EXPECT_EQ(Stored("Unique"), "none") << "not before";
    dialog->close();
    const std::pair<const char*, const char*> rows[] = {
        {"On", "True"},         {"Unique", "False"},    {"Buffered", "True"},  {"BufferMax", "25"},
        {"EventTrigger", "77"}, {"Disconnect", "True"}, {"Redirected", "True"}};
    for (const auto& [key, value] : rows)
        EXPECT_EQ(Stored(key), value) << key;
    EXPECT_EQ(SettingsStore(store.Path()).GetSetting("Settings", "CommPort", ""), "5");
    EXPECT_THAT(errors.reports, IsEmpty());
}

TEST_F(FrmMsgLoggingTest, EscapeClosesAndWritesToo)
{
    Open00();
    Check("ChkLog").click();
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Stored("On"), "False");
    EXPECT_EQ(Stored("Buffered"), "True") << "what is out of sight stays as it was";
}

TEST_F(FrmMsgLoggingTest, AStoreThatCannotBeWrittenIsToldAndTheDialogCloses)
{
    SettingsStore broken("/proc/no such folder/settings.ini");
    dialog = std::make_unique<FrmMsgLogging>(FrmMsgLogging::Network::Present, settings, broken, errors);
    dialog->show();
    dialog->close();
    EXPECT_THAT(errors.reports, SizeIs(1));
    EXPECT_FALSE(dialog->isVisible());
}

}  // namespace
}  // namespace fenrik
