#include "diagnostics/OutputBar.h"

#include "support/Printers.h"

#include <QAction>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace fenrik {
namespace {

TEST(OutputBar, FourteenOutputsTakeTwoRows)
{
    EXPECT_EQ(OutputBar::Columns(0), 0);
    EXPECT_EQ(OutputBar::Columns(13), 13);
    EXPECT_EQ(OutputBar::Columns(14), 7);
    EXPECT_EQ(OutputBar::Columns(15), 8);
    EXPECT_EQ(OutputBar::Columns(32), 16);
}

TEST(OutputBar, ButtonsStandInTheirRows)
{
    OutputBar bar;
    bar.SetCount(26);
    bar.show();
    const auto buttons = bar.findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 26);
    EXPECT_EQ(buttons[0]->y(), buttons[12]->y());
    EXPECT_GT(buttons[13]->y(), buttons[0]->y());
    EXPECT_EQ(buttons[13]->x(), buttons[0]->x());
    for (const QToolButton* button : buttons)
        EXPECT_EQ(button->width(), 30);
}

TEST(OutputBar, LargeFontWidensTheButtons)
{
    OutputBar bar;
    bar.SetCount(32);
    QFont font = bar.font();
    font.setPixelSize(40);
    bar.setFont(font);
    for (const QToolButton* button : bar.findChildren<QToolButton*>())
        EXPECT_GT(button->width(), button->fontMetrics().horizontalAdvance(button->text()))
            << qPrintable(button->text());
}

TEST(OutputBar, FewerButtonsLeaveNoneOfTheOldOnesBehind)
{
    OutputBar bar;
    bar.SetCount(32);
    bar.SetCount(12);
    EXPECT_EQ(bar.actions().size(), 12);
    EXPECT_EQ(bar.findChild<QAction*>(QStringLiteral("13")), nullptr);
    bar.SetCount(13);
    EXPECT_EQ(bar.actions().size(), 13);
    EXPECT_EQ(bar.findChild<QAction*>(QStringLiteral("13")), bar.actions().last());
}

TEST(OutputBar, ClickTellsTheNumberAndWhetherItIsPressed)
{
    OutputBar bar;
    bar.SetCount(3);
    QSignalSpy clicks(&bar, &OutputBar::ButtonClicked);
    bar.findChildren<QToolButton*>()[1]->click();
    bar.UpdateButton(3, QStringLiteral("tip"), QStringLiteral("On"), true);  // by program: no click
    bar.findChildren<QToolButton*>()[2]->click();
    ASSERT_EQ(clicks.count(), 2);
    EXPECT_EQ(clicks[0], (QList<QVariant>{2, true}));
    EXPECT_EQ(clicks[1], (QList<QVariant>{3, false}));
}

// --- Keyboard ------------------------------------------------------------------------------------------------------

/// A bar of two rows of ten between two other widgets.
class OutputBarKeys : public testing::Test {
protected:
    OutputBarKeys()
    {
        bar.SetCount(20);
        window.show();
        before.setFocus();
    }

    void Press(Qt::Key key) { QTest::keyClick(window.focusWidget(), key); }

    /// The button that has the keyboard, 0 if none has.
    [[nodiscard]] int Focus() const
    {
        const auto* button = qobject_cast<QToolButton*>(window.focusWidget());
        return button && bar.isAncestorOf(button) ? button->text().toInt() : 0;
    }

    QWidget window;
    QToolButton before{&window};
    OutputBar bar{&window};
    QToolButton after{&window};
};

TEST_F(OutputBarKeys, TabStopsOnceAtTheBar)
{
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focus(), 1);
    Press(Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), &after);
    QTest::keyClick(&after, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(Focus(), 1);
}

TEST_F(OutputBarKeys, ArrowsMoveAlongTheRowsAndBetweenThem)
{
    Press(Qt::Key_Tab);
    const std::pair<Qt::Key, int> kSteps[] = {{Qt::Key_Right, 2},  {Qt::Key_Right, 3}, {Qt::Key_Down, 13},
                                              {Qt::Key_Left, 12},  {Qt::Key_Up, 2},    {Qt::Key_Up, 2},
                                              {Qt::Key_Left, 1},   {Qt::Key_Left, 1},  {Qt::Key_End, 20},
                                              {Qt::Key_Right, 20}, {Qt::Key_Down, 20}, {Qt::Key_Home, 1}};
    for (const auto& [key, button] : kSteps) {
        Press(key);
        EXPECT_EQ(Focus(), button) << key;
    }
}

TEST_F(OutputBarKeys, ButtonsThatCannotBePressedArePassedOver)
{
    for (const int number : {1, 2, 4, 13, 19, 20})
        bar.EnableButton(number, false);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focus(), 3);
    Press(Qt::Key_Right);
    EXPECT_EQ(Focus(), 5);
    Press(Qt::Key_End);
    EXPECT_EQ(Focus(), 18);
    Press(Qt::Key_Home);
    Press(Qt::Key_Down);  // 13 can't be pressed, and nothing is below it
    EXPECT_EQ(Focus(), 3);
}

TEST_F(OutputBarKeys, TabComesBackToTheButtonThatWasLeft)
{
    Press(Qt::Key_Tab);
    Press(Qt::Key_End);
    Press(Qt::Key_Tab);
    QTest::keyClick(&after, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(Focus(), 20);
    bar.SetCount(0);
    bar.SetCount(20);
    before.setFocus();
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focus(), 20) << "also when the buttons were made anew";
}

TEST_F(OutputBarKeys, BarWithoutAnyButtonToPressIsNoStop)
{
    for (int number = 1; number <= 20; ++number)
        bar.EnableButton(number, false);
    Press(Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), &after);
}

TEST_F(OutputBarKeys, SpacePressesTheButton)
{
    const QSignalSpy clicks(&bar, &OutputBar::ButtonClicked);
    Press(Qt::Key_Tab);
    Press(Qt::Key_Right);
    Press(Qt::Key_Space);
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks[0], (QList<QVariant>{2, true}));
    EXPECT_EQ(Focus(), 2);
}

}  // namespace
}  // namespace fenrik
