#include "remote/frmRDTimedMessage.h"

#include "RemoteWindowFixture.h"

#include <QLabel>

namespace fenrik {
namespace {

class TimedMessage : public RemoteWindowTest {
protected:
    [[nodiscard]] QTimer& AutoClose() const { return Find<QTimer>(window, "tmAutoClose"); }

    frmRDTimedMessage window;
};

TEST_F(TimedMessage, ShowsTheTextForItsTime)
{
    EXPECT_EQ(window.windowTitle(), "Information - Remote Diagnostics");
    EXPECT_EQ(AutoClose().interval(), 3000);
    window.doNonModalDialog("Bob has <gone>", 2000);
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.isModal());
    EXPECT_EQ(Find<QLabel>(window, "lblInformation").text(), "Bob has <gone>");
    EXPECT_EQ(Find<QLabel>(window, "lblInformation").textFormat(), Qt::PlainText);
    EXPECT_EQ(AutoClose().interval(), 2000);
    EXPECT_TRUE(AutoClose().isActive());
    Fire(window, "tmAutoClose");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(TimedMessage, GoesAtAClickOnTheText)
{
    window.doNonModalDialog("gone", 2000);
    Click(window, "lblInformation");
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(AutoClose().isActive());
}

TEST_F(TimedMessage, GoesAtAClickOnTheWindow)
{
    window.doNonModalDialog("gone", 2000);
    QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_FALSE(window.isVisible());
}

TEST_F(TimedMessage, ModalItReturnsWhenItIsGone)
{
    bool wasModal = false;
    QTimer::singleShot(0, &window, [&] {
        wasModal = window.isVisible() && window.isModal();
        Fire(window, "tmAutoClose");
    });
    window.doModalDialog("gone", 2000);
    EXPECT_TRUE(wasModal);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(TimedMessage, CanBeShownAgain)
{
    window.doNonModalDialog("one", 2000);
    window.close();
    window.doNonModalDialog("two", 4000);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(AutoClose().isActive());
    EXPECT_EQ(AutoClose().interval(), 4000);
}

}  // namespace
}  // namespace fenrik
