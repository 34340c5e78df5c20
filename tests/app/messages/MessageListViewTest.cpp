#include "app/messages/MessageListView.h"

#include "Messages.h"
#include "app/messages/MessageListModel.h"
#include "support/Printers.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>
#include <gmock/gmock.h>

namespace fenrik {
namespace {

using Model = MessageListModel;

class MessageListViewTest : public testing::Test {
protected:
    MessageListViewTest()
    {
        view.setObjectName(QStringLiteral("lvMessages"));
        view.setModel(&model);
        view.resize(900, 300);
        view.show();
        view.activateWindow();
        view.setFocus();
        (void)QTest::qWaitForWindowExposed(&view);
    }

    void Add(int lines)
    {
        const auto name = model.Intern(QStringLiteral("Lamp"), QStringLiteral("On"));
        for (int i = 0; i < lines; ++i)
            model.Add(Received(12, mNext++), name, 0);
    }

    void AddAndFlush(int lines)
    {
        Add(lines);
        view.Flush();
    }

    [[nodiscard]] int LastVisibleRow() const { return view.FirstVisibleRow() + view.WholeRows() - 1; }
    [[nodiscard]] QPoint Place(int row, int column = 0) const
    {
        return view.visualRect(model.index(row, column)).center();
    }
    void Click(int row, Qt::MouseButton button = Qt::LeftButton, int column = 0)
    {
        QTest::mouseClick(view.viewport(), button, {}, Place(row, column));
    }
    void Key(Qt::Key key) { QTest::keyClick(&view, key); }
    void Scroll(int row) { view.verticalScrollBar()->setValue(row); }

    Model model;
    MessageListView view;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};

private:
    int mNext = 0;
};

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
    view.Flush();
    view.SelectRow(10);
    EXPECT_TRUE(view.FollowsNewest());

    model.Add(Received(31), model.Intern(QStringLiteral("31"), {}), 1);
    view.Flush();
    EXPECT_EQ(view.SelectedRow(), 30);

    Scroll(70);
    model.Add(Received(31), model.Intern(QStringLiteral("31"), {}), 2);
    view.Flush();
    EXPECT_EQ(view.SelectedRow(), 30);
    EXPECT_EQ(view.FirstVisibleRow(), 30);
}

TEST_F(MessageListViewTest, FollowsByWhatWasSelectedWhenTheLinesWereAdded)
{
    AddAndFlush(100);
    Add(1);
    view.SelectRow(50);  // the user reacts before the line is announced
    EXPECT_FALSE(view.FollowsNewest());
    view.Flush();
    EXPECT_EQ(view.SelectedRow(), 50);

    Add(1);
    view.SelectRow(100);  // the last line that is seen, but there is a newer one already
    EXPECT_FALSE(view.FollowsNewest());
    view.Flush();
    EXPECT_EQ(view.SelectedRow(), 100);
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

TEST_F(MessageListViewTest, ScrollBarCountsRows)
{
    AddAndFlush(1000);
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 1000 - view.WholeRows());
    EXPECT_EQ(view.verticalScrollBar()->pageStep(), view.WholeRows());
    Scroll(123);
    EXPECT_EQ(view.indexAt({5, 1}).row(), 123);
    EXPECT_EQ(view.indexAt({5, view.RowHeight() + 1}).row(), 124);
    EXPECT_EQ(view.visualRect(model.index(125, 0)).top(), 2 * view.RowHeight());
}

TEST_F(MessageListViewTest, RowsFarAwayHaveAPlaceOutsideOfTheViewport)
{
    AddAndFlush(300'000);
    EXPECT_LT(view.RowRect(0).bottom(), 0);
    Scroll(0);
    EXPECT_GT(view.RowRect(299'999).top(), view.viewport()->height());
    EXPECT_EQ(view.RowRect(300'000), QRect());
}

TEST_F(MessageListViewTest, ScrollToBringsARowIntoView)
{
    AddAndFlush(1000);
    const int whole = view.WholeRows();
    view.scrollTo(model.index(500, 0));
    EXPECT_EQ(view.FirstVisibleRow(), 500);
    view.scrollTo(model.index(500 + whole - 1, 0));
    EXPECT_EQ(view.FirstVisibleRow(), 500);
    view.scrollTo(model.index(500 + whole, 0));
    EXPECT_EQ(view.FirstVisibleRow(), 501);
    view.scrollTo(model.index(700, 0), QAbstractItemView::PositionAtTop);
    EXPECT_EQ(view.FirstVisibleRow(), 700);
    view.scrollTo(model.index(700, 0), QAbstractItemView::PositionAtBottom);
    EXPECT_EQ(LastVisibleRow(), 700);
    view.scrollTo(model.index(300, 0), QAbstractItemView::PositionAtCenter);
    EXPECT_EQ(view.FirstVisibleRow(), 300 - whole / 2);
    view.scrollTo({});
    EXPECT_EQ(view.FirstVisibleRow(), 300 - whole / 2);
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

TEST_F(MessageListViewTest, HidesTheCheckSumColumn)
{
    EXPECT_EQ(view.Header()->count(), 8);
    EXPECT_EQ(view.Header()->sectionSize(Model::CS), 0);
    AddAndFlush(1);
    EXPECT_EQ(view.visualRect(model.index(0, Model::CS)), QRect());
    EXPECT_NE(view.visualRect(model.index(0, Model::Raw)), QRect());
}

TEST_F(MessageListViewTest, ADoubleClickOnAColumnsEdgeFitsIt)
{
    AddAndFlush(100);
    view.Header()->resizeSection(Model::Raw, 5);
    Q_EMIT view.Header()->sectionHandleDoubleClicked(Model::Raw);
    EXPECT_GT(view.Header()->sectionSize(Model::Raw),
              view.fontMetrics().horizontalAdvance(QStringLiteral("0.A0.30.0.1F.EF")));
}

TEST_F(MessageListViewTest, PaintsTheSelectionInThePalettesColour)
{
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::AlternateBase, QColor(20, 20, 20));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Highlight, QColor(0, 90, 0));
    view.setPalette(dark);
    AddAndFlush(4);
    view.SelectRow(2);
    const QImage image = view.viewport()->grab().toImage();
    const auto pixel = [&](int row) { return image.pixelColor(image.width() - 4, view.RowRect(row).center().y()); };
    EXPECT_EQ(pixel(0), QColor(Qt::black));
    EXPECT_EQ(pixel(1), QColor(20, 20, 20));
    EXPECT_EQ(pixel(2), QColor(0, 90, 0));
}

TEST_F(MessageListViewTest, PaintsTextOfEachVisibleColumn)
{
    AddAndFlush(1);
    view.selectionModel()->clear();
    const QImage image = view.viewport()->grab().toImage();
    for (int column = 0; column < Model::kColumns; ++column) {
        const QRect cell = view.visualRect(model.index(0, column));
        bool inked = false;
        for (int y = cell.top(); y <= cell.bottom(); ++y) {
            for (int x = cell.left(); x <= cell.right(); ++x)
                inked = inked || image.pixelColor(x, y) != image.pixelColor(image.width() - 2, 2);
        }
        EXPECT_EQ(inked, column != Model::CS) << column;
    }
}

TEST_F(MessageListViewTest, AnEmptyListShowsItsText)
{
    const QImage without = view.viewport()->grab().toImage();
    view.SetEmptyText(QStringLiteral("No messages yet. Connect to see the traffic."));
    EXPECT_NE(view.viewport()->grab().toImage(), without);

    AddAndFlush(1);
    model.Clear();
    view.SetEmptyText(QString());
    EXPECT_EQ(view.viewport()->grab().toImage(), without);
}

TEST_F(MessageListViewTest, OnlyChangedCellsAreRepainted)
{
    struct Painted : QObject {
        QRegion region;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                region += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
    } painted;
    model.SetCompactList(true);
    const auto name = model.Intern(QStringLiteral("Lamp"), QString());
    for (int command = 1; command <= 5; ++command)
        model.Add(Received(command), name, 0);
    view.Flush();
    QApplication::sendPostedEvents();
    view.viewport()->installEventFilter(&painted);

    model.Add(Received(5), name, 7);
    view.Flush();
    QApplication::sendPostedEvents();
    EXPECT_EQ(painted.region.boundingRect(), view.visualRect(model.index(4, Model::Count)));
}

TEST_F(MessageListViewTest, WorksInATinyWindow)
{
    AddAndFlush(100);
    view.resize(1, 1);
    EXPECT_EQ(view.WholeRows(), 1);
    AddAndFlush(10);
    view.viewport()->grab();
    EXPECT_EQ(view.FirstVisibleRow(), 109);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(view.SelectedRow(), 108);
}

TEST_F(MessageListViewTest, ALargeFontMakesHigherRows)
{
    AddAndFlush(100);
    const int before = view.RowHeight();
    QFont large = view.font();
    large.setPointSize(40);
    view.setFont(large);
    EXPECT_GT(view.RowHeight(), before);
    EXPECT_GE(view.RowHeight(), view.fontMetrics().height());
    EXPECT_EQ(view.visualRect(model.index(view.FirstVisibleRow() + 1, 0)).top(), view.RowHeight());
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 100 - view.WholeRows());
}

TEST_F(MessageListViewTest, ReadersSeeAListOfLines)
{
    AddAndFlush(100);
    view.SelectRow(31);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&view);
    ASSERT_TRUE(list);
    EXPECT_EQ(list->role(), QAccessible::List);
    ASSERT_EQ(list->childCount(), 100);
    QAccessibleInterface* line = list->child(31);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->text(QAccessible::Name),
              QStringLiteral("Lamp, State Off, Three-Way False, Data 31, Raw 0.A0.30.0.1F.EF, "
                             "Time Stamp 9:05:07.25, Count 0"));
    EXPECT_TRUE(line->state().selected);
    EXPECT_EQ(list->focusChild(), line);
    EXPECT_EQ(list->indexOfChild(line), 31);
    EXPECT_EQ(list->childAt(line->rect().center().x(), line->rect().center().y()), line);
    EXPECT_EQ(list->child(100), nullptr);

    model.Clear();
    EXPECT_FALSE(line->isValid());
    EXPECT_EQ(line->text(QAccessible::Name), QString());
}

TEST_F(MessageListViewTest, WorksWithoutAModel)
{
    MessageListView bare;
    bare.SetEmptyText(QStringLiteral("Nothing"));
    bare.resize(200, 100);
    bare.grab();
    bare.Flush();
    bare.SelectLast();
    EXPECT_EQ(bare.SelectedRow(), -1);
    EXPECT_FALSE(bare.indexAt({5, 5}).isValid());
}

}  // namespace
}  // namespace fenrik
