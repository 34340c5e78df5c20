#include "options/frmAbout.h"

#include "options/LinkLabel.h"
#include "platform/Shell.h"
#include "platform/VersionInfo.h"
#include "support/BoxRecorder.h"
#include "support/DatabaseFile.h"
#include "support/ErrorRecorder.h"
#include "support/Printers.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PageRecorder : public Shell {
public:
    int OpenPage(const QString& address) override
    {
        pages.append(address);
        return result;
    }

    QStringList pages;
    int result = kOpened;
};

class frmAboutTest : public testing::Test {
protected:
    void Open(const char* flavour = "")
    {
        version = std::make_unique<VersionInfo>(5, 2, 107, flavour);
        dialog = std::make_unique<frmAbout>(frmAbout::Parts{*version, folder.path(), shell, boxes, errors});
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }

    [[nodiscard]] QLabel& Label(const char* name) { return *dialog->findChild<QLabel*>(name); }
    [[nodiscard]] QString Text(const char* name) { return Label(name).text(); }

    QTemporaryDir folder;
    PageRecorder shell;
    BoxRecorder boxes;
    ErrorRecorder errors;
    std::unique_ptr<VersionInfo> version;
    std::unique_ptr<frmAbout> dialog;
};

TEST_F(frmAboutTest, TellsTitleAndVersion)
{
    Open();
    EXPECT_EQ(Text("lblAppTitle"), "Fenrik Diagnostics");
    EXPECT_EQ(Text("lblBuild"), "Version 5.2.107 [build 007]");
    EXPECT_FALSE(Label("lblBetaRelease").isVisible());
}

struct Flavour {
    const char* comment;
    const char* release;
    const char* build;
};

TEST_F(frmAboutTest, OtherBuildsThanReleasesSaySo)
{
    for (const Flavour& flavour : {Flavour{"beta", "non-released", "Version 5.2.107 [build 007 BETA]"},
                                   Flavour{"test", "test version", "Version 5.2.107 [build 007]"},
                                   Flavour{"debug", "test version", "Version 5.2.107 [build 007]"},
                                   Flavour{"beta test", "non-released", "Version 5.2.107 [build 007 BETA]"}}) {
        Open(flavour.comment);
        EXPECT_TRUE(Label("lblBetaRelease").isVisible());
        EXPECT_EQ(Text("lblBetaRelease"), flavour.release);
        EXPECT_EQ(Text("lblBuild"), flavour.build);
    }
}

TEST_F(frmAboutTest, TheLinksOpenTheMakersPagesAndKeepTheWindowOpen)
{
    Open();
    QTest::mouseClick(&Label("lblFenrikLink"), Qt::LeftButton);
    QTest::mouseClick(&Label("lblHarnwickLink"), Qt::LeftButton);
    EXPECT_THAT(shell.pages, ElementsAre("https://www.harnwick.example/fenrik", "https://www.harnwick.example"));
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(frmAboutTest, APageThatCanNotBeShownIsTold)
{
    Open();
    shell.result = Shell::kNoAssociation;
    QTest::mouseClick(&Label("lblHarnwickLink"), Qt::LeftButton);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].text, "No browser could be started for https://www.harnwick.example");
}

TEST_F(frmAboutTest, TheDatabasesAreToldInABox)
{
    MakeDatabase(folder.filePath("ncCommand.dav"), {"CREATE TABLE t (a)"});
    Open();
    EXPECT_EQ(Text("lDatabaseInfo"), "Click here for Database information");
    QTest::mouseClick(&Label("lDatabaseInfo"), Qt::LeftButton);
    ASSERT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_EQ(boxes.boxes[0].title, "Fenrik Database Information");
    EXPECT_TRUE(boxes.boxes[0].text.startsWith("Default Fenrik Command Database\nDatabase Version: \t"));
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(frmAboutTest, TheLinksWorkByKeyAndTellIt)
{
    Open();
    QTest::keyClick(dialog.get(), Qt::Key_F, Qt::AltModifier);
    QTest::keyClick(dialog.get(), Qt::Key_H, Qt::AltModifier);
    QTest::keyClick(dialog.get(), Qt::Key_D, Qt::AltModifier);
    EXPECT_THAT(shell.pages, SizeIs(2));
    EXPECT_THAT(boxes.boxes, SizeIs(1));
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(Label("lDatabaseInfo").toolTip(), "Versions and places of the databases (Alt+D)");
}

TEST_F(frmAboutTest, AClickOnTheWindowTheLogosOrTheTextsClosesIt)
{
    for (const char* name :
         {"frmAbout", "imFenrikLogo", "imHarnwickLogo", "lblAppTitle", "lblBuild", "lblBetaRelease"}) {
        Open("beta");
        QWidget* target = dialog->findChild<QLabel*>(name);
        if (!target)
            target = dialog.get();
        QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(3, 3));
        EXPECT_FALSE(dialog->isVisible()) << name;
    }
}

TEST_F(frmAboutTest, AnyKeyClosesIt)
{
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space, Qt::Key_A, Qt::Key_F5, Qt::Key_Tab}) {
        Open();
        QTest::keyClick(dialog.get(), key);
        EXPECT_FALSE(dialog->isVisible()) << key;
    }
}

TEST_F(frmAboutTest, AModifierAloneOrAHeldKeyDoesNot)
{
    Open();
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta, Qt::Key_AltGr}) {
        QKeyEvent alone(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(dialog.get(), &alone);
    }
    QKeyEvent held(QEvent::KeyPress, Qt::Key_I, Qt::ControlModifier, "i", true);
    QApplication::sendEvent(dialog.get(), &held);
    EXPECT_TRUE(dialog->isVisible());
}

}  // namespace
}  // namespace fenrik
