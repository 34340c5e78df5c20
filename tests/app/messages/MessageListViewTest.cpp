#include "MessageListViewTest.h"

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>

namespace fenrik {
namespace {

using Model = MessageListModel;

TEST_F(MessageListViewTest, FollowsWhileNothingIsSelected)
{
    EXPECT_TRUE(view.FollowsNewest());
    AddAndFlush(100);
    EXPECT_EQ(view.SelectedRow(), 99);
    EXPECT_EQ(LastVisibleRow(), 99);
}

TEST_F(MessageListViewTest, FollowsWhileTheLastLineIsSelected)
{
    AddAndFlush(100);
    AddAndFlush(1);
    AddAndFlush(50);
    EXPECT_EQ(view.SelectedRow(), 150);
    EXPECT_EQ(LastVisibleRow(), 150);
}

TEST_F(MessageListViewTest, StaysWhileAnEarlierLineIsSelected)
{
    AddAndFlush(100);
    view.SelectRow(40);
    const int top = view.FirstVisibleRow();
    EXPECT_FALSE(view.FollowsNewest());
    AddAndFlush(100);
    EXPECT_EQ(view.SelectedRow(), 40);
    EXPECT_EQ(view.FirstVisibleRow(), top);

    view.SelectLast();
    AddAndFlush(1);
    EXPECT_EQ(view.SelectedRow(), 200);
}

TEST_F(MessageListViewTest, AlwaysFollowsWithCompactList)
{
    model.SetCompactList(true);
    for (int command = 1; command <= 100; ++command)
        model.Add(Received(command), model.Intern(QString::number(command), {}), 0);
    Flush();
    view.SelectRow(10);
    EXPECT_TRUE(view.FollowsNewest());

    model.Add(Received(31), model.Intern(QStringLiteral("31"), {}), 1);
    Flush();
    EXPECT_EQ(view.SelectedRow(), 30);

    Scroll(70);
    model.Add(Received(31), model.Intern(QStringLiteral("31"), {}), 2);
    Flush();
    EXPECT_EQ(view.SelectedRow(), 30);
    EXPECT_EQ(view.FirstVisibleRow(), 30);
}

TEST_F(MessageListViewTest, FollowsByWhatWasSelectedWhenTheLinesWereAdded)
{
    AddAndFlush(100);
    Add(1);
    view.SelectRow(50);  // the user reacts before the line is announced
    EXPECT_FALSE(view.FollowsNewest());
    Flush();
    EXPECT_EQ(view.SelectedRow(), 50);

    Add(1);
    view.SelectRow(100);  // the last line that is seen, but there is a newer one already
    EXPECT_FALSE(view.FollowsNewest());
    Flush();
    EXPECT_EQ(view.SelectedRow(), 100);
}

TEST_F(MessageListViewTest, ALineAfterAPauseIsShownAtOnceAndTheNextOnesTogether)
{
    AddAndFlush(100);
    const auto* resting = view.findChild<QTimer*>("TResting");
    ASSERT_TRUE(QTest::qWaitFor([resting] { return !resting->isActive(); }));
    Add(1);
    view.Flush();
    EXPECT_EQ(view.SelectedRow(), 100);

    for (int i = 0; i < 3; ++i) {
        Add(1);
        view.Flush();
    }
    EXPECT_EQ(model.rowCount(), 104) << "announced at once";
    EXPECT_TRUE(view.FollowsNewest());
    EXPECT_TRUE(QTest::qWaitFor([this] { return view.SelectedRow() == 103; }));
    EXPECT_EQ(LastVisibleRow(), 103);
}

TEST_F(MessageListViewTest, ALineThatIsSelectedWhileNewOnesWaitStaysSelected)
{
    AddAndFlush(100);
    Add(5);
    view.Flush();
    view.SelectRow(40);
    EXPECT_FALSE(view.FollowsNewest());
    view.ShowNews();
    EXPECT_EQ(view.SelectedRow(), 40);
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 105 - view.WholeRows());
}

TEST_F(MessageListViewTest, ARowThatWaitsCanBeScrolledTo)
{
    AddAndFlush(100);
    Add(5);
    view.Flush();
    view.SelectRow(104);
    EXPECT_EQ(LastVisibleRow(), 104);
}

TEST_F(MessageListViewTest, WhatWaitsIsForgottenWhenTheListIsCleared)
{
    AddAndFlush(100);
    Add(5);
    view.Flush();
    model.Clear();
    view.ShowNews();
    EXPECT_EQ(view.SelectedRow(), -1);
    AddAndFlush(2);
    EXPECT_EQ(view.SelectedRow(), 1);
}

TEST_F(MessageListViewTest, SelectLastTakesUnannouncedLinesIn)
{
    AddAndFlush(100);
    view.SelectRow(3);
    Add(5);
    view.SelectLast();
    EXPECT_EQ(view.SelectedRow(), 104);
    EXPECT_EQ(LastVisibleRow(), 104);
}

TEST_F(MessageListViewTest, SelectLastWithoutLinesDoesNothing)
{
    view.SelectLast();
    EXPECT_EQ(view.SelectedRow(), -1);
}

TEST_F(MessageListViewTest, FollowsWhileHidden)
{
    AddAndFlush(10);
    view.hide();
    AddAndFlush(500);
    view.show();
    EXPECT_EQ(view.SelectedRow(), 509);
    EXPECT_EQ(LastVisibleRow(), 509);
}

TEST_F(MessageListViewTest, StartsAnewWhenCleared)
{
    AddAndFlush(1000);
    view.SelectRow(500);
    model.Clear();
    EXPECT_EQ(view.SelectedRow(), -1);
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 0);
    EXPECT_TRUE(view.FollowsNewest());
    AddAndFlush(3);
    EXPECT_EQ(view.SelectedRow(), 2);
}

TEST_F(MessageListViewTest, KeysMoveTheSelection)
{
    AddAndFlush(1000);
    Key(Qt::Key_Home);
    EXPECT_EQ(view.SelectedRow(), 0);
    EXPECT_EQ(view.FirstVisibleRow(), 0);
    Key(Qt::Key_Up);
    EXPECT_EQ(view.SelectedRow(), 0);
    Key(Qt::Key_Down);
    EXPECT_EQ(view.SelectedRow(), 1);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(view.SelectedRow(), 1 + view.WholeRows());
    Key(Qt::Key_PageUp);
    EXPECT_EQ(view.SelectedRow(), 1);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(view.SelectedRow(), 0);
    Key(Qt::Key_End);
    EXPECT_EQ(view.SelectedRow(), 999);
    EXPECT_EQ(LastVisibleRow(), 999);
    Key(Qt::Key_Down);
    EXPECT_EQ(view.SelectedRow(), 999);
}

TEST_F(MessageListViewTest, KeysWithoutLinesDoNothing)
{
    for (const auto key : {Qt::Key_Home, Qt::Key_End, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Return, Qt::Key_Left})
        Key(key);
    EXPECT_EQ(view.SelectedRow(), -1);
}

TEST_F(MessageListViewTest, ATypedLetterSearchesNothing)
{
    AddAndFlush(100);
    view.SelectRow(50);
    Key(Qt::Key_L);
    EXPECT_EQ(view.SelectedRow(), 50);
}

TEST_F(MessageListViewTest, SideArrowsScrollSideways)
{
    view.resize(200, 300);
    AddAndFlush(3);
    ASSERT_GT(view.horizontalScrollBar()->maximum(), 0);
    Key(Qt::Key_Right);
    EXPECT_EQ(view.horizontalScrollBar()->value(), view.horizontalScrollBar()->singleStep());
    EXPECT_EQ(view.visualRect(model.index(0, 0)).left(), -view.horizontalScrollBar()->value());
    EXPECT_EQ(view.Header()->sectionViewportPosition(0), -view.horizontalScrollBar()->value());
    Key(Qt::Key_Left);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(view.SelectedRow(), 2);
}

TEST_F(MessageListViewTest, CopiesTheSelectedLineWithoutTheHiddenColumn)
{
    AddAndFlush(100);
    view.SelectRow(31);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("Lamp\tOff\tFalse\t31\t0.A0.30.0.1F.EF\t9:05:07.25\t0"));
}

TEST_F(MessageListViewTest, AClickSelectsTheLine)
{
    AddAndFlush(100);
    Scroll(20);
    Click(23, Qt::LeftButton, Model::Raw);
    EXPECT_EQ(view.SelectedRow(), 23);
    EXPECT_EQ(view.selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(view.FirstVisibleRow(), 20);
}

TEST_F(MessageListViewTest, AClickBelowTheLastLineKeepsTheSelection)
{
    AddAndFlush(3);
    view.SelectRow(1);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(5, view.viewport()->height() - 2));
    EXPECT_EQ(view.SelectedRow(), 1);
}

TEST_F(MessageListViewTest, DraggingLeavesOneLineSelected)
{
    AddAndFlush(100);
    Scroll(10);
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, Place(11));
    for (const int row : {12, 15, 13}) {
        QMouseEvent move(QEvent::MouseMove, Place(row), view.viewport()->mapToGlobal(Place(row)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &move);
        EXPECT_EQ(view.SelectedRow(), row);
        EXPECT_EQ(view.selectionModel()->selectedRows().size(), 1);
    }
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, Place(13));
    EXPECT_EQ(view.SelectedRow(), 13);
}

TEST_F(MessageListViewTest, TheSecondaryButtonLeavesTheSelectionAlone)
{
    AddAndFlush(100);
    Click(99, Qt::RightButton);
    Click(95, Qt::RightButton);
    EXPECT_EQ(view.SelectedRow(), 99);
    EXPECT_TRUE(view.FollowsNewest());
}

TEST_F(MessageListViewTest, AsksForItsMenu)
{
    AddAndFlush(3);
    QSignalSpy menu(&view, &QWidget::customContextMenuRequested);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 5), view.viewport()->mapToGlobal(QPoint(10, 5)));
    QApplication::sendEvent(view.viewport(), &event);
    ASSERT_EQ(menu.size(), 1);
    EXPECT_EQ(menu[0][0].toPoint(), QPoint(10, 5));
}

TEST_F(MessageListViewTest, ADoubleClickOrEnterChoosesTheLine)
{
    AddAndFlush(100);
    QSignalSpy chosen(&view, &MessageListView::LineChosen);
    const int row = view.FirstVisibleRow() + 2;
    Click(row, Qt::LeftButton, Model::Data);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, Place(row, Model::Data));
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0][0].toInt(), row);

    QTest::mouseDClick(view.viewport(), Qt::RightButton, {}, Place(row + 1));
    EXPECT_EQ(chosen.size(), 1);

    Key(Qt::Key_Return);
    ASSERT_EQ(chosen.size(), 2);
    EXPECT_EQ(chosen[1][0].toInt(), row);
}

TEST_F(MessageListViewTest, SelectionAndPlaceSurviveNewLinesAndHexData)
{
    AddAndFlush(1000);
    Scroll(300);
    Click(305);
    for (int batch = 0; batch < 5; ++batch)
        AddAndFlush(1000);
    model.SetHexData(true);
    EXPECT_EQ(view.SelectedRow(), 305);
    EXPECT_EQ(view.FirstVisibleRow(), 300);
}

}  // namespace
}  // namespace fenrik
