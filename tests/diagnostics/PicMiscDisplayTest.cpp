#include "diagnostics/PicMiscDisplay.h"

#include "diagnostics/PanelFixture.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QScrollBar>
#include <QTest>

namespace fenrik {
namespace {

class PicMiscDisplayTest : public PanelFixture {
protected:
    void SetUp() override { display.show(); }

    CharacterFace& Shown() { return face.isVisible() ? face : face17; }
};

TEST_F(PicMiscDisplayTest, TheFirstNodesAreShownAtFirst)
{
    EXPECT_EQ(display.objectName(), "PicMiscDisplay");
    EXPECT_TRUE(face.isVisible());
    EXPECT_FALSE(face17.isVisible());
    EXPECT_EQ(face.toolTip(), "Click to show nodes 17-32");
    EXPECT_EQ(face17.toolTip(), "Click to show nodes 1-16");
}

TEST_F(PicMiscDisplayTest, AClickShowsTheOtherPicture)
{
    nodesInSystem = 17;
    QTest::mouseClick(&Shown(), Qt::LeftButton);
    EXPECT_TRUE(face17.isVisible());
    EXPECT_FALSE(face.isVisible());
    QTest::mouseClick(&Shown(), Qt::LeftButton);
    EXPECT_TRUE(face.isVisible());
}

TEST_F(PicMiscDisplayTest, ASystemOf16NodesNeverChangesThePicture)
{
    nodesInSystem = 16;
    QTest::mouseClick(&Shown(), Qt::LeftButton);
    EXPECT_TRUE(face.isVisible());
}

TEST_F(PicMiscDisplayTest, ASmallerSystemGetsItsNodesBackOnScreen)
{
    nodesInSystem = 32;
    QTest::mouseClick(&Shown(), Qt::LeftButton);
    nodesInSystem = 17;
    display.NodesChanged();
    EXPECT_TRUE(face17.isVisible());
    nodesInSystem = 8;
    display.NodesChanged();
    EXPECT_TRUE(face.isVisible());
}

TEST_F(PicMiscDisplayTest, ABarStandsBesideThePictureWhenRowsInUseAreCutOff)
{
    constexpr int kWidth = 148;
    const auto fit = [this](int nodes, int height) {
        nodesInSystem = nodes;
        display.NodesChanged();
        display.resize(display.width(), height);
        QCoreApplication::processEvents();
    };
    fit(13, 420);
    EXPECT_FALSE(display.verticalScrollBar()->isVisible());
    EXPECT_EQ(display.width(), kWidth);
    fit(14, 420);
    EXPECT_TRUE(display.verticalScrollBar()->isVisible());
    EXPECT_GE(display.viewport()->width(), kWidth);
    fit(14, 460);
    EXPECT_FALSE(display.verticalScrollBar()->isVisible());
    fit(32, 702);
    EXPECT_FALSE(display.verticalScrollBar()->isVisible());
    EXPECT_EQ(display.width(), kWidth);
}

TEST_F(PicMiscDisplayTest, OtherButtonsDoNotChangeThePicture)
{
    QTest::mouseClick(&Shown(), Qt::MiddleButton);
    QTest::mouseClick(&Shown(), Qt::RightButton);
    EXPECT_TRUE(face.isVisible());
}

TEST_F(PicMiscDisplayTest, TheRightButtonAndTheMenuKeyOpenTheMenu)
{
    QMenu menu;
    menu.addAction("Send");
    display.setMenu(&menu);
    QTest::mouseClick(&Shown(), Qt::RightButton);
    EXPECT_TRUE(menu.isVisible());
    menu.close();

    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(5, 5), Shown().mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&Shown(), &key);
    EXPECT_TRUE(menu.isVisible());
}

TEST_F(PicMiscDisplayTest, AMenuThatIsGoneIsNotOpened)
{
    {
        QMenu menu;
        display.setMenu(&menu);
    }
    QTest::mouseClick(&Shown(), Qt::RightButton);
    EXPECT_TRUE(face.isVisible());
}

}  // namespace
}  // namespace fenrik
