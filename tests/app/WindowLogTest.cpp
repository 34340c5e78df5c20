#include "WindowFixture.h"
#include "support/WhenShown.h"

#include <QCheckBox>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WindowLogTest : public WindowTest {
protected:
    [[nodiscard]] QStringList Logs() const { return QDir(ProgramFile("diaglogs")).entryList(QDir::Files, QDir::Name); }

    [[nodiscard]] QStringList Lines(const QString& log) const
    {
        QFile file(ProgramFile("diaglogs/" + log));
        return file.open(QIODevice::ReadOnly) ? QString(file.readAll()).split("\r\n", Qt::SkipEmptyParts)
                                              : QStringList();
    }

    void Arrive(const Frame& frame)
    {
        const int before = Window().Messages().NewestRow();
        vehicle.Send(frame);
        ASSERT_TRUE(Until([this, before] { return Window().Messages().NewestRow() > before; }));
    }
};

TEST_F(WindowLogTest, TheButtonOpensTheOptionsAndClosingWritesThem)
{
    ASSERT_TRUE(Start());
    const WhenShown options("FrmMsgLogging", [](QDialog& dialog) {
        EXPECT_TRUE(dialog.isModal());
        dialog.findChild<QCheckBox*>("ChkLogUnique")->click();
        dialog.close();
    });
    Click("Log");
    EXPECT_EQ(options.Times(), 1);
    EXPECT_EQ(Stored("Logging/Unique"), "False");
    EXPECT_EQ(Msg(), "");
    Entry("mnuSettingsLogging").trigger();
    EXPECT_EQ(options.Times(), 2);
    EXPECT_EQ(Stored("Logging/Unique"), "True");
}

TEST_F(WindowLogTest, TheButtonIsOutOfReachWhileConnected)
{
    ASSERT_TRUE(Start("AutoDetect=False\n"));
    EXPECT_TRUE(Button("Log").isEnabled());
    Click("Connect");
    EXPECT_FALSE(Button("Log").isEnabled());
    EXPECT_TRUE(Button("DiagLog").isEnabled());
    Click("Disconnect");
    EXPECT_TRUE(Button("Log").isEnabled());
}

TEST_F(WindowLogTest, WithoutAConnectionThereIsNoFile)
{
    ASSERT_TRUE(Start());
    Window().close();
    EXPECT_THAT(Logs(), IsEmpty());
}

TEST_F(WindowLogTest, WithUniqueOffAllConnectionsOfARunShareAFile)
{
    StartAndConnect("AutoDetect=False\n[Logging]\nUnique=False\n");
    Click("Disconnect");
    Click("Connect");
    Arrive({12, true, false, 7});
    ASSERT_THAT(Logs(), SizeIs(1));
    EXPECT_THAT(Lines(Logs()[0]), SizeIs(6 + 6 + 1));
}

TEST_F(WindowLogTest, APortThatCannotBeOpenedLeavesTheHead)
{
    ASSERT_TRUE(Start());
    QFile::remove(dir.filePath("config/ports/com5"));
    Click("Connect");
    EXPECT_THAT(user.seen, SizeIs(1));
    ASSERT_THAT(Logs(), SizeIs(1));
    EXPECT_THAT(Lines(Logs()[0]), SizeIs(6));
}

TEST_F(WindowLogTest, HiddenMessagesAndSyncsAreNotLogged)
{
    StartAndConnect("AutoDetect=False\n");
    vehicle.Send({980, false, true, 1});
    vehicle.Send({1020, false, false, 0});
    vehicle.Send({979, false, false, 258});
    Arrive({12, true, false, 7});
    ASSERT_THAT(Logs(), SizeIs(1));
    ASSERT_THAT(Lines(Logs()[0]), SizeIs(6 + 1));
    EXPECT_TRUE(Lines(Logs()[0])[6].startsWith("Rear Fog Lamps             7 "));
}

TEST_F(WindowLogTest, AHiddenMessageIsLoggedWhenAllAreShownButASyncNever)
{
    StartAndConnect("AutoDetect=False\nListAllMsgs=True\n");
    vehicle.Send({980, false, true, 1});
    Arrive({1020, false, false, 0});
    ASSERT_THAT(Logs(), SizeIs(1));
    EXPECT_THAT(Lines(Logs()[0]), SizeIs(6 + 1));
}

TEST_F(WindowLogTest, WithLoggingOffTrafficIsOnlyShown)
{
    StartAndConnect("AutoDetect=False\n[Logging]\nOn=False\n");
    Arrive({12, true, false, 7});
    EXPECT_THAT(Logs(), IsEmpty());
}

TEST_F(WindowLogTest, AFolderThatIsGoneIsToldOnceForHeadAndTrafficTogether)
{
    ASSERT_TRUE(Start("AutoDetect=False\n"));
    ASSERT_TRUE(QDir(ProgramFile("diaglogs")).removeRecursively());
    Click("Connect");
    EXPECT_EQ(Status(), "Connected");
    Arrive({12, true, false, 1});
    Arrive({12, true, false, 2});
    ASSERT_THAT(user.seen, SizeIs(1));
    EXPECT_TRUE(user.seen[0].contains(">> Error <75>")) << user.seen[0].toStdString();
}

}  // namespace
}  // namespace fenrik
