#include "diagnostics/PicAnalogDisplay.h"

#include "diagnostics/FaceFixture.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace fenrik {
namespace {

class PicAnalogDisplayTest : public FaceFixture {
protected:
    void Show(int height)
    {
        display.resize(700, height);
        display.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&display));
    }

    void Turn(int delta)
    {
        const QPoint middle = display.viewport()->rect().center();
        QWheelEvent event(middle, display.viewport()->mapToGlobal(middle), {}, QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(display.viewport(), &event);
    }

    PicAnalogDisplay display{sheets};
    CharacterFace& face = display.Face();
    QScrollBar* bar = display.findChild<QScrollBar*>("VScrlanalogFace");
};

TEST_F(PicAnalogDisplayTest, TheControlsBearTheirNames)
{
    EXPECT_EQ(display.objectName(), "PicAnalogDisplay");
    EXPECT_EQ(display.findChild<CharacterFace*>("PicAnalogFace"), &face);
    EXPECT_NE(bar, nullptr);
    EXPECT_EQ(face.size(), QSize(672, 740));
}

TEST_F(PicAnalogDisplayTest, TheFacesTopIsMinusTheBarsValue)
{
    Show(300);
    ASSERT_EQ(bar->maximum(), 440);
    for (const int value : {123, 440, 0}) {
        bar->setValue(value);
        EXPECT_EQ(face.y(), -value);
    }
}

TEST_F(PicAnalogDisplayTest, WheelAndPageKeysScroll)
{
    Show(300);
    Turn(-120);
    EXPECT_GT(bar->value(), 0);
    EXPECT_EQ(face.y(), -bar->value());
    bar->setValue(0);
    QTest::keyClick(&display, Qt::Key_PageDown);
    EXPECT_EQ(bar->value(), 300);
    QTest::keyClick(&display, Qt::Key_PageUp);
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(PicAnalogDisplayTest, TheBarIsHiddenWhileAllIsVisible)
{
    Show(760);
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(bar->maximum(), 0);
    display.resize(700, 300);
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar->isVisible(); }));
}

}  // namespace
}  // namespace fenrik
