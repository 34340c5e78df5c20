#include "MessageListViewTest.h"
#include "support/PaintCounter.h"

#include <QAccessible>
#include <QApplication>

#include <functional>

namespace fenrik {
namespace {

using Model = MessageListModel;

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

/// What of the viewport is painted because of `change`.
QRegion PaintedBy(MessageListView& view, const std::function<void()>& change)
{
    QCoreApplication::processEvents();
    const PaintCounter paints(*view.viewport());
    change();
    QCoreApplication::processEvents();
    return paints.painted;
}

TEST_F(MessageListViewTest, ALineThatComesInPaintsNoneOfTheOthersAnew)
{
    AddAndFlush(100);
    const QRegion painted = PaintedBy(view, [this] { AddAndFlush(1); });
    EXPECT_EQ(LastVisibleRow(), 100);
    EXPECT_FALSE(painted.isEmpty());
    EXPECT_LE(painted.boundingRect().height(), 4 * view.RowHeight());
}

TEST_F(MessageListViewTest, ScrollingLeavesThePictureThatPaintingAllWouldMake)
{
    AddAndFlush(100);
    QCoreApplication::processEvents();
    for (const int lines : {1, 3, 1, 40}) {
        AddAndFlush(lines);
        QCoreApplication::processEvents();
        const QRect place(view.viewport()->mapTo(view.window(), QPoint()), view.viewport()->size());
        const QImage shown = view.screen()->grabWindow(view.window()->winId()).toImage().copy(place);
        EXPECT_EQ(shown, view.viewport()->grab().toImage().convertToFormat(shown.format())) << lines;
    }
}

TEST_F(MessageListViewTest, OnlyChangedCellsAreRepainted)
{
    model.SetCompactList(true);
    const auto name = model.Intern(QStringLiteral("Lamp"), QString());
    for (int command = 1; command <= 5; ++command)
        model.Add(Received(command), name, 0);
    Flush();
    const QRegion painted = PaintedBy(view, [&] {
        model.Add(Received(5), name, 7);
        Flush();
    });
    EXPECT_EQ(painted.boundingRect(), view.visualRect(model.index(4, Model::Count)));
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
