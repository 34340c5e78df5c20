#include "WindowFixture.h"
#include "app/ScriptRunner.h"
#include "app/UiState.h"
#include "support/WhenShown.h"

#include <QComboBox>
#include <QLineEdit>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WindowScriptTest : public WindowTest {
protected:
    void StartDebug() { ASSERT_TRUE(Start("AutoDetect=False\n", "debug")); }

    void ConnectDebug()
    {
        StartDebug();
        Click("Connect");
        ASSERT_EQ(Status(), "Connected");
        user.seen.clear();  // a debug build asks for the transceiver
        vehicle.heard.clear();
    }

    void Run(const QByteArray& text)
    {
        MakeFile(script, text);
        Entry("mnuRunScript").trigger();
    }

    /// `act` is called once, inside the script, when that line has begun.
    void InLine(int number, std::function<void()> act)
    {
        mAct = std::move(act);
        QObject::connect(&mWatch, &QTimer::timeout, &mWatch, [this, number] {
            if (!mAct || !Msg().startsWith(QString("Script line %1 ").arg(number)))
                return;
            std::exchange(mAct, nullptr)();
        });
        mWatch.start(0);
    }

    const QString script = dir.filePath("test.fds");
    QString typed = script;
    QString title;
    QStringList filters;
    WhenShown chooser{"FileBox", [this](QDialog& box) {
                          title = box.windowTitle();
                          filters = qobject_cast<QFileDialog*>(&box)->nameFilters();
                          if (typed.isEmpty())
                              box.reject();
                          else
                              ChooseFile(box, typed);
                      }};

private:
    QTimer mWatch;
    std::function<void()> mAct;
};

TEST_F(WindowScriptTest, EachLineGoesThroughTheComposerAndIsEchoed)
{
    ConnectDebug();
    Run("12,1,0,0x1F\n12,2,1,16\n");
    ASSERT_TRUE(Until([this] { return vehicle.heard.size() == 2; }));
    EXPECT_THAT(vehicle.heard, ElementsAre("12 1 31", "12 0 16"));
    EXPECT_EQ(Lines(), QStringList({"Rear Fog Lamps", "Rear Fog Lamps"}));
    EXPECT_EQ(Control<QComboBox>("CboCommand").currentText(), "Rear Fog Lamps");
    EXPECT_EQ(Control<QPushButton>("cmdState").text(), "Off") << "only 1 is on";
    EXPECT_EQ(Control<QPushButton>("cmdExtended").text(), "True");
    EXPECT_EQ(Control<QLineEdit>("TxtData").text(), "16");
    EXPECT_EQ(Msg(), "Script ended after line 2");
    EXPECT_TRUE(Window().Hub().State().Ready());
}

TEST_F(WindowScriptTest, TheFileBoxAsksForScripts)
{
    StartDebug();
    typed.clear();
    Run("12,1,0,1\n");
    EXPECT_EQ(title, "Load Fenrik Diagnostic Script");
    EXPECT_EQ(filters, QStringList{"Fenrik Diagnostic Script Files (*.fds)"});
    EXPECT_EQ(Msg(), "") << "a cancelled choice runs nothing";
    EXPECT_EQ(Control<QLineEdit>("TxtData").text(), "0");
    EXPECT_TRUE(Window().Hub().State().Ready());
}

TEST_F(WindowScriptTest, ANameTypedWithoutEndingIsAScripts)
{
    StartDebug();
    typed = dir.filePath("test");
    Run("12,1,0,1\n");
    EXPECT_EQ(Msg(), "Script ended after line 1");
}

TEST_F(WindowScriptTest, AnErrorEndsTheScriptAndTheScriptAlone)
{
    ConnectDebug();
    Run("12,1,0,5\n1,2\n12,1,0,6\n");
    ASSERT_THAT(user.seen, SizeIs(1));
    EXPECT_TRUE(user.seen[0].contains(">> Error <9>")) << user.seen[0].toStdString();
    EXPECT_TRUE(user.seen[0].contains("Script line 2: 1,2")) << user.seen[0].toStdString();
    EXPECT_EQ(Msg(), "Script ended by an error in line 2");
    ASSERT_TRUE(Until([this] { return !vehicle.heard.empty(); }));
    EXPECT_THAT(vehicle.heard, ElementsAre("12 1 5")) << "what was sent stays sent";
    EXPECT_TRUE(Control<QPushButton>("cmdSend").isEnabled());
}

TEST_F(WindowScriptTest, ACommandThatTheListsDoNotOfferEndsTheScript)
{
    StartDebug();
    Run("12,1,0,5\n27,1,0,6\n");
    ASSERT_THAT(user.seen, SizeIs(1));
    EXPECT_TRUE(user.seen[0].contains("is in a category that is not listed. Script line 2: 27,1,0,6"))
        << user.seen[0].toStdString();
    EXPECT_EQ(Control<QLineEdit>("TxtData").text(), "5") << "nothing of it was taken over";
}

TEST_F(WindowScriptTest, EscapeStopsItBetweenTwoLines)
{
    StartDebug();
    InLine(3, [this] { QTest::keyClick(&Window(), Qt::Key_Escape); });
    Run(QByteArray("12,1,0,1\n").repeated(500));
    EXPECT_EQ(Msg(), "Script stopped after line 2");
    EXPECT_TRUE(Window().Hub().State().Ready());
    EXPECT_THAT(user.seen, IsEmpty());
}

TEST_F(WindowScriptTest, ASecondScriptIsRefusedInsideTheFirst)
{
    StartDebug();
    QString told;
    InLine(2, [this, &told] {
        Entry("mnuRunScript").trigger();
        told = Msg();
    });
    Run(QByteArray("12,1,0,1\n").repeated(500));
    EXPECT_EQ(told, "A script can't be run while something else is going on.");
    EXPECT_EQ(chooser.Times(), 1);
    EXPECT_EQ(Msg(), "Script ended after line 500");
}

TEST_F(WindowScriptTest, ClosingTheWindowEndsTheScript)
{
    StartDebug();
    InLine(2, [this] { Window().close(); });
    Run(QByteArray("12,1,0,1\n").repeated(500));
    EXPECT_EQ(Msg(), "Script stopped after line 1");
}

TEST_F(WindowScriptTest, WithoutAConnectionTheLinesAreOnlyShown)
{
    StartDebug();
    Run("12,1,0,0xFFFF\n");
    EXPECT_EQ(Control<QLineEdit>("TxtData").text(), "65535");
    EXPECT_THAT(Lines(), IsEmpty());
}

}  // namespace
}  // namespace fenrik
